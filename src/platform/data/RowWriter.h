// Writes the changed fields of one row back to the tables that the columns come from.
#pragma once

#include "platform/data/Connection.h"
#include "platform/data/FieldList.h"

#include <QVariant>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace platform {

/// New values by field, already converted to the columns' types.
using Changes = std::map<int, QVariant>;

class RowWriter {
public:
    RowWriter(Connection& connection, const FieldList& fields, const QString& statement);

    /// One UPDATE a table, by the table's key column, which must be among the fields; all or none.
    /// row holds the stored values.
    void update(const std::vector<QVariant>& row, const Changes& changes);
    /// One INSERT; the changed fields must be of one table. Gives the new row id.
    std::int64_t insert(const Changes& changes);
    /// The same for each of these, which change the same fields, one after the other; see Engine::insertInTurn.
    void insertInTurn(const std::vector<Changes>& rows, const std::function<void(std::int64_t id)>& taken);
    /// Fills the values of the inserted row that come from its table, defaults and key included.
    void readBack(std::int64_t id, const Changes& changes, std::vector<QVariant>& row);

private:
    int keyField(const QString& table) const;
    QString soleTable(const Changes& changes) const;
    void updateTable(const QString& table, const std::vector<QVariant>& row, const Changes& changes);
    [[noreturn]] void refuse(const QString& reason) const;

    Connection& m_connection;
    const FieldList& m_fields;
    QString m_statement;
};

}  // namespace platform
