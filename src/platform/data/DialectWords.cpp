// Tables of words.
#include "platform/data/DialectWords.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

struct Function {
    const char* name;
    const char* written;  ///< empty for a sum over rows, which is the engine's own
};

/// Every other function is unknown here: the engine has some of the same name and another meaning.
constexpr std::array functions{Function{"Count", ""},
                               Function{"Sum", ""},
                               Function{"Avg", ""},
                               Function{"Min", ""},
                               Function{"Max", ""},
                               Function{"IIf", "iif"},
                               Function{"Abs", "dialect_abs"},
                               Function{"Int", "dialect_int"},
                               Function{"Fix", "dialect_fix"},
                               Function{"Sgn", "dialect_sgn"},
                               Function{"Val", "dialect_val"},
                               Function{"Round", "dialect_round"}};

}  // namespace

bool isOneOf(const Token& token, std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return token.isWord(word); });
}

bool isClauseWord(const Token& token) {
    return isOneOf(token, {"SELECT", "DISTINCT", "ALL",   "FROM",   "WHERE",  "INNER",  "LEFT",     "RIGHT",
                           "FULL",   "OUTER",    "CROSS", "JOIN",   "ON",     "GROUP",  "ORDER",    "BY",
                           "HAVING", "UNION",    "LIMIT", "OFFSET", "ASC",    "DESC",   "AS",       "INSERT",
                           "INTO",   "VALUES",   "SET",   "UPDATE", "DELETE", "EXCEPT", "INTERSECT"});
}

bool isOperatorWord(const Token& token) {
    return isOneOf(token, {"AND", "OR", "NOT", "LIKE", "IN", "IS", "BETWEEN", "MOD"});
}

bool isForeignWord(const Token& token) {
    return isOneOf(token,
                   {"CASE", "CAST", "GLOB", "REGEXP", "MATCH", "COLLATE", "ISNULL", "NOTNULL", "ESCAPE",
                    "RAISE", "XOR", "EQV", "IMP", "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP"});
}

std::optional<QLatin1String> writtenFunction(const Token& token) {
    const auto found = std::find_if(functions.begin(), functions.end(),
                                    [&](const Function& function) { return token.isWord(function.name); });
    return found == functions.end() ? std::nullopt : std::optional(QLatin1String(found->written));
}

}  // namespace platform
