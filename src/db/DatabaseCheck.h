// Compares a database file with what the program relies on.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

/// One line a problem: damage, values that a column can't hold, broken or missing relations, missing
/// tables and columns, columns of another type, an Options table without its one row. More tables, columns and
/// relations than known are no problem. Empty when all is well; throws when the file is no database.
QStringList checkDatabase(const QString& path);

}  // namespace sorvanto
