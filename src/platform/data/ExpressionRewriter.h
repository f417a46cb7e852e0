// Reads the clauses of a statement, and each expression in them by the dialect's order of operators:
// ^, sign, * /, \, Mod, + -, &, comparisons, Not, And, Or.
#pragma once

#include "platform/data/OperandWriter.h"
#include "platform/data/TokenView.h"

#include <vector>

namespace platform {

class ExpressionRewriter {
public:
    /// Neither is copied; both have to stay.
    ExpressionRewriter(const std::vector<Token>& tokens, StatementWriter& writer)
        : m_tokens(tokens), m_writer(writer), m_operands(m_tokens, m_writer) {}
    void run() { walk(0, m_tokens.size()); }

private:
    // Clauses, conditions and comparisons.
    /// Rewrites the expressions between the words and commas from begin to before end.
    void walk(std::size_t begin, std::size_t end, bool condition = false);
    /// column = value
    std::size_t assigned(std::size_t i);
    Operand expression(std::size_t i);
    Operand logical(std::size_t i, const char* word);
    Operand negation(std::size_t i);
    Operand comparison(std::size_t i);
    Operand compared(Operand left, std::size_t sign, Operand right);
    Operand liked(const Operand& left, std::size_t word, const Operand& right);
    Operand between(const Operand& left, std::size_t word);
    Operand among(const Operand& left, std::size_t open);
    Operand nullTested(const Operand& left, std::size_t word);

    // Calculations and what stands in them.
    /// One level of calculation: & loosest, then + -, Mod, \, and * / closest.
    Operand calculation(std::size_t i, std::size_t level);
    Operand signedPower(std::size_t i);
    Operand power(std::size_t i);
    Operand primary(std::size_t i);
    Operand parenthesis(std::size_t open);
    Operand named(std::size_t i);
    Operand called(std::size_t i);
    /// The operator between what begins there and what ends there.
    void join(std::size_t begin, std::size_t sign, std::size_t end);
    /// Around a whole row of values and operators.
    void finishRow(std::size_t begin, std::size_t end);
    void writeUnary(std::size_t begin, std::size_t end, bool negative);

    const TokenView m_tokens;
    StatementWriter& m_writer;
    OperandWriter m_operands;
};

}  // namespace platform
