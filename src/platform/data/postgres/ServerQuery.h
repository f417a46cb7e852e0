// One statement with its parameters, sent when the first row or the columns are asked for.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/postgres/ServerStore.h"

#include <optional>

namespace platform::postgres {

class ServerQuery : public EngineQuery {
public:
    /// sql: in the server's words, with $1 and so on. Of one that adds a row of a known table the result is its key.
    /// original: for the errors. The store has to stay.
    ServerQuery(ServerStore& store, const QString& sql, Access access, QString original,
                bool givesKey = false);

    void bind(int parameter, const QVariant& value) override;
    bool step() override;
    void reset() override;
    bool isReadOnly() const override { return m_command == Access::Reads; }
    std::int64_t changedRows() const override { return m_changedRows; }
    int columnCount() const override;
    ResultColumn column(int column) const override;
    std::int64_t integer(int column) const override;
    QVariant value(int column, const ColumnType& type) const override;

private:
    const Result& result() const;

    ServerStore& m_store;
    QByteArray m_sql;
    Access m_command;
    QString m_original;
    bool m_givesKey;
    std::vector<QVariant> m_parameters;
    mutable std::optional<Result> m_result;
    mutable std::int64_t m_changedRows = 0;
    int m_row = -1;
};

}  // namespace platform::postgres
