// The reports of the log screen over 32,000 batches of one formula: first page, all pages in the preview,
// PDF and spreadsheet; the jar report beside its bare statement; a run of 3,000 labels.
#include "platform/report/PreviewWindow.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Theme.h"
#include "reports/rptJarUsage.h"
#include "reports/rptLogAvery8160.h"
#include "reports/rptLogReport.h"
#include "shared/basMain.h"
#include "whole_program.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QFile>
#include <QPushButton>
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/resource.h>

using namespace sorvanto;
using bench::WholeProgram;

namespace {

constexpr int batches = 32'000;
constexpr int labels = 3'000;
const char* const oneFormula = "UPDATE Log SET FormulaID = 1;";

WholeProgram& program() {
    static auto* one = new WholeProgram(batches, oneFormula);  // ended by main
    return *one;
}

/// Dates that hold every batch.
void answerDates(QWidget& form) {
    form.findChild<QDateTimeEdit*>("dtBegin")->setDateTime(QDateTime({2000, 1, 1}, {0, 0}, Qt::UTC));
    form.findChild<QDateTimeEdit*>("dtEnd")->setDateTime(QDateTime({2030, 1, 1}, {0, 0}, Qt::UTC));
    form.findChild<QPushButton*>("cmdOK")->click();
}

/// 3,000 labels from the second row on.
void answerLabels(QWidget& form) {
    auto* box = form.findChild<platform::NumberBox*>("txtLabels");
    box->setText(QString::number(labels));
    emit box->valueEdited();
    form.findChild<QPushButton*>("cmdPosition_4")->click();
}

std::unique_ptr<platform::Report> logReport() {
    program().asker.reply = answerDates;
    auto report = std::make_unique<rptLogReport>(sorvanto::basMain::context());
    report->FormulaID(1);
    return report;
}

std::unique_ptr<platform::Report> jarReport() {
    program().asker.reply = answerDates;
    auto report = std::make_unique<rptJarUsage>(sorvanto::basMain::context());
    report->JarID(0);
    return report;
}

std::unique_ptr<platform::Report> labelRun() {
    const auto log = std::make_shared<clsLog>();
    log->openLog(1, QString());
    program().asker.reply = answerLabels;
    auto report = std::make_unique<rptLogAvery8160>(sorvanto::basMain::context());
    report->setLog(log);
    return report;
}

using MakeReport = std::unique_ptr<platform::Report> (*)();

void showPages(benchmark::State& state, int pages) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["pages"] = pages;
    state.counters["peakMB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

/// The dialog answered, the rows read, the first page painted.
void firstPage(benchmark::State& state, MakeReport make) {
    program();
    for (auto _ : state) {
        auto* window = platform::PreviewWindow::open(make());
        benchmark::DoNotOptimize(window->grab());
        state.PauseTiming();
        delete window;
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(firstPage, LogReport, logReport)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(firstPage, JarReport, jarReport)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(firstPage, Labels3000, labelRun)->Unit(benchmark::kMillisecond);

/// Until the preview holds every page.
void wholePreview(benchmark::State& state, MakeReport make) {
    program();
    int pages = 0;
    for (auto _ : state) {
        auto* window = platform::PreviewWindow::open(make());
        while (!window->isComplete())
            QCoreApplication::processEvents();
        pages = static_cast<int>(window->document().pages.size());
        state.PauseTiming();
        delete window;
        state.ResumeTiming();
    }
    showPages(state, pages);
}
BENCHMARK_CAPTURE(wholePreview, LogReport, logReport)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wholePreview, Labels3000, labelRun)->Unit(benchmark::kMillisecond);

void toPdf(benchmark::State& state, MakeReport make) {
    const QString path = program().folder().path() + "/report.pdf";
    int pages = 0;
    for (auto _ : state) {
        platform::ReportRun run(make());
        run.makeAll();
        platform::savePdf(run.document(), path);
        pages = static_cast<int>(run.document().pages.size());
    }
    state.counters["KB"] = static_cast<double>(QFile(path).size()) / 1024;
    showPages(state, pages);
}
BENCHMARK_CAPTURE(toPdf, LogReport, logReport)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(toPdf, Labels3000, labelRun)->Unit(benchmark::kMillisecond);

void toXls(benchmark::State& state, MakeReport make) {
    const QString path = program().folder().path() + "/report.xls";
    for (auto _ : state)
        platform::exportReport(make(), path);
    state.counters["KB"] = static_cast<double>(QFile(path).size()) / 1024;
    showPages(state, 0);
}
BENCHMARK_CAPTURE(toXls, LogReport, logReport)->Unit(benchmark::kMillisecond);

/// The same statement on the bare engine, every field read.
void bareStatement(benchmark::State& state, const char* statement) {
    sqlite3* handle = nullptr;
    sqlite3_open(program().folder().database().toUtf8().constData(), &handle);
    int rows = 0;
    for (auto _ : state) {
        sqlite3_stmt* prepared = nullptr;
        sqlite3_prepare_v2(handle, statement, -1, &prepared, nullptr);
        for (rows = 0; sqlite3_step(prepared) == SQLITE_ROW; ++rows)
            for (int field = 0; field < sqlite3_column_count(prepared); ++field)
                benchmark::DoNotOptimize(sqlite3_column_text(prepared, field));
        sqlite3_finalize(prepared);
    }
    sqlite3_close(handle);
    state.counters["rows"] = rows;
}
BENCHMARK_CAPTURE(
    bareStatement, LogReport,
    "SELECT log_Date, log_Lot, log_JarSize, log_Quantity, log_Cost, log_Initials, log_Verified, log_Name, "
    "log_FormType, log_Desc, log_Strength, log_NDC FROM Log WHERE FormulaID = 1 "
    "AND log_Date >= '2000-01-01 00:00:00' AND log_Date <= '2030-01-01 00:00:00'")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareStatement, JarReport,
                  "SELECT log_JarSize, count(log_JarSize) FROM Log WHERE log_Date >= '2000-01-01 00:00:00' "
                  "AND log_Date <= '2030-01-01 00:00:00' GROUP BY log_JarSize")
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    platform::applyTheme(application, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    delete &program();
    return 0;
}
