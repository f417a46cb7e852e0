#include "db/ArchiveFate.h"

#include "platform/data/Connection.h"
#include "platform/data/Query.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

using platform::RuntimeError;

ArchiveFate archiveFate(const QString& location, const QString& archive) {
    try {
        platform::Connection connection;
        connection.open(u"Data Source="_s + location);
        platform::Engine& records = connection.engine();
        const bool changed =
            records.tables().contains(u"ArchivedBatch"_s) &&
            platform::number(
                records, u"SELECT count(*) FROM ArchivedBatch WHERE abt_Archive = '%1'"_s.arg(archive)) > 0;
        return changed ? ArchiveFate::Changed : ArchiveFate::Unchanged;
    } catch (const RuntimeError&) {
        return ArchiveFate::Unknown;
    }
}

void tellUnknownFate(const RuntimeError& failure, const QString& archive) {
    throw RuntimeError(
        failure.number(),
        u"%1. Whether the batches have left the records can't be found out; they are whole in \"%2\""_s.arg(
            failure.description(), archive),
        u"Archive"_s);
}

}  // namespace sorvanto
