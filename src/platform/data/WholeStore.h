// All rows of a store as they are stored, past history, counters and changes of value: for carrying them into another
// store, of whichever engine, and for comparing the two.
#pragma once

#include "platform/data/Engine.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// Each value has one form, whichever engine holds it: whole numbers and the shortest digits of all others, dates as a
/// file stores them, texts and bytes as they are.
using StoredRow = std::vector<PlainValue>;
using RowTaker = std::function<void(const std::vector<StoredRow>& rows)>;

/// Money has four decimals: what floating numbers leave behind them is none, and nothing that the program reads.
PlainValue moneyValue(double amount);
/// A number with its shortest digits that read back the same.
PlainValue realValue(double number);

/// Asked between the pieces of long work: how many rows are done, and how many there are. False ends it.
using RowProgress = std::function<bool(std::int64_t done, std::int64_t all)>;

/// One moment of a store, from its opening on; or, opened for filling, a transaction that is taken back unless it was
/// committed.
class WholeStore {
public:
    WholeStore() = default;
    virtual ~WholeStore() = default;
    WholeStore(const WholeStore&) = delete;
    WholeStore& operator=(const WholeStore&) = delete;

    /// Those that hold records, what happened to them, and what the store is; no counters.
    virtual QStringList tables() = 0;
    virtual QStringList columns(const QString& table) = 0;
    virtual std::int64_t rowCount(const QString& table) = 0;
    /// All rows of these columns, in pieces: in the order of the table's key, else as they were added.
    virtual void read(const QString& table, const QStringList& columns, const RowTaker& taker) = 0;
    /// The highest key that each table has ever given out, of those that have given any.
    virtual QMap<QString, std::int64_t> lastKeys() = 0;

    /// Empties these tables. Only in a store that was opened for filling, as all below.
    virtual void clear(const QStringList& tables) = 0;
    /// Adds rows with the keys that they have. Throws where a value does not fit its column; the error names the row.
    virtual void add(const QString& table, const QStringList& columns,
                     const std::vector<StoredRow>& rows) = 0;
    /// From now on keys go on behind these; behind 0 in a table that is not among them.
    virtual void setLastKeys(const QMap<QString, std::int64_t>& keys) = 0;
    virtual void commit() = 0;
};

/// Replaces these tables of one store by those of another, and its counters; related ones behind those that they refer to.
/// A table that the other one lacks stays out where it is empty. Throws general when one with rows, or a column,
/// has no place there. False when the progress ended it. Nothing is committed.
bool carryOver(WholeStore& from, WholeStore& to, const QStringList& tables, const RowProgress& progress);

/// What differs first between these tables and the counters of two stores, in one sentence; empty when nothing does. An
/// ended comparison is empty as well.
QString firstDifference(WholeStore& one, WholeStore& other, const QStringList& tables,
                        const RowProgress& progress);

}  // namespace platform
