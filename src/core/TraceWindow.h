// Where did it go: a lot, chemical, batch, formula or patient is typed, and the batches and prescriptions that it leads to
// are listed, through stock bases and archives. A row opens its record; the whole is printed or exported as a recall list.
//   TraceWindow.cpp         the window, where it went    TraceWindow_search.cpp   what the text stands for
//   TraceWindow_lists.cpp   what the lists show          TraceWindow_rows.cpp     what their rows open
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

    /// What a text is taken for. A lot may be a chemical's, which was made here, and that of the batch itself.
    enum class Found { Chemicals, Batches, Patients, Formulas };

    /// What is searched at once.
    struct Start {
        QString text;  ///< may be empty
        /// Of the chemical, patient or formula that is meant, where the text stands for several; 0: all.
        std::int64_t key = 0;
        Found found = Found::Chemicals;  ///< what it is, where the text stands for more than that
    };
    TraceWindow(Context& context, Tracer tracer, const Start& start, QWidget* parent = nullptr);

    Wanted wanted() const { return m_wanted; }

private:
    void buildWindow();
    QLayout* topRow();
    QLayout* bottomRow();
    QLayout* foundRow();
    void search(Found wanted = Found::Chemicals);
    void findOthers();
    void offerOthers(const QString& text);
    std::size_t count(Found found) const;
    void choose(std::int64_t key);
    void take(Found found);
    void showOffers();
    QWidget* offerFound(QWidget* before);
    void offerSimilar(QWidget* before);
    QPushButton* addOffer(const QString& text, QWidget* before);
    void showFound();
    void showPatients();
    void showFormulas();
    void showContents();
    void showIngredients();
    void showUsedIn();
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
    void openFormula(int row);
    void openIngredient(const Ingredient& ingredient);
    void openBatch(int row);
    void openPrescription(int row);
    void open(ScreenNumber screen, TraceKey key);

    Context& m_context;
    Tracer m_tracer;
    TraceHits m_hits;
    std::vector<TracedPatient> m_patients;  ///< of that name
    std::vector<TracedFormula> m_formulas;  ///< of that name
    Found m_taken = Found::Chemicals;       ///< what the text is taken for
    std::vector<Ingredient> m_contents;     ///< of the batch, where that is what was found
    RecallList m_list;                      ///< what is on show
    Wanted m_wanted{formulas, 0};
    std::vector<TracedPrescription> m_shown;  ///< prescriptions of the chosen batches
    QTimer m_typing;
    QLineEdit* m_text;
    platform::DateBox* m_from;
    platform::DateBox* m_to;
    QHBoxLayout* m_offers;  ///< what else the text may stand for
    QLabel* m_message;
    TraceList* m_found;
    TraceList* m_usedIn;
    TraceList* m_batches;
    TraceList* m_prescriptions;
    QLabel* m_totals;
    QPushButton* m_print;
    QPushButton* m_export;
};

}  // namespace sorvanto
