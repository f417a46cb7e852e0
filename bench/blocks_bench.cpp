// The longest time that the interface stood still in each action, in a file of 32,000 rows in every table: nobody
// could type, and nothing was painted. Prints a table; the aim is under 50 ms each.
//   bench_blocks [processor]     milliseconds by the clock, or of a processor, where the machine has other work
#include "core/Application.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/Theme.h"
#include "whole_program.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using bench::WholeProgram;

namespace {

constexpr int rows = 32'000;
constexpr qint64 patience = 60'000;  // milliseconds

qint64 longest = 0;
QElapsedTimer all;
QString longestEvent;

/// One formula has all batches.
const char* const oneFormula = "UPDATE Log SET FormulaID = 1;";

class Blocks {
public:
    explicit Blocks(WholeProgram& program) : m_program(program) {}

    /// Runs the work as an event, then the loop until it is over and nothing is left to do for a while.
    void measure(const char* action, const std::function<void()>& work,
                 const std::function<bool()>& over = {}) {
        settleDown();
        begin();
        bool done = false;
        QTimer::singleShot(0, &m_loop, [&] {
            work();
            done = true;
        });
        while ((!done || (over && !over())) && all.elapsed() < patience)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        print(action);
        settleDown();
    }
    static void begin() {
        longest = 0;
        all.start();
    }
    static void print(const char* action) {
        std::printf("| %s | %lld ms | %lld ms | %s |\n", action, static_cast<long long>(longest),
                    static_cast<long long>(all.elapsed()), qPrintable(longestEvent));
        std::fflush(stdout);
    }
    static void settleDown() {
        const QDeadlineTimer end(250);
        while (!end.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    void click(const char* action, const char* band, const char* tool) {
        measure(action, [this, band, tool] { press(band, tool); });
    }
    void press(const char* band, const char* tool) {
        auto& window = m_program.window();
        window.ActiveBar_ToolClick(window.bar().band(QLatin1String(band)).tool(QLatin1String(tool)));
    }

private:
    WholeProgram& m_program;
    QObject m_loop;
};

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

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const bool byProcessor = argc > 1 && std::strcmp(argv[1], "processor") == 0;
    Application application(argc, argv);
    platform::applyTheme(application, false);
    {
        WholeProgram program(rows, oneFormula);
        const auto keepLongest = [](qint64 block, const QString& event) {
            if (block >= longest) {
                longest = block;
                longestEvent = event;
            }
        };
        application.watchBlocks(-1, keepLongest, byProcessor ? Heartbeat::Clock(processorTime) : nullptr);
        Blocks blocks(program);
        std::printf("| action | longest block%s | in all | event of the block |\n|---|---|---|---|\n",
                    byProcessor ? ", processor" : "");
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
        previewTo(blocks, "log report, all pages", "mnuReport");
        blocks.click("log report to .xls", "mnuExport", "mnuReportx");
        previewTo(blocks, "jar report", "mnuJarReport");
        blocks.click("jar report to .xls", "mnuExport", "mnuJarReportx");
    }
    return 0;
}
