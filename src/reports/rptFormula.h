// The worksheet for the bench: quantity to make, ingredients at that quantity, blanks to fill in by hand.
#pragma once

#include "records/clsFormula.h"
#include "reports/BatchSheet.h"

namespace sorvanto {

class rptFormula : public BatchSheet {
public:
    explicit rptFormula(Context& context);
    /// The scaled formula; its lines are the detail rows.
    void setFormula(const clsFormulaPtr& formula);

protected:
    void fillPageHeader() override;
    void groupHeaderFormat() override;
    /// Throws divisionByZero for a base batch of 0.
    void detailFormat() override;
    void groupFooterFormat() override;
    void terminate() override;

private:
    clsFormulaPtr m_formula;
};

}  // namespace sorvanto
