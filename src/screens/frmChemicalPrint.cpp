// The list of all chemicals on paper or as a spreadsheet.
#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptChemicals.h"
#include "screens/frmChemical.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

namespace sorvanto {

void frmChemical::printChemicals(bool exportIt) {
    guarded("frmChemical:printChemicals", [&] {
        const auto rows = platform::Recordset::create();
        rows->open("SELECT Chemical.chm_Name, Chemical.chm_Units, Chemical.chm_Lot, Chemical.chm_NDC, "
                   "Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_Notes, Chemical.chm_Form, "
                   "Chemical.chm_Supplier FROM Chemical ORDER BY chm_Name;",
                   openDB(), platform::CursorType::Forward, platform::LockType::ReadOnly);
        auto report = std::make_unique<rptChemicals>();
        report->setChemicals(rows);
        report->printerName = platform::deref(basMain::Options).DefPrinter();
        runReport(std::move(report), exportIt, "\\Chemicals.xls");
    });
}

}  // namespace sorvanto
