// The whole window with real dialogs and a mixer in memory, so that a mix can end at any moment.
//   startMix(); ... endMix();              a mix of the seeded formula 1, started and run to its end
//   whileOpen("frmSearchRS", [&](QWidget& list) { ... });   runs inside the next modal window of that name
//   answerNo(), answerYes()                the next message box
#pragma once

#include "core/ServerLook.h"
#include "mixer/MemoryLine.h"
#include "platform/widgets/QtAsker.h"
#include "screens/ScreenTest.h"

#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <functional>

class DeskTest : public ScreenTest {
protected:
    void SetUp() override;
    void TearDown() override;
    /// The three batches, and a patient with a prescription of the second.
    void seed() override;

    /// The formula stands in the mixer, not started.
    void loadMix(const QString& name = "Cooling Gel", int formulaID = 1);
    void startMix(const QString& name = "Cooling Gel", int formulaID = 1);
    /// The running mix ends, and the program has heard of it: it is being signed, or waits.
    void endMix();
    QPushButton* panelButton(const char* name) const;
    bool waits() const { return panelButton("mixerSign")->isVisible(); }
    QStringList offers() const;

    /// Runs the script inside the next modal window of that object or class name, once it is on show; the
    /// script has to close it. Several wait in order, one inside the other where they nest.
    void whileOpen(const QString& name, std::function<void(QWidget&)> script);
    /// Presses the button of that answer on the next message box; text: part of what it must say.
    void answer(const char* button, const QString& text);
    void answerYes(const QString& text) { answer("Yes", text); }
    void answerNo(const QString& text) { answer("No", text); }
    void sign(const QString& initials = "RK", const QString& verified = "LM");
    void cancelSigning();
    static QWidget* modalOnShow();
    int logCount() const { return sqlText("SELECT COUNT(*) FROM Log").toInt(); }

    sorvanto::test::MemoryLine line;
    sorvanto::ServerLook::Ways serverWays;  ///< what a server that goes away and comes back offers
    QStringList shown;                      ///< the names of all modal windows, as they came up

private:
    struct Expected {
        QString name;
        std::function<void(QWidget&)> script;
    };
    void look();

    platform::QtAsker m_asker;
    QTimer m_looking;
    QList<Expected> m_expected;
    QPointer<QWidget> m_seen;
};
