#include "screens/BrowsingScreen.h"

#include "platform/ask/Ask.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/TimeOfDay.h"
#include "records/ColumnSizes.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

BrowsingScreen::BrowsingScreen(Context& context, BrowsedRecords records, QWidget* parent)
    : RecordScreen(context, parent), m_records(std::move(records)) {
    setObjectName(m_records.screen);
    addRecordTools();
}

platform::Recordset& BrowsingScreen::identifiers() const { return platform::deref(m_identifiers); }

std::int16_t BrowsingScreen::currentKey() const {
    return platform::toInt16(identifiers().value(m_records.key));
}

void BrowsingScreen::getData() {
    guarded(tag(u"getData"_s), [&] {
        openIdentifiers();
        testEmpty();
    });
}

void BrowsingScreen::openIdentifiers() {
    m_identifiers = platform::Recordset::create();
    m_identifiers->open(m_records.statement, openDB(m_context), platform::LockType::ReadOnly);
    keepToColumns(m_context, *this, draftTable());
    m_setChanges = m_watch.latest() ? m_watch.latest()->changes : 0;
}

void BrowsingScreen::testEmpty() { m_empty = identifiers().recordCount() == 0; }

void BrowsingScreen::openFirst() {
    identifiers().moveFirst();
    if (identifiers().eof())
        blankRecord();
    else
        openCurrent();
}

void BrowsingScreen::moveFirst() {
    guarded(tag(u"moveFirst"_s), [&] {
        identifiers().moveFirst();
        if (!identifiers().bof()) {
            openCurrent();
            refreshForm();
        }
    });
}

void BrowsingScreen::moveLast() {
    guarded(tag(u"moveLast"_s), [&] {
        identifiers().moveLast();
        if (!identifiers().eof()) {
            openCurrent();
            refreshForm();
        }
    });
}

void BrowsingScreen::moveNext() {
    guarded(tag(u"moveNext"_s), [&] {
        identifiers().moveNext();
        if (identifiers().eof())
            moveLast();
        openCurrent();
        refreshForm();
    });
}

void BrowsingScreen::movePrevious() {
    guarded(tag(u"movePrevious"_s), [&] {
        identifiers().movePrevious();
        if (identifiers().bof())
            moveFirst();
        openCurrent();
        refreshForm();
    });
}

void BrowsingScreen::addRecordTools() {
    m_tools.on({"cmdFirst"_L1}, [this] { moveFirst(); });
    m_tools.on({"cmdPrevious"_L1}, [this] { movePrevious(); });
    m_tools.on({"cmdNext"_L1}, [this] { moveNext(); });
    m_tools.on({"cmdLast"_L1}, [this] { moveLast(); });
    m_tools.on({"cmdSearch"_L1, "txtSearch"_L1}, [this](const QString& text) { search(text); });
    m_tools.on({"cmdEdit"_L1}, [this] { cmdEdit(); });
    m_tools.on({"cmdSave"_L1}, [this] { cmdSave(); });
    m_tools.on({"cmdCancel"_L1}, [this] { cmdCancel(); });
    m_tools.on({"cmdNew"_L1}, [this] {
        addRecord();
        m_newKey = recordOnView().key;
        m_asAdded = m_drafts.shown();
    });
    m_tools.on({"cmdDelete"_L1}, [this] { cmdDelete(); });
}

void BrowsingScreen::m_frmMain_btnClick(const QString& toolName, const QString& searchText) {
    guarded(tag(u"m_frmMain_btnClick"_s), [&] {
        if (!m_tools.run(toolName, searchText))
            return;
        toolDone();
        setMenuOptions();
    });
}

void BrowsingScreen::setMenuOptions() {
    guarded(tag(u"setMenuOptions"_s), [&] {
        if (m_empty && (m_locked || !m_records.emptyWhileLocked))
            setEmptyToolStates(m_context, m_records.tools.add != ToolRule::Off);
        else
            setToolStates(m_context, m_records.tools, m_locked);
    });
}

void BrowsingScreen::cmdEdit() {
    unlockForm();
    refreshForm();
    if (!m_locked)
        m_mark.begin(draftTable(), shownKey());
}

void BrowsingScreen::cmdSave() {
    if (!saveForm()) {
        setEnabled(true);
        return;
    }
    lockForm();
    m_new = false;
    refreshForm();
}

void BrowsingScreen::cmdCancel() {
    // Where quitting was refused the chemicals are locked, and the user may have left the new row for another.
    if (m_new && recordOnView().key != m_newKey)
        m_new = false;
    const auto thrown = whatCancelThrowsAway();
    typingEnded();
    if (m_new) {
        dropNewRecord();
        m_new = false;
        getData();
        openFirst();
    }
    lockForm();
    refreshForm();
    announceThrownAway(thrown);
}

void BrowsingScreen::cmdDelete() {
    m_new = false;
    {
        const DeletionMark marked(*this);
        deleteRecord();
    }
    clearForm();
    lockForm();
    getData();
    moveFirst();
}

void BrowsingScreen::recordSaved() {
    typingEnded();
    announce(translated(u"Saved %1"_s).replace(u"%1"_s, platform::timeOfDay(platform::now().time())));
}

void BrowsingScreen::lockForm() {
    guarded(tag(u"lockForm"_s), [&] {
        lockControls(*this, m_records.locks, true);
        m_locked = true;
        m_mark.end();
    });
}

void BrowsingScreen::unlockForm() {
    guarded(tag(u"unlockForm"_s), [&] {
        lockControls(*this, m_records.locks, false);
        setEnabled(true);
        m_locked = false;
    });
}

std::int16_t BrowsingScreen::closeForm() {
    return guarded(tag(u"closeForm"_s), std::int16_t(0), [&] {
        if (m_locked || m_context.standIn) {  // a copy takes nothing: typed text waits as a draft
            m_drafts.keepNow();
            return std::int16_t(0);
        }
        const platform::BoxStyle style{platform::Buttons::YesNoCancel, platform::Icon::Exclamation, false,
                                       true, closingNote()};
        const platform::Answer answer =
            platform::MsgBox(translated(m_records.question), style, translated(u"Save Data?"_s));
        if (answer == platform::Answer::Yes) {
            if (saveForm())
                m_new = false;  // another screen may keep the program open, and Cancel must not take the row
            else
                m_drafts.keepNow();
        } else {
            notSaved();
        }
        if (answer == platform::Answer::No)
            m_locked ? typingEnded() : m_drafts.refused();
        return static_cast<std::int16_t>(answer);
    });
}

void BrowsingScreen::showCaption(const QString& screen, const QString& record) const {
    QString caption =
        translated(u"Sorvanto Control Panel"_s) + u": "_s + translated(screen) + u"  :  "_s + record;
    if (!m_locked)
        caption += u"  ("_s + translated(u"Edit"_s) + u")"_s;
    platform::deref(m_context.window).setCaption(caption);
}

}  // namespace sorvanto
