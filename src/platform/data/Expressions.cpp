// A walk over the clauses of a statement that reads each expression by the dialect's order of operators:
// ^, sign, * /, \, Mod, + -, &, comparisons, Not, And, Or.
#include "platform/data/Expressions.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DateLiteral.h"

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

using Kind = Token::Kind;
using Tokens = std::vector<Token>;

[[noreturn]] void refuse(const QString& reason) { throw RuntimeError(error::statement, reason); }

[[noreturn]] void mismatch() {
    throw RuntimeError(error::dataMismatch, u"Data type mismatch in expression"_s);
}

bool isOneOf(const Token& token, std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&](const char* word) { return token.isWord(word); });
}

bool isClauseWord(const Token& token) {
    return isOneOf(token, {"SELECT", "DISTINCT", "ALL",   "FROM",   "WHERE",  "INNER",  "LEFT",     "RIGHT",
                           "FULL",   "OUTER",    "CROSS", "JOIN",   "ON",     "GROUP",  "ORDER",    "BY",
                           "HAVING", "UNION",    "LIMIT", "OFFSET", "ASC",    "DESC",   "AS",       "INSERT",
                           "INTO",   "VALUES",   "SET",   "UPDATE", "DELETE", "EXCEPT", "INTERSECT"});
}

/// Words between operands.
bool isOperatorWord(const Token& token) {
    return isOneOf(token, {"AND", "OR", "NOT", "LIKE", "IN", "IS", "BETWEEN", "MOD"});
}

/// What the engine knows and the dialect doesn't.
bool isForeignWord(const Token& token) {
    return isOneOf(token,
                   {"CASE", "CAST", "GLOB", "REGEXP", "MATCH", "COLLATE", "ISNULL", "NOTNULL", "ESCAPE",
                    "RAISE", "XOR", "EQV", "IMP", "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP"});
}

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

struct Operand {
    enum class Type {
        Any,
        Number,
        Text,
        Date,    ///< a literal, written as the file holds dates
        Serial,  ///< a date that has been calculated: days since the zero date
        Truth,   ///< 1 or 0 of the engine; -1 or 0 as a value
    };
    std::size_t begin, end;
    Type type = Type::Any;
    bool isColumn = false;
    bool isTrueWord = false;
};

using Type = Operand::Type;

class Rewriter {
public:
    Rewriter(const Tokens& tokens, StatementWriter& writer) : m_tokens(tokens), m_writer(writer) {}
    void run() { walk(0, m_tokens.size()); }

private:
    bool at(std::size_t i, Kind kind) const { return i < m_tokens.size() && m_tokens[i].is(kind); }
    bool wordAt(std::size_t i, const char* word) const {
        return i < m_tokens.size() && m_tokens[i].isWord(word);
    }
    bool nameAt(std::size_t i) const {
        return at(i, Kind::Bracket) ||
               (at(i, Kind::Name) && !isClauseWord(m_tokens[i]) && !isOperatorWord(m_tokens[i]));
    }
    bool signAt(std::size_t i, QStringView signs) const {
        return at(i, Kind::Operator) && m_tokens[i].text.size() == 1 && signs.contains(m_tokens[i].text);
    }
    bool startsExpression(std::size_t i) const {
        return nameAt(i) || at(i, Kind::Number) || at(i, Kind::String) || at(i, Kind::Date) ||
               at(i, Kind::Identity) || at(i, Kind::Open) || wordAt(i, "NOT") || signAt(i, u"+-");
    }
    std::size_t closeOf(std::size_t open) const {
        int depth = 0;
        for (std::size_t i = open;; ++i) {
            depth += at(i, Kind::Open) ? 1 : at(i, Kind::Close) ? -1 : 0;
            if (depth == 0)
                return i;
        }
    }

    // Clauses.

    /// Rewrites the expressions between the words and commas from begin to before end.
    void walk(std::size_t begin, std::size_t end, bool condition = false) {
        bool assigning = false;
        for (std::size_t i = begin; i < end;) {
            if (at(i, Kind::Name) && isForeignWord(m_tokens[i]))
                refuse(u"Syntax error at %1"_s.arg(m_tokens[i].text));
            if (at(i, Kind::Name) && isClauseWord(m_tokens[i])) {
                condition = isOneOf(m_tokens[i], {"WHERE", "ON", "HAVING"});
                assigning = wordAt(i, "SET");
                i += isOneOf(m_tokens[i], {"AS", "INTO", "UPDATE"}) ? 2 : 1;
            } else if (at(i, Kind::Operator) && !startsExpression(i) && m_tokens[i].text != u"*") {
                refuse(u"Syntax error at %1"_s.arg(m_tokens[i].text));
            } else if (!startsExpression(i)) {
                ++i;
            } else if (assigning && at(i + 1, Kind::Operator)) {
                i = assigned(i);
            } else {
                const Operand found = expression(i);
                settle(found, condition);
                i = found.end;
            }
        }
    }

    /// column = value
    std::size_t assigned(std::size_t i) {
        i += 2;
        if (!startsExpression(i))
            return i;
        const Operand found = expression(i);
        asValue(found);
        return found.end;
    }

    // The levels of operators, from the loosest to the closest.

    Operand expression(std::size_t i) { return logical(i, "OR"); }

    Operand logical(std::size_t i, const char* word) {
        const bool isOr = QLatin1String(word) == "OR"_L1;
        const auto next = [&](std::size_t from) { return isOr ? logical(from, "AND") : negation(from); };
        Operand first = next(i);
        while (wordAt(first.end, word)) {
            asTruth(first);
            const Operand other = next(first.end + 1);
            asTruth(other);
            first = {first.begin, other.end, Type::Truth};
        }
        return first;
    }

    Operand negation(std::size_t i) {
        const std::size_t begin = i;
        while (wordAt(i, "NOT"))
            ++i;
        const Operand operand = comparison(i);
        if (i == begin)
            return operand;
        asTruth(operand);
        return {begin, operand.end, Type::Truth};
    }

    Operand comparison(std::size_t i) {
        Operand left = calculation(i, 0);
        for (;;) {
            const std::size_t sign = left.end;
            const std::size_t word = wordAt(sign, "NOT") ? sign + 1 : sign;
            if (at(sign, Kind::Operator))
                left = compared(left, sign, calculation(sign + 1, 0));
            else if (wordAt(word, "LIKE"))
                left = liked(left, calculation(word + 1, 0));
            else if (wordAt(word, "BETWEEN"))
                left = between(left, word);
            else if (wordAt(word, "IN") && at(word + 1, Kind::Open))
                left = among(left, word + 1);
            else if (wordAt(sign, "IS"))
                left = nullTested(left, sign);
            else
                return left;
        }
    }

    Operand compared(Operand left, std::size_t sign, Operand right) {
        left = asValue(left);
        right = asValue(right);
        const Operand whole{left.begin, right.end, Type::Truth};
        if (left.isColumn || right.isColumn) {
            flagOfColumn(left);
            flagOfColumn(right);
            return whole;
        }
        matchDates(left, right);
        refuseClash(left, right);
        const QString text = m_tokens[sign].text;
        m_writer.replace(sign, u","_s);
        m_writer.wrap(whole.begin, whole.end, u"(dialect_compare("_s, u") %1 0)"_s.arg(text));
        return whole;
    }

    Operand liked(const Operand& left, const Operand& right) {
        asJoined(left);
        asJoined(right);
        return {left.begin, right.end, Type::Truth};
    }

    Operand between(const Operand& left, std::size_t word) {
        asValue(left);
        const Operand low = calculation(word + 1, 0);
        if (!wordAt(low.end, "AND"))
            refuse(u"Between without And"_s);
        const Operand high = calculation(low.end + 1, 0);
        for (const Operand& bound : {low, high}) {
            asValue(bound);
            refuseClash(left, bound);
        }
        return {left.begin, high.end, Type::Truth};
    }

    Operand among(const Operand& left, std::size_t open) {
        asValue(left);
        const std::size_t close = closeOf(open);
        walk(open + 1, close);
        return {left.begin, close + 1, Type::Truth};
    }

    Operand nullTested(const Operand& left, std::size_t word) {
        asValue(left);
        const std::size_t null = wordAt(word + 1, "NOT") ? word + 2 : word + 1;
        if (!wordAt(null, "NULL"))
            refuse(u"Is without Null"_s);
        return {left.begin, null + 1, Type::Truth};
    }

    /// One level of calculation: & loosest, then + -, Mod, \, and * / closest.
    Operand calculation(std::size_t i, std::size_t level) {
        static constexpr std::array<QStringView, 5> levels{u"&", u"+-", u"M", u"\\", u"*/"};
        if (level == levels.size())
            return signedPower(i);
        const auto isHere = [&](std::size_t at) {
            return levels[level] == u"M" ? wordAt(at, "MOD") : signAt(at, levels[level]);
        };
        Operand whole = calculation(i, level + 1);
        if (!isHere(whole.end))
            return whole;
        Type type = inCalculation(whole, level == 0);
        while (isHere(whole.end)) {
            const std::size_t sign = whole.end;
            const Operand next = calculation(sign + 1, level + 1);
            const Type other = inCalculation(next, level == 0);
            type = resultType(type, m_tokens[sign].text, other);
            writeSign(sign);
            whole.end = next.end;
        }
        m_writer.wrap(whole.begin, whole.end, u"dialect_calc("_s, u")"_s);
        return {whole.begin, whole.end, type};
    }

    Operand signedPower(std::size_t i) {
        const std::size_t begin = i;
        bool negative = false;
        for (; signAt(i, u"+-"); ++i)
            negative = negative != (m_tokens[i].text == u"-");
        Operand operand = power(i);
        if (i == begin)
            return operand;
        const bool literal = operand.end == i + 1 && at(i, Kind::Number);
        if (literal && i == begin + 1)
            return {begin, operand.end, Type::Number};
        inCalculation(operand, false);
        for (std::size_t sign = begin; sign < i; ++sign)
            m_writer.replace(sign, {});
        m_writer.wrap(i, operand.end, negative ? u"dialect_calc(0, '-', "_s : u"dialect_calc(0, '+', "_s,
                      u")"_s);
        return {begin, operand.end, Type::Number};
    }

    Operand power(std::size_t i) {
        Operand whole = primary(i);
        if (!signAt(whole.end, u"^"))
            return whole;
        inCalculation(whole, false);
        while (signAt(whole.end, u"^")) {
            const std::size_t sign = whole.end;
            const bool isSigned = signAt(sign + 1, u"+-");
            const Operand exponent = primary(sign + (isSigned ? 2 : 1));
            inCalculation(exponent, false);
            if (isSigned && m_tokens[sign + 1].text == u"-")
                m_writer.wrap(exponent.begin, exponent.end, u"dialect_calc(0, '-', "_s, u")"_s);
            if (isSigned)
                m_writer.replace(sign + 1, {});
            writeSign(sign);
            whole.end = exponent.end;
        }
        m_writer.wrap(whole.begin, whole.end, u"dialect_calc("_s, u")"_s);
        return {whole.begin, whole.end, Type::Number};
    }

    Operand primary(std::size_t i) {
        if (at(i, Kind::Open))
            return parenthesis(i);
        if (at(i, Kind::Number) || at(i, Kind::Identity))
            return {i, i + 1, Type::Number};
        if (at(i, Kind::String))
            return {i, i + 1, Type::Text};
        if (at(i, Kind::Date))
            return {i, i + 1, Type::Date};
        if (!nameAt(i))
            refuse(u"Syntax error: an operand is missing"_s);
        return named(i);
    }

    Operand parenthesis(std::size_t open) {
        const std::size_t close = closeOf(open);
        if (!startsExpression(open + 1) || wordAt(open + 1, "SELECT")) {
            walk(open + 1, close);
            return {open, close + 1};
        }
        Operand inner = expression(open + 1);
        if (inner.end < close) {
            asValue(inner);
            walk(inner.end, close);
            return {open, close + 1};
        }
        inner.begin = open;
        inner.end = close + 1;
        inner.isTrueWord = false;
        return inner;
    }

    Operand named(std::size_t i) {
        const Token& token = m_tokens[i];
        if (at(i, Kind::Name) && isForeignWord(token))
            refuse(u"Syntax error at %1"_s.arg(token.text));
        if (at(i, Kind::Name) && at(i + 1, Kind::Open))
            return called(i);
        if (at(i + 1, Kind::Dot))
            return {i, i + 3, Type::Any, true};
        if (token.isWord("TRUE") || token.isWord("FALSE")) {
            m_writer.replace(i, token.isWord("TRUE") ? u"-1"_s : u"0"_s);
            return {i, i + 1, Type::Number, false, token.isWord("TRUE")};
        }
        return {i, i + 1, Type::Any, !token.isWord("NULL")};
    }

    Operand called(std::size_t i) {
        const std::size_t close = closeOf(i + 1);
        if (wordAt(i, "EXISTS")) {
            walk(i + 2, close);
            return {i, close + 1, Type::Truth};
        }
        const auto found = std::find_if(functions.begin(), functions.end(), [&](const Function& function) {
            return m_tokens[i].isWord(function.name);
        });
        if (found == functions.end())
            refuse(u"Undefined function '%1' in expression"_s.arg(m_tokens[i].text.left(80)));
        const bool overRows = *found->written == 0;
        if (!overRows)
            m_writer.replace(i, QLatin1String(found->written));
        std::size_t arguments = 0;
        for (std::size_t next = i + 2; next < close; ++arguments) {
            if (startsExpression(next)) {
                const Operand argument = expression(next);
                settle(argument, m_tokens[i].isWord("IIF") && arguments == 0);
                next = argument.end;
            }
            while (next < close && !at(next, Kind::Comma))
                ++next;
            ++next;
        }
        if (overRows && arguments > 1)
            refuse(u"Wrong number of arguments: %1"_s.arg(m_tokens[i].text));
        return {i, close + 1};
    }

    // What an operand is written as, where it is used.

    void writeSign(std::size_t sign) {
        m_writer.replace(sign, u", '%1',"_s.arg(m_tokens[sign].text.toUpper()));
    }

    void settle(const Operand& operand, bool condition) {
        if (condition)
            asTruth(operand);
        else
            asValue(operand);
    }

    void asTruth(const Operand& operand) {
        if (operand.type != Type::Truth && !operand.isColumn)
            m_writer.wrap(operand.begin, operand.end, u"dialect_truth("_s, u")"_s);
    }

    Operand asValue(Operand operand) {
        if (operand.type == Type::Truth) {
            m_writer.wrap(operand.begin, operand.end, u"-("_s, u")"_s);
            operand.type = Type::Number;
        }
        return operand;
    }

    void asJoined(const Operand& operand) {
        if (operand.type == Type::Date)
            forDate(operand, [](const QDateTime& date) { return quotedText(dateText(date)); });
        asValue(operand);
    }

    void asSerial(const Operand& operand) {
        forDate(operand, [](const QDateTime& date) { return numberText(toSerial(date)); });
    }

    template <class Write>
    void forDate(const Operand& operand, Write write) {
        for (std::size_t i = operand.begin; i < operand.end; ++i) {
            if (at(i, Kind::Date))
                m_writer.replace(i, write(dateLiteral(m_tokens[i].text)));
        }
    }

    Type inCalculation(const Operand& operand, bool joined) {
        if (joined) {
            asJoined(operand);
            return Type::Text;
        }
        if (operand.type == Type::Date)
            asSerial(operand);
        asValue(operand);
        return operand.type == Type::Date    ? Type::Serial
               : operand.type == Type::Truth ? Type::Number
                                             : operand.type;
    }

    static Type resultType(Type left, const QString& sign, Type right) {
        if (sign == u"&")
            return Type::Text;
        if (sign != u"+" && sign != u"-")
            return Type::Number;
        if ((left == Type::Serial) != (right == Type::Serial))
            return Type::Serial;
        if (sign == u"+" && left == Type::Text && right == Type::Text)
            return Type::Text;
        return sign == u"+" && (left == Type::Any || right == Type::Any) ? Type::Any : Type::Number;
    }

    /// Flags are 1 and 0 in the file.
    void flagOfColumn(const Operand& operand) {
        if (operand.isTrueWord)
            m_writer.replace(operand.begin, u"1"_s);
    }

    /// A date beside a number is a number itself.
    void matchDates(Operand& left, Operand& right) {
        const auto isNumber = [](const Operand& operand) {
            return operand.type == Type::Number || operand.type == Type::Serial;
        };
        if (left.type == Type::Date && isNumber(right))
            asSerial(left), left.type = Type::Serial;
        else if (right.type == Type::Date && isNumber(left))
            asSerial(right), right.type = Type::Serial;
    }

    static void refuseClash(const Operand& left, const Operand& right) {
        const auto isText = [](const Operand& operand) { return operand.type == Type::Text; };
        if (left.type == Type::Any || right.type == Type::Any || left.isColumn || right.isColumn)
            return;
        if (isText(left) != isText(right))
            mismatch();
    }

    const Tokens& m_tokens;
    StatementWriter& m_writer;
};

}  // namespace

void rewriteExpressions(const std::vector<Token>& tokens, StatementWriter& writer) {
    Rewriter(tokens, writer).run();
}

}  // namespace platform
