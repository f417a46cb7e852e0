#include "screens/DraftKeeper.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "shared/DraftStore.h"
#include "shared/databaseInUse.h"

#include <algorithm>

namespace sorvanto {
namespace {

constexpr int writeMilliseconds = 1000;

}  // namespace

DraftKeeper::DraftKeeper(const Context& context, QWidget& form) : m_context(context), m_boxes(form) {
    m_look.setSingleShot(true);
    m_write.setSingleShot(true);
    m_write.setInterval(writeMilliseconds);
    connect(&m_boxes, &TypedBoxes::edited, &m_look, [this] { m_look.start(0); });
    m_look.callOnTimeout(this, &DraftKeeper::look);
    m_write.callOnTimeout(this, &DraftKeeper::write);
}

void DraftKeeper::keepIn(DraftStore& store) {
    m_store = &store;
    if (!m_boxes.settled())
        m_boxes.settle();
}

// The timer is not started anew by the next key: a long text is written while it is typed.
void DraftKeeper::look() {
    const bool typedNow = typed();
    if (typedNow && !m_write.isActive())
        m_write.start();
    if (!typedNow && m_boxes.settled())
        forget();
    if (typedNow != m_wasTyped) {
        m_wasTyped = typedNow;
        emit typedChanged();
    }
}

void DraftKeeper::write() {
    m_write.stop();
    const std::vector<DraftField> fields = typedTexts();
    if (fields.empty())
        return;
    if (m_id.isEmpty())
        m_id = newDraftId();
    put(m_id, fields, false);
}

std::vector<DraftField> DraftKeeper::typedTexts() const {
    std::vector<DraftField> fields = m_boxes.typed();
    const std::vector<DraftField> cell = m_boxes.openCell();
    fields.insert(fields.end(), cell.begin(), cell.end());
    return fields;
}

Draft DraftKeeper::draftOf(const std::vector<DraftField>& fields) const {
    return {newDraftId(), databaseInUse(m_context), databaseIdentity(m_context),
            m_record,     platform::now(),          fields};
}

void DraftKeeper::put(const QString& id, const std::vector<DraftField>& fields, bool offered) {
    if (!m_store)
        return;
    Draft draft = draftOf(fields);
    draft.id = id;
    draft.offered = offered;
    m_store->put(draft);
}

void DraftKeeper::offer(Draft draft) {
    draft.offered = true;
    if (m_store)
        m_store->put(draft);
}

void DraftKeeper::offer(const QString& id, const std::vector<DraftField>& fields) {
    if (!fields.empty())
        put(id.isEmpty() ? newDraftId() : id, fields, true);
}

void DraftKeeper::forget() {
    m_write.stop();
    if (m_store && !m_id.isEmpty())
        m_store->remove(m_id);
    m_id.clear();
}

void DraftKeeper::refillBegins() {
    keepOpenCell();
    if (m_boxes.settled())
        m_typed = m_boxes.typed();
    m_boxes.unsettle();
    m_write.stop();
}

void DraftKeeper::refilled(const DraftRecord& record) {
    const bool sameRecord = record.table == m_record.table && record.key == m_record.key;
    m_boxes.settle();
    std::vector<DraftField> lost;
    for (const DraftField& field : std::exchange(m_typed, {})) {
        if (sameRecord && m_boxes.shown(field.control) == field.typed)
            m_boxes.stillTyped(field);
        else
            lost.push_back(field);
    }
    if (!lost.empty())
        offer(std::exchange(m_id, {}), lost);
    else if (!m_boxes.any())
        forget();
    m_record = record;
    look();
}

void DraftKeeper::settled(const DraftRecord& record) {
    m_typed.clear();
    m_boxes.dropOpenCell();
    forget();
    m_boxes.settle();
    m_record = record;
    look();
}

void DraftKeeper::refused() { forget(); }

void DraftKeeper::keepOpenCell() {
    offer({}, m_boxes.openCell());
    m_boxes.dropOpenCell();
}

bool DraftKeeper::fits(const Draft& draft) const {
    return std::all_of(draft.fields.begin(), draft.fields.end(), [&](const DraftField& field) {
        const QString shown = m_boxes.shown(field.control);
        return field.cell || shown == field.replaced || shown == field.typed;
    });
}

void DraftKeeper::type(const std::vector<DraftField>& fields) {
    std::vector<DraftField> replaced = m_boxes.typed();
    std::erase_if(replaced, [&](const DraftField& was) {
        return std::none_of(fields.begin(), fields.end(),
                            [&](const DraftField& field) { return field.control == was.control; });
    });
    offer({}, replaced);
    m_boxes.type(fields);
    write();
    look();
}

void DraftKeeper::bringBack(const Draft& draft) {
    Draft cells = draft;
    std::erase_if(cells.fields, [](const DraftField& field) { return !field.cell; });
    if (m_store && cells.fields.empty()) {
        m_id = draft.id;
    } else if (m_store) {
        cells.offered = true;
        m_store->put(cells);
    }
    m_boxes.type(draft.fields);
    write();
    look();
}

}  // namespace sorvanto
