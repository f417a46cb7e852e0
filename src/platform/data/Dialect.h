// Turns a statement of the program's dialect into one of SQLite: a lexer and a few small rules.
// The dialect and each rule are described in docs/database.md.
#pragma once

#include <QString>

namespace platform {

/// Throws RuntimeError(statement) when the text is not one single statement of the allowed kinds
/// (SELECT, INSERT, UPDATE, DELETE), has an unclosed string or bracket, or a comment.
QString toSqlite(const QString& statement);

}  // namespace platform
