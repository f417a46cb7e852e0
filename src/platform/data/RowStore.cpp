// Rows of a result set, in memory or by key.
#include "platform/data/RowStore.h"

#include "platform/basic/RuntimeError.h"

#include <sqlite3.h>

namespace platform {

namespace {

/// Enough for the rows that a grid shows at once.
constexpr std::size_t keptRows = 128;

}  // namespace

void MemoryRows::append(Row row) {
    for (QVariant& value : row)
        m_cells.push_back(std::move(value));
}

std::int64_t MemoryRows::count() const {
    return static_cast<std::int64_t>(m_cells.size() / m_fields);
}

QVariant MemoryRows::value(std::int64_t row, int field) {
    return m_cells[static_cast<std::size_t>(row) * m_fields + static_cast<std::size_t>(field)];
}

RowStore::Row MemoryRows::row(std::int64_t row) {
    const auto begin = m_cells.begin() + row * static_cast<std::int64_t>(m_fields);
    return Row(begin, begin + static_cast<std::int64_t>(m_fields));
}

void MemoryRows::changed(std::int64_t row, const Row& values) {
    std::copy(values.begin(), values.end(), m_cells.begin() + row * static_cast<std::int64_t>(m_fields));
}

void MemoryRows::added(const Row& values, std::int64_t) {
    append(values);
}

KeysetRows::KeysetRows(ConnectionPtr connection, const QString& rowSql, const QString& statement)
    : m_connection(std::move(connection)), m_statement(m_connection->handle(), rowSql, statement),
      m_fields(m_statement), m_text(statement), m_kept(keptRows), m_keyField(keyField()) {}

/// The field that is the row id itself, so that it is known without a look at the file; -1 when none is.
int KeysetRows::keyField() const {
    for (int field = 0; field < m_fields.count(); ++field) {
        const FieldInfo& info = m_fields.info(field);
        int isKey = 0;
        const char* declared = nullptr;
        sqlite3_table_column_metadata(m_connection->handle(), nullptr, info.baseTable.toUtf8().constData(),
                                      info.baseColumn.toUtf8().constData(), &declared, nullptr, nullptr,
                                      &isKey, nullptr);
        if (isKey != 0 && qstricmp(declared, "INTEGER") == 0)
            return field;
    }
    return -1;
}

std::int64_t KeysetRows::count() const {
    return static_cast<std::int64_t>(m_ids.size());
}

const RowStore::Row& KeysetRows::read(std::int64_t row) {
    const std::int64_t id = m_ids[static_cast<std::size_t>(row)];
    Kept& kept = m_kept[static_cast<std::size_t>(row) % keptRows];
    if (kept.id == id && !kept.values.empty())
        return kept.values;
    if (m_connection->state() == 0)
        throw RuntimeError(error::objectClosed, QStringLiteral("The connection is closed"),
                           QStringLiteral("Database"), m_text);
    m_statement.bind(1, qint64{id});
    const bool found = m_statement.step();
    kept.values.clear();
    if (found) {
        kept.id = id;
        kept.values = m_fields.read(m_statement);
    }
    m_statement.reset();
    if (!found)
        throw RuntimeError(error::noCurrentRecord, QStringLiteral("The record has been deleted"),
                           QStringLiteral("Database"), m_text);
    return kept.values;
}

QVariant KeysetRows::value(std::int64_t row, int field) {
    if (field == m_keyField)
        return qint64{m_ids[static_cast<std::size_t>(row)]};
    return read(row)[static_cast<std::size_t>(field)];
}

RowStore::Row KeysetRows::row(std::int64_t row) {
    return read(row);
}

void KeysetRows::changed(std::int64_t row, const Row&) {
    m_kept[static_cast<std::size_t>(row) % keptRows].values.clear();
}

void KeysetRows::added(const Row&, std::int64_t id) {
    m_ids.push_back(id);
}

}  // namespace platform
