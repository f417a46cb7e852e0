// The columns of a result set: names, types and the table column behind each.
#pragma once

#include "platform/data/ColumnType.h"
#include "platform/data/Engine.h"
#include "platform/data/Recordset.h"

#include <QHash>
#include <vector>

namespace platform {

class FieldList {
public:
    FieldList() = default;
    explicit FieldList(const EngineQuery& query);

    int count() const { return static_cast<int>(m_info.size()); }
    /// Throws itemNotFound.
    const FieldInfo& info(int field) const;
    const ColumnType& type(int field) const { return m_types[static_cast<std::size_t>(field)]; }
    /// -1 when there is none; case ignored, the first of equal names.
    int find(const QString& name) const;

    /// The present row of a query with these columns.
    std::vector<QVariant> read(const EngineQuery& query) const;
    /// Gives a computed column the kind of its first value.
    void learn(int field, const QVariant& value);

private:
    std::vector<FieldInfo> m_info;
    std::vector<ColumnType> m_types;
    QHash<QString, int> m_places;
};

}  // namespace platform
