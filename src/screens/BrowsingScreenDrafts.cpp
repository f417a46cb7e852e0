// The drafts of a record screen: when typed text leaves its boxes, and how it comes back.
#include "platform/basic/RuntimeError.h"
#include "screens/BrowsingScreen.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/databaseInUse.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void BrowsingScreen::refreshForm() {
    m_drafts.refillBegins();
    fillForm();
    m_drafts.refilled(recordOnView());
    m_watch.watch(draftTable(), recordOnView().key);
}

void BrowsingScreen::clearForm() {
    m_drafts.refillBegins();
    emptyForm();
    m_drafts.refilled(recordOnView());
}

void BrowsingScreen::keepTypedText() {
    guarded(tag(u"keepTypedText"_s), [&] {
        m_drafts.keepOpenCell();
        m_drafts.keepNow();
    });
}

void BrowsingScreen::keepDraftsIn(DraftStore& store, std::function<void()> typedChanged) {
    m_drafts.keepIn(store);
    connect(&m_drafts, &DraftKeeper::typedChanged, this, std::move(typedChanged));
}

DraftFit BrowsingScreen::fitOf(const Draft& draft) {
    return guarded(tag(u"fitOf"_s), DraftFit::Failed, [&] {
        if (!isDatabaseInUse(m_context, draft.database, draft.identity))
            return DraftFit::OtherDatabase;
        const auto row = platform::Recordset::create();
        row->open(u"SELECT %1 FROM %2 WHERE %1 = %3"_s.arg(m_records.key, draftTable()).arg(draft.record.key),
                  openDB(m_context), platform::LockType::ReadOnly);
        if (row->recordCount() == 0)
            return DraftFit::Deleted;
        const bool onlyCells = std::all_of(draft.fields.begin(), draft.fields.end(),
                                           [](const DraftField& field) { return field.cell; });
        return onlyCells ? DraftFit::OnlyReadable : DraftFit::Fits;
    });
}

// A row that cmdNew added and that was on view stays in the table; Cancel must not take it for the one
// brought back.
DraftFit BrowsingScreen::openForDraft(const Draft& draft) {
    m_new = false;
    lockForm();
    openRecord(draft.record.key);
    refreshForm();
    const DraftRecord found = recordOnView();
    const bool same = found.key == draft.record.key && found.guid == draft.record.guid &&
                      (!found.guid.isEmpty() || found.name == draft.record.name);
    return same && m_drafts.fits(draft) ? DraftFit::Fits : DraftFit::Changed;
}

DraftFit BrowsingScreen::bringBack(const Draft& draft) {
    return guarded(tag(u"bringBack"_s), DraftFit::Failed, [&] {
        DraftFit fit = fitOf(draft);
        if (fit == DraftFit::Fits)
            fit = openForDraft(draft);
        if (fit == DraftFit::Fits) {
            cmdEdit();
            m_drafts.bringBack(draft);
        }
        setMenuOptions();
        return fit;
    });
}

}  // namespace sorvanto
