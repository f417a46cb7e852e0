// Lays out a program folder from the delivered files, also over an older one, without touching what is its
// user's own.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

/// Makes the folder, readable by its owner alone, with "ports" in it. Throws permissionDenied when there is none
/// to work in then.
void makeProgramFolder(const QString& folder);

/// Makes the folder; brings the steps of database updates and
/// the language files up to date (former steps are kept as dbupdate.xml.before, a user's wording stays). A new
/// folder gets an empty database from the tool sorvanto-db, which lies in toolFolder; an older one never does,
/// since a database that is missing there must not look like an empty one.
/// Gives what could not be done, a sentence each: each file is tried for itself. Throws permissionDenied or
/// deviceIo when the folder can't be made.
QStringList layOut(const QString& delivered, const QString& folder, const QString& toolFolder);

/// layOut when the folder was not brought up to date from just these delivered files before, and no program is
/// at work in it.
QStringList keepUpToDate(const QString& delivered, const QString& folder, const QString& toolFolder);

}  // namespace sorvanto
