// The question for the number of labels and the first free position of the sheet. Pressing a position
// is the acceptance; closing by the box prints nothing.
#pragma once

#include "platform/widgets/ModalForm.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

class QPushButton;

namespace Ui {
class frmSelPrint;
}

namespace sorvanto {

struct Context;

class frmSelPrint : public platform::ModalForm {
    Q_OBJECT

public:
    explicit frmSelPrint(Context& context, QWidget* parent = nullptr);
    ~frmSelPrint() override;

    /// 1 to 32,767 as typed. More has no room in 16 bits: the box says so, and no position takes it.
    std::int16_t NumLabels() const { return m_numLabels; }
    /// Counted from 1; both 0 after the close box.
    std::int16_t Row() const { return m_row; }
    std::int16_t Column() const { return m_column; }

protected:
    void onActivate() override;
    void onCloseBox() override;

private:
    void Form_Load();
    void translateForm();
    void AddControl(int column, int row);
    void txtLabels_Change();
    /// Whether more labels are typed than 16 bits hold; the box then says so.
    bool refuseTooMany();
    void cmdPosition_Click(const QString& tag);

    Context& m_context;
    std::unique_ptr<Ui::frmSelPrint> m_ui;
    std::vector<QPushButton*> cmdPosition;  ///< members 1 to 30; member 0 is the design's own, never shown
    std::int16_t m_numLabels = 0, m_row = 0, m_column = 0;
};

}  // namespace sorvanto
