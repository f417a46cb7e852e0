// The search for a batch: the log record's own and, with a few differences, that of a new prescription.
#pragma once

#include <QString>

namespace sorvanto {

enum class LogSearch { OfLog, OfPrescription };

/// The whole statement, newest first, of twenty fields that are read by position. By key for an empty text
/// (keyText stands as the key), by NDC for a "#" in front, by lot for a "?" in front, else by name.
QString logSearch(LogSearch use, QString search, const QString& keyText);

}  // namespace sorvanto
