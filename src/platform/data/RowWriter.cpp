// The statements by which an edited or added row of a result set reaches its tables.
#include "platform/data/RowWriter.h"

#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace platform {

RowWriter::RowWriter(Connection& connection, const FieldList& fields, const QString& statement)
    : m_connection(connection), m_fields(fields), m_statement(statement) {
    if (connection.state() == 0)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, statement);
}

void RowWriter::refuse(const QString& reason) const {
    throw RuntimeError(error::notUpdatable, reason, u"Database"_s, m_statement);
}

int RowWriter::keyField(const QString& table) const {
    for (int field = 0; field < m_fields.count(); ++field) {
        const FieldInfo& info = m_fields.info(field);
        if (info.baseTable == table && m_connection.isKey(table, info.baseColumn))
            return field;
    }
    refuse(u"The row can't be written: the key of table %1 is not in the result set"_s.arg(table));
}

QString RowWriter::soleTable(const Changes& changes) const {
    if (changes.empty())
        refuse(u"A new row needs at least one value"_s);
    const QString table = m_fields.info(changes.begin()->first).baseTable;
    for (const auto& [field, value] : changes) {
        if (m_fields.info(field).baseTable != table)
            refuse(u"A new row can only be added to one table"_s);
    }
    return table;
}

void RowWriter::update(const std::vector<QVariant>& row, const Changes& changes) {
    QSet<QString> tables;
    for (const auto& [field, value] : changes)
        tables.insert(m_fields.info(field).baseTable);
    if (tables.size() == 1)
        return updateTable(*tables.begin(), row, changes);
    Transaction whole(m_connection.engine(), m_statement);
    for (const QString& table : tables)
        updateTable(table, row, changes);
    whole.commit();
}

void RowWriter::updateTable(const QString& table, const std::vector<QVariant>& row, const Changes& changes) {
    const int key = keyField(table);
    QStringList assignments;
    std::vector<QVariant> values;
    for (const auto& [field, value] : changes) {
        if (m_fields.info(field).baseTable != table)
            continue;
        assignments << quotedName(m_fields.info(field).baseColumn) + u" = ?"_s;
        values.push_back(value);
    }
    values.push_back(row[static_cast<std::size_t>(key)]);
    Query query(m_connection.engine(),
                u"UPDATE %1 SET %2 WHERE %3 = ?"_s.arg(quotedName(table), assignments.join(u", "_s),
                                                       quotedName(m_fields.info(key).baseColumn)),
                m_statement);
    for (std::size_t i = 0; i < values.size(); ++i)
        query.bind(static_cast<int>(i) + 1, values[i]);
    query.step();
    if (query.changedRows() == 0)
        throw RuntimeError(error::noCurrentRecord,
                           u"The row can't be written: it has been deleted from table %1"_s.arg(table),
                           u"Database"_s, m_statement);
}

std::int64_t RowWriter::insert(const Changes& changes) {
    std::int64_t key = 0;
    insertInTurn({changes}, [&](std::int64_t id) { key = id; });
    return key;
}

void RowWriter::insertInTurn(const std::vector<Changes>& rows,
                             const std::function<void(std::int64_t id)>& taken) {
    if (rows.empty())
        return;
    const QString table = soleTable(rows.front());
    QStringList columns;
    for (const auto& [field, value] : rows.front())
        columns << m_fields.info(field).baseColumn;
    std::vector<std::vector<QVariant>> values;
    for (const Changes& row : rows) {
        values.emplace_back();
        for (const auto& [field, value] : row)
            values.back().push_back(value);
    }
    m_connection.engine().insertInTurn(table, columns, values, m_statement, taken);
}

void RowWriter::readBack(std::int64_t id, const Changes& changes, std::vector<QVariant>& row) {
    const QString table = soleTable(changes);
    QStringList columns;
    std::vector<int> places;
    for (int field = 0; field < m_fields.count(); ++field) {
        if (m_fields.info(field).baseTable != table)
            continue;
        columns << quotedName(m_fields.info(field).baseColumn);
        places.push_back(field);
    }
    Engine& engine = m_connection.engine();
    Query query(engine,
                u"SELECT %1 FROM %2 WHERE %3 = ?"_s.arg(columns.join(u", "_s), quotedName(table),
                                                        engine.words().rowKey(table)),
                m_statement);
    query.bind(1, qint64{id});
    if (!query.step())
        return;
    for (std::size_t i = 0; i < places.size(); ++i)
        row[static_cast<std::size_t>(places[i])] = query.value(static_cast<int>(i), m_fields.type(places[i]));
}

}  // namespace platform
