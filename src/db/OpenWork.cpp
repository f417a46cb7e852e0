// Journals and drafts beside the program that still wait for somebody.
#include "db/Archive.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

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

/// A mix that was only loaded has no batch yet.
bool isOpenMix(const QString& path) {
    constexpr qint64 headLength = 400;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.read(headLength);
    return !head.contains("State=\"loaded\"") && !head.contains("State=\"logged\"") &&
           !head.contains("State=\"put aside\"");
}

}  // namespace

QStringList openWork(const QString& programFolder, const QString& identity) {
    int mixes = 0;
    int drafts = 0;
    const QDir journals(programFolder + u"/mixes"_s);
    for (const QString& name : journals.entryList({u"*.xml"_s}, QDir::Files))
        mixes += isOpenMix(journals.filePath(name)) ? 1 : 0;
    const QDir texts(programFolder + u"/drafts"_s);
    for (const QString& name : texts.entryList({u"*.json"_s}, QDir::Files))
        drafts += isDraftOf(texts.filePath(name), identity) ? 1 : 0;
    QStringList open;
    if (mixes > 0)
        open << u"mixes that are not in the log yet: %1 (log them or put them aside)"_s.arg(mixes);
    if (drafts > 0)
        open << u"texts that were not saved: %1 (bring them back or discard them)"_s.arg(drafts);
    return open;
}

}  // namespace sorvanto
