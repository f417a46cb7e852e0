#include "core/Leftovers.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

void removeFrom(const QString& folder, const QRegularExpression& form) {
    QDir files(folder);
    for (const QString& name : files.entryList(QDir::Files | QDir::NoSymLinks)) {
        if (form.match(name).hasMatch())
            files.remove(name);
    }
}

/// A new database, or a copy on its way to the database's place.
QRegularExpression unfinished(const QString& database) {
    return QRegularExpression(
        u"^%1\\.(?:part|restored(?:\\.part)?)(?:-journal)?\\z"_s.arg(QRegularExpression::escape(database)));
}

}  // namespace

void removeLeftovers(const QString& database) {
    static const QRegularExpression beside(
        u"^(?:options(?:\\.last-good)?\\.xml|[A-Za-z]*Translation\\.xml|(?:copies|window)\\.ini|dbupdate\\.xml|"
        u"delivered\\.txt)\\.(?!before\\z)\\w{6}\\z"_s);
    static const QRegularExpression copy(u"-before-update-from-.*\\.part(?:-journal)?\\z"_s);
    static const QRegularExpression journal(u"\\.xml\\.\\w{6}\\z"_s);
    static const QRegularExpression exported(
        u"^(?:ChangeHistory|Chemicals|FormulaLog|JarUsage|LogAvery8160|LogReport|RXLabel|RXReport|Recall|Worksheet)"
        "\\.xls\\.(?!backup\\z)\\w{6}\\z"_s);
    const QString folder = platform::programFolder();
    removeFrom(folder, beside);
    removeFrom(folder, exported);
    removeFrom(folder, unfinished(u"sorvanto.mdb"_s));
    removeFrom(folder + u"/backups"_s, copy);
    removeFrom(folder + u"/mixes"_s, journal);
    removeFrom(folder + u"/mixes/closed"_s, journal);
    const QFileInfo file(platform::platformPath(database));
    if (!file.fileName().isEmpty())
        removeFrom(file.path(), unfinished(file.fileName()));
}

void keepFoldersToOwner() {
    const QString folder = platform::programFolder();
    for (const char* name : {"/mixes", "/mixes/closed", "/drafts", "/backups"})
        platform::keepFolderToOwner(folder + QLatin1String(name));
}

}  // namespace sorvanto
