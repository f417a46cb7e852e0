#include "db/HistoryEnd.h"

#include "db/Archive.h"
#include "history/HistoryChain.h"
#include "history/HistorySeal.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::number;
using platform::Query;

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

/// When the file was last put back from a copy; empty when it never was.
QString lastRestored(platform::Engine& database) {
    Query row(database,
              u"SELECT max(strftime('%Y-%m-%d %H:%M:%S', hst_When, hst_Zone || ' minutes')) FROM History "
              "WHERE hst_What = 'restored'"_s,
              {});
    return row.step() ? row.value(0, {platform::FieldKind::Text, 0}).toString() : QString();
}

}  // namespace

QStringList historyEndProblems(const QString& file, const QStringList& programFolders) {
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    platform::Engine& database = connection.engine();
    if (!hasHistory(database))
        return {};
    const QString identity = identityOf(database);
    const std::int64_t first = number(database, u"SELECT min(HistoryID) FROM History"_s);
    const QString restored = lastRestored(database);
    for (const QString& folder : programFolders) {
        QDirIterator journals(folder + u"/mixes"_s, {u"*.xml"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (journals.hasNext()) {
            const QString journal = journals.next();
            const auto [head, moment] = notedIn(journal, identity);
            const bool explained = head.count < first || moment < restored;
            if (head.count > 0 && !explained && !holdsHead(database, head))
                return {
                    u"The history does not go through its row %1 as %2 has noted it: it was changed or cut, or "
                    "the file is an older copy"_s.arg(head.count)
                        .arg(journal)};
        }
    }
    return {};
}

}  // namespace sorvanto
