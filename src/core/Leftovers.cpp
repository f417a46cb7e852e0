#include "core/Leftovers.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

/// Each of the forms below has one of these; nearly no other file has, for which no form is tried.
bool mayBeUnfinished(const QString& name) {
    constexpr qsizetype suffix = 7;  // a point and six signs
    return (name.size() > suffix && name.at(name.size() - suffix) == u'.') || name.contains(".part"_L1) ||
           name.contains(".restored"_L1);
}

void removeFrom(const QString& folder, std::initializer_list<QRegularExpression> forms) {
    QDir files(folder);
    for (const QString& name : files.entryList(QDir::Files | QDir::NoSymLinks)) {
        if (mayBeUnfinished(name) && std::any_of(forms.begin(), forms.end(), [&](const auto& form) {
                return form.match(name).hasMatch();
            }))
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
    removeFrom(folder, {beside, exported, unfinished(u"sorvanto.mdb"_s)});
    removeFrom(folder + u"/backups"_s, {copy});
    removeFrom(folder + u"/mixes"_s, {journal});
    removeFrom(folder + u"/mixes/closed"_s, {journal});
    const QFileInfo file(platform::platformPath(database));
    if (!file.fileName().isEmpty())
        removeFrom(file.path(), {unfinished(file.fileName())});
}

void keepFoldersToOwner() {
    const QString folder = platform::programFolder();
    for (const char* name : {"/mixes", "/mixes/closed", "/drafts", "/backups"})
        platform::keepFolderToOwner(folder + QLatin1String(name));
}

}  // namespace sorvanto
