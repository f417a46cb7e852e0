// A record screen while other benches change the same records: which record is on show, and where the set stands, follow
// them as long as nobody changes the record here.
#include "platform/data/Query.h"
#include "screens/BrowsingScreen.h"
#include "shared/Context.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// The row of that key, looked for from here outward; -1 where the set doesn't hold it.
std::int64_t rowOf(platform::Recordset& set, const QString& column, std::int64_t key, std::int64_t near) {
    const std::int64_t count = set.recordCount();
    for (std::int64_t away = 0; away < count; ++away) {
        for (const std::int64_t row : {near + away, near - away}) {
            if (row < 0 || row >= count)
                continue;
            set.setPosition(row);
            if (set.value(column).toLongLong() == key)
                return row;
        }
    }
    return -1;
}

}  // namespace

void BrowsingScreen::noteOthers(const OthersState& state) { m_watch.note(state); }

void BrowsingScreen::followOthers() {
    if (m_locked)
        followSet();
    m_watch.look(recordOnView().name);
    if (!m_watch.isStale() || !m_locked || hasTypedText() || shownKey() == 0)
        return;
    openRecord(shownKey());
    refreshForm();
    m_watch.reread();
}

// The set that the moves go through is opened anew and stands on the same record as before.
void BrowsingScreen::followSet() {
    if (!m_identifiers || !m_watch.latest() || m_watch.latest()->changes == m_setChanges)
        return;
    const std::int64_t changes = m_watch.latest()->changes;
    const auto fresh = platform::Recordset::create();
    fresh->open(m_records.statement, m_context.connection, platform::LockType::ReadOnly);
    const std::int64_t row = m_identifiers->isOpen() ? m_identifiers->position() : -1;
    if (row >= 0 && fresh->recordCount() > 0)
        standOn(*fresh, m_identifiers->value(m_records.key).toLongLong(), row);
    const bool wasEmpty = m_empty;
    m_identifiers = fresh;
    m_setChanges = changes;
    testEmpty();
    if (wasEmpty && !m_empty)
        moveFirst();
    if (wasEmpty != m_empty)
        setMenuOptions();
}

// Where the record is gone, on the one before it, so that the next one is still the next.
void BrowsingScreen::standOn(platform::Recordset& set, std::int64_t key, std::int64_t row) const {
    const std::int64_t last = set.recordCount() - 1;
    set.setPosition(std::min(row, last));
    if (set.value(m_records.key).toLongLong() == key)
        return;
    const bool isThere =
        platform::number(
            m_context.connection->engine(),
            u"SELECT count(*) FROM %1 WHERE %2 = %3"_s.arg(draftTable(), m_records.key).arg(key)) > 0;
    const std::int64_t found = isThere ? rowOf(set, m_records.key, key, std::min(row, last)) : -1;
    set.setPosition(found >= 0 ? found : std::clamp<std::int64_t>(row - 1, 0, last));
}

}  // namespace sorvanto
