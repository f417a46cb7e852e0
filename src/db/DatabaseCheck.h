// Compares a database file with what the program relies on.
#pragma once

#include <QString>
#include <QStringList>

namespace sorvanto {

/// All of soundnessProblems; where there are none, what is wrong with the file's history: the first row at which its chain of
/// seals is broken, records that are not what it says, triggers that are missing.
QStringList checkDatabase(const QString& path);

/// One line a problem: damage, values that a column can't hold, broken or missing relations, missing
/// tables and columns, columns of another type, an Options table without its one row. More tables, columns and
/// relations than known are no problem. Empty when all is well; throws when the file is no database.
QStringList soundnessProblems(const QString& path);

}  // namespace sorvanto
