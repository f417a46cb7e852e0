// The rows of a batch as the database stores them: of one that is about to be written, and of one that stands
// there. Both come out equal for the same batch.
#pragma once

#include "mixer/BatchRows.h"
#include "platform/data/Connection.h"
#include "platform/data/Recordset.h"

#include <QString>
#include <cstdint>
#include <utility>
#include <vector>

namespace sorvanto {

/// Each column of the table Log with the text that its INSERT gives it.
using LogColumns = std::vector<std::pair<const char*, QString>>;

/// Nothing where the lines are not those of a formula that was opened whole.
BatchRows rowsToBeWritten(const platform::Connection& connection, const LogColumns& columns,
                          platform::Recordset* lines);
/// Empty when there is no such batch.
BatchRows storedBatch(const platform::Connection& connection, std::int64_t key);
/// The keys of the rows that are this batch: equal in all columns; when there is none, in all that can't have
/// been changed since.
std::vector<std::int64_t> rowsOfBatch(const platform::Connection& connection, const BatchRows& batch);
/// Adds lines to a batch, all or none. Throws as a statement does.
void addLines(const platform::Connection& connection, std::int64_t key, const QJsonArray& lines);

}  // namespace sorvanto
