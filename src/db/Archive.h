// Makes room in a database whose keys run out: everything goes into an archive, and the file keeps the batches of
// the last months, renumbered from 1.
#pragma once

#include "platform/data/Engine.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace sorvanto {

struct ArchiveResult {
    std::int64_t moved = 0;          ///< batches that are in the archive alone from now on
    std::int64_t kept = 0;           ///< batches that stay in the file
    std::int64_t prescriptions = 0;  ///< that went along with their batches
};

/// Copies all of the file into a new file of the name archive, which gets an identity of its own and names the
/// file's as its parent. Then, in one transaction, takes the batches made before the first day, with their lines
/// and prescriptions, out of the file, and numbers what is left from 1. Both files get a table KeyMap of old and
/// new keys; the file also remembers lot and moment of each batch that left it (ArchivedBatch).
/// Every row that stays is compared with the archive before anything is kept. Killed at any moment, the file is
/// the old one or the new one, and in the second case the archive is whole.
/// The records of a server are archived in the same way, by their owner, while no bench is at work on them.
/// Throws, with the file as it was and no archive, when the file has no identity, is an archive itself, is not
/// sound, is in use, holds nothing older, when the archive exists, or when the disk fails. Where the disk refuses the
/// last step and then even to look whether it was done, the archive stays, and the report names it.
/// cancelled: asked again and again until the last step; ends it in the same way, with permissionDenied.
ArchiveResult archiveDatabase(const QString& file, const QString& archive, const QDate& firstKept,
                              const platform::Cancelled& cancelled = {});

/// Identity of an open file; empty for one older than version 1.1.
QString identityOf(platform::Engine& database);

/// What has to be closed first, one line each: mixes not in the log and texts not saved, which know records by
/// their keys. programFolders: where the program may keep both; identity: of the file.
QStringList openWork(const QStringList& programFolders, const QString& identity);

/// Where the program that works on the file may have its folder: beside this executable, beside the file, at
/// SORVANTO_FOLDER, in the user's data folder. Each once.
QStringList possibleFolders(const QString& file);

}  // namespace sorvanto
