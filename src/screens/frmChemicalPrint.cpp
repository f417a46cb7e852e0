// The list of all chemicals on paper or as a spreadsheet.
#include "reports/ReportFlow.h"
#include "reports/ReportRows.h"
#include "reports/rptChemicals.h"
#include "screens/frmChemical.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmChemical::printChemicals(bool exportIt) {
    guarded(u"frmChemical:printChemicals"_s, [&] {
        const platform::RecordsetPtr chemicals = chemicalRows(m_context);
        if (!chemicals)
            return;
        auto report = std::make_unique<rptChemicals>(m_context);
        report->setChemicals(chemicals);
        report->printerName = defaultPrinter(m_context);
        runReport(std::move(report), exportIt, u"\\Chemicals.xls"_s);
    });
}

}  // namespace sorvanto
