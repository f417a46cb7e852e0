// Old and new keys of the rows that stay in a file when older batches leave it: the table KeyMap. Batches, their
// lines, prescriptions and the lines of formulas are numbered from 1 in the order of their old keys; chemicals,
// formulas and patients keep their keys, since batches remember them.
#pragma once

#include "platform/data/Engine.h"

#include <QString>

namespace sorvanto {

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
