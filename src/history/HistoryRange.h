// What is written down of all records of a file within a range of days, in portions: a long history is never in memory
// as a whole, the file is not held between two of them, and of a file no statement looks at more than a stretch of it.
#pragma once

#include "history/HistoryBook.h"

#include <QDate>
#include <optional>
#include <utility>
#include <vector>

namespace sorvanto {

enum class HistoryOrder { OldestFirst, NewestFirst };

class HistoryRange {
public:
    /// Both days included, as the clock of the computer showed them; an invalid one is no bound. Of a file without history
    /// there is nothing. Rows that are written meanwhile never come.
    HistoryRange(platform::Engine& database, const QDate& first, const QDate& last,
                 HistoryOrder order = HistoryOrder::OldestFirst);
    std::optional<HistoryEntry> next();

    /// Looks at the next stretch, which may have nothing of the range. For who reads in pieces: while there is none at hand,
    /// next() does so until there is one.
    void readOn();
    bool hasAtHand() const { return !m_atHand.empty(); }
    /// Nothing is at hand or can come.
    bool isAtEnd() const { return m_atEnd && m_atHand.empty(); }

private:
    using Keys = std::pair<std::int64_t, std::int64_t>;  ///< the least and the greatest
    /// Oldest first: which rows there are.
    void settle();
    bool isSettled(std::int64_t key) const;
    Keys nextStretch() const;

    platform::Engine& m_database;
    QDate m_first, m_last;
    HistoryOrder m_order;
    std::int64_t m_reached;              ///< key that was looked at last
    std::optional<std::int64_t> m_end;   ///< the last key, once settled
    std::vector<std::int64_t> m_keys;    ///< all, of a server alone
    std::vector<HistoryEntry> m_atHand;  ///< read in advance, in reverse
    bool m_atEnd = false;
};

/// Counts the rows of a range in pieces.
class HistoryCount {
public:
    HistoryCount(platform::Engine& database, const QDate& first, const QDate& last);

    /// One stretch further.
    void countOn();
    bool isComplete() const { return m_isComplete; }
    std::int64_t rows() const { return m_rows; }

private:
    platform::Engine& m_database;
    QDate m_first, m_last;
    std::int64_t m_next = 1, m_end = 0;  ///< keys
    std::int64_t m_rows = 0;
    bool m_isComplete = true;
};

/// How many rows a range has.
std::int64_t historyRows(platform::Engine& database, const QDate& first, const QDate& last);

}  // namespace sorvanto
