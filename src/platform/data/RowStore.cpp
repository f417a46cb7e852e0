// Rows of a result set, in memory or by key.
#include "platform/data/RowStore.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Enough for the rows that a grid shows at once.
constexpr std::size_t keptRows = 128;
/// Who reads one row after the other gets that many at a time: locking the file costs more than a row.
constexpr std::int64_t rowsAhead = 32;

/// Holds the file for reading while several statements run.
class ReadLock {
public:
    explicit ReadLock(sqlite3* database) : m_database(database) {
        m_mine = sqlite3_get_autocommit(database) != 0 && run("BEGIN");
    }
    ~ReadLock() {
        if (m_mine)
            run("COMMIT");
    }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    bool run(const char* sql) {
        return sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    sqlite3* m_database;
    bool m_mine;
};

}  // namespace

void MemoryRows::append(Row row) {
    for (QVariant& value : row)
        m_cells.push_back(std::move(value));
}

std::int64_t MemoryRows::count() const { return static_cast<std::int64_t>(m_cells.size() / m_fields); }

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

void MemoryRows::added(const Row& values, std::int64_t) { append(values); }

KeysetRows::KeysetRows(ConnectionPtr connection, const QString& rowSql, const QString& statement)
    : m_connection(std::move(connection)), m_statement(m_connection->handle(), rowSql, statement),
      m_fields(m_statement), m_text(statement), m_kept(keptRows), m_keyField(keyField()) {}

/// The field that is the row id itself, so that it is known without a look at the file; -1 when none is.
int KeysetRows::keyField() const {
    for (int field = 0; field < m_fields.count(); ++field) {
        const FieldInfo& info = m_fields.info(field);
        if (m_connection->isKey(info.baseTable, info.baseColumn) &&
            m_connection->declaredType(info.baseTable, info.baseColumn) == "INTEGER"_L1)
            return field;
    }
    return -1;
}

std::int64_t KeysetRows::count() const { return static_cast<std::int64_t>(m_ids.size()); }

KeysetRows::Kept& KeysetRows::place(std::int64_t row) {
    return m_kept[static_cast<std::size_t>(row) % keptRows];
}

const RowStore::Row& KeysetRows::read(std::int64_t row) {
    const Kept& kept = place(row);
    if (kept.id == m_ids[static_cast<std::size_t>(row)] && !kept.values.empty())
        return kept.values;
    if (m_connection->state() == 0)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, m_text);
    bool found = false;
    if (row == m_lastFetched + 1) {
        fetchAhead(row);
        found = !kept.values.empty();
    } else {
        found = fetch(row);
    }
    if (!found)
        throw RuntimeError(error::noCurrentRecord, u"The record has been deleted"_s, u"Database"_s, m_text);
    return kept.values;
}

/// False, and nothing kept, when the row is gone.
bool KeysetRows::fetch(std::int64_t row) {
    Kept& kept = place(row);
    kept.id = m_ids[static_cast<std::size_t>(row)];
    kept.values.clear();
    m_lastFetched = row;
    m_statement.bind(1, qint64{kept.id});
    const bool found = m_statement.step();
    if (found)
        kept.values = m_fields.read(m_statement);
    m_statement.reset();
    return found;
}

void KeysetRows::fetchAhead(std::int64_t row) {
    const ReadLock lock(m_connection->handle());
    const std::int64_t end = std::min(row + rowsAhead, count());
    for (; row < end; ++row)
        fetch(row);
}

QVariant KeysetRows::value(std::int64_t row, int field) {
    if (field == m_keyField)
        return qint64{m_ids[static_cast<std::size_t>(row)]};
    return read(row)[static_cast<std::size_t>(field)];
}

RowStore::Row KeysetRows::row(std::int64_t row) { return read(row); }

void KeysetRows::changed(std::int64_t row, const Row&) { place(row).values.clear(); }

void KeysetRows::added(const Row&, std::int64_t id) { m_ids.push_back(id); }

}  // namespace platform
