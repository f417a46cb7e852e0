// The record of one made batch, laid out like the worksheet but filled from the log.
#pragma once

#include "records/clsFormula.h"
#include "records/clsLog.h"
#include "reports/BatchSheet.h"

namespace sorvanto {

class rptLogFormula : public BatchSheet {
public:
    explicit rptLogFormula(Context& context);
    /// The batch; its frozen lines are the detail rows.
    void setLog(const clsLogPtr& log);
    /// The formula as it is now, for the instructions alone.
    void setFormula(const clsFormulaPtr& formula) { m_formula = formula; }

protected:
    void fillPageHeader() override;
    void groupHeaderFormat() override;
    void detailFormat() override;
    void groupFooterFormat() override;
    void pageFooterFormat() override;
    void terminate() override;

private:
    clsLogPtr m_log;
    clsFormulaPtr m_formula;
};

}  // namespace sorvanto
