// Where did it go: a lot, chemical, batch or patient is typed, and the batches and prescriptions that it leads to are
// listed, through stock bases and archives. A row opens its record; the whole is printed or exported as a recall list.
//   TraceWindow.cpp   the window and what is asked   TraceWindow_lists.cpp   what the lists show
#pragma once

#include "core/ScreenTable.h"
#include "trace/RecallList.h"

#include <QDialog>
#include <QTimer>
#include <cstdint>

class QHBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace platform {
class DateBox;
}

namespace sorvanto {

struct Context;

class TraceList;

class TraceWindow : public QDialog {
    Q_OBJECT

public:
    /// A record to show when the window has closed.
    struct Wanted {
        ScreenNumber screen;
        std::int64_t key = 0;  ///< 0: none
    };

    /// What is searched at once.
    struct Start {
        QString text;  ///< may be empty
        std::int64_t key =
            0;  ///< of the chemical or patient that is meant, where the text stands for several; 0: all
    };
    TraceWindow(Context& context, Tracer tracer, const Start& start, QWidget* parent = nullptr);

    Wanted wanted() const { return m_wanted; }

private:
    void buildWindow();
    QLayout* topRow();
    QLayout* bottomRow();
    void search();
    void choose(std::int64_t key);
    void showFound();
    void showPatients();
    void showContents();
    void showIngredients();
    void showSimilar();
    void showRecall();
    void showBatches();
    void showPrescriptions();
    void showTotals();
    QString message() const;
    void say(const QString& text);
    std::vector<Ingredient> chosenIngredients() const;
    TraceDays days() const;
    RecallList list() const;
    void completeList();
    void print();
    void exportList();
    void openFound(int row);
    void openIngredient(const Ingredient& ingredient);
    void openBatch(int row);
    void openPrescription(int row);
    void open(ScreenNumber screen, TraceKey key);

    Context& m_context;
    Tracer m_tracer;
    TraceHits m_hits;
    std::vector<TracedPatient> m_patients;
    std::vector<Ingredient> m_contents;  ///< of the batch, where that is what was found
    RecallList m_list;                   ///< what is on show
    Wanted m_wanted{formulas, 0};
    std::vector<TracedPrescription> m_shown;  ///< prescriptions of the chosen batches
    QTimer m_typing;
    QLineEdit* m_text;
    platform::DateBox* m_from;
    platform::DateBox* m_to;
    QHBoxLayout* m_similar;
    QLabel* m_message;
    TraceList* m_found;
    TraceList* m_batches;
    TraceList* m_prescriptions;
    QLabel* m_totals;
    QPushButton* m_print;
    QPushButton* m_export;
};

}  // namespace sorvanto
