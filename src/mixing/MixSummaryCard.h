// The quiet block of the signing dialog: which batch it is, and what was planned beside what was done.
#pragma once

#include "mixer/MixSummary.h"

#include <QFrame>

class QGridLayout;
class QLabel;

namespace sorvanto {

class MixSummaryCard : public QFrame {
    Q_OBJECT

public:
    explicit MixSummaryCard(QWidget* parent = nullptr);

    void setBatch(const QString& line);
    /// What is not known shows a dash.
    void setSummary(const MixSummary& summary);

private:
    QLabel* cell(QGridLayout& grid, int row, int column, const QString& name);
    void addCaption(QGridLayout& grid, int row, const QString& caption);

    QLabel* m_batch;
    struct Column {
        QLabel *steps, *time, *revolutions;
    };
    static void show(const Column& column, const MixSummary::Side& side);
    Column m_planned, m_done;
    QLabel* m_interrupted;
};

}  // namespace sorvanto
