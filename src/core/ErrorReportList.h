// A window beside the main one that lists all error reports of this run, newest first, with the full text
// of the chosen one. It blocks nothing.
#pragma once

#include <QDialog>
#include <memory>

class QPlainTextEdit;
class QPushButton;
class QTableWidget;

namespace sorvanto {

class ErrorReporter;

class ErrorReportList : public QDialog {
    Q_OBJECT

public:
    ErrorReportList(std::weak_ptr<ErrorReporter> reporter, QWidget* parent);
    /// Reads the reports anew; the chosen one stays chosen.
    void showReports();

private:
    void showChosen();
    void copyChosen();

    std::weak_ptr<ErrorReporter> m_reporter;
    QTableWidget* m_table;
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
};

}  // namespace sorvanto
