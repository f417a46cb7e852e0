// The longest time that the interface stood still in each action, in a file of 32,000 rows in every table: nobody
// could type, and nothing was painted. Prints a table; the aim is under 50 ms each.
//   bench_blocks [processor] [windows | rest]
// Milliseconds by the clock, or of a processor, where the machine has other work; the changes and the windows alone, or what is
// done seldom.
#include "blocks.h"
#include "core/Application.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/Theme.h"
#include "whole_program.h"

#include <QDateTimeEdit>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using bench::Blocks;
using bench::WholeProgram;

namespace {

constexpr int rows = 32'000;

/// One formula has all batches, the last patient 500 prescriptions.
const char* const largeRecords = R"(
UPDATE Log SET FormulaID = 1;
UPDATE Patient SET pat_LName = 'zzz', pat_Phone = 'zzz' WHERE PatientID = 32000;
UPDATE RXs SET PatientID = 1 WHERE PatientID = 32000;
UPDATE RXs SET PatientID = 32000 WHERE RXsID <= 500;
DELETE FROM RXs WHERE RXsID > 16000;
)";

/// Milliseconds that this thread has had a processor.
qint64 processorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

/// In use by this process, in megabytes.
long memory() {
    QFile file(u"/proc/self/statm"_s);
    const long pages = file.open(QFile::ReadOnly) ? file.readAll().split(' ').value(1).toLong() : 0;
    return pages * sysconf(_SC_PAGESIZE) / 1'000'000;
}

platform::PreviewWindow* preview() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = qobject_cast<platform::PreviewWindow*>(window))
            return found;
    }
    return nullptr;
}

void previewTo(Blocks& blocks, const char* action, const char* tool) {
    blocks.measure(
        action, [&] { blocks.press("mnuPrint", tool); }, [] { return preview() && preview()->isComplete(); });
    if (!preview())
        return;
    std::printf("| &nbsp; memory with it | %ld MB | | |\n", memory());
    blocks.measure(
        "&nbsp; its closing", [] { preview()->close(); }, [] { return !preview(); });
    std::printf("| &nbsp; memory without it | %ld MB | | |\n", memory());
}

/// Takes the dates as they stand, and everything else by its default button.
void acceptForms(WholeProgram& program) {
    program.asker.reply = [](QWidget& form) { QTest::keyClick(&form, Qt::Key_Return); };
}

/// Dates that hold everything, and a quantity to make.
void answerDates(WholeProgram& program) {
    program.asker.reply = [](QWidget& form) {
        if (auto* begin = form.findChild<QDateTimeEdit*>("dtBegin")) {
            begin->setDateTime(QDateTime({2000, 1, 1}, {0, 0}, Qt::UTC));
            form.findChild<QDateTimeEdit*>("dtEnd")->setDateTime(QDateTime({2030, 1, 1}, {0, 0}, Qt::UTC));
        }
        if (auto* quantity = form.findChild<platform::NumberBox*>("txtQTY")) {
            quantity->setText(u"25"_s);
            emit quantity->valueEdited();
            return form.findChild<QPushButton*>("OKButton")->click();
        }
        QTest::keyClick(&form, Qt::Key_Return);
    };
}

/// So many labels from the first place on.
void answerLabels(WholeProgram& program, int labels) {
    program.asker.reply = [labels](QWidget& form) {
        if (auto* box = form.findChild<platform::NumberBox*>("txtLabels")) {
            box->setText(QString::number(labels));
            emit box->valueEdited();
            form.findChild<QPushButton*>("cmdPosition_1")->click();
        }
    };
}

/// All records as hits, then the two first letters typed in their list.
void search(WholeProgram& program, Blocks& blocks) {
    program.asker.reply = [&blocks](QWidget& form) {
        Blocks::print("&nbsp; search with all records as hits, to the list");
        auto* list = form.findChild<platform::RecordGrid*>();
        blocks.measure("&nbsp; first letter in that list", [&] { QTest::keyClicks(list, u"z"_s); });
        blocks.measure("&nbsp; second letter", [&] { QTest::keyClicks(list, u"z"_s); });
    };
    platform::Tool& box = program.window().bar().band(u"MainBar"_s).tool(u"txtSearch"_s);
    box.setText(u"%"_s);
    Blocks::begin();
    QTimer::singleShot(0, &program.window(),
                       [&] { program.window().ActiveBar_ToolKeyPress(box, 13); });  // Enter
    Blocks::settleDown();
    program.asker.reply = {};
}

void eachScreen(WholeProgram& program, Blocks& blocks) {
    const std::pair<const char*, const char*> screens[] = {{"first visit of chemicals", "cmdChemicals"},
                                                           {"first visit of logs", "cmdLogs"},
                                                           {"first visit of patients", "cmdPatients"},
                                                           {"formulas again", "cmdFormulas"}};
    for (const auto& [action, screen] : screens) {
        blocks.click(action, "FormBar", screen);
        blocks.click("&nbsp; next record", "MainBar", "cmdNext");
        blocks.click("&nbsp; last record", "MainBar", "cmdLast");
        search(program, blocks);
        blocks.click("&nbsp; edit", "MainBar", "cmdEdit");
        blocks.click("&nbsp; cancel", "MainBar", "cmdCancel");
    }
    program.asker.reply = [](QWidget&) {};
    blocks.click("options dialog", "MainBar", "cmdOptions");
}

/// Each screen, and all that it prints and exports.
void seeAll(WholeProgram& program, Blocks& blocks) {
    QElapsedTimer day;
    day.start();
    blocks.measure(
        "the first five seconds, with the day's copy", [] {}, [&] { return day.hasExpired(5000); });
    eachScreen(program, blocks);
    acceptForms(program);
    blocks.press("FormBar", "cmdChemicals");
    previewTo(blocks, "chemicals report, all pages", "mnuReport");
    blocks.click("chemicals report to .xls", "mnuExport", "mnuReportx");
    blocks.press("FormBar", "cmdLogs");
    answerDates(program);
    previewTo(blocks, "log report, all pages", "mnuReport");
    blocks.click("log report to .xls", "mnuExport", "mnuReportx");
    previewTo(blocks, "jar report", "mnuJarReport");
    blocks.click("jar report to .xls", "mnuExport", "mnuJarReportx");
    previewTo(blocks, "formula log of a batch", "mnuFormulaLog");
    for (const auto& [action, labels] :
         {std::pair("500 labels of a batch", 500), std::pair("3,000 labels of a batch", 3000)}) {
        answerLabels(program, labels);
        previewTo(blocks, action, "mnuLabel");
    }
    answerDates(program);
    blocks.press("FormBar", "cmdPatients");
    blocks.press("MainBar", "cmdLast");
    previewTo(blocks, "report of a patient with 500 prescriptions", "mnuReport");
    blocks.press("FormBar", "cmdFormulas");
    blocks.press("MainBar", "cmdLast");
    previewTo(blocks, "worksheet", "mnuWorksheet");
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto given = [&](const char* word) {
        return std::any_of(argv + 1, argv + argc,
                           [&](const char* one) { return std::strcmp(one, word) == 0; });
    };
    const bool byProcessor = given("processor");
    Application application(argc, argv);
    platform::applyTheme(application, false);
    {
        WholeProgram program(rows, largeRecords);
        const auto keepLongest = [](qint64 block, const QString& event) { Blocks::note(block, event); };
        application.watchBlocks(-1, keepLongest, byProcessor ? Heartbeat::Clock(processorTime) : nullptr);
        Blocks blocks(program);
        std::printf("| action | longest block%s | in all | event of the block |\n|---|---|---|---|\n",
                    byProcessor ? ", processor" : "");
        if (!given("windows") && !given("rest"))
            seeAll(program, blocks);
        bench::sealOthers(blocks);
        if (!given("rest")) {
            bench::changeRecords(program, blocks);
            bench::openWindows(program, blocks);
            bench::changeLooks(application, program, blocks);
        }
        if (!given("windows"))
            bench::restOfTheWork(program, blocks);
    }
    if (!given("windows")) {
        WholeProgram program(rows, largeRecords, bench::fillJournal);
        Blocks blocks(program);
        bench::endTheProgram(program, blocks);
    }
    return 0;
}
