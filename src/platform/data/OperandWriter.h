// What an operand of an expression is, and what it is written as where it is used.
#pragma once

#include "platform/data/StatementWriter.h"
#include "platform/data/TokenView.h"

namespace platform {

/// The tokens from begin to before end.
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

class OperandWriter {
public:
    OperandWriter(const TokenView& tokens, StatementWriter& writer) : m_tokens(tokens), m_writer(writer) {}

    /// As a condition or as a value.
    void settle(const Operand& operand, bool condition);
    void asTruth(const Operand& operand);
    /// Gives the operand as it is then.
    Operand asValue(Operand operand);
    /// As a part of a text.
    void asJoined(const Operand& operand);
    /// As a part of a calculation, or of a text that is joined; its type there.
    Operand::Type inCalculation(const Operand& operand, bool joined);
    static Operand::Type resultType(Operand::Type left, const QString& sign, Operand::Type right);
    /// As one of two that are compared, none of them a column.
    void asCompared(const Operand& operand);
    /// Flags are 1 and 0 in the file.
    void flagOfColumn(const Operand& operand);
    /// A date beside a number is a number itself.
    void matchDates(Operand& left, Operand& right);
    /// Throws dataMismatch where a text stands beside a number.
    static void refuseClash(const Operand& left, const Operand& right);

private:
    void asSerial(const Operand& operand);
    template <class Write>
    void forDate(const Operand& operand, Write write);

    const TokenView& m_tokens;
    StatementWriter& m_writer;
};

}  // namespace platform
