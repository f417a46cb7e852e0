// A server's records are archived as a file's are: they are read into a file, that one is archived, and what stays goes
// back in their place. All of it lies in one transaction that keeps everybody else away, and that changes nothing before
// the archive is whole.
#include "db/Archive.h"
#include "db/ArchiveFate.h"
#include "db/DatabaseCheck.h"
#include "db/ScratchFolder.h"
#include "db/WholeRecords.h"
#include "history/HistoryFields.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"
#include "platform/data/DatabaseCopy.h"
#include "platform/data/Query.h"
#include "platform/data/postgres/WholeServer.h"
#include "platform/data/sqlite/WholeFile.h"

#include <QFile>
#include <QHash>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;
using platform::RowProgress;
using platform::RuntimeError;
using platform::WholeStore;

/// Compared with the server once more: nothing else vouches for the rows that will leave it.
void takeDown(WholeStore& server, const QString& file, const QString& name, const RowProgress& progress) {
    platform::makeCheckedFile(file, [&](const QString& made) { return fillFile(server, made, progress); });
    refuseDifferent(server, *platform::sqlite::readWholeFile(file), progress);
    if (const QStringList problems = soundnessProblems(file); !problems.isEmpty())
        throw RuntimeError(
            platform::error::general,
            u"The records of %1 are not sound, and nothing was archived: %2"_s.arg(name, problems.first()),
            u"Archive"_s);
}

/// That batches were deleted is known to their own bench and to the history, which has gone into the archive. Another bench
/// would offer them for the log once more.
void keepDeletions(const QString& archive, const QString& file) {
    platform::Connection old, rest;
    old.open(u"Data Source="_s + archive);
    rest.open(u"Data Source="_s + file);
    Query deleted(old.engine(),
                  u"SELECT hst_Fields FROM History WHERE hst_Table = 'Log' AND hst_What = 'deleted'"_s, {});
    Query note(rest.engine(), u"INSERT INTO ArchivedBatch VALUES ('', ?, ?)"_s, {});
    while (deleted.step()) {
        QHash<QString, QVariant> values;
        for (const HistoryField& field : readHistoryFields(deleted.value(0, platform::asText).toString()))
            values[field.name] = field.after;
        note.bind(1, values[u"log_Lot"_s]);
        note.bind(2, values[u"log_Date"_s]);
        note.step();
        note.reset();
    }
}

/// The archive goes with the object, until the records may have let go of what is in it.
class Unneeded {
public:
    explicit Unneeded(QString path) : m_path(std::move(path)) {}
    ~Unneeded() {
        if (!m_path.isEmpty())
            QFile::remove(m_path);
    }
    Unneeded(const Unneeded&) = delete;
    Unneeded& operator=(const Unneeded&) = delete;
    void keep() { m_path.clear(); }

private:
    QString m_path;
};

void putBack(const QString& file, WholeStore& server, const RowProgress& progress) {
    const auto rest = platform::sqlite::readWholeFile(file);
    platform::carryOver(*rest, server, wholeRecords(), progress);
    refuseDifferent(*rest, server, progress);
}

QString identityIn(const QString& file) {
    platform::Connection connection;
    connection.open(u"Data Source="_s + file);
    return identityOf(connection.engine());
}

}  // namespace

ArchiveResult archiveServer(const QString& address, const QString& archive, const QDate& firstKept,
                            const platform::Cancelled& cancelled) {
    // Throws rather than says no: what was ended is never taken for what was found equal.
    const RowProgress progress = [&](std::int64_t, std::int64_t) {
        endWhere(cancelled);
        return true;
    };
    const QString target = newArchivePath(archive);
    const ScratchFolder scratch;
    const QString file = scratch.filePath(u"records.mdb"_s);
    auto server = platform::postgres::fillWholeServer(address);
    takeDown(*server, file, platform::DataLocation(address).shownName(), progress);
    const ArchiveResult result = archiveDatabase(file, target, firstKept, cancelled);
    Unneeded unneeded(target);
    keepDeletions(target, file);
    putBack(file, *server, progress);
    const QString identity = identityIn(target);
    try {
        server->commit();
    } catch (const RuntimeError& failure) {
        server.reset();  // it may hold the locks that keep others from looking
        const ArchiveFate fate = archiveFate(address, identity);
        if (fate != ArchiveFate::Unchanged)
            unneeded.keep();
        if (fate == ArchiveFate::Unknown)
            tellUnknownFate(failure, target);
        if (fate == ArchiveFate::Unchanged)
            throw;
    }
    unneeded.keep();
    return result;
}

}  // namespace sorvanto
