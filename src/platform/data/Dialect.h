// Turns a statement of the program's dialect into one of SQLite: a lexer and a few small rules.
// The dialect and each rule are described in docs/database.md.
#pragma once

#include <QString>
#include <functional>

namespace platform {

/// A name as SQLite takes it, in double quotes.
QString quotedName(QString name);

/// Declared type of a column of a table, empty when there is none.
using DeclaredType = std::function<QString(const QString& table, const QString& column)>;

enum class StatementKind { Select, Insert, Update, Delete };

struct Translation {
    StatementKind kind = StatementKind::Select;
    QString sql;
    /// Only for a SELECT of plain columns from one table: the row ids of the result in its order,
    /// and one row by its id (the parameter). All empty otherwise.
    QString keysSql;
    QString rowSql;
    QString table;
    QString rowId;         ///< "Table".rowid
    bool ordered = false;  ///< the statement says in which order
};

/// The statement for SQLite, with what a result set needs besides. Values that INSERT and UPDATE give to a column
/// are converted to its declared type; throws dataMismatch for one that can't be. Throws statement when the text is
/// not one single statement of the allowed kinds (SELECT, INSERT, UPDATE, DELETE), has an unclosed string or
/// bracket, or a comment.
Translation translateStatement(const QString& statement, const DeclaredType& declaredType = {});

}  // namespace platform
