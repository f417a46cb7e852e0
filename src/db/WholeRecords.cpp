#include "db/WholeRecords.h"

#include "db/DatabaseFile.h"
#include "db/KeyMap.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/WholeFile.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::RowProgress;
using platform::WholeStore;

/// What an archive run has noted, in a file that had none.
void makeArchiveTables(const QString& file, WholeStore& from) {
    if (from.rowCount(u"KeyMap"_s) + from.rowCount(u"ArchivedBatch"_s) == 0)
        return;
    for (const QLatin1StringView statement : {keyMapTable, archivedBatchTable, archivedBatchIndex})
        platform::sqlite::makeTables(file, QByteArray(statement.data(), statement.size()));
}

[[noreturn]] void refuseCopy(const QString& why) {
    throw platform::RuntimeError(platform::error::general, why, u"Copy"_s);
}

}  // namespace

const QStringList& recordTables() {
    static const QStringList tables{u"Chemical"_s, u"Formula"_s, u"Patient"_s, u"FormChem"_s,
                                    u"Log"_s,      u"LogChem"_s, u"RXs"_s};
    return tables;
}

const QStringList& wholeRecords() {
    static const QStringList tables =
        recordTables() +
        QStringList{u"Options"_s, u"FileIdentity"_s, u"History"_s, u"KeyMap"_s, u"ArchivedBatch"_s};
    return tables;
}

QString onlyValue(WholeStore& store, const QString& table, const QString& column) {
    QString value;
    store.read(table, {column}, [&](const std::vector<platform::StoredRow>& rows) {
        value = QString::fromUtf8(rows.front().front().bytes);
    });
    return value;
}

void refuseOtherVersion(WholeStore& from, WholeStore& to) {
    const QString column = u"opt_Version"_s, table = u"Options"_s;
    const QString own = onlyValue(from, table, column), wanted = onlyValue(to, table, column);
    if (own != wanted)
        refuseCopy(
            u"The records are of version %1, and the new ones would be of version %2. Bring the older ones up to date "
            "first, by starting the program on them"_s.arg(own, wanted));
}

bool fillFile(WholeStore& from, const QString& file, const RowProgress& progress) {
    platform::sqlite::makeTables(file, newFileStatements());
    makeArchiveTables(file, from);
    const auto to = platform::sqlite::fillWholeFile(file);
    refuseOtherVersion(from, *to);
    if (!platform::carryOver(from, *to, wholeRecords(), progress))
        return false;
    to->commit();
    return true;
}

void refuseDifferent(WholeStore& from, WholeStore& to, const RowProgress& progress) {
    const QString difference = platform::firstDifference(from, to, wholeRecords(), progress);
    if (!difference.isEmpty())
        refuseCopy(u"What was written is not what was read, and nothing was kept: %1"_s.arg(difference));
}

}  // namespace sorvanto
