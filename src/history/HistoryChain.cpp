#include "history/HistoryChain.h"

#include "history/HistoryProof.h"
#include "history/HistorySeal.h"
#include "platform/data/Query.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;

QString named(const ProvenRow& row) {
    return u"row %1 (%2 %3, %4, %5)"_s.arg(row.number).arg(row.table).arg(row.key).arg(row.what, row.when);
}

/// A chain begins with its first row, or where an archive has taken along what was before.
bool beginsHere(const ProvenRow& row) {
    return row.number == 1 ? row.what == "begun"_L1 : row.what == "archived"_L1;
}

/// Where each bench has its own chain, the store knows where each of them ends.
bool knowsEnds(platform::Engine& database) {
    return !database.declaredType(u"HistoryChain"_s, u"chn_Seal"_s).isEmpty();
}

QStringList endProblems(platform::Engine& database, const HistoryLinks& links) {
    Query noted(
        database,
        u"SELECT chn_Bench, chn_Last, %1 FROM HistoryChain WHERE chn_Count > 0 ORDER BY chn_Bench"_s.arg(
            database.words().hex(u"chn_Seal"_s)),
        {});
    auto ends = links.ends();
    while (noted.step()) {
        const QString bench = noted.value(0, asText).toString();
        const HistoryLinks::End end = ends.take(bench);
        const QString whose = bench.isEmpty() ? u"of other programs"_s : u"of "_s + bench;
        if (end.number != noted.integer(1))
            return {u"The history %1 ends with row %2, although row %3 was written"_s.arg(whose)
                        .arg(end.number)
                        .arg(noted.integer(1))};
        if (end.seal != QByteArray::fromHex(noted.value(2, asText).toString().toLatin1()))
            return {u"The history %1 ends with another seal than was noted"_s.arg(whose)};
    }
    return ends.isEmpty() ? QStringList()
                          : QStringList{u"The history knows of no rows of %1, although there are some"_s.arg(
                                ends.constBegin().key())};
}

}  // namespace

HistoryHead historyHead(platform::Engine& database) {
    if (!hasHistory(database))
        return {};
    // A server knows whose chain it is: what the end of another one covers is none of this bench's.
    Query last(
        database,
        knowsEnds(database) && database.isServer()
            ? u"SELECT chn_Last, %1 FROM HistoryChain WHERE chn_Bench = bench() AND chn_Count > 0"_s.arg(
                  database.words().hex(u"chn_Seal"_s))
            : u"SELECT HistoryID, %1 FROM History WHERE hst_Seal IS NOT NULL ORDER BY HistoryID DESC LIMIT 1"_s
                  .arg(database.words().hex(u"hst_Seal"_s)),
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
    const auto look = database.beginLook();
    const auto proof = proveHistory(database);
    std::int64_t last = 0;
    bool unsealed = false;
    for (bool first = true; const auto row = proof->next(); first = false) {
        if (first && !beginsHere(*row))
            return {u"The history does not begin with its first row, but with %1"_s.arg(named(*row))};
        if (!first && !proof->links().isOfBench() && row->number != last + 1)
            return {u"The history has no rows between %1 and %2"_s.arg(last).arg(row->number)};
        if (unsealed && row->isSealed)
            return {u"The history is broken before %1: there is no seal"_s.arg(named(*row))};
        unsealed = unsealed || !row->isSealed;
        if (!unsealed && !row->holds)
            return {u"The history is broken at %1: it is not as it was sealed"_s.arg(named(*row))};
        last = row->number;
    }
    // Before its first change a copy on a server has what the file's program has not sealed yet, and no chains.
    if (knowsEnds(database) && unsealed)
        return platform::number(database, u"SELECT count(*) FROM HistoryChain"_s) > 0
                   ? QStringList{u"The history has rows without a seal"_s}
                   : QStringList();
    if (knowsEnds(database))
        return endProblems(database, proof->links());
    const bool hasGaps = proof->links().isOfBench();
    if (const std::int64_t given = database.lastKey(u"History"_s); given != last && !hasGaps)
        return {u"The history ends with row %1, although row %2 was written"_s.arg(last).arg(given)};
    return {};
}

bool holdsHead(platform::Engine& database, const HistoryHead& head) {
    Query row(database,
              u"SELECT %1 FROM History WHERE HistoryID = ?"_s.arg(database.words().hex(u"hst_Seal"_s)), {});
    row.bind(1, qint64{head.count});
    return row.step() && QByteArray::fromHex(row.value(0, asText).toString().toLatin1()) == head.seal;
}

}  // namespace sorvanto
