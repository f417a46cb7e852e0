// Opening of a result set: by key where the statement allows it, else all rows at once.
#include "platform/data/RowLoader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Dialect.h"
#include "platform/data/Sqlite.h"

#include <algorithm>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Only a table with row ids can be read by key; a view has none.
bool isTable(sqlite3* database, const QString& name) {
    return sqlite3_table_column_metadata(database, nullptr, name.toUtf8().constData(), "rowid", nullptr,
                                         nullptr, nullptr, nullptr, nullptr) == SQLITE_OK;
}

struct KeyedStatements {
    std::unique_ptr<sqlite::Statement> keys;
    std::unique_ptr<KeysetRows> rows;
};

/// Nothing where the engine refuses: an order by an alias, or a statement that is wrong in itself,
/// which is then told by the attempt to run it as it stands.
KeyedStatements prepareKeyed(const ConnectionPtr& connection, const Translation& translation,
                             const QString& statement) {
    try {
        return {std::make_unique<sqlite::Statement>(connection->handle(), translation.keysSql, statement),
                std::make_unique<KeysetRows>(connection, translation.rowSql, statement)};
    } catch (const RuntimeError& failure) {
        if (failure.number() != error::statement)
            throw;
        return {};
    }
}

LoadedRows byKey(KeyedStatements statements, bool ordered) {
    std::vector<std::int64_t> ids;
    while (statements.keys->step())
        ids.push_back(statements.keys->integer(0));
    if (!ordered && !std::is_sorted(ids.begin(), ids.end()))
        std::sort(ids.begin(), ids.end());
    std::unique_ptr<KeysetRows> rows = std::move(statements.rows);
    rows->setIds(std::move(ids));
    FieldList fields = rows->fields();
    return {std::move(fields), std::move(rows)};
}
LoadedRows allRows(const ConnectionPtr& connection, const QString& sql, const QString& statement) {
    sqlite::Statement prepared(connection->handle(), sql, statement);
    if (!prepared.isReadOnly())
        throw RuntimeError(error::statement, u"A result set can't change the database"_s, u"Database"_s,
                           statement);
    FieldList fields(prepared);
    auto rows = std::make_unique<MemoryRows>(fields.count());
    while (prepared.step()) {
        RowStore::Row row = fields.read(prepared);
        for (int field = 0; field < fields.count(); ++field)
            fields.learn(field, row[static_cast<std::size_t>(field)]);
        rows->append(std::move(row));
    }
    return {std::move(fields), std::move(rows)};
}

}  // namespace

LoadedRows loadRows(const ConnectionPtr& connection, const QString& statement, bool inMemory) {
    if (!connection || connection->state() == 0)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
    const Translation translation = translateStatement(statement);
    if (translation.kind != StatementKind::Select)
        throw RuntimeError(error::statement, u"A result set needs a SELECT"_s, u"Database"_s, statement);
    const bool oneTable = !translation.keysSql.isEmpty() && isTable(connection->handle(), translation.table);
    if (oneTable && !inMemory) {
        if (KeyedStatements keyed = prepareKeyed(connection, translation, statement); keyed.rows)
            return byKey(std::move(keyed), translation.ordered);
    }
    if (oneTable && !translation.ordered)
        return allRows(connection, translation.sql + u" ORDER BY "_s + translation.rowId, statement);
    return allRows(connection, translation.sql, statement);
}

}  // namespace platform
