// The worksheet of the current formula screen: the batch as last made, without a question.
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "reports/ReportFlow.h"
#include "reports/rptFormula.h"
#include "screens/frmCurrFormula.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmCurrFormula.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void frmCurrFormula::printFormula() {
    guarded(u"frmCurrFormula:printFormula"_s, [&] {
        if (!m_formula) {
            platform::MsgBox(translated(u"No Formula selected!"_s));
            return;
        }
        auto report = std::make_unique<rptFormula>(m_context);
        report->printerName = defaultPrinter(m_context);
        const clsFormulaPtr copy = clsFormula().openFormula(m_formula->FormulaID, QString());
        platform::deref(copy).makeQuantity(m_formula->makeQuantity());
        report->setFormula(copy);
        runReport(std::move(report), false, QString());
    });
}

}  // namespace sorvanto
