// The one question of a first start: the language. The first click is the answer.
#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

namespace Ui {
class frmWizard;
}

namespace sorvanto {

class frmWizard : public QDialog {
    Q_OBJECT
public:
    explicit frmWizard(QWidget* parent = nullptr);
    ~frmWizard() override;

    /// Number of the language, 0 until an option is clicked.
    std::int16_t Language() const { return m_language; }
    void Language(std::int16_t number) { m_language = number; }

private:
    void optLanguage_Click(std::int16_t index);

    std::unique_ptr<Ui::frmWizard> m_ui;
    std::int16_t m_language = 0;
};

}  // namespace sorvanto
