// The keys of a SELECT on one table, and its rows by them; any number of rows at once.
#pragma once

#include "platform/data/FieldList.h"
#include "platform/data/postgres/ServerStore.h"

namespace platform::postgres {

class ServerKeys : public KeyedSelect {
public:
    /// The store has to stay. Throws RuntimeError(statement) where the server refuses.
    ServerKeys(ServerStore& store, const Translation& translation, const QString& statement);

    RowKeys keys() override { return RowKeys(std::move(m_keys)); }
    const FieldList& fields() const override { return m_fields; }
    std::vector<Row> rows(std::span<const std::int64_t> keys) override;

private:
    ServerStore& m_store;
    QString m_statement;
    QByteArray m_rowsSql;  ///< the key comes first
    std::vector<std::int64_t> m_keys;
    FieldList m_fields;
};

}  // namespace platform::postgres
