// The question for the two dates of a report. Closing it by its box goes on with the dates shown; Esc is Cancel.
#pragma once

#include "platform/widgets/ModalForm.h"

#include <QDateTime>
#include <memory>

class QDateTimeEdit;

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

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Form_Load();
    /// Wide enough for every date and time in the system's manner.
    static void widen(QDateTimeEdit& picker);
    void translateForm();
    void cmdOK_Click();
    void cmdCancel_Click();
    /// The end of today: 0:00 of tomorrow.
    void cmdToday_Click();

    std::unique_ptr<Ui::frmReportDate> m_ui;
    bool m_cancelled = false;
};

}  // namespace sorvanto
