// What the declared type of a column means: which values it holds, its type number for result sets,
// and the one conversion of a value to it.
#pragma once

#include <QString>
#include <QVariant>

namespace platform {

enum class ColumnKind { Computed, Text, LongText, Short, Long, Double, Money, Date, Flag };

struct ColumnType {
    ColumnKind kind = ColumnKind::Computed;
    int size = 0;  ///< characters of a text, else bytes

    /// "TEXT(40)", "LONGTEXT", "SMALLINT", "INTEGER", "DOUBLE", "CURRENCY", "DATETIME", "YESNO".
    /// Anything else is Computed: values come as the engine holds them.
    static ColumnType fromDeclaration(const QString& declared);

    /// 202 text, 203 long text, 2 and 3 integers, 5 double, 6 money, 7 date, 11 flag; 0 for Computed.
    int number() const;
    bool isText() const { return kind == ColumnKind::Text || kind == ColumnKind::LongText; }

    /// The value as this column holds it: QString, qint64, double, Currency, QDateTime or bool; NULL stays.
    /// Integers round a half to the even neighbour. Throws typeMismatch, or dataMismatch for a number
    /// outside the column's range.
    QVariant convert(const QVariant& value) const;
};

/// A converted value as a literal of SQLite: 'text', 12.5, NULL.
QString sqlLiteral(const QVariant& value);

}  // namespace platform
