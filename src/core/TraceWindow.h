// Where did it go: a lot, chemical, batch, formula or patient is typed, and the batches and prescriptions that it leads to
// are listed, through stock bases and archives. A row opens its record; the whole is printed or exported as a recall list.
//   TraceWindow.cpp         the window                   TraceWindow_look.cpp     looking in stages, and ending it
//   TraceWindow_search.cpp  what the text stands for     TraceWindow_lists.cpp    what the lists show
//   TraceWindow_rows.cpp    what their rows open
#pragma once

#include "core/ScreenTable.h"
#include "trace/RecallList.h"

#include <QDialog>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <optional>

class QHBoxLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

namespace platform {
class DateBox;
class LongWork;
class WorkLine;
}  // namespace platform

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

    /// Searches for what it starts with. The lists stand when it is back, in a window that has come up meanwhile where that
    /// takes long enough to be seen.
    void begin();
    /// Whether its user has closed it since.
    bool wasClosed() const { return m_closed; }
    Wanted wanted() const { return m_wanted; }

    void done(int result) override;

private:
    /// What is done one after the other for a text, and again from some place on for anything else that is asked for.
    enum class Stage {
        Text,     ///< what it stands for
        Found,    ///< that listed, or what is in the batch
        Recall,   ///< where it went
        Offers,   ///< what else it stands for, as far as that is known, and similar lots
        Others,   ///< patients and formulas that are called so as well
        Lacking,  ///< batches whose ingredients are not complete
        Complete
    };
    void buildWindow();
    QLayout* topRow();
    QLayout* bottomRow();
    QLayout* foundRow();
    void lookFrom(Stage stage);
    void lookOn();
    void lookUpTo(Stage last);
    void doStage();
    bool goesOn(platform::LongWork& work);
    void leaveIfEnded() const;
    void whenComplete(std::function<void()> then);
    void whenIdle(std::function<void()> then);
    void takeEdit();
    void showUnfinished();
    void showStopped();
    void enableOutput(bool enabled);
    void searchAnew();
    void findText();
    void findContents();
    void findRecall();
    void findOffers();
    void findOthers();
    void readOthers();
    void findLacking();
    std::size_t count(Found found) const;
    std::optional<std::size_t> placeOf(Found taken, std::int64_t key) const;
    void take(Found found);
    void showOffers();
    void dropOffers();
    QWidget* offerFound(QWidget* before);
    void offerSimilar(QWidget* before);
    QPushButton* addOffer(const QString& text, QWidget* before);
    void showFound();
    void showPatients();
    void showFormulas();
    void showContents();
    void showIngredients();
    void showUsedIn();
    const TracedBatch& batchAt(std::size_t row) const;
    void showBatches();
    void showPrescriptions();
    void showTotals();
    QString message() const;
    void say(const QString& text);
    std::vector<Ingredient> chosenIngredients() const;
    TraceDays days() const;
    RecallList list() const;
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
    Stage m_stage = Stage::Text;           ///< the first that is not done
    platform::LongWork* m_work = nullptr;  ///< what runs
    bool m_ends = false;                   ///< it is to end
    bool m_again = false;                  ///< and to be done anew
    bool m_begins = false;
    bool m_closed = false;
    std::optional<Stage> m_unfinished;  ///< the last of which it was shown that it is not done
    std::vector<std::int64_t> m_asOf;   ///< state of the records that the list is of
    std::function<void()> m_whenComplete, m_whenIdle;
    Found m_asFound;     ///< what the text is to be taken for
    std::int64_t m_key;  ///< of the record that is meant; 0: all
    QString m_asked;     ///< the text that the hits are of
    TraceHits m_hits;
    bool m_othersKnown = false;             ///< patients and formulas
    std::vector<TracedPatient> m_patients;  ///< of that name
    std::vector<TracedFormula> m_formulas;  ///< of that name
    QStringList m_similar;                  ///< lots
    bool m_offered = false;
    Found m_taken = Found::Chemicals;        ///< what the text is taken for
    std::vector<UsedIngredient> m_contents;  ///< of the batch, where that is what was found
    RecallList m_list;                       ///< what is on show
    Wanted m_wanted{formulas, 0};
    std::vector<std::size_t> m_shown;  ///< places of the prescriptions of the chosen batches
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
    platform::WorkLine* m_line;
    QPushButton* m_print;
    QPushButton* m_export;
};

}  // namespace sorvanto
