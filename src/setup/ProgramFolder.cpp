// Looks for the program's files beside the executable and for the delivered ones where they were installed.
#include "setup/ProgramFolder.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// Absolute and without "..", from the folder that the process was started in; empty stays empty.
QString absolute(const QString& folder) {
    return folder.isEmpty() ? QString() : QDir::cleanPath(QDir::current().absoluteFilePath(folder));
}

bool holdsProgramFiles(const QString& folder) {
    const QDir place(folder);
    for (const QString& name : {u"options.xml"_s, u"dbupdate.xml"_s, u"sorvanto.mdb"_s}) {
        if (place.exists(name))
            return true;
    }
    return !place.entryList({u"*Translation.xml"_s}, QDir::Files).isEmpty();
}

}  // namespace

Surroundings Surroundings::ofProcess(const QString& argument) {
    Surroundings result;
    result.argument = absolute(argument);
    result.executable = platform::programFolder();
    result.environment = absolute(QFile::decodeName(qgetenv("SORVANTO_FOLDER")));
    result.userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString delivered =
        QDir::cleanPath(result.executable + '/'_L1 + QLatin1String(SORVANTO_DATA_FROM_EXECUTABLE));
    if (QFile::exists(delivered + u"/dbupdate.xml"_s))
        result.delivered = delivered;
    return result;
}

ProgramFolder chooseProgramFolder(const Surroundings& surroundings) {
    const bool installed = !surroundings.delivered.isEmpty();
    if (!surroundings.argument.isEmpty())
        return {surroundings.argument, installed};
    if (holdsProgramFiles(surroundings.executable))
        return {surroundings.executable, false};
    if (!surroundings.environment.isEmpty())
        return {surroundings.environment, installed};
    if (!installed || surroundings.userData.isEmpty())
        return {surroundings.executable, false};
    return {surroundings.userData + u"/sorvanto"_s, true};
}

}  // namespace sorvanto
