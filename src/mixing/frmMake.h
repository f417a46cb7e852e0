// The question of how much to make, with the tick for a worksheet. Lives for one question.
#pragma once

#include "platform/widgets/ModalForm.h"
#include "records/clsFormula.h"

#include <memory>

namespace Ui {
class frmMake;
}

namespace sorvanto {

class frmMake : public platform::ModalForm {
    Q_OBJECT

public:
    explicit frmMake(QWidget* parent = nullptr);
    ~frmMake() override;

    /// Quantity accepted, 0 when cancelled. Setting it also shows it in the box.
    double MakeQty() const { return m_quantity; }
    void MakeQty(double quantity);
    /// Whether a worksheet is wanted; false at first. Setting it also ticks the box.
    bool printWorksheet() const { return m_printWorksheet; }
    void printWorksheet(bool wanted);

    /// Names the formula that the question is about, with its base batch.
    void setFormula(const clsFormula& formula);

protected:
    void onActivate() override;
    void onCloseBox() override { CancelButton_Click(); }

private:
    void translateForm();
    void OKButton_Click();
    void CancelButton_Click();

    std::unique_ptr<Ui::frmMake> m_ui;
    double m_quantity = 0;
    bool m_printWorksheet = false;
};

/// What was said to the question: whether the formula is to be made, and whether with a worksheet.
struct QuantityAnswer {
    bool make = false;
    bool worksheet = false;
};
/// Asks how much of the formula to make, its base batch being proposed, and scales it to that.
QuantityAnswer askQuantity(clsFormula& formula, QWidget* parent = nullptr);

}  // namespace sorvanto
