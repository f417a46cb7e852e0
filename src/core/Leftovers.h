// What writes that were killed have left beside the program.
#pragma once

#include <QString>

namespace sorvanto {

/// Removes the temporary files of what the program writes in its folder, and of a new database or a copy that was being
/// put in the place of the database. Only regular files whose names the program itself gives; to be called when no other program
/// runs here.
void removeLeftovers(const QString& database);

/// Folders of the first version could be read by every user of the computer; they hold patients.
void keepFoldersToOwner();

}  // namespace sorvanto
