// A server of the test program's own, made by scripts/start-server.sh in a scratch folder when the first test asks for
// it. It goes with the program, also with one that is killed.
#pragma once

#include "TestDatabase.h"

#include <QString>

namespace support {

/// Makes the records anew, as they are in the file: a database on the server, from a template. Everybody who is
/// connected is thrown out.
void makeServerRecords(const QString& likeFile);

/// Adds those of the file.
void addServerRecords(const QString& likeFile);

/// Makes the records anew, as they are on a server that nobody has worked on yet.
void makeEmptyServer();

/// The address of these records for a bench, and for the owner of the tables.
QString serverAddress();
QString serverOwnerAddress();

/// Runs statements on the records with all rights. NULL reads "NULL", a floating number has a point. A failed one fails
/// the test.
Rows runOnServer(const QString& statements);

/// The same, past the records: of the server itself.
Rows runOnWholeServer(const QString& statements);

}  // namespace support
