// The keys of a SELECT on one table, and its rows by them; any number of rows at once. Who is going to read the first rows
// at once has them along with the keys.
#pragma once

#include "platform/data/FieldList.h"
#include "platform/data/postgres/ServerStore.h"

#include <QHash>

namespace platform::postgres {

class ServerKeys : public KeyedSelect {
public:
    /// The store has to stay. Throws RuntimeError(statement) where the server refuses.
    ServerKeys(ServerStore& store, const Translation& translation, const QString& statement);

    RowKeys keys() override { return RowKeys(std::move(m_keys)); }
    const FieldList& fields() const override { return m_fields; }
    std::vector<Row> rows(std::span<const std::int64_t> keys) override;
    int rowsAtOnce() const override { return piece; }

private:
    static constexpr int piece = 128;  ///< more than a list shows and measures
    /// Those of the opening, once each: only for whoever has asked for them, and as long as this connection has changed
    /// nothing since.
    std::vector<Row> takeFirst(std::span<const std::int64_t> keys);
    /// from: the column of the first field.
    Row rowOf(const Result& found, int row, int from) const;
    void readKeys(const Translation& translation);
    void readKeysAndRows(const Translation& translation);

    ServerStore& m_store;
    QString m_statement;
    QByteArray m_rowsSql;  ///< the key comes first
    std::vector<std::int64_t> m_keys;
    FieldList m_fields;
    Result m_first;
    QHash<std::int64_t, int> m_firstPlaces;
    std::int64_t m_ownChanges;
    int m_readAhead;
};

}  // namespace platform::postgres
