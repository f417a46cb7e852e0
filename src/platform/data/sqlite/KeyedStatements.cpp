#include "platform/data/sqlite/KeyedStatements.h"

#include <algorithm>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

/// How the statement of one row ends.
constexpr QLatin1StringView oneKey = " = ?"_L1;

/// Holds the file for reading while several statements run.
class ReadLock {
public:
    explicit ReadLock(sqlite3* database) : m_database(database) {
        m_mine = sqlite3_get_autocommit(database) != 0 && control("BEGIN");
    }
    ~ReadLock() {
        if (m_mine)
            control("COMMIT");
    }
    ReadLock(const ReadLock&) = delete;
    ReadLock& operator=(const ReadLock&) = delete;

private:
    bool control(const char* sql) const {
        return sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    sqlite3* m_database;
    bool m_mine = false;
};

}  // namespace

KeyedStatements::KeyedStatements(sqlite3* database, Guard& guard, const Translation& translation,
                                 const QString& statement)
    : m_database(database), m_guard(guard), m_table(translation.whole ? translation.table : QString()),
      m_statement(statement), m_keys(guard.prepareTyped(translation.keysSql, statement, false)),
      m_row(guard.prepareTyped(translation.rowSql, statement, false)),
      m_betweenSql(translation.rowSql.chopped(oneKey.size()) + u" BETWEEN ? AND ? ORDER BY "_s +
                   translation.rowKey),
      m_fields(*m_row) {}

/// All keys of a table that has no gap in them, by one look; nothing where there is one.
std::optional<RowKeys> KeyedStatements::keysWithoutGap() const {
    Statement ends(
        m_database,
        u"SELECT (SELECT count(*) FROM %1), (SELECT min(rowid) FROM %1), (SELECT max(rowid) FROM %1)"_s.arg(
            quotedName(m_table)),
        m_statement);
    ends.step();
    const std::int64_t count = ends.integer(0), first = ends.integer(1), last = ends.integer(2);
    const auto span = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first);
    if (count == 0 || span != static_cast<std::uint64_t>(count - 1))
        return std::nullopt;
    return RowKeys(first, count);
}

RowKeys KeyedStatements::keys() {
    if (!m_table.isEmpty()) {
        if (auto all = keysWithoutGap()) {
            m_keys.reset();
            return *all;
        }
    }
    std::vector<std::int64_t> keys;
    while (m_keys->step())
        keys.push_back(m_keys->integer(0));
    m_keys.reset();
    return RowKeys(std::move(keys));
}

/// The rows of all keys from first to last by one statement, which costs half of one for each; nothing where one of them
/// is gone, since the rows alone don't tell which.
std::optional<std::vector<KeyedSelect::Row>> KeyedStatements::rowsBetween(std::int64_t first,
                                                                          std::int64_t last) {
    if (!m_between)
        m_between = m_guard.prepareTyped(m_betweenSql, m_statement, false);
    const auto wanted = static_cast<std::size_t>(last - first + 1);
    m_between->bind(1, qint64{first});
    m_between->bind(2, qint64{last});
    std::vector<Row> rows;
    rows.reserve(wanted);
    while (m_between->step())
        rows.push_back(m_fields.read(*m_between));
    m_between->reset();
    return rows.size() == wanted ? std::optional(std::move(rows)) : std::nullopt;
}

std::vector<KeyedSelect::Row> KeyedStatements::rows(std::span<const std::int64_t> keys) {
    const auto parted = [](std::int64_t key, std::int64_t next) { return next != key + 1; };
    if (keys.size() > 1 && std::adjacent_find(keys.begin(), keys.end(), parted) == keys.end()) {
        if (auto all = rowsBetween(keys.front(), keys.back()))
            return std::move(*all);
    }
    std::unique_ptr<ReadLock> lock;
    if (keys.size() > 1)  // locking the file costs more than a row
        lock = std::make_unique<ReadLock>(m_database);
    std::vector<Row> rows;
    rows.reserve(keys.size());
    for (const std::int64_t key : keys) {
        m_row->bind(1, qint64{key});
        rows.push_back(m_row->step() ? m_fields.read(*m_row) : Row());
        m_row->reset();
    }
    return rows;
}

}  // namespace platform::sqlite
