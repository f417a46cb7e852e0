// The strip in the main window that shows an error report: of several that one click leads to the first, since the
// others are its consequences. It never asks and never blocks; "Details" opens the list of all reports of this run.
#pragma once

#include "shared/ErrorReporter.h"

#include <QFrame>
#include <QPointer>
#include <QTimer>

class QLabel;
class QPushButton;
class QToolButton;

namespace sorvanto {

class ErrorReportList;

class ErrorStrip : public QFrame {
    Q_OBJECT

public:
    explicit ErrorStrip(QWidget* parent = nullptr);
    /// From now on shows new reports. A report that repeats one of this run is not shown again.
    void follow(const std::shared_ptr<ErrorReporter>& reporter);

signals:
    void shownChanged(bool shown);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showReport(const ErrorReport& report);
    void openList();
    void dismiss();
    void endClick();
    void showCount();

    std::weak_ptr<ErrorReporter> m_reporter;
    QLabel* m_picture;
    QLabel* m_text;
    QPushButton* m_details;
    QToolButton* m_close;
    QPointer<ErrorReportList> m_list;
    QTimer m_click;         ///< runs while what one click began goes on
    int m_ofThisClick = 0;  ///< reports so far
};

}  // namespace sorvanto
