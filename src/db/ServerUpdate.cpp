#include "db/ServerUpdate.h"

#include "db/UpdateFile.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Query;
using platform::RuntimeError;

[[noreturn]] void refuseUpdate(const QString& why) {
    throw RuntimeError(platform::error::permissionDenied, why, u"Database"_s);
}

void refuseUnlessOwner(platform::Engine& records) {
    if (!ownsTables(records))
        refuseUpdate(
            u"Only the account that owns the records may bring them up to date: log in as sorvanto_owner"_s);
}

/// Until this connection ends.
void keepBenchesAway(platform::Engine& records) {
    if (platform::number(records, u"SELECT CAST(pg_try_advisory_lock(2, 0) AS int)"_s) != 0)
        return;
    QStringList names;
    Query bench(records, u"SELECT bench FROM benches()"_s);
    while (bench.step())
        names << bench.value(0, platform::asText).toString();
    refuseUpdate(
        u"These are at work on the records: %1. Close the program there first."_s.arg(names.join(u", "_s)));
}

QString versionOf(platform::Engine& records) {
    return platform::text(records, u"SELECT CAST(opt_Version AS text) FROM Options"_s);
}

}  // namespace

bool ownsTables(platform::Engine& records) {
    return platform::number(records, u"SELECT CAST(pg_has_role(nspowner, 'USAGE') AS int) FROM pg_namespace "
                                     "WHERE oid = current_schema()::regnamespace"_s) != 0;
}

ServerUpdate updateServer(const QString& address, const QString& updateFile) {
    const auto all = readUpdateFile(updateFile, UpdateOf::Server);
    platform::Connection connection;
    connection.open(u"Data Source="_s + address);
    platform::Engine& records = connection.engine();
    refuseUnlessOwner(records);
    keepBenchesAway(records);
    ServerUpdate done;
    done.from = done.to = versionOf(records);
    const auto steps = stepsFrom(all, versionNumber(done.from));
    if (steps.empty())
        return done;
    done.to = steps.back().to;
    QStringList statements;
    for (const UpdateStep& step : steps)
        statements << step.statements;
    statements << u"UPDATE \"Options\" SET \"opt_Version\" = "_s + done.to;
    records.migrate(statements, versionNumber(done.to), u"ServerUpdate"_s);
    return done;
}

}  // namespace sorvanto
