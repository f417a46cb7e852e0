#include "reports/ReportFlow.h"

#include "platform/basic/Paths.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/SpreadsheetExport.h"
#include "reports/rptFormula.h"

namespace sorvanto {

void runReport(std::unique_ptr<platform::Report> report, bool exportIt, const QString& exportName) {
    if (exportIt)
        platform::exportReport(std::move(report), platform::programFolder() + exportName);
    else
        platform::PreviewWindow::open(std::move(report));
}

void showWorksheet(const clsFormulaPtr& formula) {
    auto report = std::make_unique<rptFormula>();
    report->setFormula(formula);
    runReport(std::move(report), false, QString());
}

}  // namespace sorvanto
