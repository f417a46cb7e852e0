#include "BenchTour.h"

#include "Batch.h"
#include "Program.h"
#include "platform/widgets/RecordList.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

const QString made = u"Hydrocortisone 1% Cream"_s;
constexpr int quantity = 35;
constexpr QSize wideWindow(1920, 1060);
constexpr int longestBatches = 240'000;  // milliseconds

void tell(const QString& line) {
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

void changeDescription(Visitor& visitor, const QString& description) {
    visitor.tool(u"cmdEdit"_s);
    visitor.type(u"txtfrm_Desc"_s, description);
    visitor.tool(u"cmdSave"_s);
    visitor.requireText(u"txtfrm_Desc"_s, description);
    visitor.requireNoReport();
    visitor.picture(u"saved-formula"_s);
}

void sign(Batch& batch, QWidget& dialog) {
    tell(Visitor::find<QLabel>(dialog, u"lbllog_Lot"_s).text());
    batch.sign(dialog, Batch::compounder, Batch::verifier);
}

void makeBatch(Visitor& visitor) {
    Batch batch(visitor, made, quantity);
    batch.setSigning([&](QWidget& dialog) { sign(batch, dialog); });
    batch.announceQuantity();
    visitor.tool(u"cmdMake"_s);
    batch.mix();
    batch.requireFormulas();
    visitor.requireNoReport();
}

/// The list stands beside the record.
void lookAtLog(Visitor& visitor, int batches) {
    visitor.window().resize(wideWindow);
    visitor.tool(u"cmdLogs"_s);
    visitor.requireText(u"txtlog_Name"_s, made);
    const auto& list = Visitor::find<platform::RecordList>(visitor.window(), u"recordList"_s);
    visitor.wait(
        u"the batches of all benches"_s, [&] { return batches == 0 || list.model().rowCount() == batches; },
        longestBatches);
    visitor.picture(u"log"_s);
    visitor.requireNoReport();
}

/// As the page is opened; it is asked again until another bench mixes.
void lookAtHealth(Visitor& visitor, Program& program) {
    visitor.robot().expectDialog(u"HealthPage"_s, [&](QWidget& page) {
        const auto isMixing = [&] {
            Visitor::click(Visitor::find<QAbstractButton>(page, u"cmdAgain"_s));
            const auto labels = page.findChildren<QLabel*>();
            return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
                return label->text().contains("mixing "_L1 + made);
            });
        };
        visitor.wait(u"another bench that mixes"_s, isMixing, longestBatches);
        visitor.picture(u"health"_s, &page);
        Visitor::click(Visitor::find<QAbstractButton>(page, u"cmdClose"_s));
    });
    program.menuBar(u"mnuHelp"_s, u"mnuHealth"_s);
}

void watchOthers(Visitor& visitor, Program& program) {
    visitor.tool(u"cmdFormulas"_s);
    visitor.search(u"Hydroc"_s);
    visitor.requireText(u"txtfrm_Name"_s, made);
    tell(u"watching"_s);
    const auto& strip = *visitor.window().findChild<QWidget*>(u"changeStrip"_s);
    visitor.wait(
        u"the change by another bench"_s, [&] { return strip.isVisible(); }, longestBatches);
    visitor.picture(u"changed"_s);
    visitor.robot().expectDialog(u"HistoryWindow"_s, [&](QWidget& history) {
        visitor.picture(u"difference"_s, &history);
        Visitor::click(Visitor::find<QAbstractButton>(history, u"cmdClose"_s));
    });
    Visitor::click(Visitor::find<QWidget>(strip, u"cmdShowChange"_s));
    visitor.settle();
    lookAtHealth(visitor, program);
    visitor.settle();
    visitor.requireNoReport();
}

}  // namespace

void runBench(const QString& programFolder, const QString& pictureFolder, const BenchWork& work) {
    QDir().mkpath(pictureFolder);
    Visitor visitor(pictureFolder, u"bench-"_s);
    Program program(visitor, programFolder);
    program.start();
    require(!program.ended(), u"the program ended at its start."_s);
    visitor.requireNoReport();
    visitor.search(u"Hydroc"_s);
    visitor.requireText(u"txtfrm_Name"_s, made);
    changeDescription(visitor, work.description);
    for (int batch = 0; batch < work.batches; ++batch)
        makeBatch(visitor);
    lookAtLog(visitor, work.batchesOfAll);
    if (work.watches)
        watchOthers(visitor, program);
    program.leave();
}

void runBenchOnCopy(const QString& programFolder, const QString& pictureFolder) {
    Visitor visitor(pictureFolder, u"copy-"_s);
    Program program(visitor, programFolder);
    program.start(0, [&](QWidget& question) {
        visitor.picture(u"server-is-away"_s, &question);
        Visitor::click(Visitor::find<QAbstractButton>(question, u"cmdReadCopy"_s));
    });
    require(!program.ended(), u"the program ended at its start."_s);
    visitor.search(u"Hydroc"_s);
    visitor.requireText(u"txtfrm_Name"_s, made);
    Batch batch(visitor, made, quantity);
    batch.announceQuantity();
    visitor.tool(u"cmdMake"_s);
    batch.mixForLater();
    visitor.requireNoReport();
    program.leave();
}

void runBenchOffer(const QString& programFolder, const QString& pictureFolder) {
    Visitor visitor(pictureFolder, u"back-"_s);
    Program program(visitor, programFolder);
    program.start();
    Batch batch(visitor, made, quantity);
    visitor.picture(u"offer"_s);
    visitor.robot().expectDialog(u"frmInitials"_s, [&](QWidget& dialog) { sign(batch, dialog); });
    visitor.click(u"mixerLogMix"_s);
    visitor.settle();
    visitor.requireNoReport();
    program.leave();
}

}  // namespace tour
