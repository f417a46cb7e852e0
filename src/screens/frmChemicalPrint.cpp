// The list of all chemicals on paper or as a spreadsheet.
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/ReportRows.h"
#include "reports/rptChemicals.h"
#include "screens/frmChemical.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

namespace sorvanto {

void frmChemical::printChemicals(bool exportIt) {
    guarded("frmChemical:printChemicals", [&] {
        auto report = std::make_unique<rptChemicals>();
        report->setChemicals(chemicalRows());
        report->printerName = platform::deref(basMain::Options).DefPrinter();
        runReport(std::move(report), exportIt, "\\Chemicals.xls");
    });
}

}  // namespace sorvanto
