// How long the record classes take, each beside the bare statement of the engine where there is one.
#include "platform/ask/Ask.h"
#include "platform/widgets/RecordGrid.h"
#include "records/FormulaLines.h"
#include "records/ListTypeAhead.h"
#include "records/SigningDialog.h"
#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "records_data.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <benchmark/benchmark.h>

using namespace sorvanto;

namespace {

bench::Pharmacy& pharmacy() {
    static auto* one = new bench::Pharmacy;  // ends with the process
    return *one;
}

/// Shows a modal window, lets it paint, and cancels it.
class CancellingAsker : public platform::Asker {
public:
    platform::Answer messageBox(const QString&, platform::BoxStyle, const QString&) override {
        return platform::Answer::Cancel;
    }
    QString inputBox(const QString&, const QString&, const QString&, const platform::LineGuide&) override {
        return {};
    }
    QString openFile(const QString&, const QString&) override { return {}; }
    void showModal(QObject& window, const std::function<void()>&) override {
        auto& form = dynamic_cast<QWidget&>(window);
        form.show();
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(form.grab());
        form.hide();
    }
};

class Signed : public SigningDialog {
public:
    void setFormula(const platform::XmlDocumentPtr&) override {
        m_formula = clsFormula().openFormula(bench::formula30, QString());
        m_formula->makeQuantity(250);
    }
    void log_Lot(const QString&) override {}
    void showModal() override {}
    clsFormulaPtr getFormula() override { return m_formula; }
    QString initials() const override { return "AB"; }
    QString verified() const override { return "CD"; }

private:
    clsFormulaPtr m_formula;
};

void openFormulaOf100Lines(benchmark::State& state) {
    pharmacy();
    for (auto _ : state)
        benchmark::DoNotOptimize(clsFormula().openFormula(bench::formula100, QString()));
}
BENCHMARK(openFormulaOf100Lines)->Unit(benchmark::kMicrosecond);

void bareListOf100Lines(benchmark::State& state) {
    for (auto _ : state)
        pharmacy().bare(
            "SELECT * FROM Chemical INNER JOIN FormChem ON Chemical.ChemicalID = FormChem.ChemicalID "
            "WHERE FormChem.FormulaID = 2");
}
BENCHMARK(bareListOf100Lines)->Unit(benchmark::kMicrosecond);

void costSumOf100Lines(benchmark::State& state) {
    pharmacy();
    for (auto _ : state)
        benchmark::DoNotOptimize(readTotals(bench::formula100));
}
BENCHMARK(costSumOf100Lines)->Unit(benchmark::kMicrosecond);

void bareCostSumOf100Lines(benchmark::State& state) {
    for (auto _ : state)
        pharmacy().bare(
            "SELECT SUM(chm_Cost * fch_Qty), SUM(chm_AWP * fch_Qty) FROM Chemical INNER JOIN FormChem "
            "ON Chemical.ChemicalID = FormChem.ChemicalID WHERE FormulaID = 2");
}
BENCHMARK(bareCostSumOf100Lines)->Unit(benchmark::kMicrosecond);

void makeQuantityOf1000Lines(benchmark::State& state) {
    pharmacy();
    for (auto _ : state) {
        state.PauseTiming();
        const auto formula = clsFormula().openFormula(bench::formula1000, QString());
        state.ResumeTiming();
        formula->makeQuantity(333);
    }
}
BENCHMARK(makeQuantityOf1000Lines)->Unit(benchmark::kMicrosecond);

void logBatchOf30Lines(benchmark::State& state) {
    pharmacy();
    makeSigningDialog = [] { return std::make_unique<Signed>(); };
    const auto formula = bench::parsed("<Formula><ID>1</ID></Formula>");
    const auto results = bench::parsed("<Results Value=\"AB\"><PreparationNumber Value=\"0001\"/>"
                                       "<HardwareVersion Value=\"1.0\"/></Results>");
    for (auto _ : state)
        if (!clsLog().addLog(formula, results))
            state.SkipWithError("not logged");
    pharmacy().run("DELETE FROM Log WHERE LogID > 32000");
}
BENCHMARK(logBatchOf30Lines)->Unit(benchmark::kMillisecond);

/// 31 statements, each on the disk before the next, as a batch without a transaction needs.
void bareBatchOf30Lines(benchmark::State& state) {
    for (auto _ : state) {
        pharmacy().run("INSERT INTO Log (log_Name, log_Date) VALUES ('Bare', '2026-01-01 00:00:00')");
        for (int line = 0; line < 30; ++line)
            pharmacy().run("INSERT INTO LogChem (LogID, lch_Name) SELECT MAX(LogID), 'Line' FROM Log");
    }
    pharmacy().run("DELETE FROM Log WHERE LogID > 32000");
}
BENCHMARK(bareBatchOf30Lines)->Unit(benchmark::kMillisecond);

/// From the search text to the painted list.
void logSearchToList(benchmark::State& state, const char* text) {
    pharmacy();
    for (auto _ : state)
        clsLog().openLog(0, text);
}
BENCHMARK_CAPTURE(logSearchToList, Hits1200, "Gel Few")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(logSearchToList, Hits32000, "Gel")->Unit(benchmark::kMillisecond);

void bareLogSearch(benchmark::State& state, const char* statement) {
    for (auto _ : state)
        pharmacy().bare(statement);
}
BENCHMARK_CAPTURE(bareLogSearch, Hits1200,
                  "SELECT * FROM Log WHERE log_Name LIKE 'Gel Few%' ORDER BY log_Date DESC")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareLogSearch, Hits32000,
                  "SELECT * FROM Log WHERE log_Name LIKE 'Gel%' ORDER BY log_Date DESC")
    ->Unit(benchmark::kMillisecond);

/// The first letter typed in the list of 32,000 hits: every row is read once.
void firstKeyAmong32000(benchmark::State& state) {
    pharmacy();
    const auto rows = platform::Recordset::create();
    rows->open("SELECT LogID, log_Lot, log_Name FROM Log ORDER BY log_Date DESC", openDB(),
               platform::LockType::Pessimistic);
    const QKeyEvent key(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, "z");
    for (auto _ : state) {
        ListTypeAhead typeAhead;
        typeAhead.setRows(rows, 1);
        benchmark::DoNotOptimize(typeAhead.takeKey(key, 0));
    }
}
BENCHMARK(firstKeyAmong32000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    CancellingAsker asker;
    platform::setAsker(&asker);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
