// The archive is made, checked and named first; the file changes last, in one transaction of the engine.
#include "db/Archive.h"

#include "db/ArchiveFate.h"
#include "db/DatabaseCheck.h"
#include "db/KeyMap.h"
#include "history/HistoryPause.h"
#include "history/HistorySeal.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Connection;
using platform::number;
using platform::Query;
using platform::run;
using platform::RuntimeError;
using platform::text;

[[noreturn]] void refuseArchive(const QString& why) {
    throw RuntimeError(platform::error::general, why, u"Archive"_s);
}

void refuseUnsound(const QString& file) {
    if (const QStringList problems = soundnessProblems(file); !problems.isEmpty())
        refuseArchive(u"\"%1\" is not sound: %2"_s.arg(file, problems.first()));
}

/// The archive under its provisional name; goes with the object unless it was finished.
class NewArchive {
public:
    explicit NewArchive(QString target) : m_target(std::move(target)), m_path(m_target + u".making"_s) {
        clear();  // a journal that a killed run has left would be played into the new file
    }
    ~NewArchive() {
        if (!m_path.isEmpty())
            clear();
    }
    NewArchive(const NewArchive&) = delete;
    NewArchive& operator=(const NewArchive&) = delete;

    const QString& path() const { return m_path; }
    void takeName() {
        platform::replaceFile(m_path, m_target);
        m_path = m_target;
    }
    /// The file knows the archive from now on.
    void keep() { m_path.clear(); }

private:
    void clear() const {
        QFile::remove(m_path);
        QFile::remove(m_path + u"-journal"_s);
    }

    QString m_target, m_path;
};

struct MadeArchive {
    QString identity;
    HistoryHead history;  ///< with which that of the file goes on
};

/// All rows as they are, the identity of its own, and the map. Its history ends with it.
MadeArchive makeArchive(const QString& file, const NewArchive& archive, const QString& oldOnes,
                        const platform::Cancelled& cancelled) {
    platform::copyDatabase(file, archive.path(), cancelled);
    endWhere(cancelled);
    Connection connection;
    connection.open(u"Data Source="_s + archive.path());
    keepHistory(connection);
    platform::Engine& database = connection.engine();
    platform::Transaction transaction(database);
    run(database,
        u"UPDATE FileIdentity SET fid_Parent = fid_Identity, fid_Identity = lower(hex(randomblob(16)))"_s);
    const QString identity = text(database, u"SELECT fid_Identity FROM FileIdentity"_s);
    writeKeyMap(database, identity, oldOnes);
    addHistoryRow(database, u"archive"_s, u"archive='%1'"_s.arg(identity));
    const HistoryHead head = historyHead(database);
    transaction.commit();
    return {identity, head};
}

/// What is older leaves the file, lines and prescriptions with their batches; the rest gets its new keys.
void shrink(platform::Engine& database, const MadeArchive& archive, const QString& oldOnes) {
    const QString& identity = archive.identity;
    HistoryPause pause(database);
    writeKeyMap(database, identity, oldOnes);
    run(database, archivedBatchTable);
    run(database, archivedBatchIndex);
    run(database, u"INSERT INTO ArchivedBatch SELECT '%1', log_Lot, log_Date FROM Log WHERE %2"_s.arg(
                      identity, oldOnes));
    run(database, u"DELETE FROM RXs WHERE LogID IN (SELECT LogID FROM Log WHERE %1)"_s.arg(oldOnes));
    run(database, u"DELETE FROM LogChem WHERE LogID IN (SELECT LogID FROM Log WHERE %1)"_s.arg(oldOnes));
    run(database, u"DELETE FROM Log WHERE %1"_s.arg(oldOnes));
    renumber(database);
    continueHistory(database, identity, archive.history);
    pause.end();
}

void refuseUnlessWhole(platform::Engine& database, const QString& archive) {
    Query relations(database, u"PRAGMA foreign_key_check"_s, {});
    if (relations.step())
        refuseArchive(u"A relation would break"_s);
    Query integrity(database, u"PRAGMA integrity_check"_s, {});
    if (integrity.step() && integrity.value(0, {platform::FieldKind::Text, 0}).toString() != "ok"_L1)
        refuseArchive(u"The file would not be sound"_s);
    Connection old;
    old.open(u"Data Source="_s + archive);
    if (const QString difference = firstDifference(old.engine(), database); !difference.isEmpty())
        refuseArchive(difference);
}

/// Without room for it the file stays large.
void giveBackSpace(platform::Engine& database) {
    try {
        run(database, u"VACUUM"_s);
    } catch (const RuntimeError&) {
    }
}

void refuseUnfit(platform::Engine& database) {
    if (identityOf(database).isEmpty())
        refuseArchive(
            u"The file is of an older version; start the program on it once, which brings it up to date"_s);
    if (!text(database, u"SELECT fid_Parent FROM FileIdentity"_s).isEmpty())
        refuseArchive(u"The file is an archive itself"_s);
}

}  // namespace

QString newArchivePath(const QString& archive) {
    const QString path = platform::platformPath(archive);
    if (QFile::exists(path))
        throw RuntimeError(platform::error::permissionDenied, u"\"%1\" exists already"_s.arg(path));
    return path;
}

QString identityOf(platform::Engine& database) {
    if (database.declaredType(u"FileIdentity"_s, u"fid_Identity"_s).isEmpty())
        return {};
    return text(database, u"SELECT fid_Identity FROM FileIdentity"_s);
}

void endWhere(const platform::Cancelled& cancelled) {
    if (cancelled && cancelled())
        throw RuntimeError(platform::error::permissionDenied, u"stopped; nothing was changed"_s,
                           u"Archive"_s);
}

ArchiveResult archiveDatabase(const QString& file, const QString& archivePath, const QDate& firstKept,
                              const platform::Cancelled& cancelled) {
    if (platform::DataLocation(file).isServer())
        return archiveServer(file, archivePath, firstKept, cancelled);
    const QString target = newArchivePath(archivePath);
    const platform::SoleUse sole(file);
    platform::refuseInUse(file);
    refuseUnsound(file);
    Connection connection;
    connection.open(u"Data Source="_s + file);
    keepHistory(connection);
    platform::Engine& database = connection.engine();
    refuseUnfit(database);
    const QString oldOnes = u"coalesce(log_Date < '%1 00:00:00', 0)"_s.arg(firstKept.toString(Qt::ISODate));
    run(database, u"PRAGMA foreign_keys = OFF"_s);  // looked through as a whole at the end
    std::optional<platform::Transaction> transaction(std::in_place,
                                                     database);  // from here on nobody else writes
    ArchiveResult result;
    result.moved = number(database, u"SELECT count(*) FROM Log WHERE %1"_s.arg(oldOnes));
    result.kept = number(database, u"SELECT count(*) FROM Log"_s) - result.moved;
    result.prescriptions = number(
        database, u"SELECT count(*) FROM RXs WHERE LogID IN (SELECT LogID FROM Log WHERE %1)"_s.arg(oldOnes));
    if (result.moved == 0)
        refuseArchive(
            u"No batch is older than %1: there is nothing to archive"_s.arg(firstKept.toString(Qt::ISODate)));
    NewArchive archive(target);
    const MadeArchive made = makeArchive(file, archive, oldOnes, cancelled);
    refuseUnsound(archive.path());
    endWhere(cancelled);
    shrink(database, made, oldOnes);
    refuseUnlessWhole(database, archive.path());
    endWhere(cancelled);
    archive.takeName();
    try {
        transaction->commit();
    } catch (const RuntimeError& failure) {
        transaction.reset();
        connection.close();  // it may hold the lock that keeps others from looking
        const ArchiveFate fate = archiveFate(file, made.identity);
        if (fate != ArchiveFate::Unchanged)
            archive.keep();
        if (fate == ArchiveFate::Unknown)
            tellUnknownFate(failure, target);
        throw;
    }
    archive.keep();
    giveBackSpace(database);
    return result;
}

}  // namespace sorvanto
