// The question for the two dates of a report. Closing it by its box goes on with the dates shown.
#pragma once

#include "platform/widgets/ModalForm.h"

#include <QDateTime>
#include <memory>

namespace Ui {
class frmReportDate;
}

namespace sorvanto {

class frmReportDate : public platform::ModalForm {
    Q_OBJECT

public:
    explicit frmReportDate(QWidget* parent = nullptr);
    ~frmReportDate() override;

    bool cancelled() const { return m_cancelled; }
    /// The time of day of the moment the dialog opened stays in both.
    QDateTime beginDate() const;
    QDateTime endDate() const;

private:
    void Form_Load();
    void translateForm();
    void cmdOK_Click();
    void cmdCancel_Click();

    std::unique_ptr<Ui::frmReportDate> m_ui;
    bool m_cancelled = false;
};

}  // namespace sorvanto
