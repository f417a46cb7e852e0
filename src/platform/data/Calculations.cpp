// The levels of calculation, from & down to a single value, a name, a function or a parenthesis.
#include "platform/data/DialectWords.h"
#include "platform/data/ExpressionRewriter.h"

#include <array>

using namespace Qt::StringLiterals;

namespace platform {

using Kind = Token::Kind;
using Type = Operand::Type;

/// Operands of one level: a file's engine takes no more.
static constexpr int longestRow = 64;

Operand ExpressionRewriter::calculation(std::size_t i, std::size_t level) {
    static constexpr std::array<QStringView, 5> levels{u"&", u"+-", u"M", u"\\", u"*/"};
    if (level == levels.size())
        return signedPower(i);
    const auto isHere = [&](std::size_t at) {
        return levels[level] == u"M" ? m_tokens.wordAt(at, "MOD") : m_tokens.signAt(at, levels[level]);
    };
    Operand whole = calculation(i, level + 1);
    if (!isHere(whole.end))
        return whole;
    Type type = m_operands.inCalculation(whole, level == 0);
    for (int operands = 2; isHere(whole.end); ++operands) {
        if (operands > longestRow)
            refuseStatement(u"Expression too complex"_s);
        const std::size_t sign = whole.end;
        const Operand next = calculation(sign + 1, level + 1);
        const Type other = m_operands.inCalculation(next, level == 0);
        type = m_operands.resultType(type, m_tokens[sign].text, other);
        join(whole.begin, sign, next.end);
        whole.end = next.end;
    }
    finishRow(whole.begin, whole.end);
    return {whole.begin, whole.end, type};
}

Operand ExpressionRewriter::signedPower(std::size_t i) {
    const std::size_t begin = i;
    bool negative = false;
    for (; m_tokens.signAt(i, u"+-"); ++i)
        negative = negative != (m_tokens[i].text == u"-");
    Operand operand = power(i);
    if (i == begin)
        return operand;
    const bool literal = operand.end == i + 1 && m_tokens.at(i, Kind::Number);
    if (literal && i == begin + 1)
        return {begin, operand.end, Type::Number};
    m_operands.inCalculation(operand, false);
    for (std::size_t sign = begin; sign < i; ++sign)
        m_writer.replace(sign, {});
    writeUnary(i, operand.end, negative);
    return {begin, operand.end, Type::Number};
}

Operand ExpressionRewriter::power(std::size_t i) {
    Operand whole = primary(i);
    if (!m_tokens.signAt(whole.end, u"^"))
        return whole;
    m_operands.inCalculation(whole, false);
    while (m_tokens.signAt(whole.end, u"^")) {
        const std::size_t sign = whole.end;
        const bool isSigned = m_tokens.signAt(sign + 1, u"+-");
        const Operand exponent = primary(sign + (isSigned ? 2 : 1));
        m_operands.inCalculation(exponent, false);
        if (isSigned && m_tokens[sign + 1].text == u"-")
            writeUnary(exponent.begin, exponent.end, true);
        if (isSigned)
            m_writer.replace(sign + 1, {});
        join(whole.begin, sign, exponent.end);
        whole.end = exponent.end;
    }
    finishRow(whole.begin, whole.end);
    return {whole.begin, whole.end, Type::Number};
}

Operand ExpressionRewriter::primary(std::size_t i) {
    if (m_tokens.at(i, Kind::Open))
        return parenthesis(i);
    if (m_tokens.at(i, Kind::Number) || m_tokens.at(i, Kind::Identity))
        return {i, i + 1, Type::Number};
    if (m_tokens.at(i, Kind::String))
        return {i, i + 1, Type::Text};
    if (m_tokens.at(i, Kind::Date))
        return {i, i + 1, Type::Date};
    if (!m_tokens.nameAt(i))
        refuseStatement(u"Syntax error: an operand is missing"_s);
    return named(i);
}

Operand ExpressionRewriter::parenthesis(std::size_t open) {
    const std::size_t close = m_tokens.closeOf(open);
    if (!m_tokens.startsExpression(open + 1) || m_tokens.wordAt(open + 1, "SELECT")) {
        walk(open + 1, close);
        return {open, close + 1};
    }
    Operand inner = expression(open + 1);
    if (inner.end < close) {
        m_operands.asValue(inner);
        walk(inner.end, close);
        return {open, close + 1};
    }
    inner.begin = open;
    inner.end = close + 1;
    inner.isTrueWord = false;
    return inner;
}

Operand ExpressionRewriter::named(std::size_t i) {
    const Token& token = m_tokens[i];
    if (m_tokens.at(i, Kind::Name) && isForeignWord(token))
        refuseStatement(u"Syntax error at %1"_s.arg(token.text));
    if (m_tokens.at(i, Kind::Name) && m_tokens.at(i + 1, Kind::Open))
        return called(i);
    if (m_tokens.at(i + 1, Kind::Dot))
        return {i, i + 3, Type::Any, true};
    if (token.isWord("TRUE") || token.isWord("FALSE")) {
        m_writer.replace(i, token.isWord("TRUE") ? u"-1"_s : u"0"_s);
        return {i, i + 1, Type::Number, false, token.isWord("TRUE")};
    }
    return {i, i + 1, Type::Any, !token.isWord("NULL")};
}

Operand ExpressionRewriter::called(std::size_t i) {
    const std::size_t close = m_tokens.closeOf(i + 1);
    if (m_tokens.wordAt(i, "EXISTS")) {
        walk(i + 2, close);
        return {i, close + 1, Type::Truth};
    }
    const auto written = writtenFunction(m_tokens[i]);
    if (!written)
        refuseStatement(u"Undefined function '%1' in expression"_s.arg(m_tokens[i].text.left(80)));
    const bool overRows = written->isEmpty();
    if (!overRows)
        m_writer.replace(i, m_writer.words().function(*written));
    std::size_t arguments = 0;
    for (std::size_t next = i + 2; next < close; ++arguments) {
        if (m_tokens.startsExpression(next)) {
            const Operand argument = expression(next);
            m_operands.settle(argument, m_tokens[i].isWord("IIF") && arguments == 0);
            next = argument.end;
        }
        while (next < close && !m_tokens.at(next, Kind::Comma))
            ++next;
        ++next;
    }
    if (overRows && arguments > 1)
        refuseStatement(u"Wrong number of arguments: %1"_s.arg(m_tokens[i].text));
    return {i, close + 1};
}

void ExpressionRewriter::join(std::size_t begin, std::size_t sign, std::size_t end) {
    const QString text = m_tokens[sign].text.toUpper();
    const QString function = m_writer.words().operatorFunction(text);
    m_writer.replace(sign, function.isEmpty() ? u", '%1',"_s.arg(text) : u","_s);
    if (function.isEmpty())
        return;
    m_writer.wrap(begin, sign, m_writer.words().operatorValue(text));
    m_writer.wrap(sign + 1, end, m_writer.words().operatorValue(text));
    m_writer.wrap(begin, end, function + u'(', u")"_s);
}

void ExpressionRewriter::finishRow(std::size_t begin, std::size_t end) {
    if (m_writer.words().operatorFunction(u"+"_s).isEmpty())
        m_writer.wrap(begin, end, u"dialect_calc("_s, u")"_s);
}

void ExpressionRewriter::writeUnary(std::size_t begin, std::size_t end, bool negative) {
    const QString sign = negative ? u"-"_s : u"+"_s;
    const QString function = m_writer.words().operatorFunction(sign);
    if (!function.isEmpty())
        m_writer.wrap(begin, end, m_writer.words().operatorValue(sign));
    const QString before = function.isEmpty() ? u"dialect_calc(0, '%1', "_s.arg(sign) : function + u"(0, "_s;
    m_writer.wrap(begin, end, before, u")"_s);
}

}  // namespace platform
