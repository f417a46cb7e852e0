// Columns of a result set, read from the prepared query.
#include "platform/data/FieldList.h"

#include "platform/basic/Currency.h"
#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;

namespace platform {

FieldList::FieldList(const EngineQuery& query) {
    for (int column = 0; column < query.columnCount(); ++column) {
        const ResultColumn found = query.column(column);
        const ColumnType type = ColumnType::fromDeclaration(found.declaredType);
        FieldInfo info;
        info.name = found.name;
        info.kind = type.kind;
        info.definedSize = type.size;
        info.baseTable = found.baseTable;
        info.baseColumn = found.baseColumn;
        const QString key = info.name.toCaseFolded();
        if (!m_places.contains(key))
            m_places.insert(key, column);
        m_info.push_back(std::move(info));
        m_types.push_back(type);
    }
}

const FieldInfo& FieldList::info(int field) const {
    if (field < 0 || field >= count())
        throw RuntimeError(error::itemNotFound, u"The result set has no field %1"_s.arg(field));
    return m_info[static_cast<std::size_t>(field)];
}

int FieldList::find(const QString& name) const { return m_places.value(name.toCaseFolded(), -1); }

std::vector<QVariant> FieldList::read(const EngineQuery& query) const {
    std::vector<QVariant> row;
    row.reserve(m_info.size());
    for (int column = 0; column < count(); ++column)
        row.push_back(query.value(column, type(column)));
    return row;
}

void FieldList::learn(int field, const QVariant& value) {
    FieldInfo& info = m_info[static_cast<std::size_t>(field)];
    if (info.kind != FieldKind::Computed || !value.isValid())
        return;
    switch (value.userType()) {
    case QMetaType::QString:
        info.kind = FieldKind::Text;
        info.definedSize = 255;
        break;
    case QMetaType::LongLong:
        info.kind = FieldKind::Long;
        info.definedSize = 4;
        break;
    default:
        info.kind = FieldKind::Double;
        info.definedSize = 8;
    }
}

}  // namespace platform
