// Between two servers, and before a server is filled, the records lie in a file, which can be checked as any other.
#include "db/RecordsCopy.h"

#include "db/DatabaseCheck.h"
#include "db/DatabaseFile.h"
#include "db/ScratchFolder.h"
#include "db/WholeRecords.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Query.h"
#include "platform/data/postgres/WholeServer.h"
#include "platform/data/sqlite/WholeFile.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::DataLocation;
using platform::RowProgress;
using platform::RuntimeError;
using platform::WholeStore;
using platform::postgres::readWholeServer;

[[noreturn]] void refuseCopy(std::int32_t number, const QString& why) {
    throw RuntimeError(number, why, u"Copy"_s);
}

void refuseUnsound(const QString& file, const QString& source) {
    if (const QStringList problems = checkDatabase(file); !problems.isEmpty())
        refuseCopy(
            platform::error::general,
            u"The records of %1 are not sound, and were not copied: %2"_s.arg(source, problems.first()));
}

void refuseArchive(WholeStore& from) {
    if (!onlyValue(from, u"FileIdentity"_s, u"fid_Parent"_s).isEmpty())
        refuseCopy(platform::error::general, u"An archive is not copied to a server: nobody works on it"_s);
}

/// One that was ever worked on has a history, also where it is empty again.
void refuseFilled(WholeStore& to, const QString& name) {
    std::int64_t rows = to.rowCount(u"History"_s) - 1;  // the first row is the empty server's own
    for (const QString& table : recordTables())
        rows += to.rowCount(table);
    if (rows > 0)
        refuseCopy(platform::error::permissionDenied,
                   u"The server %1 holds records already, and nothing was changed there. Make a new one "
                   "(start-server.sh with another folder) and copy into that"_s.arg(name));
}

/// Half of the work is to read everything once more.
RowProgress partOf(const RowProgress& progress, int part) {
    if (!progress)
        return {};
    return [=](std::int64_t done, std::int64_t all) { return progress(done + part * all, 2 * all); };
}

/// The other half. False where the progress ended it.
bool compareWhole(WholeStore& from, WholeStore& to, const RowProgress& progress) {
    bool ended = false;
    const RowProgress noticed = [&](std::int64_t done, std::int64_t all) {
        ended = progress && !progress(done, all);
        return !ended;
    };
    refuseDifferent(from, to, partOf(noticed, 1));
    return !ended;
}

/// Of a file that nobody else uses and that is sound.
bool fillServer(const QString& file, const DataLocation& server, const RowProgress& progress) {
    const auto from = platform::sqlite::readWholeFile(file);
    refuseArchive(*from);
    const auto to = platform::postgres::fillWholeServer(server.text());
    refuseFilled(*to, server.shownName());
    refuseOtherVersion(*from, *to);
    if (!platform::carryOver(*from, *to, wholeRecords(), partOf(progress, 0)) ||
        !compareWhole(*from, *to, progress))
        return false;
    to->commit();
    return true;
}

QStringList tablesLeftOut(WholeStore& from) {
    QStringList left = from.tables();
    for (const QString& table : wholeRecords())
        left.removeAll(table);
    return left;
}

CopiedRecords told(const QString& file, bool whole) {
    CopiedRecords copied;
    copied.whole = whole;
    if (!whole)
        return copied;
    const auto records = platform::sqlite::readWholeFile(file);
    for (const QString& table : recordTables())
        copied.rows += records->rowCount(table);
    return copied;
}

CopiedRecords copyToServer(const DataLocation& from, const DataLocation& to, const RowProgress& progress) {
    const ScratchFolder scratch;
    const QString file = scratch.filePath(u"records.mdb"_s);
    const auto ended = [&] { return progress && !progress(0, 0); };
    if (!copyToFile(from.text(), file, ended))
        return {};
    refuseUnsound(file, from.shownName());
    CopiedRecords copied = told(file, fillServer(file, to, progress));
    copied.leftOut = tablesLeftOut(*platform::sqlite::readWholeFile(file));
    return copied;
}

/// Checked before it has its name.
bool fillCheckedFile(const DataLocation& from, const QString& file, const RowProgress& progress) {
    const auto server = readWholeServer(from.text());
    if (!fillFile(*server, file, partOf(progress, 0)) ||
        !compareWhole(*server, *platform::sqlite::readWholeFile(file), progress))
        return false;
    refuseUnsound(file, from.shownName());
    return true;
}

CopiedRecords copyFromServer(const DataLocation& from, const QString& target, const RowProgress& progress) {
    if (QFile::exists(target))
        refuseCopy(platform::error::permissionDenied, u"\"%1\" exists already"_s.arg(target));
    const bool whole = platform::makeCheckedFile(
        target, [&](const QString& file) { return fillCheckedFile(from, file, progress); });
    return told(target, whole);
}

}  // namespace

bool copyToFile(const QString& location, const QString& target, const platform::Cancelled& cancelled) {
    const DataLocation from(location);
    if (!from.isServer())
        return platform::copyDatabase(location, target, cancelled);
    const RowProgress progress = [&](std::int64_t, std::int64_t) { return !cancelled || !cancelled(); };
    try {
        return platform::makeCheckedFile(
            target,
            [&](const QString& file) {
                return fillFile(*readWholeServer(from.text(), cancelled), file, progress);
            },
            cancelled);
    } catch (const RuntimeError&) {
        if (cancelled && cancelled())  // a wait for the server was ended
            return false;
        throw;
    }
}

CopiedRecords copyRecords(const QString& from, const QString& to, const RowProgress& progress) {
    const DataLocation source(from), target(to);
    if (target.isServer())
        return copyToServer(source, target, progress);
    const QString file = platform::platformPath(target.text());
    if (source.isServer())
        return copyFromServer(source, file, progress);
    refuseUnsound(source.text(), source.shownName());
    platform::backupDatabase(source.text(), file);
    return told(file, true);
}

void createServerSample(const QString& address, int rows) {
    const ScratchFolder scratch;
    const QString file = scratch.filePath(u"sample.mdb"_s);
    createSample(file, rows);
    copyToServer(DataLocation(file), DataLocation(address), {});
}

}  // namespace sorvanto
