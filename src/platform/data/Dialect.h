// Turns a statement of the program's dialect into one of the engine: a lexer and a few small rules.
// The dialect and each rule are described in docs/database.md.
#pragma once

#include <QString>
#include <functional>
#include <utility>
#include <vector>

namespace platform {

/// A name as engines take it, in double quotes.
QString quotedName(QString name);

/// Declared type of a column of a table, empty when there is none.
using DeclaredType = std::function<QString(const QString& table, const QString& column)>;

/// How an engine writes what each writes in its own way.
struct EngineWords {
    QString lastKey;  ///< the key that was given to the newest row
    QString rowKey;   ///< the column by which a row of any table is known
};

/// What a SELECT says of the order of its rows, and by what the rest can be ordered.
struct RowOrder {
    bool complete = false;    ///< nothing can be put behind: several SELECTs, DISTINCT, sums over rows
    bool ordered = false;     ///< the statement has an ORDER BY
    bool descending = false;  ///< in its last column
    QString groups;           ///< what it groups by
    /// Table and column of each that is selected by both names, in their order.
    std::vector<std::pair<QString, QString>> columns;
};

enum class StatementKind { Select, Insert, Update, Delete };

struct Translation {
    StatementKind kind = StatementKind::Select;
    QString sql;
    /// Only for a SELECT of plain columns from one table: the row ids of the result in its order,
    /// and one row by its id (the parameter). All empty otherwise.
    QString keysSql;
    QString rowSql;
    QString table;
    QString rowKey;      ///< with the name of the table
    bool whole = false;  ///< all rows of the table, in the order of their keys
    RowOrder order;      ///< of a SELECT
};

/// The statement for an engine, with what a result set needs besides. Values that INSERT and UPDATE give to a column
/// are converted to its declared type; throws dataMismatch for one that can't be. Throws statement when the text is
/// not one single statement of the allowed kinds (SELECT, INSERT, UPDATE, DELETE), has an unclosed string or
/// bracket, or a comment.
Translation translateStatement(const QString& statement, const EngineWords& words,
                               const DeclaredType& declaredType = {});

}  // namespace platform
