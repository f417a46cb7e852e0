#include "history/OtherBenches.h"

#include "history/HistorySeal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;

constexpr qint64 minuteSeconds = 60;

/// The least number that any row between the two can have, less one; nothing where there is none.
std::optional<std::int64_t> lowerEnd(const HistoryEnds& before, const HistoryEnds& now) {
    std::optional<std::int64_t> least;
    for (auto bench = now.begin(); bench != now.end(); ++bench) {
        const std::int64_t from = before.value(bench.key());
        if (bench.value() > from)
            least = std::min(from, least.value_or(from));
    }
    return least;
}

/// The clock of this computer, as platform::now() shows it, and minutes from 1970 on in UTC.
std::int64_t minuteOf(const QDateTime& clock) {
    return QDateTime(clock.date(), clock.time()).toSecsSinceEpoch() / minuteSeconds;
}
QDateTime clockAt(std::int64_t minute) {
    const QDateTime local = QDateTime::fromSecsSinceEpoch(minute * minuteSeconds);
    return QDateTime(local.date(), local.time(), Qt::UTC);
}

/// Rows of the record and of its lines; of a formula also of the chemicals that it is made of.
QString rowsOf(const QString& table) {
    const QString own = u"hst_Table IN (?, ?) AND hst_Record = ?"_s;
    if (table != "Formula"_L1)
        return own;
    return u"(%1 OR hst_Table = 'Chemical' AND hst_What = 'changed' AND hst_Record IN "
           "(SELECT ChemicalID FROM FormChem WHERE FormulaID = ?))"_s.arg(own);
}

bool isShownBy(const QString& table, const HistoryEntry& entry) {
    if (entry.table != "Chemical"_L1 || table == entry.table)
        return true;
    static const QStringList shown{u"chm_Name"_s, u"chm_Units"_s, u"chm_Cost"_s, u"chm_AWP"_s};
    return std::any_of(entry.fields.begin(), entry.fields.end(),
                       [](const HistoryField& field) { return shown.contains(field.name); });
}

bool isBetween(const HistoryEntry& entry, const HistoryEnds& before, const HistoryEnds& now) {
    const QString bench = benchOf(entry.person);
    return entry.number > before.value(bench) && entry.number <= now.value(bench);
}

}  // namespace

HistoryEnds lookAround(platform::Engine& server, const std::optional<BenchMix>& mixedHere) {
    const QString formula = mixedHere ? QString::number(mixedHere->formula) : u"NULL"_s;
    const QString minute = mixedHere ? QString::number(minuteOf(mixedHere->since)) : u"NULL"_s;
    Query end(server, u"SELECT bench, number FROM look_around(%1, %2)"_s.arg(formula, minute));
    HistoryEnds ends;
    while (end.step())
        ends[end.value(0, asText).toString()] = end.integer(1);
    return ends;
}

QString benchOf(const QString& person) { return person.section(u'@', -1); }

bool haveOthersWritten(platform::Engine& server, const HistoryEnds& before, const HistoryEnds& now) {
    const QString person = currentWriter().person;
    const QString here = benchOf(person);
    for (auto bench = now.begin(); bench != now.end(); ++bench) {
        if (bench.key() != here && bench.value() > before.value(bench.key()))
            return true;
    }
    if (now.value(here) <= before.value(here))
        return false;
    // By this computer, which others may use too.
    Query others(
        server, u"SELECT count(*) FROM History WHERE HistoryID > ? AND HistoryID <= ? AND hst_Person <> ?"_s);
    others.bind(1, qint64{before.value(here)});
    others.bind(2, qint64{now.value(here)});
    others.bind(3, person);
    return others.step() && others.integer(0) > 0;
}

std::vector<HistoryEntry> writtenByOthers(platform::Engine& server, const QString& table, std::int64_t key,
                                          const HistoryEnds& before, const HistoryEnds& now) {
    std::vector<HistoryEntry> entries;
    const auto end = lowerEnd(before, now);
    if (!end)
        return entries;
    Query row(server, u"SELECT %1 FROM History WHERE HistoryID > ? AND %2 ORDER BY HistoryID DESC"_s.arg(
                          historyColumns(), rowsOf(table)));
    row.bind(1, qint64{*end});
    row.bind(2, table);
    row.bind(3, linesOf(table));
    row.bind(4, qint64{key});
    if (table == "Formula"_L1)
        row.bind(5, qint64{key});
    const QString person = currentWriter().person;
    while (row.step()) {
        HistoryEntry entry = historyEntry(row);
        if (entry.person != person && isBetween(entry, before, now) && isShownBy(table, entry))
            entries.push_back(std::move(entry));
    }
    return entries;
}

std::vector<BenchAtWork> benchesAtWork(platform::Engine& server) {
    std::vector<BenchAtWork> benches;
    Query bench(server,
                u"SELECT bench, minute, mixes, frm_Name FROM benches() WITH ORDINALITY LEFT JOIN Formula ON "
                "FormulaID = mixes ORDER BY ordinality"_s);
    while (bench.step()) {
        benches.push_back({bench.value(0, asText).toString(), {}, bench.value(3, asText).toString()});
        if (bench.value(1, asText).isValid())
            benches.back().mix = {static_cast<int>(bench.integer(2)), clockAt(bench.integer(1))};
    }
    return benches;
}

}  // namespace sorvanto
