#include "platform/data/postgres/ServerRows.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/data/ColumnType.h"
#include "platform/data/postgres/Types.h"

#include <QDateTime>

namespace platform::postgres {

namespace {

/// Of a column that no table declares.
QVariant calculatedValue(const Result& result, int row, int column) {
    switch (result.columnType(column)) {
    case type::int2:
    case type::int4:
    case type::int8:
        return qint64{result.integer(row, column)};
    case type::float4:
    case type::float8:
    case type::numeric:
        return result.bytes(row, column).toDouble();
    case type::boolean:
        return qint64{result.bytes(row, column) == "t" ? -1 : 0};
    default:
        return result.text(row, column);
    }
}

}  // namespace

ResultColumn resultColumn(const ServerStore& store, const Result& result, int column) {
    ResultColumn found;
    found.name = store.words.restored(result.columnName(column));
    const Catalogue::Table* table = store.catalogue.table(result.table(column));
    const Catalogue::Column* origin = table ? Catalogue::column(*table, result.tableColumn(column)) : nullptr;
    if (origin) {
        found.declaredType = origin->declaredType;
        found.baseTable = table->name;
        found.baseColumn = origin->name;
    }
    return found;
}

QVariant valueOf(const Result& result, int row, int column, const ColumnType& type) {
    if (result.isNull(row, column))
        return {};
    switch (type.kind) {
    case FieldKind::Text:
    case FieldKind::LongText:
        return result.text(row, column);
    case FieldKind::Short:
    case FieldKind::Long:
        return qint64{result.integer(row, column)};
    case FieldKind::Double:
        return result.bytes(row, column).toDouble();
    case FieldKind::Money:
        return QVariant::fromValue(Currency::fromText(result.text(row, column)));
    case FieldKind::Flag:
        return result.integer(row, column) != 0;
    case FieldKind::Date: {
        const QDateTime date = fromStoredDate(result.text(row, column));
        return date.isValid() ? QVariant(date) : QVariant(result.text(row, column));
    }
    case FieldKind::Computed:
        break;
    }
    return calculatedValue(result, row, column);
}

}  // namespace platform::postgres
