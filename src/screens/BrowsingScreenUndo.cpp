// What was deleted, and how it comes back for as long as the status line offers it.
#include "platform/basic/RuntimeError.h"
#include "screens/BrowsingScreen.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace sorvanto {

BrowsingScreen::Asked BrowsingScreen::askedRecord() const {
    const DraftRecord record = recordOnView();
    return {aboutToDelete(m_context, draftTable(), record.key), record.name};
}

void BrowsingScreen::recordDeleted(const Asked& asked) {
    clearForm();
    moveFirst();
    getData();
    announceDeleted(asked);
}

void BrowsingScreen::announceDeleted(const Asked& asked) {
    if (!holds(static_cast<std::int16_t>(asked.deleted.key)))
        offerUndo(asked);
}

void BrowsingScreen::announceLineDeleted(const Asked& asked) { offerUndo(asked); }

// Without a history nothing can come back.
void BrowsingScreen::offerUndo(const Asked& asked) {
    Happening deleted{translated(u"%1 deleted"_s).replace(u"%1"_s, asked.name), {}, false};
    const auto again = [screen = QPointer<BrowsingScreen>(this), asked] {
        if (screen)
            screen->undo(asked);
    };
    if (asked.deleted.historyBefore > 0)
        deleted.actions.push_back({translated(u"Undo"_s), again, true});
    announce(deleted);
}

void BrowsingScreen::undo(const Asked& asked) {
    guarded(tag(u"undo"_s), [&] {
        const Restored result = takeBackDeletion(m_context, asked.deleted);
        if (result == Restored::Whole)
            showRestored(asked.deleted);
        announce({restoredText(result, asked.name), {}, result != Restored::Whole});
    });
}

// A record that is being changed stays on view.
void BrowsingScreen::showRestored(const DeletedRecord& record) {
    if (record.table != draftTable())
        return showLinesAnew();
    const std::int16_t key = static_cast<std::int16_t>(record.key);
    const std::int16_t shown = recordOnView().key;
    getData();
    if (!m_locked)
        static_cast<void>(moveTo(shown));
    else if (Listener() == -1)
        showRecord(key);
    else
        clickTool("FormBar", m_records.button);
}

}  // namespace sorvanto
