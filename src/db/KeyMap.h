// Old and new keys of the rows that stay in a file when older batches leave it: the table KeyMap. Batches, their
// lines, prescriptions and the lines of formulas are numbered from 1 in the order of their old keys; chemicals,
// formulas and patients keep their keys, since batches remember them.
#pragma once

#include "platform/data/Engine.h"

#include <QLatin1StringView>
#include <QString>

namespace sorvanto {

/// What an archive run leaves in a file: the map, and lot and moment of each batch that went into an archive. Of a server
/// also of those that were deleted before, without an archive's name.
inline constexpr QLatin1StringView keyMapTable(
    "CREATE TABLE KeyMap (kmp_Archive TEXT(32) NOT NULL, kmp_Table TEXT(40) NOT NULL, "
    "kmp_Old INTEGER NOT NULL, kmp_New INTEGER NOT NULL, PRIMARY KEY (kmp_Table, kmp_Old)) WITHOUT ROWID");
inline constexpr QLatin1StringView archivedBatchTable(
    "CREATE TABLE IF NOT EXISTS ArchivedBatch (abt_Archive TEXT(32) NOT NULL, abt_Lot TEXT(40) "
    "COLLATE NOCASE, abt_Date DATETIME)");
inline constexpr QLatin1StringView archivedBatchIndex(
    "CREATE INDEX IF NOT EXISTS ArchivedBatch_Lot ON ArchivedBatch (abt_Lot, abt_Date)");

/// Makes the table from the rows that are there, without the batches that the condition on Log names and what
/// belongs to them, under the identity of the archive. A map of an earlier archive lies in that archive.
void writeKeyMap(platform::Engine& database, const QString& archive, const QString& oldBatches);

/// Gives each row its new key, and the next new row the one behind the last. Only the rows of the map may be left;
/// relations must not be enforced meanwhile.
void renumber(platform::Engine& database);

/// Compares all rows that stay with what they were, keys translated, and all rows of the other tables. before: the
/// archive, with its map. Empty when nothing differs, else what does.
QString firstDifference(platform::Engine& before, platform::Engine& after);

}  // namespace sorvanto
