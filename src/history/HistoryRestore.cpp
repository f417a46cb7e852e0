#include "history/HistoryRestore.h"

#include "history/HistoryBook.h"
#include "history/HistorySeal.h"
#include "platform/basic/Currency.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::asText;
using platform::number;
using platform::Query;

struct DeletedRow {
    QString table;
    std::int64_t key = 0;
    QString fields;  ///< as written down
};

/// The record itself first, which was the last to go. What is deleted under its key later is not meant.
std::vector<DeletedRow> deletedRows(platform::Engine& database, const DeletedRecord& deleted) {
    Query row(
        database,
        u"SELECT hst_Table, hst_Key, hst_Fields FROM History WHERE HistoryID > ?1 AND HistoryID <= (SELECT "
        "min(HistoryID) FROM History WHERE HistoryID > ?1 AND hst_What = 'deleted' AND hst_Table = ?2 AND hst_Key = ?3) "
        "AND hst_What = 'deleted' AND ((hst_Table = ?2 AND hst_Key = ?3) OR (hst_Table = ?4 AND hst_Record = ?3)) "
        "ORDER BY HistoryID DESC"_s,
        {});
    row.bind(1, qint64{deleted.historyBefore});
    row.bind(2, deleted.table);
    row.bind(3, qint64{deleted.key});
    row.bind(4, linesOf(deleted.table));
    std::vector<DeletedRow> rows;
    while (row.step())
        rows.push_back({row.value(0, asText).toString(), row.integer(1), row.value(2, asText).toString()});
    return rows;
}

bool isThere(platform::Engine& database, const DeletedRow& row) {
    Query found(database,
                u"SELECT 1 FROM \"%1\" WHERE %2 = ?"_s.arg(row.table, database.words().rowKey(row.table)),
                {});
    found.bind(1, qint64{row.key});
    return found.step();
}

/// Money is exact where a server keeps it, and a floating number is not.
QVariant storedValue(platform::Engine& database, const QString& table, const HistoryLiterals& field) {
    const QVariant value = historyValueOf(field.after);
    const QString literal = field.after.toString();
    const auto type =
        platform::ColumnType::fromDeclaration(database.declaredType(table, field.name.toString()));
    if (type.kind != platform::FieldKind::Money || value.userType() != QMetaType::Double)
        return value;
    try {
        const platform::Currency money = platform::Currency::fromText(literal);
        return money.toText() == literal ? QVariant::fromValue(money) : value;
    } catch (const platform::RuntimeError&) {
        return value;  // more than money can be
    }
}

/// The tables' keys are named after them.
void insert(platform::Engine& database, const DeletedRow& row) {
    const std::vector<HistoryLiterals> fields = readHistoryLiterals(row.fields);
    QStringList columns{u'"' + row.table + u"ID\""_s};
    for (const HistoryLiterals& field : fields)
        columns << u'"' + field.name.toString() + u'"';
    const QString sql = u"INSERT INTO \"%1\" (%2) VALUES (?%3)"_s.arg(
        row.table, columns.join(u", "_s), u", ?"_s.repeated(static_cast<qsizetype>(fields.size())));
    Query added(database, sql, sql);
    added.bind(1, qint64{row.key});
    for (int i = 0; i < static_cast<int>(fields.size()); ++i)
        added.bind(i + 2, storedValue(database, row.table, fields[static_cast<std::size_t>(i)]));
    added.step();
}

bool isFaithful(platform::Engine& database, const DeletedRow& row) {
    QStringList columns;
    for (const HistoryField& field : readHistoryFields(row.fields))
        columns << field.name;
    Query now(database,
              u"SELECT %1 FROM \"%2\" WHERE %3 = ?"_s.arg(fieldsSql(database, row.table, columns), row.table,
                                                          database.words().rowKey(row.table)),
              {});
    now.bind(1, qint64{row.key});
    return now.step() && now.value(0, asText).toString() == row.fields;
}

}  // namespace

std::int64_t lastHistoryRow(platform::Engine& database) {
    return hasHistory(database) ? number(database, u"SELECT coalesce(max(HistoryID), 0) FROM History"_s) : 0;
}

Restored addDeletedRows(platform::Engine& database, const DeletedRecord& deleted) {
    if (database.refusesChanges())
        return Restored::ReadingOnly;
    const std::vector<DeletedRow> rows = deletedRows(database, deleted);
    if (rows.empty() || rows.front().table != deleted.table)
        return Restored::NotInHistory;
    for (const DeletedRow& row : rows) {
        if (row.fields.isEmpty())
            return Restored::NotInHistory;
        if (isThere(database, row))
            return Restored::KeyTaken;
        try {
            insert(database, row);
        } catch (const platform::RuntimeError& failure) {
            if (failure.number() != platform::error::general)  // a refused relation
                throw;
            return Restored::RelationGone;
        }
        if (!isFaithful(database, row))
            return Restored::Unfaithful;
    }
    return Restored::Whole;
}

}  // namespace sorvanto
