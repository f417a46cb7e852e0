// Opening of a result set: by key where the statement allows it, else all rows at once.
#include "platform/data/RowLoader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

LoadedRows byKey(const ConnectionPtr& connection, std::unique_ptr<KeyedSelect> select, bool ordered,
                 const QString& statement) {
    std::vector<std::int64_t> keys = select->keys();
    if (!ordered && !std::is_sorted(keys.begin(), keys.end()))
        std::sort(keys.begin(), keys.end());
    auto rows = std::make_unique<KeysetRows>(connection, std::move(select), std::move(keys), statement);
    FieldList fields = rows->fields();
    return {std::move(fields), std::move(rows)};
}

LoadedRows allRows(Engine& engine, const Translation& translation, const QString& statement) {
    const auto query = engine.prepareTranslated(translation, statement);
    if (!query->isReadOnly())
        throw RuntimeError(error::statement, u"A result set can't change the database"_s, u"Database"_s,
                           statement);
    FieldList fields(*query);
    auto rows = std::make_unique<MemoryRows>(fields.count());
    while (query->step()) {
        RowStore::Row row = fields.read(*query);
        for (int field = 0; field < fields.count(); ++field)
            fields.learn(field, row[static_cast<std::size_t>(field)]);
        rows->append(std::move(row));
    }
    return {std::move(fields), std::move(rows)};
}

}  // namespace

LoadedRows loadRows(const ConnectionPtr& connection, const QString& statement, bool inMemory) {
    if (!connection)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
    Engine& engine = connection->engine(statement);
    Translation translation = translateStatement(statement, engine.words());
    if (translation.kind != StatementKind::Select)
        throw RuntimeError(error::statement, u"A result set needs a SELECT"_s, u"Database"_s, statement);
    // Only a table has keys; a view has none.
    const bool oneTable = !translation.keysSql.isEmpty() && engine.hasKeys(translation.table);
    if (oneTable && !inMemory) {
        if (auto select = engine.keyedSelect(translation, statement))
            return byKey(connection, std::move(select), translation.ordered, statement);
    }
    if (oneTable && !translation.ordered)
        translation.sql += u" ORDER BY "_s + translation.rowKey;
    return allRows(engine, translation, statement);
}

}  // namespace platform
