// The strip in the main window that tells what failed, in a sentence: of several reports that one click leads to the
// first, since the others are its consequences. It never asks and never blocks, and goes by itself after a minute;
// "Details" opens the list of all problems of this run, which the button for the status bar opens as well.
#pragma once

#include "shared/ErrorReporter.h"

#include <QFrame>
#include <QPointer>
#include <QTimer>
#include <chrono>

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
    /// How long a report is shown unless it is put aside before; a minute from the start.
    void setStay(std::chrono::milliseconds stay) { m_stay.setInterval(stay); }
    /// Tells how many problems there were and opens their list; on show once the strip has gone.
    QPushButton* problemsButton() const { return m_problems; }

signals:
    void shownChanged(bool shown);

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showReport(const ErrorReport& report);
    void openList();
    void dismiss();
    void endClick();
    void endStay();
    void showTexts();
    void fitHeight();

    std::weak_ptr<ErrorReporter> m_reporter;
    QLabel* m_picture;
    QLabel* m_text;
    QPushButton* m_details;
    QToolButton* m_close;
    QPointer<QPushButton> m_problems;
    ErrorReport m_shown;
    QPointer<ErrorReportList> m_list;
    QTimer m_stay;
    QTimer m_click;           ///< runs while what one click began goes on
    int m_ofThisClick = 0;    ///< reports so far
    bool m_userActs = false;  ///< what is going on began with a click or a key
};

}  // namespace sorvanto
