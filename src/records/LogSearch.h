// The search for a batch: the log record's own and, with a few differences, that of a new prescription.
#pragma once

#include "platform/data/Recordset.h"

#include <QString>

namespace sorvanto {

enum class LogSearch { OfLog, OfPrescription };

/// The whole statement, newest first, of twenty fields that are read by position. By key for an empty text
/// (keyText stands as the key), by NDC for a "#" in front, by lot for a "?" in front, else by name.
QString logSearch(LogSearch use, QString search, const QString& keyText);

/// Runs it. Batches of one moment stand by name, code and lot, backward as the moments do: as the index by which the file
/// finds them has them, so that nothing has to be sorted.
platform::RecordsetPtr openLogSearch(const QString& statement);

}  // namespace sorvanto
