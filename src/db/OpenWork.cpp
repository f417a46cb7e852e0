// Journals and drafts beside the program that still wait for somebody.
#include "db/Archive.h"

#include "platform/basic/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr qint64 largestDraft = 4'000'000;

/// Of an unknown database counts as of this one.
bool isDraftOf(const QString& path, const QString& identity) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QJsonObject draft = QJsonDocument::fromJson(file.read(largestDraft)).object();
    const QString own = draft.value("identity"_L1).toString();
    return !draft.isEmpty() && (own.isEmpty() || own == identity);
}

/// A mix that was only loaded has no batch yet. One of an unknown database counts as of this one.
bool isOpenMixOf(const QString& path, const QString& identity) {
    constexpr qint64 headLength = 400;
    static const QRegularExpression database(u" Database=\"([^\"]+)\""_s);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.read(headLength);
    const QByteArray head = content.left(content.indexOf('>'));
    const auto own = database.match(QString::fromUtf8(head));
    return !head.contains("State=\"loaded\"") && !head.contains("State=\"logged\"") &&
           !head.contains("State=\"put aside\"") && (!own.hasMatch() || own.captured(1) == identity);
}

}  // namespace

QStringList openWork(const QStringList& programFolders, const QString& identity) {
    int mixes = 0;
    int drafts = 0;
    for (const QString& folder : programFolders) {
        const QDir journals(folder + u"/mixes"_s);
        for (const QString& name : journals.entryList({u"*.xml"_s}, QDir::Files))
            mixes += isOpenMixOf(journals.filePath(name), identity) ? 1 : 0;
        const QDir texts(folder + u"/drafts"_s);
        for (const QString& name : texts.entryList({u"*.json"_s}, QDir::Files))
            drafts += isDraftOf(texts.filePath(name), identity) ? 1 : 0;
    }
    QStringList open;
    if (mixes > 0)
        open << u"mixes that are not in the log yet: %1 (log them or put them aside)"_s.arg(mixes);
    if (drafts > 0)
        open << u"texts that were not saved: %1 (bring them back or discard them)"_s.arg(drafts);
    return open;
}

QStringList possibleFolders(const QString& file) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QStringList folders;
    for (const QString& folder :
         {platform::programFolder(), QFileInfo(platform::platformPath(file)).absolutePath(),
          qEnvironmentVariable("SORVANTO_FOLDER"), data + u"/sorvanto"_s}) {
        if (const QString path = QFileInfo(folder).canonicalFilePath(); !folder.isEmpty() && !path.isEmpty())
            folders << path;
    }
    folders.removeDuplicates();
    return folders;
}

}  // namespace sorvanto
