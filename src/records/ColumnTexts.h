// One column of a whole table, for lists that look at every row.
#pragma once

#include <QHash>
#include <QString>
#include <cstdint>

namespace sorvanto {

/// The texts of a column by the keys of their rows; a missing value is an empty text. Throws as
/// Connection::execute.
QHash<std::int64_t, QString> columnTexts(const QString& table, const QString& key, const QString& column);

}  // namespace sorvanto
