// The forms of a value: of the engine, of a text, of a number, of a condition.
#include "platform/data/OperandWriter.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DateLiteral.h"

using namespace Qt::StringLiterals;

namespace platform {

using Type = Operand::Type;

template <class Write>
void OperandWriter::forDate(const Operand& operand, Write write) {
    for (std::size_t i = operand.begin; i < operand.end; ++i) {
        if (m_tokens.at(i, Token::Kind::Date))
            m_writer.replace(i, write(dateLiteral(m_tokens[i].text)));
    }
}

void OperandWriter::settle(const Operand& operand, bool condition) {
    if (condition)
        asTruth(operand);
    else
        asValue(operand);
}

void OperandWriter::asTruth(const Operand& operand) {
    if (operand.type != Type::Truth && !(operand.isColumn && m_writer.words().columnIsCondition()))
        m_writer.wrap(operand.begin, operand.end, u"dialect_truth("_s, u")"_s);
}

Operand OperandWriter::asValue(Operand operand) {
    if (operand.type == Type::Truth) {
        m_writer.wrap(operand.begin, operand.end, m_writer.words().truthAsValue());
        operand.type = Type::Number;
    }
    return operand;
}

void OperandWriter::asJoined(const Operand& operand) {
    if (operand.type == Type::Date)
        forDate(operand, [](const QDateTime& date) { return quotedText(dateText(date)); });
    asValue(operand);
}

void OperandWriter::asSerial(const Operand& operand) {
    forDate(operand, [](const QDateTime& date) { return numberText(toSerial(date)); });
}

void OperandWriter::asCompared(const Operand& operand) {
    if (operand.type == Type::Text || operand.type == Type::Date)
        m_writer.wrap(operand.begin, operand.end, m_writer.words().textAlone());
}

Type OperandWriter::inCalculation(const Operand& operand, bool joined) {
    if (joined) {
        asJoined(operand);
        asCompared(operand);
        return Type::Text;
    }
    if (operand.type == Type::Text)
        asCompared(operand);
    if (operand.type == Type::Date)
        asSerial(operand);
    asValue(operand);
    return operand.type == Type::Date    ? Type::Serial
           : operand.type == Type::Truth ? Type::Number
                                         : operand.type;
}

Type OperandWriter::resultType(Type left, const QString& sign, Type right) {
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

void OperandWriter::flagOfColumn(const Operand& operand) {
    if (operand.isTrueWord)
        m_writer.replace(operand.begin, u"1"_s);
}

void OperandWriter::matchDates(Operand& left, Operand& right) {
    const auto isNumber = [](const Operand& operand) {
        return operand.type == Type::Number || operand.type == Type::Serial;
    };
    if (left.type == Type::Date && isNumber(right))
        asSerial(left), left.type = Type::Serial;
    else if (right.type == Type::Date && isNumber(left))
        asSerial(right), right.type = Type::Serial;
}

void OperandWriter::refuseClash(const Operand& left, const Operand& right) {
    const auto isText = [](const Operand& operand) { return operand.type == Type::Text; };
    if (left.type == Type::Any || right.type == Type::Any || left.isColumn || right.isColumn)
        return;
    if (isText(left) != isText(right))
        throw RuntimeError(error::dataMismatch, u"Data type mismatch in expression"_s);
}

}  // namespace platform
