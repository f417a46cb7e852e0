// The longest time that the interface stood still in each action, in a file of 32,000 rows in every table: nobody
// could type, and nothing was painted. Prints a table; the aim is under 50 ms each.
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
        std::printf("%-52s %8lld %10lld   %s\n", action, static_cast<long long>(longest),
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
    std::printf("%61ld MB of memory\n", memory());
    blocks.measure(
        "  its closing", [] { preview()->close(); }, [] { return !preview(); });
    std::printf("%61ld MB of memory\n", memory());
}

/// Takes the dates as they stand, and everything else by its default button.
void acceptForms(WholeProgram& program) {
    program.asker.reply = [](QWidget& form) { QTest::keyClick(&form, Qt::Key_Return); };
}

/// All records as hits, then the two first letters typed in their list.
void search(WholeProgram& program, Blocks& blocks) {
    program.asker.reply = [&blocks](QWidget& form) {
        Blocks::print("  search with all records as hits, to the list");
        auto* list = form.findChild<platform::RecordGrid*>();
        blocks.measure("  first letter in that list", [&] { QTest::keyClicks(list, u"z"_s); });
        blocks.measure("  second letter", [&] { QTest::keyClicks(list, u"z"_s); });
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
    for (const char* screen : {"cmdChemicals", "cmdLogs", "cmdPatients", "cmdFormulas"}) {
        blocks.click(screen, "FormBar", screen);
        blocks.click("  next record", "MainBar", "cmdNext");
        blocks.click("  last record", "MainBar", "cmdLast");
        search(program, blocks);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    platform::applyTheme(application, false);
    {
        WholeProgram program(rows, oneFormula);
        application.watchBlocks(-1, [](qint64 block, const QString& event) {
            if (block >= longest) {
                longest = block;
                longestEvent = event;
            }
        });
        Blocks blocks(program);
        std::printf("%-52s %8s %10s   %s\n", "action", "block ms", "in all ms", "event of the block");
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
    }
    return 0;
}
