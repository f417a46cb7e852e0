// Runs that end badly, and those that put things right.
#include "RecoveryTour.h"

#include "Batch.h"
#include "BatchCheck.h"
#include "RawDatabase.h"

#include "platform/basic/RuntimeError.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

const QString formulaName = u"Hydrocortisone 1% Cream"_s;
constexpr int quantity = 35;

QString lotOf(const QWidget& dialog) { return Visitor::find<QLabel>(dialog, "lbllog_Lot").text(); }

}  // namespace

RecoveryTour::RecoveryTour(const QString& programFolder)
    : m_folder(programFolder), m_visitor(QDir(programFolder).filePath("tour"), "recovery-"),
      m_program(m_visitor, programFolder) {}

QString RecoveryTour::database() const { return QDir(m_folder).filePath("sorvanto.mdb"); }

int RecoveryTour::logged() const { return RawDatabase(database()).number("SELECT count(*) FROM Log"); }

void RecoveryTour::chooseAndMake(const Robot::Script& signing) {
    m_program.start();
    m_visitor.search("Hydroc");
    Batch batch(m_visitor, formulaName, quantity);
    batch.setSigning(signing);
    batch.announceQuantity();
    m_visitor.tool("cmdMake");
    batch.mix();
}

void RecoveryTour::dieBeforeLogging() {
    chooseAndMake([](QWidget& dialog) {
        std::printf("%s\n", qUtf8Printable(lotOf(dialog)));
        std::fflush(stdout);
        ::kill(::getpid(), SIGKILL);
    });
    stopTour("the process outlived its end.");
}

void RecoveryTour::signInVain(const QString& initials) {
    QString lot;
    int before = 0;
    chooseAndMake([&](QWidget& dialog) {
        lot = lotOf(dialog);
        before = logged();
        Batch::typeInitials(m_visitor, dialog, "txtInitials", initials);
        Batch::typeInitials(m_visitor, dialog, "txtVerified", Batch::verifier);
        Visitor::click(Visitor::find<QWidget>(dialog, "cmdOK"));
    });
    std::printf("%s\n", qUtf8Printable(lot));
    m_visitor.picture("refused-initials");
    const QString report = m_visitor.find<QLabel>("lblReport").text();
    require(report.startsWith(u"Initials can’t hold an apostrophe; the batch is kept, sign again."),
            u"the refused entry is told as \"%1\"."_s.arg(report));
    requireSame("the number of batches in the log", QString::number(logged()), QString::number(before));
    requireOffer(lot);
    m_program.leave();
}

void RecoveryTour::requireOffer(const QString& lot) {
    const QString offer = m_visitor.find<QLabel>("mixerOffer").text();
    for (const QString& part : {formulaName, QString::number(quantity), lot})
        require(offer.contains(part), u"the offer \"%1\" does not name %2."_s.arg(offer, part));
}

void RecoveryTour::logOffer() {
    m_program.start();
    const int before = logged();
    m_visitor.picture("offer");
    requireOffer(QString());
    const BatchCheck check(database(), formulaName, quantity);
    QString lot;
    m_visitor.robot().expectDialog("frmInitials", [&](QWidget& dialog) {
        lot = lotOf(dialog);
        Batch(m_visitor, formulaName, quantity).sign(dialog, Batch::compounder, Batch::verifier);
    });
    m_visitor.click("mixerLogMix");
    m_visitor.settle();
    check.requireLogged(Batch::compounder, Batch::verifier);
    requireSame("the number of batches in the log", QString::number(logged()), QString::number(before + 1));
    std::printf("%s\n", qUtf8Printable(lot));
    m_visitor.requireNoReport();
    for (const auto* button : m_visitor.window().findChildren<QAbstractButton*>("mixerLogMix"))
        require(!button->isVisible(), "the mix is on offer although it is in the log.");
    m_program.leave();
}

void RecoveryTour::startSecond() {
    bool refused = false;
    m_visitor.robot().expectBox("Sorvanto control panel is already running, only one instance allowed.", "OK",
                                [&](QWidget& box) {
                                    refused = true;
                                    m_visitor.picture("second-instance", &box);
                                });
    m_program.start();
    require(refused && m_program.ended(), "a second start was not refused.");
}

void RecoveryTour::failInAnEvent() {
    m_program.start();
    QTimer::singleShot(0, &m_visitor.window(), [] { throw platform::RuntimeError(6, "Overflow"); });
    m_visitor.wait("a report of the failed event", [&] {
        const auto* report = m_visitor.window().findChild<QLabel*>("lblReport");
        return report && report->isVisible() && report->text().startsWith("Something unforeseen happened");
    });
    m_visitor.search("Hydrocortisone 1");
    m_visitor.requireText("txtfrm_Name", formulaName);
    m_program.leave();
}

}  // namespace tour
