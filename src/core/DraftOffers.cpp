#include "core/DraftOffers.h"

#include "core/DraftReader.h"
#include "core/DraftStrip.h"
#include "core/frmMain.h"
#include "shared/DraftStore.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

QString offerText(const Draft& draft, DraftFit fit) {
    if (fit == DraftFit::Deleted)
        return translated(u"Unsaved text of \"%1\" was kept. The record has been deleted."_s)
            .arg(draft.title());
    return (draft.earlier ? translated(u"Unsaved text of \"%1\" was kept."_s)
                          : translated(u"Unsaved text of \"%1\" was replaced."_s))
        .arg(draft.title());
}

}  // namespace

DraftOffers::DraftOffers(frmMain& window, DraftStore& store)
    : m_window(window), m_store(store), m_strip(new DraftStrip) {
    window.bar().addStrip(*m_strip);
    connect(&store, &DraftStore::changed, this, &DraftOffers::showNewest);
    connect(m_strip, &DraftStrip::bringBack, this, &DraftOffers::bringBack);
    connect(m_strip, &DraftStrip::discard, this, &DraftOffers::discard);
}

DraftOffers::~DraftOffers() = default;

void DraftOffers::addScreen(DraftedScreen& screen, platform::Tool& button) {
    m_places.push_back({&screen, &button});
    screen.keepDraftsIn(m_store, [&screen, &button] {
        button.setMark(screen.hasTypedText() ? translated(u"Unsaved text"_s) : QString());
    });
}

const Draft* DraftOffers::newestOffer() const {
    const auto& drafts = m_store.drafts();
    const auto found =
        std::find_if(drafts.begin(), drafts.end(), [](const Draft& draft) { return draft.offered; });
    return found == drafts.end() ? nullptr : &*found;
}

const DraftOffers::Place* DraftOffers::placeOf(const Draft& draft) const {
    const auto found = std::find_if(m_places.begin(), m_places.end(), [&](const Place& place) {
        return place.screen->draftTable() == draft.record.table;
    });
    return found == m_places.end() ? nullptr : &*found;
}

DraftFit DraftOffers::fitOf(const Draft& draft) const {
    const Place* place = placeOf(draft);
    return place ? place->screen->fitOf(draft) : DraftFit::Failed;
}

void DraftOffers::showNewest() {
    const Draft* draft = newestOffer();
    if (!draft) {
        m_shown.clear();
        m_strip->hide();
        return;
    }
    if (m_shown == draft->id)
        return;
    m_shown = draft->id;
    m_fit = fitOf(*draft);
    m_strip->offer(offerText(*draft, m_fit), m_fit != DraftFit::Fits);
}

// The draft is copied: on the way other text may be replaced, and become a draft of its own.
void DraftOffers::bringBack() {
    const Draft* shown = m_store.find(m_shown);
    if (!shown)
        return;
    const Draft draft = *shown;
    DraftFit fit = fitOf(draft);
    if (const Place* place = placeOf(draft); place && fit == DraftFit::Fits) {
        m_window.ActiveBar_ToolClick(*place->button);
        fit = place->screen->bringBack(draft);
    }
    if (fit == DraftFit::Fits)
        return;
    read(draft, fit);
    if (m_shown == draft.id) {
        m_fit = fit;
        m_strip->offer(offerText(draft, fit), true);
    }
}

void DraftOffers::discard() { m_store.remove(QString(m_shown)); }

void DraftOffers::read(const Draft& draft, DraftFit fit) {
    if (!m_reader)
        m_reader = new DraftReader(&m_window);
    m_reader->showDraft(draft, fit);
}

}  // namespace sorvanto
