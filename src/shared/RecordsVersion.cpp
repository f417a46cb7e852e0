#include "shared/RecordsVersion.h"

#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

/// Of the records, in ten-thousandths.
const QString versionSql = u"CAST(round(CAST(\"opt_Version\" AS numeric) * 10000) AS bigint)"_s;

/// answer: the version, and which program it needs.
QString reasonAgainst(const QString& answer) {
    const std::int64_t version = answer.section(u' ', 0, 0).toLongLong();
    if (version > recordsVersion)
        return u"The records on the server belong to a newer program; version %1 of it is needed"_s.arg(
            answer.section(u' ', 1));
    if (version < recordsVersion)
        return u"The records on the server are older than this program"_s;
    return {};
}

}  // namespace

QString versionRefused(const platform::Connection& server) {
    platform::Engine& records = server.engine();
    const std::int64_t version = platform::number(records, u"SELECT %1 FROM Options"_s.arg(versionSql));
    if (version > recordsVersion)
        return translated(
                   u"The records on the server belong to a newer program. This computer needs version %1 of it."_s)
            .replace(u"%1"_s, platform::text(records, u"SELECT needs_program()"_s));
    if (version < recordsVersion)
        return translated(
                   u"The records on the server are older than this program. Ask who has set up the server to run: %1"_s)
            .replace(u"%1"_s, u"sorvanto-db update"_s);
    return {};
}

void keepRefusingVersions(const platform::Connection& server) {
    server.engine().setAdmission(u"SELECT %1 || ' ' || needs_program() FROM \"Options\""_s.arg(versionSql),
                                 reasonAgainst);
}

platform::postgres::Admission admissionOfTrial() {
    // Who brings them up to date holds the lock of all benches alone; a trial takes no part in it.
    const QString question =
        u"SELECT CASE WHEN EXISTS (SELECT FROM pg_locks WHERE locktype = 'advisory' AND classid = 2 AND objid = 0 AND "
        "mode = 'ExclusiveLock' AND granted AND database = (SELECT oid FROM pg_database WHERE datname = "
        "current_database())) THEN 0 ELSE %1 END FROM sorvanto.\"Options\""_s.arg(versionSql);
    return {question.toUtf8(),
            [](const QByteArray& answer) { return answer.toLongLong() == recordsVersion; }};
}

}  // namespace sorvanto
