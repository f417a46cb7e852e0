// The worksheet of the formula screen: the quantity is asked first, the stored formula is printed.
#include "mixing/frmMake.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptFormula.h"
#include "screens/frmFormula.h"
#include "shared/Guard.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmFormula::printFormula(bool exportIt) {
    guarded(u"frmFormula:printFormula"_s, [&] {
        const clsFormulaPtr copy = clsFormula().openFormula(platform::deref(m_formula).FormulaID, QString());
        double quantity = 0;
        {
            frmMake question;
            question.MakeQty(platform::deref(copy).frm_Quantity);
            question.setFormula(*copy);
            question.printWorksheet(true);
            question.showModal();
            quantity = question.MakeQty();
        }
        if (quantity > 0) {
            auto report = std::make_unique<rptFormula>(m_context);
            report->printerName = defaultPrinter(m_context);
            copy->makeQuantity(platform::toInt16(quantity));
            report->setFormula(copy);
            runReport(std::move(report), exportIt, u"\\Worksheet.xls"_s);
        }
        refreshForm();
    });
}

}  // namespace sorvanto
