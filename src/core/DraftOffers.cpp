#include "core/DraftOffers.h"

#include "core/DraftReader.h"
#include "core/DraftStrip.h"
#include "core/ScreenTable.h"
#include "core/frmMain.h"
#include "platform/ask/Ask.h"
#include "platform/widgets/CommandBar.h"
#include "shared/DraftStore.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

DraftOffers::DraftOffers(frmMain& window, DraftStore& store)
    : m_window(window), m_store(store), m_strip(new DraftStrip) {
    window.bar().addStrip(*m_strip);
    connect(&store, &DraftStore::changed, this, &DraftOffers::look);
    connect(m_strip, &DraftStrip::bringBack, this, &DraftOffers::bringBack);
    connect(m_strip, &DraftStrip::discard, this, &DraftOffers::discard);
    connect(m_strip, &DraftStrip::discardAll, this, &DraftOffers::discardAll);
    connect(m_strip, &DraftStrip::step, this, &DraftOffers::step);
}

DraftOffers::~DraftOffers() = default;

void DraftOffers::addScreen(DraftedScreen& screen, platform::Tool& button) {
    m_places.push_back({&screen, &button});
    screen.keepDraftsIn(m_store, [&screen, &button] {
        button.setMark(screen.hasTypedText() ? translated(u"Unsaved text"_s) : QString());
    });
}

std::vector<const Draft*> DraftOffers::offers() const {
    std::vector<const Draft*> offered;
    for (const Draft& draft : m_store.drafts()) {
        if (draft.offered)
            offered.push_back(&draft);
    }
    return offered;
}

const DraftOffers::Place* DraftOffers::placeOf(const Draft& draft) const {
    const auto found = std::find_if(m_places.begin(), m_places.end(), [&](const Place& place) {
        return place.screen->draftTable() == draft.record.table;
    });
    return found == m_places.end() ? nullptr : &*found;
}

DraftFit DraftOffers::fitOf(const Draft& draft) const {
    const Place* place = placeOf(draft);
    const DraftFit fit = place ? place->screen->fitOf(draft) : DraftFit::Failed;
    return fit == DraftFit::Fits ? m_tried.value(draft.id, fit) : fit;
}

// A record that has neither a name nor a text to be known by goes by its screen.
QString DraftOffers::textOf(const Draft& draft, DraftFit fit) const {
    const Place* place = placeOf(draft);
    const ScreenRow* screen = place ? screenOfTool(place->button->name()) : nullptr;
    QString title = draft.title();
    if (title.isEmpty() && screen)
        title = translated(QString::fromLatin1(screen->text));
    if (fit == DraftFit::Deleted)
        return translated(u"Unsaved text of \"%1\" was kept. The record has been deleted."_s).arg(title);
    return (draft.earlier ? translated(u"Unsaved text of \"%1\" was kept."_s)
                          : translated(u"Unsaved text of \"%1\" was replaced."_s))
        .arg(title);
}

// A text that has just been replaced comes on show; else the strip stays where the user has led it.
void DraftOffers::look() {
    const auto all = offers();
    if (all.empty()) {
        m_newest.clear();
        m_shown.clear();
        m_tried.clear();
        m_strip->hide();
        return;
    }
    if (std::exchange(m_newest, all.front()->id) != m_newest)
        m_shown = m_newest;
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Draft* draft) { return draft->id == m_shown; });
    const auto last = static_cast<int>(all.size()) - 1;
    m_at = found == all.end() ? std::min(m_at, last) : static_cast<int>(found - all.begin());
    const Draft& draft = *all.at(static_cast<std::size_t>(m_at));
    m_shown = draft.id;
    const DraftFit fit = fitOf(draft);
    m_strip->offer(textOf(draft, fit), fit != DraftFit::Fits, m_at + 1, last + 1);
}

void DraftOffers::step(int direction) {
    const auto all = offers();
    m_at = std::clamp(m_at + direction, 0, std::max(0, static_cast<int>(all.size()) - 1));
    if (!all.empty())
        m_shown = all.at(static_cast<std::size_t>(m_at))->id;
    look();
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
    m_tried.insert(draft.id, fit);
    look();
    read(draft, fit);
}

void DraftOffers::discard() { m_store.remove(QString(m_shown)); }

void DraftOffers::discardAll() {
    const platform::Answer answer =
        platform::MsgBox(translated(u"Discard all unsaved texts? They can not be brought back then."_s),
                         {platform::Buttons::YesNo, platform::Icon::Exclamation, true, false});
    if (answer != platform::Answer::Yes)
        return;
    QStringList ids;
    for (const Draft* draft : offers())
        ids << draft->id;
    for (const QString& id : ids)
        m_store.remove(id);
}

void DraftOffers::read(const Draft& draft, DraftFit fit) {
    if (!m_reader)
        m_reader = new DraftReader(&m_window);
    m_reader->showDraft(draft, fit);
}

}  // namespace sorvanto
