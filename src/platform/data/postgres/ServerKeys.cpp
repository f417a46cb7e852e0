#include "platform/data/postgres/ServerKeys.h"

#include "platform/data/postgres/ServerRows.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

/// The columns of a statement whose rows are not read yet.
class Described : public EngineQuery {
public:
    Described(const ServerStore& store, const Result& result, int from)
        : m_store(store), m_result(result), m_from(from) {}

    void bind(int, const QVariant&) override {}
    bool step() override { return false; }
    void reset() override {}
    bool isReadOnly() const override { return true; }
    std::int64_t changedRows() const override { return 0; }
    int columnCount() const override { return m_result.columns() - m_from; }
    ResultColumn column(int column) const override {
        return resultColumn(m_store, m_result, column + m_from);
    }
    std::int64_t integer(int) const override { return 0; }
    QVariant value(int, const ColumnType&) const override { return {}; }

private:
    const ServerStore& m_store;
    const Result& m_result;
    int m_from;
};

/// "SELECT columns FROM table WHERE key = ?", for the rows of several keys, with their keys in front.
QByteArray rowsOfKeys(const Translation& translation, const QString& head, const QString& keys) {
    QString sql = translation.rowSql;
    sql.insert(QStringLiteral("SELECT").size(), u' ' + head + translation.rowKey + u',');
    return (sql.chopped(1) + u"ANY ("_s + keys + u')').toUtf8();
}

/// The first rows, and with the very first all keys, looked for once.
QByteArray firstRows(const Translation& translation, int rows) {
    const QString all =
        u"CASE WHEN %1 = (SELECT key FROM \"found keys\" LIMIT 1) THEN (SELECT array_agg(key) FROM \"found keys\") END, "_s
            .arg(translation.rowKey);
    const QString first = u"ARRAY(SELECT key FROM \"found keys\" LIMIT %1)"_s.arg(rows);
    return "WITH \"found keys\"(key) AS MATERIALIZED (" + translation.keysSql.toUtf8() + ") " +
           rowsOfKeys(translation, all, first);
}

/// Whether nothing is selected but what is known without a row.
bool isKeyAlone(const ServerStore& store, const Translation& translation) {
    const QString key = quotedName(store.catalogue.key(translation.table));
    return translation.rowSql.startsWith(u"SELECT %1 FROM"_s.arg(key));
}

/// Of an array as the server writes it: "{3,1,2}".
std::vector<std::int64_t> keysOf(const QByteArray& array) {
    std::vector<std::int64_t> keys;
    for (const QByteArray& key : array.mid(1).chopped(1).split(','))
        keys.push_back(key.toLongLong());
    return keys;
}

}  // namespace

ServerKeys::ServerKeys(ServerStore& store, const Translation& translation, const QString& statement)
    : m_store(store), m_statement(statement), m_rowsSql(rowsOfKeys(translation, {}, u"$1::integer[]"_s)),
      m_ownChanges(store.ownChanges()), m_readAhead(store.readAhead) {
    if (m_readAhead == 0 || isKeyAlone(store, translation))
        readKeys(translation);
    else
        readKeysAndRows(translation);
}

void ServerKeys::readKeys(const Translation& translation) {
    const std::vector<Result> found = m_store.session.run(
        {{translation.keysSql.toUtf8(), {}, false}, {m_rowsSql, {}, true}}, Access::Reads, m_statement);
    const Result& keys = found.front();
    m_keys.reserve(static_cast<std::size_t>(keys.rows()));
    for (int row = 0; row < keys.rows(); ++row)
        m_keys.push_back(keys.integer(row, 0));
    m_fields = FieldList(Described(m_store, found.back(), 1));
}

// The statement for the keys is prepared first by itself: only one that is whole gets so far as to stand within another.
void ServerKeys::readKeysAndRows(const Translation& translation) {
    const std::vector<Result> found = m_store.session.run(
        {{translation.keysSql.toUtf8(), {}, true}, {firstRows(translation, piece), {}, false}}, Access::Reads,
        m_statement);
    m_first = found.back();
    m_fields = FieldList(Described(m_store, m_first, 2));
    for (int row = 0; row < m_first.rows(); ++row) {
        m_firstPlaces.insert(m_first.integer(row, 1), row);
        if (!m_first.isNull(row, 0))
            m_keys = keysOf(m_first.bytes(row, 0));
    }
}

KeyedSelect::Row ServerKeys::rowOf(const Result& found, int row, int from) const {
    Row values;
    for (int field = 0; field < m_fields.count(); ++field)
        values.push_back(valueOf(found, row, field + from, m_fields.type(field)));
    return values;
}

std::vector<KeyedSelect::Row> ServerKeys::takeFirst(std::span<const std::int64_t> keys) {
    const bool known = m_readAhead == m_store.readAhead && m_ownChanges == m_store.ownChanges() &&
                       std::all_of(keys.begin(), keys.end(),
                                   [this](std::int64_t key) { return m_firstPlaces.contains(key); });
    if (!known)
        return {};
    std::vector<Row> rows;
    for (const std::int64_t key : keys)
        rows.push_back(rowOf(m_first, m_firstPlaces.take(key), 2));
    return rows;
}

std::vector<KeyedSelect::Row> ServerKeys::rows(std::span<const std::int64_t> keys) {
    if (std::vector<Row> first = takeFirst(keys); !first.empty())
        return first;
    QHash<std::int64_t, std::size_t> places;
    QStringList texts;
    for (const std::int64_t key : keys) {
        places.insert(key, places.size());
        texts << QString::number(key);
    }
    const Result found = m_store.session.runOne({m_rowsSql, {u'{' + texts.join(u',') + u'}'}, false},
                                                Access::Reads, m_statement);
    std::vector<Row> rows(keys.size());
    for (int row = 0; row < found.rows(); ++row)
        rows[places.value(found.integer(row, 0))] = rowOf(found, row, 1);
    return rows;
}

}  // namespace platform::postgres
