// How long the screens take over a file of 30,000 rows: moves, refreshes, the options dialog. Every figure
// includes the painting; the baselines are the bare repaint of the window and an empty dialog.
#include "platform/widgets/RecordGrid.h"
#include "platform/widgets/Theme.h"
#include "screens/BrowsingScreen.h"
#include "whole_program.h"

#include <QApplication>
#include <QDialog>
#include <QTabWidget>
#include <benchmark/benchmark.h>

using namespace sorvanto;
using bench::settle;
using bench::WholeProgram;

namespace {

constexpr int rows = 30'000;

/// The last formula gets 100 lines and 16 steps, the last patient 500 prescriptions.
const char* const largeRecords = R"(
UPDATE Formula SET frm_Name = 'zzz Hundred lines', frm_FormType = 9, frm_JarSize = 5, frm_Quantity = 100,
    frm_Mix = '<CustomMix PreGrind="2" FreeSpin="4">' || replace(hex(zeroblob(8)), '00',
        '<Mix LiftRPM="1200" MixRPM="600" MixTime="00:00:30" Cycles="0"/>'
        || '<Mix LiftRPM="480" MixRPM="1200" MixTime="00:00:00" Cycles="7"/>') || '</CustomMix>'
WHERE FormulaID = 30000;
DELETE FROM FormChem WHERE FormulaID = 30000;
INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active)
SELECT 30000, ChemicalID, 0.5 + ChemicalID % 40, 0, ChemicalID % 2 FROM Chemical WHERE ChemicalID <= 100;
UPDATE Patient SET pat_LName = 'zzz', pat_Phone = 'zzz' WHERE PatientID = 30000;
UPDATE RXs SET PatientID = 1 WHERE PatientID = 30000;
UPDATE RXs SET PatientID = 30000 WHERE RXsID <= 500;
)";

WholeProgram& program() {
    static auto* one = new WholeProgram(rows, largeRecords);  // ended by main
    return *one;
}

void move(benchmark::State& state, const char* screen, const char* start, const char* tool) {
    program().click("FormBar", screen);
    program().click("MainBar", start);
    for (auto _ : state)
        program().click("MainBar", tool);
}
BENCHMARK_CAPTURE(move, FormulasNext, "cmdFormulas", "cmdFirst", "cmdNext")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, FormulasPrevious, "cmdFormulas", "cmdLast", "cmdPrevious")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, ChemicalsNext, "cmdChemicals", "cmdFirst", "cmdNext")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, ChemicalsPrevious, "cmdChemicals", "cmdLast", "cmdPrevious")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, PatientsNext, "cmdPatients", "cmdFirst", "cmdNext")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, PatientsPrevious, "cmdPatients", "cmdLast", "cmdPrevious")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, LogsNext, "cmdLogs", "cmdFirst", "cmdNext")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(move, LogsPrevious, "cmdLogs", "cmdLast", "cmdPrevious")->Unit(benchmark::kMillisecond);

void repaintOfWindow(benchmark::State& state) {
    program().click("FormBar", "cmdFormulas");
    for (auto _ : state)
        program().window().repaint();
}
BENCHMARK(repaintOfWindow)->Unit(benchmark::kMillisecond);

/// The last record of a screen shown again, with that tab in front.
void refresh(benchmark::State& state, const char* tool, ScreenNumber number, int tab) {
    program().click("FormBar", tool);
    program().click("MainBar", "cmdLast");
    auto& screen = dynamic_cast<BrowsingScreen&>(*program().window().screen(number));
    screen.findChild<QTabWidget*>()->setCurrentIndex(tab);
    settle();
    for (auto _ : state) {
        screen.refreshForm();
        settle();
    }
    int shown = 0;
    for (const auto* grid : screen.findChildren<platform::RecordGrid*>())
        shown += grid->model()->rowCount();
    state.counters["lines"] = shown;
    screen.findChild<QTabWidget*>()->setCurrentIndex(0);
}
BENCHMARK_CAPTURE(refresh, Formula100LinesGeneral, "cmdFormulas", formulas, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, Formula100LinesIngredients, "cmdFormulas", formulas, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, Formula16StepsMix, "cmdFormulas", formulas, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(refresh, Patient500Prescriptions, "cmdPatients", patients, 1)
    ->Unit(benchmark::kMillisecond);

/// Read from the file as well: the tool that goes to the last record.
void openPatientOf500(benchmark::State& state) {
    program().click("FormBar", "cmdPatients");
    auto& screen = *program().window().screen(patients);
    screen.findChild<QTabWidget*>()->setCurrentIndex(1);
    for (auto _ : state)
        program().click("MainBar", "cmdLast");
    screen.findChild<QTabWidget*>()->setCurrentIndex(0);
}
BENCHMARK(openPatientOf500)->Unit(benchmark::kMillisecond);

void optionsDialog(benchmark::State& state) {
    program().click("FormBar", "cmdFormulas");
    for (auto _ : state)
        program().click("MainBar", "cmdOptions");
}
BENCHMARK(optionsDialog)->Unit(benchmark::kMillisecond);

void emptyDialog(benchmark::State& state) {
    for (auto _ : state) {
        QDialog dialog(&program().window());
        dialog.resize(640, 560);
        program().asker.showModal(dialog, {});
    }
}
BENCHMARK(emptyDialog)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    platform::applyTheme(application, false);
    benchmark::Initialize(&argc, argv);
    program();  // before anything is measured
    benchmark::RunSpecifiedBenchmarks();
    delete &program();
    return 0;
}
