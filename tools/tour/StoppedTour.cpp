// The way of a batch that does not run to its end.
#include "StoppedTour.h"

#include "Batch.h"
#include "Program.h"

#include "mixer/ProgressRing.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTextStream>

namespace tour {
namespace {

constexpr double beginning = 0.1, midst = 0.42;
constexpr int longestWait = 120'000;  // milliseconds

/// Without the mark of the keys around the panel, which has them after its button is gone.
void pictureAtRest(Visitor& visitor, const QString& name, QWidget* of = nullptr) {
    if (QWidget* focus = QApplication::focusWidget())
        focus->clearFocus();
    visitor.picture(name, of);
}

void make(Visitor& visitor) {
    visitor.robot().expectDialog("frmMake", [&](QWidget& dialog) {
        visitor.picture("quantity", &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, "OKButton"));
    });
    visitor.tool("cmdMake");
    visitor.wait(
        "the formula on the mixer", [&] { return visitor.find<QAbstractButton>("mixerStart").isEnabled(); },
        longestWait);
}

/// With a text half typed, so that the mix has to wait for its signature.
void stopInItsMidst(Visitor& visitor) {
    const auto& ring = visitor.find<sorvanto::ProgressRing>("mixerRing");
    visitor.click("mixerStart");
    visitor.wait(
        "the beginning of the mix", [&] { return ring.fraction() >= beginning; }, longestWait);
    pictureAtRest(visitor, "mixing-window");
    visitor.robot().expectDialog("AskDialog", [&](QWidget& question) {
        visitor.picture("quit-while-mixing", &question);
        Visitor::click(Visitor::find<QWidget>(question, "No"));
    });
    QTest::keyClick(&visitor.window(), Qt::Key_Q, Qt::ControlModifier);
    visitor.settle();
    visitor.tool("cmdFormulas");
    visitor.tool("cmdEdit");
    visitor.type("txtfrm_Strength", "1:1:1 fresh");
    visitor.wait(
        "the midst of the mix", [&] { return ring.fraction() >= midst; }, longestWait);
    visitor.click("mixerStop");
    const auto* sign = visitor.window().findChild<QAbstractButton*>("mixerSign");
    visitor.wait(
        "the card of the mix that waits", [&] { return sign && sign->isVisible(); }, longestWait);
    pictureAtRest(visitor, "stopped-window");
    pictureAtRest(visitor, "stopped-panel", &visitor.find<QWidget>("ctlSorvanto1"));
    QTextStream(stdout) << visitor.find<QLabel>("mixerSpeeds").text()
                        << '\n';  // for the page beside the picture
}

void sign(Visitor& visitor) {
    visitor.robot().expectDialog("frmInitials", [&](QWidget& dialog) {
        visitor.picture("sign", &dialog);
        Batch::typeInitials(visitor, dialog, "txtInitials", Batch::compounder);
        Batch::typeInitials(visitor, dialog, "txtVerified", Batch::compounder);
        visitor.picture("sign-same", &dialog);
        visitor.picture("signing-panel", &visitor.find<QWidget>("ctlSorvanto1"));
        Batch::typeInitials(visitor, dialog, "txtVerified", Batch::verifier);
        visitor.picture("sign-stopped", &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, "cmdOK"));
    });
    visitor.click("mixerSign");
    visitor.settle();
}

}  // namespace

void runStopped(const QString& programFolder, const QString& pictureFolder, const QString& prefix,
                const QString& formula, int language) {
    Visitor visitor(pictureFolder, prefix);
    Program program(visitor, programFolder);
    program.start(language);
    visitor.search(formula);
    make(visitor);
    stopInItsMidst(visitor);
    sign(visitor);
    visitor.tool("cmdLogs");
    require(visitor.find<QLabel>("lblInterrupted").isVisible(), "the log does not say that it was stopped.");
    visitor.click("cmdDiscard");  // the half-typed text
    visitor.settle();
    pictureAtRest(visitor, "log-interrupted");
    visitor.tool("cmdFormulas");
    visitor.openTab(1);
    visitor.picture("current-row");
    visitor.tool("cmdCancel");
    visitor.tool("cmdChemicals");  // open for editing from the start
    visitor.tool("cmdCancel");
    visitor.requireNoReport();
    program.leave();
}

}  // namespace tour
