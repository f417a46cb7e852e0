// What the four full record screens share: the set of identifiers with its moves, the locked, empty and
// new flags, the lock by control names, the save question and the caption.
#pragma once

#include "platform/data/Recordset.h"
#include "records/Restoration.h"
#include "screens/ControlWalk.h"
#include "screens/DraftKeeper.h"
#include "screens/EditMark.h"
#include "screens/RecordWatch.h"
#include "screens/ToolStates.h"
#include "shared/DraftedScreen.h"
#include "shared/ListedScreen.h"
#include "shared/PastValues.h"
#include "shared/RecordScreen.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <vector>

namespace sorvanto {

/// What tells one full screen from another.
struct BrowsedRecords {
    QString screen;     ///< its name, as in the tags of its reports
    QString statement;  ///< selects the identifiers
    QString key;        ///< column of that set, named after the table
    QString question;   ///< the save question, by its key
    QString button;     ///< the screen's own, on the side bar
    QString lines{};    ///< table of the rows that belong to a record and go with it, if there is one
    LockRules locks;
    ScreenTools tools;
    /// Where there are no records, the tools are off only while browsing, not in an edit.
    bool emptyWhileLocked = false;
};

class BrowsingScreen : public RecordScreen,
                       public DraftedScreen,
                       public ListedScreen,
                       public SharedRecord,
                       public TakesPastValues {
    Q_OBJECT

public:
    /// Runs the tool's action; where the screen's work goes on, its tools are set.
    void m_frmMain_btnClick(const QString& toolName, const QString& searchText) override;
    /// (Re)opens the identifier set and sets the empty flag.
    virtual void getData();
    virtual void moveFirst();
    virtual void movePrevious();
    virtual void moveNext();
    virtual void moveLast();
    /// True while browsing.
    bool formLocked() const { return m_locked; }
    virtual void lockForm();
    virtual void unlockForm();
    /// Record object to controls, and the main window's caption. Typed text that goes with it becomes a draft.
    void refreshForm();
    /// Controls to record object and database; true on success.
    virtual bool saveForm() = 0;
    /// Asks to save when unlocked: 0 nothing to ask, 2 cancelled, 6 saved (or refused), 7 not saved.
    std::int16_t closeForm() override;

    bool hasTypedText() const override { return m_drafts.typed(); }
    void keepTypedText() override;
    void keepDraftsIn(DraftStore& store, std::function<void()> typedChanged) override;
    QString draftTable() const override { return m_records.key.chopped(2); }  // its key is named after it
    DraftFit fitOf(const Draft& draft) override;
    DraftFit bringBack(const Draft& draft) override;

    std::int16_t shownKey() const override;
    SetPlace setPlace() const override;
    bool canLeaveRecord() const override { return m_locked; }
    void showRecord(std::int16_t key) override;
    /// The record on show as the file has it now, unless it is being changed; the boxes follow with refreshForm.
    void rereadRecord();
    void useValues(const PastValues& past) override;

    void noteOthers(const OthersState& state) override;
    void followOthers() override;
    const RecordChange* changeByOthers() const override { return m_watch.change(); }
    void putChangeAside() override { m_watch.putAside(); }

protected:
    BrowsingScreen(Context& context, BrowsedRecords records, QWidget* parent);

    /// "frmLog:moveNext".
    QString tag(const QString& procedure) const { return m_records.screen + u':' + procedure; }
    /// The record whose values refreshForm shows.
    virtual DraftRecord recordOnView() const = 0;
    /// Puts the record's values into the controls; refreshForm does the rest.
    virtual void fillForm() = 0;
    /// Empties the controls.
    virtual void emptyForm() = 0;
    void clearForm();
    /// What was typed is in the database, or the user has cancelled it: no draft is left of it.
    void typingEnded() { m_drafts.settled(recordOnView()); }
    /// The record on view is in the database, as typed.
    void recordSaved();

    /// Fills what is neither box nor line; true when that changes it.
    virtual bool fillPastParts(const PastValues& /*past*/) { return false; }

    /// Opens the record of that key and adopts it.
    virtual void openRecord(std::int16_t key) = 0;
    /// Adopts a blank record.
    virtual void blankRecord() = 0;
    /// What closeForm does after the answers No and Cancel.
    virtual void notSaved() {}
    /// What is said quietly beside the save question; empty: nothing.
    virtual QString closingNote() const { return {}; }

    void setMenuOptions() override;
    /// After the click of any tool, before the tools are set.
    virtual void toolDone() {}
    /// Shows the record that the text finds; the identifier set stays where it is.
    virtual void search(const QString& searchText) = 0;
    /// Adds a row and takes it up for editing.
    virtual void addRecord() {}
    /// Deletes the row that addRecord made, without asking.
    virtual void dropNewRecord() {}
    /// Asks and deletes the record on view.
    virtual void deleteRecord() = 0;
    /// What the user is asked to delete, from before the question.
    struct Asked {
        DeletedRecord deleted;
        QString name;
    };
    Asked askedRecord() const;
    /// The first move still runs on the set from before the deletion.
    void recordDeleted(const Asked& asked);
    /// Says it, where the set was opened anew without the record, and offers to take it back.
    void announceDeleted(const Asked& asked);
    void announceLineDeleted(const Asked& asked);
    /// A line of the record on view is there again; what is typed into the boxes stays.
    virtual void showLinesAnew() {}
    /// What that box shows now is nobody's typing.
    void shownByProgram(const QString& control) { m_drafts.shownByProgram(control); }
    virtual void cmdEdit();
    virtual void cmdSave();
    virtual void cmdCancel();
    virtual void cmdDelete();
    platform::Recordset& identifiers() const;
    std::int16_t currentKey() const;
    void openCurrent() { openRecord(currentKey()); }
    /// The set's first record, or a blank one where the set is empty: a row just deleted never stays on view.
    void openFirst();
    /// The two steps of getData.
    void openIdentifiers();
    void testEmpty();
    /// "panel: screen  :  record", with the edit mark while unlocked.
    void showCaption(const QString& screen, const QString& record) const;

    bool m_locked = false;
    bool m_empty = false;
    bool m_new = false;

private:
    struct ThrownAway;
    /// What the tools do that all full screens share.
    void addRecordTools();
    bool moveTo(std::int16_t key);
    bool holds(std::int16_t key);
    void followSet();
    void standOn(platform::Recordset& set, std::int64_t key, std::int64_t row) const;
    DraftFit openForDraft(const Draft& draft);
    /// What Cancel is about to throw away; nothing when that is nothing.
    std::shared_ptr<ThrownAway> whatCancelThrowsAway();
    /// Says that it was thrown away, and lets it be had back for a while.
    void announceThrownAway(const std::shared_ptr<ThrownAway>& thrown);
    void haveBack(const ThrownAway& thrown);
    void haveNewRecordBack(const ThrownAway& thrown);
    void offerUndo(const Asked& asked);
    void undo(const Asked& asked);
    void showRestored(const DeletedRecord& record);
    bool unlockedFor(std::int64_t key);
    std::vector<DraftField> fieldsOf(const PastValues& past) const;
    void clickTool(const char* band, const QString& name) const;

    const BrowsedRecords m_records;
    std::int16_t m_newKey = 0;  ///< of the row that addRecord made last
    platform::RecordsetPtr m_identifiers;
    std::vector<DraftField> m_asAdded;  ///< what the boxes showed of the new record when it was added
    DraftKeeper m_drafts{m_context, *this};
    EditMark m_mark{m_context};
    RecordWatch m_watch{m_context};
    std::int64_t m_setChanges = 0;  ///< by others, when the set was opened
};

}  // namespace sorvanto
