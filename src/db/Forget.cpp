#include "db/Forget.h"

#include "db/Archive.h"
#include "history/HistoryChain.h"
#include "history/HistoryPause.h"
#include "history/HistorySeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;
using platform::RuntimeError;

std::int64_t blank(platform::Engine& database, std::int64_t patient) {
    HistoryPause pause(database);
    const QString sql =
        u"UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL WHERE %1 AND hst_Record = ? AND "
        "hst_Salt IS NOT NULL"_s.arg(forgettableRows);
    Query rows(database, sql, sql);
    rows.bind(1, qint64{patient});
    rows.step();
    const std::int64_t blanked = rows.changedRows();
    pause.end();
    return blanked;
}

void writeDown(platform::Engine& database, std::int64_t patient, std::int64_t rows) {
    const QString sql = u"INSERT INTO History (hst_Table, hst_Key, hst_Record, hst_What, hst_Fields) "
                        "VALUES ('Patient', ?1, ?1, 'forgotten', ?2)"_s;
    Query row(database, sql, sql);
    row.bind(1, qint64{patient});
    row.bind(2, u"rows=%1"_s.arg(rows));
    row.step();
}

int removeDrafts(const QStringList& programFolders, const QString& identity, std::int64_t patient) {
    int removed = 0;
    for (const QString& folder : programFolders) {
        QDir drafts(folder + u"/drafts"_s);
        for (const QString& name : drafts.entryList({u"*.json"_s}, QDir::Files)) {
            QFile file(drafts.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QJsonObject draft = QJsonDocument::fromJson(file.readAll()).object();
            const QString own = draft.value("identity"_L1).toString();
            if (draft.value("table"_L1).toString() == "Patient"_L1 &&
                draft.value("key"_L1).toInteger() == patient && (own.isEmpty() || own == identity))
                removed += file.remove() ? 1 : 0;
        }
    }
    return removed;
}

}  // namespace

ForgetResult forgetPatient(const QString& file, std::int64_t patient, const QStringList& programFolders) {
    const platform::SoleUse sole(file);
    platform::refuseInUse(file);
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    platform::Engine& database = connection.engine();
    if (!hasHistory(database))
        throw RuntimeError(platform::error::general, u"The file keeps no history"_s, u"Forget"_s);
    keepHistory(connection);
    // What is blanked is also written over, not only given free.
    platform::run(database, u"PRAGMA secure_delete = ON"_s);
    platform::Transaction transaction(database);
    ForgetResult result{blank(database, patient),
                        removeDrafts(programFolders, identityOf(database), patient)};
    if (result.rows == 0 && result.drafts == 0)
        throw RuntimeError(platform::error::general,
                           u"The history holds nothing of patient %1"_s.arg(patient), u"Forget"_s);
    writeDown(database, patient, result.rows);
    transaction.commit();
    return result;
}

}  // namespace sorvanto
