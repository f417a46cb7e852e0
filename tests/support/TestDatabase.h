// A real database file of a test, made from the delivered schema, and a way into it that shares nothing
// with the program's own data layer.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace support {

using Rows = std::vector<QStringList>;

/// Makes an empty database with the schema of data/schema.sql at that path.
void createDatabaseFile(const QString& path);

/// Runs one or more statements straight on the file; gives the rows of those that have any. NULL reads
/// "NULL". A failed statement fails the test.
Rows runSql(const QString& path, const QString& statements);

/// The same for a change, by a program that waits for nobody: false where another one keeps it from that.
bool runSqlAtOnce(const QString& path, const QString& statements);

/// Rows as text: fields joined by "|", rows by line ends.
QString rowsText(const Rows& rows);

}  // namespace support
