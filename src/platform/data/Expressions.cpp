// The walk over the clauses of a statement, and conditions from Or down to the comparisons.
#include "platform/data/Expressions.h"

#include "platform/data/DialectWords.h"
#include "platform/data/ExpressionRewriter.h"

using namespace Qt::StringLiterals;

namespace platform {

using Kind = Token::Kind;
using Type = Operand::Type;

void ExpressionRewriter::walk(std::size_t begin, std::size_t end, bool condition) {
    bool assigning = false;
    for (std::size_t i = begin; i < end;) {
        if (m_tokens.at(i, Kind::Name) && isForeignWord(m_tokens[i]))
            refuseStatement(u"Syntax error at %1"_s.arg(m_tokens[i].text));
        if (m_tokens.at(i, Kind::Name) && isClauseWord(m_tokens[i])) {
            condition = isOneOf(m_tokens[i], {"WHERE", "ON", "HAVING"});
            assigning = m_tokens.wordAt(i, "SET");
            i += isOneOf(m_tokens[i], {"AS", "INTO", "UPDATE"}) ? 2 : 1;
        } else if (m_tokens.at(i, Kind::Operator) && !m_tokens.startsExpression(i) &&
                   m_tokens[i].text != u"*") {
            refuseStatement(u"Syntax error at %1"_s.arg(m_tokens[i].text));
        } else if (!m_tokens.startsExpression(i)) {
            ++i;
        } else if (assigning && m_tokens.at(i + 1, Kind::Operator)) {
            i = assigned(i);
        } else {
            const Operand found = expression(i);
            m_operands.settle(found, condition);
            i = found.end;
        }
    }
}

std::size_t ExpressionRewriter::assigned(std::size_t i) {
    i += 2;
    if (!m_tokens.startsExpression(i))
        return i;
    const Operand found = expression(i);
    m_operands.asValue(found);
    return found.end;
}

Operand ExpressionRewriter::expression(std::size_t i) { return logical(i, "OR"); }

Operand ExpressionRewriter::logical(std::size_t i, const char* word) {
    const bool isOr = QLatin1String(word) == "OR"_L1;
    const auto next = [&](std::size_t from) { return isOr ? logical(from, "AND") : negation(from); };
    Operand first = next(i);
    while (m_tokens.wordAt(first.end, word)) {
        m_operands.asTruth(first);
        const Operand other = next(first.end + 1);
        m_operands.asTruth(other);
        first = {first.begin, other.end, Type::Truth};
    }
    return first;
}

Operand ExpressionRewriter::negation(std::size_t i) {
    const std::size_t begin = i;
    while (m_tokens.wordAt(i, "NOT"))
        ++i;
    const Operand operand = comparison(i);
    if (i == begin)
        return operand;
    m_operands.asTruth(operand);
    return {begin, operand.end, Type::Truth};
}

Operand ExpressionRewriter::comparison(std::size_t i) {
    Operand left = calculation(i, 0);
    for (;;) {
        const std::size_t sign = left.end;
        const std::size_t word = m_tokens.wordAt(sign, "NOT") ? sign + 1 : sign;
        if (m_tokens.at(sign, Kind::Operator))
            left = compared(left, sign, calculation(sign + 1, 0));
        else if (m_tokens.wordAt(word, "LIKE"))
            left = liked(left, word, calculation(word + 1, 0));
        else if (m_tokens.wordAt(word, "BETWEEN"))
            left = between(left, word);
        else if (m_tokens.wordAt(word, "IN") && m_tokens.at(word + 1, Kind::Open))
            left = among(left, word + 1);
        else if (m_tokens.wordAt(sign, "IS"))
            left = nullTested(left, sign);
        else
            return left;
    }
}

Operand ExpressionRewriter::compared(Operand left, std::size_t sign, Operand right) {
    left = m_operands.asValue(left);
    right = m_operands.asValue(right);
    const Operand whole{left.begin, right.end, Type::Truth};
    if (left.isColumn || right.isColumn) {
        m_operands.flagOfColumn(left);
        m_operands.flagOfColumn(right);
        return whole;
    }
    m_operands.matchDates(left, right);
    m_operands.refuseClash(left, right);
    m_operands.asCompared(left);
    m_operands.asCompared(right);
    const QString text = m_tokens[sign].text;
    m_writer.replace(sign, u","_s);
    m_writer.wrap(whole.begin, whole.end, u"(dialect_compare("_s, u") %1 0)"_s.arg(text));
    return whole;
}

Operand ExpressionRewriter::liked(const Operand& left, std::size_t word, const Operand& right) {
    m_operands.asJoined(left);
    m_operands.asJoined(right);
    const bool negated = word > left.end;
    const bool literal = right.end == right.begin + 1 && m_tokens.at(right.begin, Kind::String);
    const auto [sign, pattern] =
        m_writer.words().like(literal ? m_tokens[right.begin].text : u"["_s, negated);
    if (sign.isEmpty())
        return {left.begin, right.end, Type::Truth};
    m_writer.wrap(left.begin, left.end, m_writer.words().likeText());
    m_writer.replace(left.end, sign);
    if (negated)
        m_writer.replace(word, {});
    m_writer.replace(right.begin, pattern);
    return {left.begin, right.end, Type::Truth};
}

Operand ExpressionRewriter::between(const Operand& left, std::size_t word) {
    m_operands.asValue(left);
    const Operand low = calculation(word + 1, 0);
    if (!m_tokens.wordAt(low.end, "AND"))
        refuseStatement(u"Between without And"_s);
    const Operand high = calculation(low.end + 1, 0);
    for (const Operand& bound : {low, high}) {
        m_operands.asValue(bound);
        m_operands.refuseClash(left, bound);
    }
    return {left.begin, high.end, Type::Truth};
}

Operand ExpressionRewriter::among(const Operand& left, std::size_t open) {
    m_operands.asValue(left);
    const std::size_t close = m_tokens.closeOf(open);
    walk(open + 1, close);
    return {left.begin, close + 1, Type::Truth};
}

Operand ExpressionRewriter::nullTested(const Operand& left, std::size_t word) {
    m_operands.asValue(left);
    const std::size_t null = m_tokens.wordAt(word + 1, "NOT") ? word + 2 : word + 1;
    if (!m_tokens.wordAt(null, "NULL"))
        refuseStatement(u"Is without Null"_s);
    return {left.begin, null + 1, Type::Truth};
}

void rewriteExpressions(const std::vector<Token>& tokens, StatementWriter& writer) {
    ExpressionRewriter(tokens, writer).run();
}

}  // namespace platform
