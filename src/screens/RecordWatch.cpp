#include "screens/RecordWatch.h"

#include "platform/data/Connection.h"
#include "reports/HistoryCaptions.h"
#include "shared/Context.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {

// A record that came on show before the first look counts as read then.
void RecordWatch::note(const OthersState& state) {
    m_latest = state;
    if (!m_seen)
        m_seen = state.ends;
}

void RecordWatch::watch(const QString& table, std::int64_t key) {
    if (table == m_table && key == m_key)
        return;
    m_table = table;
    m_key = key;
    m_stale = false;
    m_change.reset();
    m_seen.reset();
    if (m_latest)
        m_seen = m_latest->ends;
}

void RecordWatch::look(const QString& name) {
    if (!m_latest || m_key == 0 || !m_context.connection || *m_seen == m_latest->ends)
        return;
    const std::vector<HistoryEntry> entries =
        writtenByOthers(m_context.connection->engine(), m_table, m_key, *m_seen, m_latest->ends);
    m_seen = m_latest->ends;
    if (!entries.empty())
        take(entries, name);
}

// The newest come first.
void RecordWatch::take(const std::vector<HistoryEntry>& entries, const QString& name) {
    const HistoryEntry& newest = entries.front();
    const QDateTime first = m_change ? m_change->first : historyClock(entries.back());
    const auto record = std::find_if(entries.begin(), entries.end(), [&](const HistoryEntry& entry) {
        return entry.table == m_table && entry.key == m_key;
    });
    const bool deleted =
        record == entries.end() ? m_change && m_change->deleted : record->what == "deleted"_L1;
    m_stale = !deleted;
    m_change =
        RecordChange{m_table, m_key, name, benchOf(newest.person), historyClock(newest), first, deleted};
}

}  // namespace sorvanto
