// Speed and memory of reports. Each figure that has a baseline stands beside it: the same texts drawn with a
// bare painter, the same cells written by a library for the newer spreadsheet format.
#include "platform/report/PagePainter.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportOutput.h"
#include "platform/report/ReportRun.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/report/TextMeasure.h"
#include "platform/report/XlsWorkbook.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#ifdef HAS_XLSXWRITER
#include <xlsxwriter.h>
#endif

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

constexpr int pages = 1000;
constexpr int rowsOfPage = 26;

/// A list of eight columns, 26 rows a page, with headings, rules and a footer: what a log report holds.
class WideList : public Report {
public:
    explicit WideList(int rows) : Report(layout()), m_left(rows) {}

    static ReportDefinition layout() {
        ReportDefinition d;
        d.name = "WideList";
        d.font = {"Times New Roman", 9};
        std::vector<Control> head, cells;
        for (int column = 0; column < 8; ++column) {
            head.push_back(
                label(u"head%1"_s.arg(column), column * 1350, 990, 1260, 270, u"Column %1"_s.arg(column)));
            cells.push_back(field(u"cell%1"_s.arg(column), column * 1350, 90, 1260, 270));
        }
        cells[7].right();
        head.push_back(label("title", 0, 0, 9000, 360, "A list of many rows").bold().points(14.5));
        head.push_back(line("rule", 0, 1260, 10800));
        cells.push_back(line("under", 0, 450, 10800));
        d.sections = {{SectionKind::PageHeader, 1275, head},
                      {SectionKind::Detail, 450, cells},
                      {SectionKind::PageFooter, 630, {field("page", 7650, 270, 2430, 270).right()}}};
        return d;
    }

    void fetchData(bool& eof) override { eof = m_left-- <= 0; }
    void detailFormat() override {
        const QString number = QString::number(m_left);
        for (int column = 0; column < 7; ++column)
            setText(m_names[column], u"Row "_s + number);
        setValue(m_names[7], m_left * 0.25, u"#0.00"_s);
    }
    void pageFooterFormat() override { setText(u"page"_s, u"Page %1"_s.arg(pageNumber())); }

private:
    int m_left;
    QStringList m_names{"cell0", "cell1", "cell2", "cell3", "cell4", "cell5", "cell6", "cell7"};
};

void reportMemory(benchmark::State& state) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["peakMB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

void layOut(benchmark::State& state) {
    for (auto _ : state) {
        ReportRun run(std::make_unique<WideList>(pages * rowsOfPage));
        run.makeAll();
        benchmark::DoNotOptimize(run.document().pages.size());
    }
    state.counters["pages/s"] = benchmark::Counter(pages, benchmark::Counter::kIsIterationInvariantRate);
    reportMemory(state);
}

void reportToPdf(benchmark::State& state) {
    const QTemporaryDir folder;
    for (auto _ : state) {
        ReportRun run(std::make_unique<WideList>(pages * rowsOfPage));
        run.makeAll();
        savePdf(run.document(), folder.filePath("a.pdf"));
    }
    state.counters["pages/s"] = benchmark::Counter(pages, benchmark::Counter::kIsIterationInvariantRate);
    state.counters["KB"] = static_cast<double>(QFile(folder.filePath("a.pdf")).size()) / 1024;
    reportMemory(state);
}

/// The baseline: the same texts at the same places by a bare painter, nothing laid out.
void plainTextsToPdf(benchmark::State& state) {
    const QTemporaryDir folder;
    ReportRun run(std::make_unique<WideList>(pages * rowsOfPage));
    run.makeAll();
    const PageDocument& document = run.document();
    for (auto _ : state) {
        QPdfWriter writer(folder.filePath("b.pdf"));
        writer.setResolution(1440);
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF()));
        QPainter painter(&writer);
        painter.setFont(reportFont(document.definition.font));
        for (std::size_t i = 0; i < document.pages.size(); ++i) {
            if (i > 0)
                writer.newPage();
            for (const TextRun& text : document.pages[i].runs)
                painter.drawText(QPointF(text.x, text.baseline), text.text);
        }
    }
    state.counters["pages/s"] = benchmark::Counter(pages, benchmark::Counter::kIsIterationInvariantRate);
    reportMemory(state);
}

void firstPageOnScreen(benchmark::State& state) {
    for (auto _ : state) {
        auto* window = PreviewWindow::open(std::make_unique<WideList>(pages * rowsOfPage));
        benchmark::DoNotOptimize(window->grab());
        state.PauseTiming();
        delete window;
        state.ResumeTiming();
    }
}

constexpr int sheetRows = 30'000, sheetColumns = 8;

QString cellText(int row, int column) {
    return column % 2 ? u"Text %1"_s.arg(row % 500) : u"Lot %1-%2"_s.arg(row).arg(column);
}

void xlsCells(benchmark::State& state) {
    const QTemporaryDir folder;
    for (auto _ : state) {
        XlsWorkbook book(u"Sheet"_s);
        for (int row = 0; row < sheetRows; ++row) {
            for (int column = 0; column < sheetColumns; ++column) {
                if (column < 4)
                    book.addText(row, column, 0, cellText(row, column));
                else
                    book.addNumber(row, column, 0, row * 0.37 + column);
            }
        }
        QFile file(folder.filePath("a.xls"));
        if (!file.open(QIODevice::WriteOnly))
            state.SkipWithError("no file");
        file.write(book.bytes());
    }
    state.counters["rows/s"] = benchmark::Counter(sheetRows, benchmark::Counter::kIsIterationInvariantRate);
    reportMemory(state);
}

#ifdef HAS_XLSXWRITER
void xlsxLibraryCells(benchmark::State& state) {
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath("b.xlsx").toUtf8();
    for (auto _ : state) {
        lxw_workbook* book = workbook_new(path.constData());
        lxw_worksheet* sheet = workbook_add_worksheet(book, "Sheet");
        for (int row = 0; row < sheetRows; ++row) {
            for (int column = 0; column < sheetColumns; ++column) {
                if (column < 4)
                    worksheet_write_string(sheet, row, column, cellText(row, column).toUtf8().constData(),
                                           nullptr);
                else
                    worksheet_write_number(sheet, row, column, row * 0.37 + column, nullptr);
            }
        }
        workbook_close(book);
    }
    state.counters["rows/s"] = benchmark::Counter(sheetRows, benchmark::Counter::kIsIterationInvariantRate);
    reportMemory(state);
}
BENCHMARK(xlsxLibraryCells)->Unit(benchmark::kMillisecond);
#endif

/// The whole way of an export: report, layout, file.
void reportToXls(benchmark::State& state) {
    for (auto _ : state) {
        ReportRun run(std::make_unique<WideList>(sheetRows));
        run.makeAll();
        benchmark::DoNotOptimize(spreadsheet(run.document()));
    }
    state.counters["rows/s"] = benchmark::Counter(sheetRows, benchmark::Counter::kIsIterationInvariantRate);
    reportMemory(state);
}

BENCHMARK(xlsCells)->Unit(benchmark::kMillisecond);
BENCHMARK(firstPageOnScreen)->Unit(benchmark::kMillisecond);
BENCHMARK(plainTextsToPdf)->Unit(benchmark::kMillisecond);
BENCHMARK(layOut)->Unit(benchmark::kMillisecond);
BENCHMARK(reportToPdf)->Unit(benchmark::kMillisecond);
BENCHMARK(reportToXls)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    applyTheme(application, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
