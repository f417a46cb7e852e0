#include "screens/RecordWatch.h"

#include "platform/data/Connection.h"
#include "reports/HistoryCaptions.h"
#include "shared/Context.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Entries of the record and its lines, and those of its ingredients.
std::pair<std::vector<HistoryEntry>, std::vector<HistoryEntry>> split(
    const std::vector<HistoryEntry>& entries, const QString& table) {
    std::pair<std::vector<HistoryEntry>, std::vector<HistoryEntry>> parts;
    std::partition_copy(
        entries.begin(), entries.end(), std::back_inserter(parts.first), std::back_inserter(parts.second),
        [&](const HistoryEntry& entry) { return entry.table == table || entry.table == linesOf(table); });
    return parts;
}

}  // namespace

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
    const auto [own, ofIngredients] = split(entries, m_table);
    if (!ofIngredients.empty())
        takeOfIngredients(ofIngredients);
    if (!own.empty())
        take(own, name);
}

// The newest come first.
void RecordWatch::take(const std::vector<HistoryEntry>& entries, const QString& name) {
    const HistoryEntry& newest = entries.front();
    const bool goesOn = m_change && !m_change->ofIngredient;
    const QDateTime first = goesOn ? m_change->first : historyClock(entries.back());
    const auto record = std::find_if(entries.begin(), entries.end(), [&](const HistoryEntry& entry) {
        return entry.table == m_table && entry.key == m_key;
    });
    const bool deleted = record == entries.end() ? goesOn && m_change->deleted : record->what == "deleted"_L1;
    m_stale = !deleted;
    m_change =
        RecordChange{m_table, m_key, name, benchOf(newest.person), historyClock(newest), first, deleted};
}

// What was done to the record itself goes before.
void RecordWatch::takeOfIngredients(const std::vector<HistoryEntry>& entries) {
    if (m_change && m_change->deleted)
        return;
    m_stale = true;
    if (m_change && !m_change->ofIngredient)
        return;
    const HistoryEntry& newest = entries.front();
    const auto first = std::find_if(entries.rbegin(), entries.rend(),
                                    [&](const HistoryEntry& entry) { return entry.key == newest.key; });
    const bool goesOn = m_change && m_change->key == newest.key;
    m_change = RecordChange{newest.table,
                            newest.key,
                            newest.name,
                            benchOf(newest.person),
                            historyClock(newest),
                            goesOn ? m_change->first : historyClock(*first),
                            false,
                            true};
}

}  // namespace sorvanto
