// The end of an archive run: the archive stands under its name, and the records are about to let go of what is in it.
#pragma once

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"

#include <QDate>
#include <QString>

namespace sorvanto {

struct ArchiveResult;

/// What became of the records when the last step was reported as failed: it may have been done all the same.
enum class ArchiveFate { Unchanged, Changed, Unknown };

/// location: of the records. archive: the identity of the archive. To be asked behind the transaction's end.
ArchiveFate archiveFate(const QString& location, const QString& archive);

/// The archive may hold the only rows of what has left the records, and stays: throws the failure, with the path of it.
[[noreturn]] void tellUnknownFate(const platform::RuntimeError& failure, const QString& archive);

/// The full path. Throws permissionDenied where a file has that name.
QString newArchivePath(const QString& archive);

/// As archiveDatabase, of the records of a server.
ArchiveResult archiveServer(const QString& address, const QString& archive, const QDate& firstKept,
                            const platform::Cancelled& cancelled);

/// Throws permissionDenied where an archive run is to end, of which nothing is kept yet.
void endWhere(const platform::Cancelled& cancelled);

}  // namespace sorvanto
