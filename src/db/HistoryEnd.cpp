#include "db/HistoryEnd.h"

#include "db/Archive.h"
#include "db/DatabaseCheck.h"
#include "history/HistoryChain.h"
#include "history/HistoryFields.h"
#include "history/HistorySeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/data/sqlite/FileReader.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::number;
using platform::Query;
using platform::text;
using platform::sqlite::FileReader;

struct Noted {
    HistoryHead head;
    QString moment;  ///< of the signing, by the computer's clock
};

/// What a journal has noted of this database; a count of 0 when nothing.
Noted notedIn(const QString& journal, const QString& identity) {
    static const QString colon = u"(?:&quot;|\"):(?:&quot;|\")"_s;
    static const QRegularExpression head(u"History"_s + colon + u"(\\d+:[0-9a-f]{64})"_s);
    static const QRegularExpression moment(u"log_Date"_s + colon + u"([-0-9 :]+)"_s);
    QFile file(journal);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString content = QString::fromUtf8(file.readAll());
    const auto found = head.match(content);
    if (!found.hasMatch() || !content.contains(u"Database=\"%1\""_s.arg(identity)))
        return {};
    return {headFromText(found.captured(1)), moment.match(content).captured(1)};
}

struct CopyEnd {
    HistoryHead head;
    QString moment;  ///< of its last row, UTC
    QString path;
};

/// A count of 0 for a file that is no copy of this database, or none with a history.
CopyEnd endOf(const QString& path, const QString& identity) {
    try {
        const FileReader copy(path, FileReader::Reading::AsItLies);
        if (copy.rows(u"SELECT fid_Identity FROM FileIdentity"_s).value(0) != QStringList{identity})
            return {};
        const QStringList last =
            copy.rows(
                    u"SELECT HistoryID || ':' || hex(hst_Seal), hst_When FROM History WHERE hst_Seal IS NOT NULL "
                    "ORDER BY HistoryID DESC LIMIT 1"_s)
                .value(0);
        return {headFromText(last.value(0)), last.value(1), path};
    } catch (const platform::RuntimeError&) {  // of an older version, damaged, or none of the engine's files
        return {};
    }
}

/// Where copies and archives of the file may lie.
QStringList otherFiles(const QString& file, const QStringList& programFolders) {
    QStringList folders{QFileInfo(file).absolutePath()};
    for (const QString& folder : programFolders)
        folders << folder << folder + u"/backups"_s;
    folders.removeDuplicates();
    QStringList others;
    for (const QString& folder : folders) {
        for (const QFileInfo& found : QDir(folder).entryInfoList({u"*.mdb"_s}, QDir::Files)) {
            if (found != QFileInfo(file))
                others << found.absoluteFilePath();
        }
    }
    return others;
}

/// With the longest history.
CopyEnd longestCopy(const QStringList& files, const QString& identity) {
    CopyEnd longest;
    for (const QString& file : files) {
        if (CopyEnd end = endOf(file, identity); end.head.count > longest.head.count)
            longest = std::move(end);
    }
    return longest;
}

/// The archive that took along what was before, with the end of it there; a count of 0 where none did.
struct Former {
    HistoryHead head;
    QString identity;
};

Former formerOf(platform::Engine& database) {
    Former former;
    for (const HistoryField& field : readHistoryFields(text(
             database,
             u"SELECT hst_Fields FROM History WHERE hst_What = 'archived' ORDER BY HistoryID LIMIT 1"_s))) {
        if (field.name == "archive"_L1)
            former.identity = field.after.toString();
        if (field.name == "before"_L1)
            former.head = headFromText(field.after.toString());
    }
    return former;
}

bool isFile(const QString& path, const QString& identity) {
    try {
        const FileReader file(path, FileReader::Reading::AsItLies);
        return file.rows(u"SELECT fid_Identity FROM FileIdentity"_s).value(0) == QStringList{identity};
    } catch (const platform::RuntimeError&) {
        return false;
    }
}

bool holdsEnd(const QString& path, const HistoryHead& head) {
    try {
        const FileReader file(path, FileReader::Reading::AsItLies);
        const auto rows =
            file.rows(u"SELECT lower(hex(hst_Seal)) FROM History WHERE HistoryID = %1"_s.arg(head.count));
        return rows.value(0) == QStringList{QString::fromLatin1(head.seal.toHex())};
    } catch (const platform::RuntimeError&) {
        return false;
    }
}

/// An archive whose seals were reckoned anew is whole by itself, but is not what the file goes on from.
QStringList archiveProblems(platform::Engine& database, const QStringList& files) {
    const Former former = formerOf(database);
    QStringList problems;
    for (const QString& file : files) {
        if (former.head.count > 0 && isFile(file, former.identity) && !holdsEnd(file, former.head))
            problems
                << u"The history goes on from row %1 of the archive %2, which does not hold it: the archive was "
                   "changed"_s.arg(former.head.count)
                       .arg(file);
    }
    return problems;
}

QStringList copyProblems(platform::Engine& database, const CopyEnd& copy) {
    const std::int64_t last = historyHead(database).count;
    const std::int64_t first = number(database, u"SELECT min(HistoryID) FROM History"_s);
    const QString restored =
        text(database, u"SELECT max(hst_When) FROM History WHERE hst_What = 'restored'"_s);
    if (copy.head.count < first || copy.moment < restored || holdsHead(database, copy.head))
        return {};
    if (last < copy.head.count)
        return {
            u"The history ends with row %1, but rows up to %2 are in the copy %3: its end was cut, or the file is an "
            "older copy"_s.arg(last)
                .arg(copy.head.count)
                .arg(copy.path)};
    return {u"The history does not go through its row %1 as the copy %2 has it: it was changed"_s
                .arg(copy.head.count)
                .arg(copy.path)};
}

/// When the file was last put back from a copy; empty when it never was.
QString lastRestored(platform::Engine& database) {
    return text(database, u"SELECT max(strftime('%Y-%m-%d %H:%M:%S', hst_When, hst_Zone || ' minutes')) FROM "
                          "History WHERE hst_What = 'restored'"_s);
}

}  // namespace

QStringList formerProblems(const QString& file, const QString& archive) {
    QStringList problems;
    for (const QString& problem : checkDatabase(archive))
        problems << u"%1: %2"_s.arg(archive, problem);
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    const Former former = formerOf(connection.engine());
    if (former.head.count == 0 || !isFile(archive, former.identity))
        return problems << u"The history does not go on from %1: it is another archive, or none"_s.arg(
                   archive);
    return problems + archiveProblems(connection.engine(), {archive});
}

QStringList historyEndProblems(const QString& file, const QStringList& programFolders) {
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    platform::Engine& database = connection.engine();
    if (!hasHistory(database))
        return {};
    const QString identity = identityOf(database);
    const std::int64_t first = number(database, u"SELECT min(HistoryID) FROM History"_s);
    const QString restored = lastRestored(database);
    const QStringList others = otherFiles(file, programFolders);
    QStringList problems =
        copyProblems(database, longestCopy(others, identity)) + archiveProblems(database, others);
    for (const QString& folder : programFolders) {
        QDirIterator journals(folder + u"/mixes"_s, {u"*.xml"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (journals.hasNext()) {
            const QString journal = journals.next();
            const auto [head, moment] = notedIn(journal, identity);
            const bool explained = head.count < first || moment < restored;
            if (head.count > 0 && !explained && !holdsHead(database, head))
                return problems
                       << u"The history does not go through its row %1 as %2 has noted it: it was changed or "
                          "cut, or the file is an older copy"_s.arg(head.count)
                              .arg(journal);
        }
    }
    return problems;
}

}  // namespace sorvanto
