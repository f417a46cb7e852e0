// Opening of a result set: by key where the statement allows it, else all rows at once.
#include "platform/data/RowLoader.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Engine.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr std::int64_t rowsBetweenQuestions = 64;

LoadedRows byKey(const ConnectionPtr& connection, std::unique_ptr<KeyedSelect> select, bool ordered,
                 const QString& statement) {
    RowKeys keys = select->keys();
    if (!ordered)
        keys.sort();
    auto rows = std::make_unique<KeysetRows>(connection, std::move(select), std::move(keys), statement);
    FieldList fields = rows->fields();
    return {std::move(fields), std::move(rows)};
}

/// Nothing where the SELECT has to be read whole.
std::unique_ptr<KeyedSelect> keyedSelect(Engine& engine, const Translation& translation,
                                         const QString& statement) {
    try {
        return engine.keyedSelect(translation, statement);
    } catch (const RuntimeError& failure) {
        if (failure.number() != error::statement)
            throw;
        return nullptr;
    }
}

LoadedRows allRows(Engine& engine, const Translation& translation, const QString& statement,
                   const std::function<bool()>& goesOn) {
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
        if (goesOn && rows->count() % rowsBetweenQuestions == 0 && !goesOn())
            return {};
    }
    return {std::move(fields), std::move(rows)};
}

/// The key that decides between rows which the statement leaves in any order; empty where there is none.
QString decidingKey(Engine& engine, const Translation& translation) {
    if (!translation.rowKey.isEmpty())
        return engine.hasKeys(translation.table) ? translation.rowKey : QString();
    for (const auto& [table, column] : translation.order.columns) {
        if (engine.isKey(table, column))
            return engine.words().name(table, false) + u'.' + engine.words().name(column, false);
    }
    return {};
}

/// Puts behind the statement what it leaves open, so that neither an index nor the engine's choice of a way through the
/// tables can give another order. The key follows the direction of the column before it.
void pinOrder(Engine& engine, const QString& orderWithin, Translation& translation) {
    const RowOrder& order = translation.order;
    if (order.complete)
        return;
    QStringList rest;
    if (!order.groups.isEmpty() && !order.ordered)
        rest << order.groups;
    if (order.groups.isEmpty() && !orderWithin.isEmpty())
        rest << translateOrder(orderWithin, engine.words());
    const QString key = order.groups.isEmpty() ? decidingKey(engine, translation) : QString();
    if (!key.isEmpty())
        rest << key + (order.descending ? u" DESC"_s : QString());
    if (rest.isEmpty())
        return;
    const QString added = (order.ordered ? u", "_s : u" ORDER BY "_s) + rest.join(u", "_s);
    translation.sql += added;
    // A server is asked for the first rows as well; a file gives the keys in their order by itself, and byKey looks.
    if (!translation.keysSql.isEmpty() && (order.ordered || rest.size() > 1 || engine.isServer())) {
        translation.keysSql += added;
        translation.whole = false;
    }
}

}  // namespace

Translation readable(Engine& engine, const QString& statement, const QString& orderWithin) {
    Translation translation = translateStatement(statement, engine.words());
    if (translation.kind != StatementKind::Select)
        throw RuntimeError(error::statement, u"A result set needs a SELECT"_s, u"Database"_s, statement);
    pinOrder(engine, orderWithin, translation);
    return translation;
}

LoadedRows loadRows(const ConnectionPtr& connection, const QString& statement, const QString& orderWithin,
                    bool inMemory, const std::function<bool()>& goesOn) {
    if (!connection)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
    Engine& engine = connection->engine(statement);
    const Translation translation = readable(engine, statement, orderWithin);
    // Only a table has keys; a view has none.
    if (!inMemory && !translation.keysSql.isEmpty() && engine.hasKeys(translation.table)) {
        const bool ordered = translation.order.ordered || !orderWithin.isEmpty();
        if (auto select = keyedSelect(engine, translation, statement))
            return byKey(connection, std::move(select), ordered, statement);
    }
    return allRows(engine, translation, statement, goesOn);
}

}  // namespace platform
