// Which folder is the program's own: the one function that decides it, and the folder of the delivered files
// that an installed program lays it out from.
#pragma once

#include <QString>

namespace sorvanto {

/// Everything that the decision rests on. Folders are absolute paths or empty.
struct Surroundings {
    QString argument;     ///< --folder
    QString executable;   ///< where the executable lies
    QString environment;  ///< SORVANTO_FOLDER
    QString userData;     ///< the user's folder for programs' data
    QString delivered;    ///< of the delivered files; empty when nothing is installed

    /// Those of this process; to be asked before platform::setProgramFolder.
    static Surroundings ofProcess(const QString& argument);
};

struct ProgramFolder {
    QString path;
    bool fromDelivered = false;  ///< it is laid out from the delivered files and kept up to date by them
};

/// In this order: the argument; the executable's folder when one of the program's files lies there; the
/// environment's; "sorvanto" in the user's data folder. A bare executable beside which nothing is installed
/// has its own folder in place of the last.
ProgramFolder chooseProgramFolder(const Surroundings& surroundings);

}  // namespace sorvanto
