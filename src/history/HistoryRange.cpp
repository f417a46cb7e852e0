#include "history/HistoryRange.h"

#include "history/HistorySeal.h"
#include "platform/data/Query.h"

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;

constexpr int portion = 500;

/// The moments are compared as texts first, a day wider than any clock is off: that is quick for what is far from the range.
QString withinDays(const platform::Engine& database) {
    return u"hst_When >= ?3 AND hst_When < ?4 AND %1 >= ?1 AND %1 < ?2"_s.arg(
        database.words().clock(u"hst_When"_s, u"hst_Zone"_s));
}

QString dayText(const QDate& day, const QDate& unbound, int later = 0) {
    return (day.isValid() ? day.addDays(later) : unbound).toString(Qt::ISODate);
}

void bindDays(Query& query, const QDate& first, const QDate& last) {
    const QDate earliest(1, 1, 1);
    const QDate latest(9999, 12, 31);
    query.bind(1, dayText(first, earliest));
    query.bind(2, dayText(last, latest) + u" 24"_s);  // behind every hour of that day
    query.bind(3, dayText(first, earliest, -1));
    query.bind(4, dayText(last, latest, 2));
}

}  // namespace

HistoryRange::HistoryRange(platform::Engine& database, const QDate& first, const QDate& last,
                           HistoryOrder order)
    : m_database(database), m_first(first), m_last(last), m_order(order),
      m_reached(order == HistoryOrder::OldestFirst ? 0 : std::numeric_limits<std::int64_t>::max()) {}

void HistoryRange::readOn() {
    const bool oldest = m_order == HistoryOrder::OldestFirst;
    const QString sql =
        u"SELECT %1 FROM History WHERE HistoryID %2 ?5 AND %3 ORDER BY HistoryID %4 LIMIT %5"_s.arg(
            historyColumns(), oldest ? u">"_s : u"<"_s, withinDays(m_database), oldest ? u"ASC"_s : u"DESC"_s,
            QString::number(portion));
    Query row(m_database, sql, sql);
    bindDays(row, m_first, m_last);
    row.bind(5, qint64{m_reached});
    while (row.step())
        m_some.push_back(historyEntry(row));
    std::reverse(m_some.begin(), m_some.end());
}

std::optional<HistoryEntry> HistoryRange::next() {
    if (m_some.empty() && hasHistory(m_database))
        readOn();
    if (m_some.empty())
        return std::nullopt;
    HistoryEntry entry = std::move(m_some.back());
    m_some.pop_back();
    m_reached = entry.number;
    return entry;
}

std::int64_t historyRows(platform::Engine& database, const QDate& first, const QDate& last) {
    if (!hasHistory(database))
        return 0;
    Query count(database, u"SELECT count(*) FROM History WHERE %1"_s.arg(withinDays(database)), {});
    bindDays(count, first, last);
    return count.step() ? count.integer(0) : 0;
}

}  // namespace sorvanto
