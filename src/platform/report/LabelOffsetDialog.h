// Moves the labels of one printer by a little, because no two printers draw their paper in alike. Prints a
// test sheet on plain paper, to be held against the stock.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <QDialog>
#include <QPoint>

class QComboBox;
class QDoubleSpinBox;

namespace platform {

class LabelOffsetDialog : public QDialog {
    Q_OBJECT
public:
    LabelOffsetDialog(const ReportDefinition& labels, const QString& printerName, QWidget* parent);

    void accept() override;

private:
    QWidget* buildCard();
    QLayout* buildButtons();
    QPoint offset() const;
    void showOffset();
    void printTestSheet();

    const ReportDefinition& m_labels;
    QComboBox* m_printer;
    QDoubleSpinBox *m_right, *m_down;
};

}  // namespace platform
