// What the declared type of a column means: which values it holds, and the one conversion of a value to it.
#pragma once

#include "platform/data/FieldKind.h"

#include <QString>
#include <QVariant>

namespace platform {

struct ColumnType {
    FieldKind kind = FieldKind::Computed;
    int size = 0;  ///< characters of a text, else bytes

    /// "TEXT(40)", "LONGTEXT", "SMALLINT", "INTEGER", "DOUBLE", "CURRENCY", "DATETIME", "YESNO".
    /// Anything else is Computed: values come as the engine holds them.
    static ColumnType fromDeclaration(const QString& declared);

    bool isText() const { return kind == FieldKind::Text || kind == FieldKind::LongText; }

    /// The value as this column holds it: QString, qint64, double, Currency, QDateTime or bool; NULL stays.
    /// Integers round a half to the even neighbour. Throws typeMismatch, or dataMismatch for a number
    /// outside the column's range.
    QVariant convert(const QVariant& value) const;
};

/// Whatever the engine holds, as a text.
inline constexpr ColumnType asText{FieldKind::Text, 0};

/// A converted value as a literal of an engine: 'text', 12.5, NULL.
QString sqlLiteral(const QVariant& value);

}  // namespace platform
