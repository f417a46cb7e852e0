// Whole-file work on a database: an exact copy while it may be in use, putting a copy back, and a look at
// its soundness.
#pragma once

#include "platform/basic/ProcessLock.h"
#include "platform/data/DatabaseCopy.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

/// Copies the database to a new file (readable by its owner alone), page by page and as of one moment, and
/// checks the copy. Throws when the target exists (permissionDenied), when either can't be opened, or
/// when the copy is not sound; nothing is left behind then.
void backupDatabase(const QString& file, const QString& target);

/// Puts a checked copy of the backup in the place of the file. What was there before is kept beside it under
/// the name that is given back (empty when there was nothing); when anything fails it stays where it is.
/// finish works on the checked copy before it takes its place; what it throws ends it as well.
/// Throws permissionDenied as SoleUse does.
QString restoreDatabase(const QString& backup, const QString& file,
                        const std::function<void(const QString& restored)>& finish = {});

/// Throws permissionDenied when another program has the file open at this moment. Looks without opening it as a
/// database, and not to be called while this process has it open.
void refuseInUse(const QString& file);

/// Keeps other programs away from a file as long as it lives. Throws permissionDenied when one has the file open, or
/// when another computer has left its lock: whether a program still runs there can't be seen from here.
class SoleUse {
public:
    explicit SoleUse(const QString& file);

private:
    ProcessLock m_lock;
};

/// What the engine finds wrong with pages, indexes, checks and relations; empty when all is well.
/// Throws when the file can't be opened as a database. A cancelled look gives what was found until then.
QStringList integrityProblems(const QString& file, const Cancelled& cancelled = {});

}  // namespace platform
