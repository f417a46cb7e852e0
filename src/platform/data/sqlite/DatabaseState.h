// Why a database file can't be used: what a person needs to know who has to do something about it.
#pragma once

#include <QString>

namespace platform {

enum class DatabaseState {
    Usable,
    FolderAbsent,  ///< the folder is not there: perhaps a share or a stick that is not attached
    FolderEmpty,   ///< the folder is there and holds nothing: perhaps the place of one that is not attached
    Missing,       ///< gone from a folder that holds other files
    NotAFile,      ///< a folder, pipe or device
    Forbidden,     ///< no right to read it
    Locked,        ///< another program keeps it
    Unreadable,    ///< the disk or the network fails
    Damaged,       ///< its content is no database (any more), or it is empty
};

/// Looks at the file without changing it, but for an unfinished change of an earlier run, which the engine takes
/// back as it would on opening. Never throws; waits a moment for a file that is locked.
DatabaseState databaseState(const QString& path);

}  // namespace platform
