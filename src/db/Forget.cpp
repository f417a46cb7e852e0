#include "db/Forget.h"

#include "db/Archive.h"
#include "db/ServerUpdate.h"
#include "history/HistoryChain.h"
#include "history/HistoryPause.h"
#include "history/HistorySeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <optional>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;
using platform::run;
using platform::RuntimeError;

std::int64_t blankRows(platform::Engine& database, std::int64_t patient) {
    const QString sql =
        u"UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL WHERE %1 AND hst_Record = ? AND "
        "hst_Salt IS NOT NULL"_s.arg(forgettableRows);
    Query rows(database, sql, sql);
    rows.bind(1, qint64{patient});
    rows.step();
    return rows.changedRows();
}

std::int64_t blankInFile(platform::Engine& database, std::int64_t patient) {
    HistoryPause pause(database);
    const std::int64_t blanked = blankRows(database, patient);
    pause.end();
    return blanked;
}

/// Only the owner of the tables can; benches that write something wait so long.
std::int64_t blankOnServer(platform::Engine& database, std::int64_t patient) {
    run(database, u"ALTER TABLE History DISABLE TRIGGER history_sealed"_s);
    const std::int64_t blanked = blankRows(database, patient);
    run(database, u"ALTER TABLE History ENABLE TRIGGER history_sealed"_s);
    return blanked;
}

void writeDownOnServer(platform::Engine& database, std::int64_t patient, std::int64_t rows) {
    run(database,
        u"DO $$ BEGIN PERFORM pg_advisory_xact_lock(1, hashtext(bench())); "
        "PERFORM write_history('Patient', %1, %1, NULL, 'forgotten', 'rows=%2'); END $$"_s.arg(patient)
            .arg(rows));
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

ForgetResult forget(const platform::Connection& connection, bool onServer, std::int64_t patient,
                    const QStringList& programFolders) {
    platform::Engine& database = connection.engine();
    platform::Transaction transaction(database);
    ForgetResult result{onServer ? blankOnServer(database, patient) : blankInFile(database, patient),
                        removeDrafts(programFolders, identityOf(database), patient)};
    if (result.rows == 0 && result.drafts == 0)
        throw RuntimeError(platform::error::general,
                           u"The history holds nothing of patient %1"_s.arg(patient), u"Forget"_s);
    onServer ? writeDownOnServer(database, patient, result.rows) : writeDown(database, patient, result.rows);
    transaction.commit();
    return result;
}

}  // namespace

ForgetResult forgetPatient(const QString& location, std::int64_t patient, const QStringList& programFolders) {
    const bool onServer = platform::DataLocation(location).isServer();
    std::optional<platform::SoleUse> sole;
    if (!onServer) {
        sole.emplace(location);
        platform::refuseInUse(location);
    }
    platform::Connection connection;
    connection.open(u"Data Source="_s + location);
    if (!hasHistory(connection.engine()))
        throw RuntimeError(platform::error::general, u"The file keeps no history"_s, u"Forget"_s);
    if (onServer && !ownsTables(connection.engine()))
        throw RuntimeError(platform::error::permissionDenied,
                           u"That is for the owner of the tables: the address begins with "
                           "postgresql://sorvanto_owner@"_s,
                           u"Forget"_s);
    keepHistory(connection);
    if (!onServer)  // what is blanked is also written over, not only given free
        run(connection.engine(), u"PRAGMA secure_delete = ON"_s);
    return forget(connection, onServer, patient, programFolders);
}

}  // namespace sorvanto
