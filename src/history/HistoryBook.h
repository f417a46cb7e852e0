// Reads what is written down of a record, and what the record was on a day.
#pragma once

#include "history/HistoryFields.h"
#include "platform/data/Query.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace sorvanto {

struct HistoryEntry {
    std::int64_t number = 0;
    QDateTime moment;  ///< as the clock of the computer showed it, with its distance from UTC
    QString table;
    std::int64_t key = 0;
    QString what;    ///< "made", "changed", "deleted", "forgotten"
    QString deed;    ///< what that was to the user (HistoryDeed.h); mostly empty
    QString note;    ///< of the deed
    QString person;  ///< empty for another program
    QString name;    ///< of the row: of a line that of its ingredient
    std::vector<HistoryField> fields;
    bool erased = false;  ///< its values were, on request
};

/// The columns of History that an entry is read from, and an entry out of them.
QString historyColumns();
HistoryEntry historyEntry(const platform::Query& row);

/// Of the record and of its lines, newest first.
std::vector<HistoryEntry> historyOf(platform::Engine& database, const QString& table, std::int64_t key);

/// A record with its lines, as the history knows it.
struct HistoryRecord {
    QString table;
    std::int64_t key = 0;
};
/// Who has changed one of these last, or a line of it: "rkent@bench2"; empty for another program, and where nothing is written
/// down.
QString lastChanger(platform::Engine& database, const std::vector<HistoryRecord>& records);

struct ChangeCount {
    std::int64_t count = 0;
    bool all = true;  ///< else the history began later: there may have been more before
    bool operator==(const ChangeCount&) const = default;
};

/// How often the record and its lines were made, changed or deleted since that moment by the clock of the computer, as the
/// history of the record lists them; nothing for a file without history.
std::optional<ChangeCount> changesSince(platform::Engine& database, const QString& table, std::int64_t key,
                                        const QDateTime& moment);

/// A row of the record, or of its lines, as it was: values by column.
struct PastRow {
    QString table;
    std::int64_t key = 0;
    QString name;  ///< of a line: that of its ingredient or batch
    QMap<QString, QVariant> values;
};

/// What the record and its lines were at that moment, worked back from what they are now; the record first. Without the
/// record's row it was not there. entries: of historyOf.
std::vector<PastRow> recordAsOf(platform::Engine& database, const QString& table, std::int64_t key,
                                const std::vector<HistoryEntry>& entries, const QDateTime& moment);

/// The first moment that what is written down reaches back to; invalid where nothing is.
QDateTime historyBegin(platform::Engine& database);

/// Whether recordAsOf has to guess: a value that was replaced since that moment has been erased on request, and the record
/// was not made since.
bool isErasedSince(const QString& table, std::int64_t key, const std::vector<HistoryEntry>& entries,
                   const QDateTime& moment);

/// The table whose rows are lines of a record of this one; empty for none.
QString linesOf(const QString& table);

}  // namespace sorvanto
