// The keys of a SELECT on one table, and its rows by them.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/FieldList.h"
#include "platform/data/sqlite/Guard.h"
#include "platform/data/sqlite/Statement.h"

#include <optional>

namespace platform::sqlite {

class KeyedStatements : public KeyedSelect {
public:
    /// Throws RuntimeError(statement) where the engine refuses: an order by an alias, or a statement that is wrong in
    /// itself.
    KeyedStatements(sqlite3* database, Guard& guard, const Translation& translation,
                    const QString& statement);

    RowKeys keys() override;
    const FieldList& fields() const override { return m_fields; }
    std::vector<Row> rows(std::span<const std::int64_t> keys) override;

private:
    std::optional<RowKeys> keysWithoutGap() const;
    std::optional<std::vector<Row>> rowsBetween(std::int64_t first, std::int64_t last);

    sqlite3* m_database;
    Guard& m_guard;
    QString m_table;  ///< all of whose rows are asked for; else empty
    QString m_statement;
    std::unique_ptr<Statement> m_keys;
    std::unique_ptr<Statement> m_row;
    QString m_betweenSql;
    std::unique_ptr<Statement>
        m_between;  ///< rows of keys that follow one another; made when first asked for
    FieldList m_fields;
};

}  // namespace platform::sqlite
