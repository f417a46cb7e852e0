// Answers the windows that block everything else, as a user would: it looks for the next message box,
// dialog or menu from within the program's own event loops and deals with it as it was told beforehand.
// A blocking window that nobody announced ends the tour.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

namespace tour {

class Robot : public QObject {
    Q_OBJECT

public:
    using Script = std::function<void(QWidget&)>;

    Robot();

    /// A dialog by its object name or its class name without namespace.
    void expectDialog(const QString& name, Script script);
    /// As expectDialog, for a window that may also stay away. Given up when a later one comes first.
    void mayCome(const QString& name, Script script);
    /// A message box with that part in its text, answered by a button ("OK", "Yes", "No", "Cancel").
    void expectBox(const QString& part, const QString& button, Script before = {});
    /// A message box that may come any number of times at any moment.
    void alwaysAnswer(const QString& part, const QString& button);
    /// A request for a line of text with that part in its prompt.
    void expectLine(const QString& part, const QString& answer, Script before = {});
    /// A menu with that entry, which is then chosen. It comes before everything announced so far.
    void expectMenu(const QString& entry, Script before = {});

    /// Whether everything announced for certain has come and gone.
    bool idle() const;
    /// What has not come yet, for a message.
    QString awaited() const;
    /// Drops what may have come but did not.
    void forgetOptional();

private:
    struct Expected {
        QString what;
        std::function<bool(const QWidget&)> fits;
        Script act;
        bool optional = false;
    };

    void look();
    void watch(const QWidget* stays);
    void answer(QWidget& window);
    QWidget* newWindow();
    static QString described(const QWidget& window);

    std::vector<Expected> m_expected, m_always;
    QList<QPointer<QWidget>> m_seen;  ///< windows already dealt with
    QPointer<QWidget> m_coming;       ///< seen once; it gets a moment to be laid out
    QElapsedTimer m_lastAnswer;       ///< since the last window was answered
};

}  // namespace tour
