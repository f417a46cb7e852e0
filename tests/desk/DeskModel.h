// The desk as it is told, without a window: which tools are on, what a click does, what stands in the caption,
// where typed text goes. DeskTables.cpp holds what can be read as a table, DeskModel*.cpp the words used there.
// A walk does one thing to the model and the same to the real windows, and compares the two.
#pragma once

#include "core/ScreenTable.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <set>
#include <vector>

namespace desk {

using sorvanto::ScreenNumber;

// ---- the tables --------------------------------------------------------------------------------------------

/// Whether a tool is on: without records on the screen, while it is locked, and while it is not.
enum class DeskState { Empty, Locked, Unlocked };
/// The record tools and the entries of the print menu; those of the export menu go with them.
QStringList recordTools();
bool isToolOn(const QString& tool, ScreenNumber screen, DeskState state);
/// The words of a click on the screen that hears it; empty where nothing is done.
QStringList wordsOf(const QString& tool, ScreenNumber screen);
/// Whether a control can be changed, known by its name.
bool isControlOpen(const QString& control, ScreenNumber screen, bool locked);

/// A box that the walk looks at and types into.
struct Box {
    ScreenNumber screen;
    const char* name;
    const char* column;
    const char* needed = "";  ///< what a save says where it is missing
};
const std::vector<Box>& boxes();
const char* tableOf(ScreenNumber screen);
const char* keyOf(ScreenNumber screen);

// ---- the state ---------------------------------------------------------------------------------------------

using Texts = QMap<QString, QString>;  ///< by the names of the boxes

struct Screen {
    bool locked = true, isNew = false, empty = false;
    std::vector<int> set;  ///< the keys as they were read last
    int at = 0;            ///< place in the set
    int key = 0;           ///< of the record on view, 0 for none
    int newKey = 0;        ///< of the row that was added last
    Texts record;          ///< its values
    Texts boxes;           ///< what the program put there
    Texts typed;           ///< over it, neither saved nor cancelled
    int viewed = 0;        ///< the record whose values are in the boxes
    QString viewedName;
};

struct Draft {
    int id;
    ScreenNumber screen;
    int key;
    QString name;
    Texts typed, replaced;
    bool tried = false;  ///< in vain: it can be read
};

/// A window that comes up, what it says, and what the user does in it.
struct Question {
    QString window, says, press;
    int key = 0;  ///< of the row taken in a list
};

enum class Mix { None, Loaded, Running, Waits };

/// What is mixed: the formula's key, and its name when it was made.
struct Batch {
    int formula = 0;
    QString name;
};

class Model {
public:
    explicit Model(std::function<int(int)> choose);

    /// The program's start: all screens loaded, the formulas on show.
    void start();

    // What a user does. Each fills questions with the windows that come up, in their order.
    void click(const QString& tool);
    /// Enter in the search box.
    void search(const QString& text);
    void type(const QString& box, const QString& text);
    void selectPrescription() { m_selected = true; }
    void bringBack();
    void discard() { drafts.erase(drafts.begin()); }
    void signNow() { signMix(); }
    void logOffer(std::size_t at);
    void startMix() { mix = Mix::Running; }
    void mixEnds() { mix = Mix::Waits; }
    void mixFails();
    /// The window is told to close; the user stays in the end.
    void quit();
    void stayForTheMix();
    /// What comes by itself once the click is over: a waiting mix is signed where the desk is free.
    void rest();

    // What the windows must show.
    bool isFree() const;
    bool isOn(const QString& tool) const;
    QString title() const { return caption; }
    /// Of the strip; empty when it is hidden.
    QString stripText() const;
    QString nameOf(ScreenNumber screen, const Texts& record) const;

    bool hasPrescription() const { return screens.at(sorvanto::patients).key == 1 && !prescribed.empty(); }

    // What keeps the walk from what can only end in a report of an error.
    bool canSave(ScreenNumber screen) const { return screens.at(screen).key != 0; }
    bool isMixed(int key) const;
    bool hasBaseBatch(int formulaKey) const;

    std::map<ScreenNumber, Screen> screens;
    std::map<ScreenNumber, std::map<int, Texts>> rows;
    std::map<int, std::set<int>> lines;  ///< chemicals of a formula
    std::set<int> prescribed;            ///< batches in prescriptions of patient 1
    std::map<ScreenNumber, int> lastKey;
    ScreenNumber onShow = sorvanto::formulas;
    QString caption;
    bool hasFormula = false;  ///< on the current formula screen
    int formula = 0;
    QString formulaName, formulaShown;
    std::vector<Draft> drafts;  ///< on offer, the newest first
    Mix mix = Mix::None;
    Batch mixed;
    std::vector<Batch> offers;  ///< of the mixes that are not in the log, in the order of their starts
    std::vector<Question> questions;

private:
    using Word = bool (Model::*)(ScreenNumber);
    static const std::map<QString, Word>& words();
    bool run(const QStringList& words, ScreenNumber screen);
    void switchTo(ScreenNumber screen);
    void hear(const QString& tool);
    void ask(const QString& window, const QString& says, const QString& press, int key = 0);
    void askBox(const QString& says, const QString& press) { ask("AskDialog", says, press); }
    void tell(const QString& says) { askBox(says, "OK"); }
    void askNewLot();
    void askImport();
    /// Without the record's name.
    static QString captionOf(ScreenNumber screen);
    bool chance(int oneOf) { return m_choose(oneOf) == 0; }

    // The words of the table.
    bool first(ScreenNumber screen);
    bool previous(ScreenNumber screen);
    bool next(ScreenNumber screen);
    bool last(ScreenNumber screen);
    bool search(ScreenNumber screen);
    bool show(ScreenNumber screen);
    bool showCaption(ScreenNumber screen);
    bool lock(ScreenNumber screen);
    bool unlock(ScreenNumber screen);
    bool read(ScreenNumber screen);
    bool clear(ScreenNumber screen);
    bool forget(ScreenNumber screen);
    bool drop(ScreenNumber screen);
    bool makeNew(ScreenNumber screen);
    bool noLongerNew(ScreenNumber screen);
    bool add(ScreenNumber screen);
    bool copy(ScreenNumber screen);
    bool remove(ScreenNumber screen);
    bool save(ScreenNumber screen);
    bool handOver(ScreenNumber screen);
    bool prescribe(ScreenNumber screen);
    bool make(ScreenNumber screen);
    bool findFormula(ScreenNumber screen);
    bool worksheet(ScreenNumber screen);
    bool label(ScreenNumber screen);
    bool dates(ScreenNumber screen);
    bool paper(ScreenNumber screen);

    void open(ScreenNumber screen, int key);
    void openAt(ScreenNumber screen);
    void erase(ScreenNumber screen, int key);
    bool isUsed(ScreenNumber screen, int key) const;
    std::vector<int> found(ScreenNumber screen) const;
    int chooseIn(const std::vector<int>& found);
    void lose(ScreenNumber screen);
    void giveUp(ScreenNumber screen);
    void view(ScreenNumber screen);
    int newRow(ScreenNumber screen, Texts record);
    /// False where the signing is cancelled.
    bool sign(int formula);
    void signMix();
    bool isReplacedStill(const Draft& draft) const;
    Texts blank(ScreenNumber screen) const;

    std::function<int(int)> m_choose;
    QString m_search;
    bool m_selected = false;  ///< a prescription in the grid
    bool m_left = false;      ///< a make has gone on to the current formula
    bool m_failed = false;    ///< the formula of the last mix may be loaded again
    int m_draftIds = 0;
};

}  // namespace desk
