// Cuts a statement of the program's dialect into tokens. Knows strings, bracketed names, numbers,
// dates between number signs, names and marks; refuses comments and everything it does not know. The dialect is the
// program's own, so no library reads it.
#pragma once

#include <QString>
#include <vector>

namespace platform {

struct Token {
    enum class Kind {
        Name,     ///< bare word, as written
        Bracket,  ///< [name], without the brackets
        Derived,  ///< [SELECT ...]. : the inner statement
        String,   ///< 'text' or "text", apostrophes undoubled
        Number,
        Date,      ///< #date#, without the signs
        Identity,  ///< @@IDENTITY
        Open,
        Close,
        Comma,
        Dot,
        Semicolon,
        Operator,
    };
    Kind kind;
    QString text;
    bool spaceBefore = false;

    bool is(Kind wanted) const { return kind == wanted; }
    /// Whether it is this bare word, case ignored.
    bool isWord(const char* word) const;
};

/// Throws error::statement.
[[noreturn]] void refuseStatement(const QString& reason);

/// Throws RuntimeError(statement) on an open string, bracket or date, a comment or a strange character.
std::vector<Token> tokenize(const QString& statement);

/// The tokens of one whole statement without a final semicolon. Throws also on a second statement and on
/// parentheses that don't match or lie too deep.
std::vector<Token> statementTokens(const QString& statement);

}  // namespace platform
