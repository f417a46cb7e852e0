#include "platform/data/postgres/Catalogue.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform::postgres {

namespace {

constexpr char statement[] =
    "SELECT c.oid, c.relname, c.relkind = 'v', a.attname, t.typname, a.attnum, i.indrelid IS NOT NULL "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid JOIN pg_type t ON t.oid = a.atttypid "
    "LEFT JOIN pg_index i ON i.indrelid = c.oid AND i.indisprimary AND a.attnum = ANY (i.indkey) "
    "WHERE c.relnamespace = current_schema()::regnamespace AND c.relkind IN ('r', 'v') AND a.attnum > 0 "
    "AND NOT a.attisdropped ORDER BY c.relname COLLATE \"C\", a.attnum";

}  // namespace

void Catalogue::read(Session& session) {
    const Result rows = session.runOne({statement, {}, false}, Access::Reads, {});
    *this = {};
    for (int row = 0; row < rows.rows(); ++row)
        add(rows, row);
    if (m_tables.isEmpty())
        throw RuntimeError(error::general, u"The server has none of the tables"_s, u"Database"_s);
}

void Catalogue::add(const Result& rows, int row) {
    const auto number = static_cast<std::uint32_t>(rows.integer(row, 0));
    Table& table = m_tables[number];
    table.name = rows.text(row, 1);
    table.isView = rows.bytes(row, 2) == "t";
    const Column column{rows.text(row, 3), rows.text(row, 4), static_cast<int>(rows.integer(row, 5)),
                        rows.bytes(row, 6) == "t"};
    table.columns.push_back(column);
    m_numbers.insert(table.name.toCaseFolded(), number);
    m_spellings.insert(table.name.toCaseFolded(), table.name);
    m_spellings.insert(column.name.toCaseFolded(), column.name);
}

QStringList Catalogue::tables() const {
    QStringList names;
    for (const Table& table : m_tables) {
        if (!table.isView)
            names << table.name;
    }
    names.sort();
    return names;
}

const Catalogue::Table* Catalogue::table(const QString& name) const {
    return table(m_numbers.value(name.toCaseFolded()));
}

const Catalogue::Table* Catalogue::table(std::uint32_t number) const {
    const auto found = m_tables.constFind(number);
    return found == m_tables.constEnd() ? nullptr : &*found;
}

const Catalogue::Column* Catalogue::column(const QString& table, const QString& column) const {
    const Table* known = this->table(table);
    if (!known)
        return nullptr;
    const auto found = std::find_if(known->columns.begin(), known->columns.end(), [&](const Column& one) {
        return one.name.compare(column, Qt::CaseInsensitive) == 0;
    });
    return found == known->columns.end() ? nullptr : &*found;
}

const Catalogue::Column* Catalogue::column(const Table& table, int place) {
    const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                    [&](const Column& one) { return one.place == place; });
    return found == table.columns.end() ? nullptr : &*found;
}

QString Catalogue::key(const QString& table) const {
    const Table* known = this->table(table);
    QStringList keys;
    for (const Column& column : known ? known->columns : std::vector<Column>()) {
        if (column.isKey)
            keys << (column.declaredType == "INTEGER"_L1 ? column.name : QString());
    }
    return keys.size() == 1 ? keys.first() : QString();
}

}  // namespace platform::postgres
