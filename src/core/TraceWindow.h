// Where did it go: a lot, chemical, batch or patient is typed, and the batches and prescriptions that it leads to are
// listed, through stock bases and archives. A row opens its record.
#pragma once

#include "core/ScreenTable.h"
#include "trace/Tracer.h"

#include <QDialog>
#include <QTimer>
#include <cstdint>

class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace sorvanto {

class TraceList;

class TraceWindow : public QDialog {
    Q_OBJECT

public:
    /// A record to show when the window has closed.
    struct Wanted {
        ScreenNumber screen;
        std::int64_t key = 0;  ///< 0: none
    };

    /// text: searched at once; may be empty.
    explicit TraceWindow(Tracer tracer, const QString& text = {}, QWidget* parent = nullptr);

    Wanted wanted() const { return m_wanted; }

private:
    void buildWindow();
    void search();
    void showFound();
    void showSimilar();
    void showRecall();
    void showBatches();
    void showPrescriptions();
    void showTotals();
    QString nothingFound() const;
    std::vector<Ingredient> chosenIngredients() const;
    Recall recall() const;
    void openFound(int row);
    void openBatch(int row);
    void openPrescription(int row);
    void open(ScreenNumber screen, TraceKey key);

    Tracer m_tracer;
    TraceHits m_hits;
    std::vector<TracedPatient> m_patients;
    Recall m_recall;
    Wanted m_wanted{formulas, 0};
    std::vector<TracedPrescription> m_shown;  ///< prescriptions of the chosen batches
    QTimer m_typing;
    QLineEdit* m_text;
    QHBoxLayout* m_similar;
    QLabel* m_message;
    TraceList* m_found;
    TraceList* m_batches;
    TraceList* m_prescriptions;
    QLabel* m_totals;
};

}  // namespace sorvanto
