#include "platform/data/postgres/ServerKeys.h"

#include "platform/data/postgres/ServerRows.h"

#include <QHash>

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

/// "SELECT columns FROM table WHERE key = ?", for the rows of several keys.
QByteArray rowsOfKeys(const Translation& translation) {
    QString sql = translation.rowSql;
    sql.insert(QStringLiteral("SELECT").size(), u' ' + translation.rowKey + u',');
    return (sql.chopped(1) + u"ANY ($1::integer[])"_s).toUtf8();
}

}  // namespace

ServerKeys::ServerKeys(ServerStore& store, const Translation& translation, const QString& statement)
    : m_store(store), m_statement(statement), m_rowsSql(rowsOfKeys(translation)) {
    const std::vector<Result> found = store.session.run(
        {{translation.keysSql.toUtf8(), {}, false}, {m_rowsSql, {}, true}}, Access::Reads, statement);
    const Result& keys = found.front();
    m_keys.reserve(static_cast<std::size_t>(keys.rows()));
    for (int row = 0; row < keys.rows(); ++row)
        m_keys.push_back(keys.integer(row, 0));
    m_fields = FieldList(Described(store, found.back(), 1));
}

std::vector<KeyedSelect::Row> ServerKeys::rows(std::span<const std::int64_t> keys) {
    QHash<std::int64_t, std::size_t> places;
    QStringList texts;
    for (const std::int64_t key : keys) {
        places.insert(key, places.size());
        texts << QString::number(key);
    }
    const Result found = m_store.session.runOne({m_rowsSql, {u'{' + texts.join(u',') + u'}'}, false},
                                                Access::Reads, m_statement);
    std::vector<Row> rows(keys.size());
    for (int row = 0; row < found.rows(); ++row) {
        Row& values = rows[places.value(found.integer(row, 0))];
        for (int field = 0; field < m_fields.count(); ++field)
            values.push_back(valueOf(found, row, field + 1, m_fields.type(field)));
    }
    return rows;
}

}  // namespace platform::postgres
