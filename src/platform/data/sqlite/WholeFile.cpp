#include "platform/data/sqlite/WholeFile.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/StatementWriter.h"
#include "platform/data/sqlite/FileEngine.h"
#include "platform/data/sqlite/OpenFile.h"
#include "platform/data/sqlite/Statement.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

constexpr std::size_t rowsAtOnce = 500;

PlainValue storedValue(sqlite3_stmt* row, int column, bool isMoney) {
    const auto bytes = [&](const void* start) {
        return QByteArray(static_cast<const char*>(start), sqlite3_column_bytes(row, column));
    };
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
        return {'i', QByteArray::number(qint64{sqlite3_column_int64(row, column)})};
    case SQLITE_FLOAT: {
        const double value = sqlite3_column_double(row, column);
        return isMoney ? moneyValue(value) : realValue(value);
    }
    case SQLITE_TEXT:
        return {'t', bytes(sqlite3_column_text(row, column))};
    case SQLITE_BLOB:
        return {'b', bytes(sqlite3_column_blob(row, column))};
    default:
        return {};
    }
}

int bindValue(sqlite3_stmt* row, int parameter, const PlainValue& value) {
    const char* start = value.bytes.constData();
    const int size = static_cast<int>(value.bytes.size());
    switch (value.kind) {
    case 'i':
        return sqlite3_bind_int64(row, parameter, value.bytes.toLongLong());
    case 'r':
        return sqlite3_bind_double(row, parameter, value.bytes.toDouble());
    case 't':
        return sqlite3_bind_text(row, parameter, start, size, SQLITE_STATIC);
    case 'b':
        return sqlite3_bind_blob(row, parameter, start, size, SQLITE_STATIC);
    default:
        return sqlite3_bind_null(row, parameter);
    }
}

QString listed(const QStringList& columns) {
    QStringList names;
    for (const QString& column : columns)
        names << quotedName(column);
    return names.join(u", "_s);
}

class WholeFile : public WholeStore {
public:
    WholeFile(const QString& path, bool fills) : m_handle(openHandle(path)) {
        if (fills)
            execute("PRAGMA foreign_keys = OFF");  // looked through as a whole at the end
        execute(fills ? "BEGIN IMMEDIATE" : "BEGIN");
        if (fills)
            takeTriggersAway();
    }

    QStringList tables() override;
    QStringList columns(const QString& table) override;
    std::int64_t rowCount(const QString& table) override;
    void read(const QString& table, const QStringList& columns, const RowTaker& taker) override;
    QMap<QString, std::int64_t> lastKeys() override;
    void clear(const QStringList& tables) override;
    void add(const QString& table, const QStringList& columns, const std::vector<StoredRow>& rows) override;
    void setLastKeys(const QMap<QString, std::int64_t>& keys) override;
    void commit() override;

private:
    using Prepared = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;

    void execute(const QByteArray& sql) {
        if (sqlite3_exec(m_handle.get(), sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            fail(m_handle.get(), {});
    }
    Prepared prepare(const QString& sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_handle.get(), sql.toUtf8().constData(), -1, &statement, nullptr) !=
            SQLITE_OK)
            fail(m_handle.get(), sql);
        return {statement, sqlite3_finalize};
    }
    bool step(const Prepared& statement) {
        const int code = sqlite3_step(statement.get());
        if (code != SQLITE_ROW && code != SQLITE_DONE)
            fail(m_handle.get(), {});
        return code == SQLITE_ROW;
    }
    QStringList names(const QString& sql);
    bool isMoney(const QString& table, const QString& column);
    void takeTriggersAway();

    Handle m_handle;
    QStringList m_triggers;
};

QStringList WholeFile::names(const QString& sql) {
    const Prepared rows = prepare(sql);
    QStringList all;
    while (step(rows))
        all << QString::fromUtf8(storedValue(rows.get(), 0, false).bytes);
    return all;
}

void WholeFile::takeTriggersAway() {
    const QString list = u" FROM sqlite_schema WHERE type = 'trigger' ORDER BY rowid"_s;
    m_triggers = names(u"SELECT sql"_s + list);
    for (const QString& name : names(u"SELECT name"_s + list))
        execute("DROP TRIGGER " + quotedName(name).toUtf8());
}

QStringList WholeFile::tables() {
    return names(
        u"SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY name"_s);
}

QStringList WholeFile::columns(const QString& table) {
    return names(u"SELECT name FROM pragma_table_info(%1)"_s.arg(quotedText(table)));
}

std::int64_t WholeFile::rowCount(const QString& table) {
    if (columns(table).isEmpty())
        return 0;
    const Prepared count = prepare(u"SELECT count(*) FROM %1"_s.arg(quotedName(table)));
    return step(count) ? sqlite3_column_int64(count.get(), 0) : 0;
}

bool WholeFile::isMoney(const QString& table, const QString& column) {
    const char* declared = nullptr;
    sqlite3_table_column_metadata(m_handle.get(), nullptr, table.toUtf8().constData(),
                                  column.toUtf8().constData(), &declared, nullptr, nullptr, nullptr, nullptr);
    return qstricmp(declared, "CURRENCY") == 0;
}

/// A table with a key lies in the order of it, any other one in that in which it was filled.
void WholeFile::read(const QString& table, const QStringList& columns, const RowTaker& taker) {
    std::vector<bool> money;
    for (const QString& column : columns)
        money.push_back(isMoney(table, column));
    const Prepared row = prepare(u"SELECT %1 FROM %2"_s.arg(listed(columns), quotedName(table)));
    std::vector<StoredRow> rows;
    while (step(row)) {
        rows.emplace_back();
        for (int column = 0; column < columns.size(); ++column)
            rows.back().push_back(storedValue(row.get(), column, money[static_cast<std::size_t>(column)]));
        if (rows.size() == rowsAtOnce) {
            taker(rows);
            rows.clear();
        }
    }
    if (!rows.empty())
        taker(rows);
}

/// History is numbered without gaps, so its last row is the last number. A counter that another program has set back
/// counts as what the rows say.
QMap<QString, std::int64_t> WholeFile::lastKeys() {
    QMap<QString, std::int64_t> keys;
    for (const QString& table : names(u"SELECT name FROM sqlite_sequence"_s)) {
        const Prepared last =
            prepare(u"SELECT max(coalesce((SELECT max(rowid) FROM %1), 0), "
                    "coalesce((SELECT max(seq) FROM sqlite_sequence WHERE name = %2), 0))"_s.arg(
                        quotedName(table), quotedText(table)));
        if (step(last) && sqlite3_column_int64(last.get(), 0) > 0)
            keys[table] = sqlite3_column_int64(last.get(), 0);
    }
    return keys;
}

void WholeFile::clear(const QStringList& tables) {
    for (const QString& table : tables)
        execute("DELETE FROM " + quotedName(table).toUtf8());
}

void WholeFile::add(const QString& table, const QStringList& columns, const std::vector<StoredRow>& rows) {
    const QString marks = u"?, "_s.repeated(columns.size()).chopped(2);
    const Prepared row =
        prepare(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(quotedName(table), listed(columns), marks));
    for (const StoredRow& values : rows) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (bindValue(row.get(), static_cast<int>(i) + 1, values[i]) != SQLITE_OK)
                fail(m_handle.get(), {});
        }
        try {
            step(row);
        } catch (const RuntimeError& failure) {
            throw RuntimeError(failure.number(),
                               u"Row %1 of %2: %3"_s.arg(QString::fromUtf8(values.front().bytes), table,
                                                         failure.description()),
                               u"Copy"_s);
        }
        sqlite3_reset(row.get());
    }
}

void WholeFile::setLastKeys(const QMap<QString, std::int64_t>& keys) {
    execute("DELETE FROM sqlite_sequence");
    for (auto key = keys.begin(); key != keys.end(); ++key)
        execute(u"INSERT INTO sqlite_sequence (name, seq) VALUES (%1, %2)"_s.arg(quotedText(key.key()))
                    .arg(key.value())
                    .toUtf8());
}

void WholeFile::commit() {
    for (const QString& trigger : m_triggers)
        execute(trigger.toUtf8());
    execute("COMMIT");
}

}  // namespace

std::unique_ptr<WholeStore> readWholeFile(const QString& path) {
    return std::make_unique<WholeFile>(path, false);
}

std::unique_ptr<WholeStore> fillWholeFile(const QString& path) {
    return std::make_unique<WholeFile>(path, true);
}

void makeTables(const QString& path, const QByteArray& statements) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr);
    const Handle database(opened);
    if (code != SQLITE_OK ||
        sqlite3_exec(opened, statements.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail(opened, {});
}

}  // namespace platform::sqlite
