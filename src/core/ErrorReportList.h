// A window beside the main one that lists the problems of this run, newest first, each in a sentence, with the
// technical text of the chosen one. It blocks nothing.
#pragma once

#include <QDialog>
#include <memory>

class QPlainTextEdit;
class QPushButton;
class QTableWidget;

namespace sorvanto {

class ErrorReporter;
struct ErrorReport;

class ErrorReportList : public QDialog {
    Q_OBJECT

public:
    ErrorReportList(std::weak_ptr<ErrorReporter> reporter, QWidget* parent);
    /// Reads the reports anew; the chosen one stays chosen.
    void showReports();

private:
    /// Of the row that is chosen; nothing without one. Held by the reporter.
    const ErrorReport* chosen(const std::shared_ptr<ErrorReporter>& reporter) const;
    void showChosen();
    void copyChosen();

    std::weak_ptr<ErrorReporter> m_reporter;
    QTableWidget* m_table;
    QPlainTextEdit* m_text;
    QPushButton* m_copy;
};

}  // namespace sorvanto
