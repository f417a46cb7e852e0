// Makes things happen while the program waits for its server: in the turns that it gives its windows, a thing drawn by a seed.
#pragma once

#include "ServerProxy.h"
#include "core/frmMain.h"

#include <QMap>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>
#include <random>
#include <vector>

/// The answers come late from the moment on that the main window is on show.
class Disturber : public QObject {
public:
    Disturber(support::ServerProxy& line, unsigned seed);
    ~Disturber() override;

    /// Of the test that runs.
    static Disturber& current();
    /// Done in each turn as well.
    std::function<void()> also;
    /// From now on the answers are late, and nothing else.
    void rest() { m_things.clear(); }
    /// What happened, in its order.
    const QStringList& orders() const { return m_orders; }
    /// How often each thing happened since the program began, and how many turns there were.
    static QString account();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Thing {
        const char* name;
        bool aboveWindow;  ///< only possible once the wait shows itself
        std::function<void()> happen;
    };
    std::vector<Thing> things();
    void disturb();
    unsigned pick(qsizetype count) {
        return static_cast<unsigned>(m_random()) % static_cast<unsigned>(count);
    }
    void pressTool();
    void click();
    void pressKeys();

    support::ServerProxy& m_line;
    std::mt19937 m_random;
    std::vector<Thing> m_things;
    QPointer<sorvanto::frmMain> m_window;  ///< once it is on show
    QStringList m_orders;
};
