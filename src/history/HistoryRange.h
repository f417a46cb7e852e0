// What is written down of all records of a file within a range of days, in portions: a long history is never in memory
// as a whole, and the file is not held between two of them.
#pragma once

#include "history/HistoryBook.h"

#include <QDate>
#include <optional>

namespace sorvanto {

enum class HistoryOrder { OldestFirst, NewestFirst };

class HistoryRange {
public:
    /// Both days included, as the clock of the computer showed them; an invalid one is no bound. Of a file without history
    /// there is nothing. Rows that are written meanwhile may come as well.
    HistoryRange(platform::Engine& database, const QDate& first, const QDate& last,
                 HistoryOrder order = HistoryOrder::OldestFirst);
    std::optional<HistoryEntry> next();

private:
    void readOn();

    platform::Engine& m_database;
    QDate m_first, m_last;
    HistoryOrder m_order;
    std::int64_t m_reached;            ///< row that was read last
    std::vector<HistoryEntry> m_some;  ///< read in advance, in reverse
};

/// How many rows a range has.
std::int64_t historyRows(platform::Engine& database, const QDate& first, const QDate& last);

}  // namespace sorvanto
