// The current formula screen: the one formula that is going to the mixer. Edits nothing, has no set to
// walk over and asks nothing at closing. A search here goes straight on to the quantity question.
#pragma once

#include "records/clsFormula.h"
#include "screens/RecordFields.h"
#include "shared/RecordScreen.h"

#include <memory>

namespace Ui {
class frmCurrFormula;
}

namespace sorvanto {

class frmCurrFormula : public RecordScreen {
    Q_OBJECT

public:
    explicit frmCurrFormula(Context& context, QWidget* parent = nullptr);
    ~frmCurrFormula() override;

    void Form_Load() override;
    /// The object on display, empty until a first formula is given. Setting it refreshes nothing.
    const clsFormulaPtr& Formula() const { return m_formula; }
    void Formula(const clsFormulaPtr& formula) { m_formula = formula; }

    void m_frmMain_btnClick(const QString& toolName, const QString& searchText) override;
    void refreshForm();
    /// Asks the quantity, scales a fresh copy and hands its document to the mixer.
    void makeFormula();
    void searchFormula(const QString& searchText);
    /// Previews the worksheet of the batch as last made.
    void printFormula();

protected:
    void setMenuOptions() override;

private:
    void addTools();
    void translateForm();

    std::unique_ptr<Ui::frmCurrFormula> m_ui;
    clsFormulaPtr m_formula;
    RecordFields<clsFormula> m_fields;
};

}  // namespace sorvanto
