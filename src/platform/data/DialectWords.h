// The words of the dialect: those between the clauses of a statement, those between operands, its functions.
#pragma once

#include "platform/data/Lexer.h"

#include <QLatin1String>
#include <initializer_list>
#include <optional>

namespace platform {

bool isOneOf(const Token& token, std::initializer_list<const char*> words);
/// SELECT, FROM, ORDER and so on: no word of an expression.
bool isClauseWord(const Token& token);
/// Words between operands.
bool isOperatorWord(const Token& token);
/// What the engine knows and the dialect doesn't.
bool isForeignWord(const Token& token);
/// The engine's name for a function of the dialect: empty for a sum over rows, which is the engine's own; nothing
/// where the dialect has no such function.
std::optional<QLatin1String> writtenFunction(const Token& token);

}  // namespace platform
