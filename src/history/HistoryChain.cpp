// Walks through History in the order of its rows and seals each of them anew.
#include "history/HistoryChain.h"

#include "history/HistorySeal.h"
#include "platform/data/Query.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;

/// Each row with whether its seal holds: one walk in the order of the rows, with the seal before in hand.
QString sealsSql() {
    const QString seal = sealArguments().arg(u"history_seal_before(hst_Seal)"_s, u"hst_Person"_s,
                                             u"hst_Program"_s, u"hst_Deed"_s, u"hst_Note"_s, u"hst_Digest"_s);
    return u"SELECT HistoryID, hst_Table, hst_Key, hst_What, hst_When, hst_Seal IS NULL, "
           "coalesce(hst_Seal = history_hash(%1), 0), "
           "coalesce(hst_Digest = history_hash(hst_Salt, hst_Name, hst_Fields), 0), "
           "CASE WHEN hst_Salt IS NULL AND hst_Name IS NULL AND hst_Fields IS NULL AND %2 THEN EXISTS (SELECT 1 "
           "FROM History f WHERE f.hst_Table = 'Patient' AND f.hst_What = 'forgotten' AND "
           "f.hst_Record = History.hst_Record AND f.HistoryID > History.HistoryID) ELSE 0 END "
           "FROM History ORDER BY HistoryID"_s.arg(seal, forgettableRows);
}

/// Gives the engine history_seal_before(): the seal that it was called with the time before, NULL at the first time.
void installSealBefore(platform::Engine& database) {
    database.addFunction("history_seal_before", platform::FunctionResult::OfTheMoment,
                         [seal = QVariant()](const std::vector<platform::PlainValue>& values) mutable {
                             const QByteArray& own = values.at(0).bytes;
                             return std::exchange(seal, values.at(0).kind == 'n'
                                                            ? QVariant()
                                                            : QVariant(QByteArray(own.data(), own.size())));
                         });
}

enum ChainColumn { Id, Table, Key, What, When, Unsealed, SealHolds, DigestHolds, Forgotten };

QString named(const Query& row) {
    return u"row %1 (%2 %3, %4, %5)"_s.arg(row.integer(Id))
        .arg(row.value(Table, asText).toString())
        .arg(row.integer(Key))
        .arg(row.value(What, asText).toString(), row.value(When, asText).toString());
}

/// A chain begins with its first row, or where an archive has taken along what was before.
bool beginsHere(const Query& row) {
    const QString what = row.value(What, asText).toString();
    return row.integer(Id) == 1 ? what == "begun"_L1 : what == "archived"_L1;
}

}  // namespace

HistoryHead historyHead(platform::Engine& database) {
    if (!hasHistory(database))
        return {};
    Query last(database,
               u"SELECT HistoryID, hex(hst_Seal) FROM History WHERE hst_Seal IS NOT NULL "
               "ORDER BY HistoryID DESC LIMIT 1"_s,
               {});
    if (!last.step())
        return {};
    return {last.integer(0), QByteArray::fromHex(last.value(1, asText).toString().toLatin1())};
}

QString toText(const HistoryHead& head) {
    return u"%1:%2"_s.arg(head.count).arg(QString::fromLatin1(head.seal.toHex()));
}

HistoryHead headFromText(const QString& text) {
    constexpr qsizetype sealLength = 32;
    HistoryHead head{text.section(u':', 0, 0).toLongLong(),
                     QByteArray::fromHex(text.section(u':', 1).toLatin1())};
    return head.count > 0 && head.seal.size() == sealLength ? head : HistoryHead();
}

QStringList chainProblems(platform::Engine& database) {
    if (!hasHistory(database))
        return {};
    installHistoryHash(database);
    installSealBefore(database);
    Query row(database, sealsSql(), {});
    std::int64_t last = 0;
    bool unsealed = false;
    for (bool first = true; row.step(); first = false) {
        const std::int64_t id = row.integer(Id);
        if (first && !beginsHere(row))
            return {u"The history does not begin with its first row, but with %1"_s.arg(named(row))};
        if (!first && id != last + 1)
            return {u"The history has no rows between %1 and %2"_s.arg(last).arg(id)};
        if (unsealed && row.integer(Unsealed) == 0)
            return {u"The history is broken before %1: there is no seal"_s.arg(named(row))};
        unsealed = unsealed || row.integer(Unsealed) != 0;
        const bool holds =
            row.integer(SealHolds) != 0 && (row.integer(DigestHolds) != 0 || row.integer(Forgotten) != 0);
        if (!unsealed && !holds)
            return {u"The history is broken at %1: it is not as it was sealed"_s.arg(named(row))};
        last = id;
    }
    if (const std::int64_t given = database.lastKey(u"History"_s); given != last)
        return {u"The history ends with row %1, although row %2 was written"_s.arg(last).arg(given)};
    return {};
}

bool holdsHead(platform::Engine& database, const HistoryHead& head) {
    Query row(database, u"SELECT hex(hst_Seal) FROM History WHERE HistoryID = ?"_s, {});
    row.bind(1, qint64{head.count});
    return row.step() && QByteArray::fromHex(row.value(0, asText).toString().toLatin1()) == head.seal;
}

}  // namespace sorvanto
