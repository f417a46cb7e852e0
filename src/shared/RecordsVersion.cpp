#include "shared/RecordsVersion.h"

#include "platform/data/Connection.h"
#include "platform/data/Query.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

QString versionRefused(const platform::Connection& server) {
    platform::Engine& records = server.engine();
    const std::int64_t version = platform::number(
        records, u"SELECT CAST(round(CAST(opt_Version AS numeric) * 10000) AS bigint) FROM Options"_s);
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

}  // namespace sorvanto
