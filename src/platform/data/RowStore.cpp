// Rows of a result set, in memory or by key.
#include "platform/data/RowStore.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Enough for the rows that a grid shows at once, and for some pieces of those that are read at once.
constexpr std::size_t keptRows = 128;
constexpr std::size_t keptPieces = 4;
/// Who reads one row after the other gets that many at a time, twice as many each time: the way there costs more than a
/// row, and over a line as much as a thousand.
constexpr std::int64_t rowsAhead = 32, mostAhead = 512;

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

KeysetRows::KeysetRows(ConnectionPtr connection, std::unique_ptr<KeyedSelect> select, RowKeys keys,
                       QString statement)
    : m_connection(std::move(connection)), m_select(std::move(select)), m_text(std::move(statement)),
      m_keys(std::move(keys)), m_kept(keptRows), m_ahead(rowsAhead), m_keyField(keyField()) {}

/// The field that is the row id itself, so that it is known without a look at the file; -1 when none is.
int KeysetRows::keyField() const {
    for (int field = 0; field < fields().count(); ++field) {
        const FieldInfo& info = fields().info(field);
        if (m_connection->isKey(info.baseTable, info.baseColumn) &&
            m_connection->declaredType(info.baseTable, info.baseColumn) == "INTEGER"_L1)
            return field;
    }
    return -1;
}

std::int64_t KeysetRows::count() const { return m_keys.count(); }

KeysetRows::Kept& KeysetRows::place(std::int64_t row) {
    return m_kept[static_cast<std::size_t>(row) % m_kept.size()];
}

const RowStore::Row& KeysetRows::read(std::int64_t row) {
    if (const Kept& kept = place(row); kept.id == m_keys.at(row) && !kept.values.empty())
        return kept.values;
    if (m_connection->state() == 0)
        throw RuntimeError(error::objectClosed, u"The connection is closed"_s, u"Database"_s, m_text);
    readAround(row);
    const Row& values = place(row).values;
    if (values.empty())
        throw RuntimeError(error::noCurrentRecord, u"The record has been deleted"_s, u"Database"_s, m_text);
    return values;
}

/// How many rows are read from this one on. There is room for them, and no more than usual where the reading jumps.
std::int64_t KeysetRows::ahead(std::int64_t row) {
    if (row != m_lastFetched + 1) {
        m_ahead = rowsAhead;
        if (m_kept.size() > keptRows)
            m_kept = std::vector<Kept>(keptRows);
        return 1;
    }
    const std::int64_t count = m_ahead;
    m_ahead = std::min(m_ahead * 2, mostAhead);
    if (m_kept.size() < static_cast<std::size_t>(count))
        m_kept.resize(static_cast<std::size_t>(count));
    return count;
}

void KeysetRows::readAround(std::int64_t row) {
    const std::int64_t piece = m_select->rowsAtOnce();
    if (piece == 1 || row == m_lastFetched + 1)
        return fetch(row, ahead(row));
    m_ahead = piece;
    if (m_kept.size() < keptPieces * static_cast<std::size_t>(piece))
        m_kept.resize(keptPieces * static_cast<std::size_t>(piece));
    fetch(row - row % piece, piece);
}

/// Of a row that is gone nothing is kept.
void KeysetRows::fetch(std::int64_t row, std::int64_t count) {
    std::vector<std::int64_t> wanted;
    for (std::int64_t at = row; at < std::min(row + count, m_keys.count()); ++at)
        wanted.push_back(m_keys.at(at));
    std::vector<Row> rows = m_select->rows(wanted);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        m_lastFetched = row + static_cast<std::int64_t>(i);
        place(m_lastFetched) = {wanted[i], std::move(rows[i])};
    }
}

QVariant KeysetRows::value(std::int64_t row, int field) {
    if (field == m_keyField)
        return qint64{m_keys.at(row)};
    return read(row)[static_cast<std::size_t>(field)];
}

RowStore::Row KeysetRows::row(std::int64_t row) { return read(row); }

void KeysetRows::changed(std::int64_t row, const Row&) { place(row).values.clear(); }

void KeysetRows::added(const Row&, std::int64_t id) { m_keys.append(id); }

}  // namespace platform
