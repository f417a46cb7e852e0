#include "history/HistoryBook.h"

#include "history/HistorySeal.h"
#include "platform/data/Query.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::Query;

using RowName = std::pair<QString, std::int64_t>;
using Rows = QMap<RowName, QMap<QString, QVariant>>;

/// "2026-03-04 10:00:00.000". Day and time by themselves: a reader of both would ask the system for its time zone each time.
QDateTime momentOf(const QString& utc, std::int64_t minutesAhead) {
    constexpr int secondsInMinute = 60;
    constexpr qsizetype dayLength = 10;
    const QDateTime moment(QDate::fromString(QStringView(utc).left(dayLength), Qt::ISODate),
                           QTime::fromString(QStringView(utc).mid(dayLength + 1), Qt::ISODateWithMs),
                           Qt::UTC);
    return moment.toOffsetFromUtc(static_cast<int>(minutesAhead) * secondsInMinute);
}

/// The rows of a table as they are now, in the form of the history.
void addRows(platform::Engine& database, const QString& table, const QString& keyColumn, std::int64_t key,
             Rows& rows) {
    const QStringList columns = database.columns(table);
    Query row(database,
              u"SELECT \"%1\", %2 FROM \"%3\" WHERE \"%4\" = ?"_s.arg(
                  columns.first(), fieldsSql(database, table, columns.mid(1)), table, keyColumn),
              {});
    row.bind(1, qint64{key});
    while (row.step()) {
        for (const HistoryField& field : readHistoryFields(row.value(1, asText).toString()))
            rows[{table, row.integer(0)}][field.name] = field.after;
    }
}

QString nameIn(platform::Engine& database, const QString& sql, const QVariant& key) {
    Query row(database, sql, {});
    row.bind(1, key);
    return row.step() ? row.value(0, asText).toString() : QString();
}

/// As it is now; of what is gone as the history has it.
QString nameOf(platform::Engine& database, const PastRow& row, const std::vector<HistoryEntry>& entries) {
    QString name;
    if (row.table == "FormChem"_L1)
        name = nameIn(database, u"SELECT chm_Name FROM Chemical WHERE ChemicalID = ?"_s,
                      row.values.value(u"ChemicalID"_s));
    if (row.table == "RXs"_L1)
        name = nameIn(database, u"SELECT log_Name FROM Log WHERE LogID = ?"_s, row.values.value(u"LogID"_s));
    if (row.table == "LogChem"_L1)
        name = row.values.value(u"lch_Name"_s).toString();
    const auto told = std::find_if(entries.begin(), entries.end(), [&](const HistoryEntry& entry) {
        return entry.table == row.table && entry.key == row.key;
    });
    return name.isEmpty() && told != entries.end() ? told->name : name;
}

/// Makes the change not to have happened.
void takeBack(const HistoryEntry& entry, Rows& rows) {
    const RowName name{entry.table, entry.key};
    if (entry.what == "made"_L1) {
        rows.remove(name);
    } else if (entry.what == "deleted"_L1) {
        for (const HistoryField& field : entry.fields)
            rows[name][field.name] = field.after;
    } else if (entry.what == "changed"_L1 && rows.contains(name)) {
        for (const HistoryField& field : entry.fields)
            rows[name][field.name] = field.before;
    }
}

}  // namespace

QString linesOf(const QString& table) {
    static const QMap<QString, QString> lines{
        {u"Formula"_s, u"FormChem"_s}, {u"Log"_s, u"LogChem"_s}, {u"Patient"_s, u"RXs"_s}};
    return lines.value(table);
}

QString lastChanger(platform::Engine& database, const std::vector<HistoryRecord>& records) {
    if (records.empty() || !hasHistory(database))
        return {};
    QStringList any;
    for (const HistoryRecord& record : records)
        any << u"(hst_Table IN ('%1', '%2') AND hst_Record = %3)"_s.arg(record.table, linesOf(record.table),
                                                                        QString::number(record.key));
    Query row(
        database,
        u"SELECT hst_Person FROM History WHERE %1 ORDER BY HistoryID DESC LIMIT 1"_s.arg(any.join(u" OR "_s)),
        {});
    return row.step() ? row.value(0, asText).toString() : QString();
}

QString historyColumns() {
    return u"HistoryID, hst_When, hst_Zone, hst_Table, hst_Key, hst_What, hst_Deed, hst_Note, hst_Person, hst_Name, "
           "hst_Fields"_s;
}

HistoryEntry historyEntry(const Query& row) {
    return {row.integer(0),
            momentOf(row.value(1, asText).toString(), row.integer(2)),
            row.value(3, asText).toString(),
            row.integer(4),
            row.value(5, asText).toString(),
            row.value(6, asText).toString(),
            row.value(7, asText).toString(),
            row.value(8, asText).toString(),
            row.value(9, asText).toString(),
            readHistoryFields(row.value(10, asText).toString()),
            !row.value(10, asText).isValid()};
}

std::vector<HistoryEntry> historyOf(platform::Engine& database, const QString& table, std::int64_t key) {
    std::vector<HistoryEntry> entries;
    if (!hasHistory(database))
        return entries;
    Query row(
        database,
        u"SELECT %1 FROM History WHERE hst_Table IN (?, ?) AND hst_Record = ? ORDER BY HistoryID DESC"_s.arg(
            historyColumns()),
        {});
    row.bind(1, table);
    row.bind(2, linesOf(table));
    row.bind(3, qint64{key});
    while (row.step())
        entries.push_back(historyEntry(row));
    return entries;
}

QDateTime historyBegin(platform::Engine& database) {
    if (!hasHistory(database))
        return {};
    Query row(database, u"SELECT hst_When, hst_Zone FROM History ORDER BY HistoryID LIMIT 1"_s, {});
    return row.step() ? momentOf(row.value(0, asText).toString(), row.integer(1)) : QDateTime();
}

bool isErasedSince(const QString& table, std::int64_t key, const std::vector<HistoryEntry>& entries,
                   const QDateTime& moment) {
    bool erased = false;
    for (const HistoryEntry& entry : entries) {
        if (entry.moment <= moment)
            continue;
        if (entry.what == "made"_L1 && entry.table == table && entry.key == key)
            erased = false;
        else if (entry.what != "made"_L1 && entry.erased)
            erased = true;
    }
    return erased;
}

std::optional<ChangeCount> changesSince(platform::Engine& database, const QString& table, std::int64_t key,
                                        const QDateTime& moment) {
    if (!hasHistory(database))
        return std::nullopt;
    const QString clock = database.words().clock(u"hst_When"_s, u"hst_Zone"_s);
    Query count(
        database,
        u"SELECT count(*), (SELECT %1 <= ?1 FROM History ORDER BY HistoryID LIMIT 1) FROM History WHERE "
        "hst_Table IN (?2, ?3) AND hst_Record = ?4 AND %1 >= ?1 AND "
        "hst_What IN ('made', 'changed', 'deleted')"_s.arg(clock),
        {});
    count.bind(1, moment.toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s));
    count.bind(2, table);
    count.bind(3, linesOf(table));
    count.bind(4, qint64{key});
    if (!count.step())
        return std::nullopt;
    return ChangeCount{count.integer(0), count.integer(1) != 0};
}

std::vector<PastRow> recordAsOf(platform::Engine& database, const QString& table, std::int64_t key,
                                const std::vector<HistoryEntry>& entries, const QDateTime& moment) {
    Rows rows;
    const QString keyColumn = table + u"ID"_s;
    addRows(database, table, keyColumn, key, rows);
    if (!linesOf(table).isEmpty())
        addRows(database, linesOf(table), keyColumn, key, rows);
    for (const HistoryEntry& entry : entries) {
        if (entry.moment > moment)
            takeBack(entry, rows);
    }
    std::vector<PastRow> past;
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        past.push_back({row.key().first, row.key().second, {}, row.value()});
        past.back().name = nameOf(database, past.back(), entries);
    }
    std::stable_sort(past.begin(), past.end(), [&](const PastRow& one, const PastRow& other) {
        return (one.table == table) > (other.table == table);
    });
    if (!past.empty() && past.front().table != table)
        past.clear();
    return past;
}

}  // namespace sorvanto
