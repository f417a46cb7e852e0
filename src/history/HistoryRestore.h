// A deleted record and its lines come back out of the history, under their old keys.
#pragma once

#include "platform/data/Engine.h"

#include <QString>
#include <cstdint>

namespace sorvanto {

/// What was deleted: a record with its lines, or one line (table FormChem or RXs).
struct DeletedRecord {
    QString table;
    std::int64_t key = 0;
    std::int64_t historyBefore = 0;  ///< the last row of the history before the deletion; 0: it was not kept
};

enum class Restored {
    Whole,
    KeyTaken,      ///< another row bears one of the keys
    RelationGone,  ///< a record that one of the rows belongs to, or uses, is no longer there
    NotInHistory,  ///< what was deleted is not written down, or was blanked since
    ReadingOnly,
    Unfaithful,  ///< a row would not be what it was
};

/// Number of the last row; 0 for a file without history.
std::int64_t lastHistoryRow(platform::Engine& database);

/// Adds the rows that were deleted behind that row of the history, each value as it was stored. To be called within a
/// transaction, to be taken back unless the answer is Whole. Throws what the engine refuses for another reason.
Restored addDeletedRows(platform::Engine& database, const DeletedRecord& deleted);

}  // namespace sorvanto
