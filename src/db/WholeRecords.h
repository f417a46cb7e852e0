// The tables that all records consist of, carried over and compared as a whole.
#pragma once

#include "platform/data/WholeStore.h"

#include <QString>
#include <QStringList>

namespace sorvanto {

/// Related ones behind those that they refer to.
const QStringList& recordTables();
/// With what the database is, what happened to it, and what an archive run has left.
const QStringList& wholeRecords();

/// That column of the first row.
QString onlyValue(platform::WholeStore& store, const QString& table, const QString& column);

/// Throws general where the two are of different versions.
void refuseOtherVersion(platform::WholeStore& from, platform::WholeStore& to);

/// Into a file that is made or empty. False where the progress ended it; throws as carryOver.
bool fillFile(platform::WholeStore& from, const QString& file, const platform::RowProgress& progress);

/// Throws general where the second does not hold what the first does.
void refuseDifferent(platform::WholeStore& from, platform::WholeStore& to,
                     const platform::RowProgress& progress);

}  // namespace sorvanto
