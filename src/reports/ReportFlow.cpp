#include "reports/ReportFlow.h"

#include "platform/basic/Paths.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/ReportHooks.h"
#include "platform/report/SpreadsheetExport.h"
#include "reports/rptFormula.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

namespace sorvanto {

namespace {

/// Files beside the program are its user's alone; one under a name of his own choice is what his customs make it.
QString noteOfSaved(const QString& report) {
    const bool namesPatients = report == "rptPatient" || report == "rptRX8160";
    return namesPatients ? translated("The saved file names patients. Keep it where nobody else reads it.")
                         : QString();
}

// What fails while pages are made after the print command has ended goes the one failure path.
void preview(std::unique_ptr<platform::Report> report) {
    platform::setReportFailureHandler([] { reportCurrentError("ReportFlow:preview"); });
    platform::setSavedNote(noteOfSaved);
    platform::PreviewWindow::open(std::move(report));
}

}  // namespace

void runReport(std::unique_ptr<platform::Report> report, bool exportIt, const QString& exportName) {
    if (exportIt)
        platform::exportReport(std::move(report), platform::programFolder() + exportName);
    else
        preview(std::move(report));
}

void showWorksheet(const clsFormulaPtr& formula) {
    auto report = std::make_unique<rptFormula>();
    report->setFormula(formula);
    runReport(std::move(report), false, QString());
}

}  // namespace sorvanto
