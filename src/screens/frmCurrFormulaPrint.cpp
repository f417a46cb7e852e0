// The worksheet of the current formula screen: the batch as last made, without a question.
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptFormula.h"
#include "screens/frmCurrFormula.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmCurrFormula.h"

namespace sorvanto {

void frmCurrFormula::printFormula() {
    guarded("frmCurrFormula:printFormula", [&] {
        if (!m_formula) {
            platform::MsgBox(translated("No Formula selected!"));
            return;
        }
        auto report = std::make_unique<rptFormula>();
        report->printerName = defaultPrinter();
        const clsFormulaPtr copy = clsFormula().openFormula(m_formula->FormulaID, QString());
        platform::deref(copy).makeQuantity(m_formula->makeQuantity());
        report->setFormula(copy);
        runReport(std::move(report), false, QString());
    });
}

}  // namespace sorvanto
