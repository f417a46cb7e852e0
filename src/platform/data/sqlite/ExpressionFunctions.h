// What the dialect's operators and functions calculate, as functions of the engine.
//   dialect_calc(a, '/', b, '*', c ...)  one level of operators from left to right: + - * / \\ Mod ^ &
//   dialect_compare(a, b)                -1, 0 or 1; NULL with NULL; texts without regard to case
//   dialect_truth(a)                     -1 or 0
//   dialect_value('DOUBLE', a)           the value as a column of that type holds it
//   dialect_abs, _int, _fix, _round, _sgn, _val
// They end in the errors "Division by zero", "Overflow" and "Data type mismatch in expression".
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

struct sqlite3;

namespace platform {

/// Adds the functions to this connection.
void installExpressionFunctions(sqlite3* database);

/// The number of one of these errors by the engine's message; nothing for any other message.
std::optional<std::int32_t> expressionErrorNumber(std::string_view message);

}  // namespace platform
