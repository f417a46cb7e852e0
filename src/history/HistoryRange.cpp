#include "history/HistoryRange.h"

#include "history/HistorySeal.h"
#include "platform/data/Query.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;

constexpr std::int64_t stretch = 4000;  // keys of a file
constexpr std::size_t portion = 500,
                      farPortion = 2000;  // rows of a file, and of a server, whose each answer is waited for
constexpr std::int64_t leastKey = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t greatestKey = std::numeric_limits<std::int64_t>::max();

/// The moments are compared as texts first: no clock is off by a day, so that only near the bounds its hands matter.
QString withinDays(const platform::Engine& database) {
    return u"hst_When >= ?3 AND hst_When < ?4 AND (hst_When >= ?5 AND hst_When < ?6 OR %1 >= ?1 AND %1 < ?2) AND "
           "HistoryID BETWEEN ?7 AND ?8"_s.arg(database.words().clock(u"hst_When"_s, u"hst_Zone"_s));
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
    query.bind(5, dayText(first, earliest, 1));
    query.bind(6, dayText(last, latest));
}

void bindKeys(Query& query, std::int64_t first, std::int64_t last) {
    query.bind(7, qint64{first});
    query.bind(8, qint64{last});
}

/// The first and the last of a file; a server looks at all it has.
std::pair<std::int64_t, std::int64_t> keysOf(platform::Engine& database) {
    if (database.isServer())
        return {leastKey, greatestKey};
    const QString sql = u"SELECT coalesce((SELECT min(HistoryID) FROM History), 1), "
                        "coalesce((SELECT max(HistoryID) FROM History), 0)"_s;
    Query keys(database, sql, sql);
    keys.step();
    return {keys.integer(0), keys.integer(1)};
}

}  // namespace

HistoryRange::HistoryRange(platform::Engine& database, const QDate& first, const QDate& last,
                           HistoryOrder order)
    : m_database(database), m_first(first), m_last(last), m_order(order),
      m_reached(order == HistoryOrder::OldestFirst ? 0 : greatestKey), m_atEnd(!hasHistory(database)) {}

/// A file numbers its rows in the order in which they are kept. On a server a bench can keep one with a lower number than
/// another bench's that is there already; so all are named at once.
void HistoryRange::settle() {
    m_end = keysOf(m_database).second;
    if (!m_database.isServer())
        return;
    const QString sql =
        u"SELECT HistoryID FROM History WHERE %1 ORDER BY HistoryID"_s.arg(withinDays(m_database));
    Query row(m_database, sql, sql);
    bindDays(row, m_first, m_last);
    bindKeys(row, leastKey, greatestKey);
    while (row.step())
        m_keys.push_back(row.integer(0));
    m_end = m_keys.empty() ? 0 : m_keys.back();
}

bool HistoryRange::isSettled(std::int64_t key) const {
    return m_order == HistoryOrder::NewestFirst || !m_database.isServer() ||
           std::binary_search(m_keys.begin(), m_keys.end(), key);
}

HistoryRange::Keys HistoryRange::nextStretch() const {
    const auto [first, last] = keysOf(m_database);
    if (m_order == HistoryOrder::OldestFirst) {
        const std::int64_t least = std::max(m_reached + 1, first);
        return {least, m_database.isServer() ? *m_end : std::min(least + stretch - 1, *m_end)};
    }
    const std::int64_t greatest = std::min(m_reached - 1, last);
    return {m_database.isServer() ? first : std::max(greatest - stretch + 1, first), greatest};
}

void HistoryRange::readOn() {
    const bool oldest = m_order == HistoryOrder::OldestFirst;
    if (oldest && !m_end && !m_atEnd)
        settle();
    const Keys keys = m_atEnd ? Keys(1, 0) : nextStretch();
    m_atEnd = keys.first > keys.second;
    if (m_atEnd)
        return;
    const std::size_t most = m_database.isServer() ? farPortion : portion;
    const QString sql = u"SELECT %1 FROM History WHERE %2 ORDER BY HistoryID %3 LIMIT %4"_s.arg(
        historyColumns(), withinDays(m_database), oldest ? u"ASC"_s : u"DESC"_s, QString::number(most));
    Query row(m_database, sql, sql);
    bindDays(row, m_first, m_last);
    bindKeys(row, keys.first, keys.second);
    std::vector<HistoryEntry> read;
    while (row.step())
        read.push_back(historyEntry(row));
    const bool isWhole = read.size() < most;
    if (!isWhole || m_database.isServer())
        m_reached = read.empty() ? m_reached : read.back().number;
    else
        m_reached = oldest ? keys.second : keys.first;
    m_atEnd = m_database.isServer() && (oldest ? read.empty() : isWhole);
    std::erase_if(read, [this](const HistoryEntry& entry) { return !isSettled(entry.number); });
    m_atHand.insert(m_atHand.begin(), std::make_move_iterator(read.rbegin()),
                    std::make_move_iterator(read.rend()));
}

std::optional<HistoryEntry> HistoryRange::next() {
    while (m_atHand.empty() && !m_atEnd)
        readOn();
    if (m_atHand.empty())
        return std::nullopt;
    HistoryEntry entry = std::move(m_atHand.back());
    m_atHand.pop_back();
    return entry;
}

HistoryCount::HistoryCount(platform::Engine& database, const QDate& first, const QDate& last)
    : m_database(database), m_first(first), m_last(last) {
    if (hasHistory(database))
        std::tie(m_next, m_end) = keysOf(database);
    m_isComplete = m_next > m_end;
}

void HistoryCount::countOn() {
    if (m_isComplete)
        return;
    const std::int64_t last = m_database.isServer() ? m_end : std::min(m_next + stretch - 1, m_end);
    const QString sql = u"SELECT count(*) FROM History WHERE %1"_s.arg(withinDays(m_database));
    Query count(m_database, sql, sql);
    bindDays(count, m_first, m_last);
    bindKeys(count, m_next, last);
    m_rows += count.step() ? count.integer(0) : 0;
    m_isComplete = last == m_end;
    if (!m_isComplete)
        m_next = last + 1;
}

std::int64_t historyRows(platform::Engine& database, const QDate& first, const QDate& last) {
    HistoryCount count(database, first, last);
    while (!count.isComplete())
        count.countOn();
    return count.rows();
}

}  // namespace sorvanto
