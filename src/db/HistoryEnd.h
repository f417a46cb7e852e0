// Whether the end of a file's history was cut, as far as it is noted elsewhere, and whether it goes on from its archive's.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

/// One sentence when the chain does not go through a place that a mix journal in one of these folders has noted at a
/// signing, and one when it does not go through the end of a copy of the database: beside the file, in one of these
/// folders or in "backups" there; of several the one with the longest history. A database that was put back from a copy,
/// and says so, may lack what came after the copy; what an archive took along is looked for in that archive alone: one for each
/// file in these places that is the archive and does not hold the place which the history goes on from. Throws as an open does.
QStringList historyEndProblems(const QString& file, const QStringList& programFolders);

/// What is wrong with this archive as that of the file, a line each: in itself, or since the file's history does not go on
/// from it. Throws as an open does.
QStringList formerProblems(const QString& file, const QString& archive);

}  // namespace sorvanto
