// Calculations of two values.
#include "platform/data/DialectArithmetic.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Decimal.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"

#include <QString>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform::dialect {

bool isText(const QVariant& value) { return value.typeId() == QMetaType::QString; }

double numberOf(const QVariant& value) {
    if (isText(value)) {
        if (const QDateTime date = fromStoredDate(value.toString()); date.isValid())
            return toSerial(date);
    }
    return toDouble(value);
}

std::optional<std::int64_t> wholeResult(std::int64_t a, char sign, std::int64_t b) {
    std::int64_t result = 0;
    const bool fits = sign == '+'   ? !__builtin_add_overflow(a, b, &result)
                      : sign == '-' ? !__builtin_sub_overflow(a, b, &result)
                      : sign == '*' ? !__builtin_mul_overflow(a, b, &result)
                                    : false;
    return fits ? std::optional(result) : std::nullopt;
}

std::optional<double> plainResult(double a, char sign, double b) {
    const double result = sign == '+'   ? a + b
                          : sign == '-' ? a - b
                          : sign == '*' ? a * b
                          : sign == '/' ? a / b
                                        : std::numeric_limits<double>::quiet_NaN();
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

namespace {

[[noreturn]] void mismatch() { throw RuntimeError(error::dataMismatch, u"Data type mismatch"_s); }

std::int64_t wholeOf(const QVariant& value) { return toInt32(numberOf(value)); }

QVariant finite(double value) {
    if (std::isnan(value))
        throw RuntimeError(error::invalidProcedureCall, u"Invalid procedure call"_s);
    if (std::isinf(value))
        throw RuntimeError(error::overflow, u"Overflow"_s);
    return value;
}

RuntimeError divisionByZero() { return {error::divisionByZero, u"Division by zero"_s}; }

QVariant sum(const QVariant& a, char sign, const QVariant& b) {
    if (a.typeId() == QMetaType::LongLong && b.typeId() == QMetaType::LongLong) {
        if (const auto whole = wholeResult(a.toLongLong(), sign, b.toLongLong()))
            return qint64{*whole};
    }
    if (const auto result = plainResult(numberOf(a), sign, numberOf(b)))
        return *result;
    throw RuntimeError(error::overflow, u"Overflow"_s);
}

QVariant power(double base, double exponent) {
    if (base == 0 && exponent < 0)
        throw divisionByZero();
    return finite(std::pow(base, exponent));
}

QVariant wholeDivision(QChar sign, const QVariant& a, const QVariant& b) {
    const std::int64_t left = wholeOf(a), right = wholeOf(b);
    if (right == 0)
        throw divisionByZero();
    return qint64{sign == u'\\' ? left / right : left % right};
}

}  // namespace

QVariant calculated(const QVariant& a, QChar sign, const QVariant& b) {
    if (sign == u'&')
        return a.isValid() || b.isValid() ? QVariant(nullText(a) + nullText(b)) : QVariant();
    if (!a.isValid() || !b.isValid())
        return {};
    switch (sign.unicode()) {
    case u'+':
        if (isText(a) && isText(b))
            return a.toString() + b.toString();
        return sum(a, '+', b);
    case u'-':
    case u'*':
        return sum(a, sign.toLatin1(), b);
    case u'/': {
        const double divisor = numberOf(b);
        return finite(quotient(numberOf(a), divisor));
    }
    case u'^':
        return power(numberOf(a), numberOf(b));
    default:
        return wholeDivision(sign, a, b);
    }
}

QVariant compared(const QVariant& a, const QVariant& b) {
    if (!a.isValid() || !b.isValid())
        return {};
    if (isText(a) != isText(b))
        mismatch();
    if (isText(a))
        return qint64{qBound(-1, a.toString().compare(b.toString(), Qt::CaseInsensitive), 1)};
    const double left = a.toDouble(), right = b.toDouble();
    return qint64{left < right ? -1 : left > right ? 1 : 0};
}

QVariant truth(const QVariant& value) {
    return value.isValid() ? QVariant(qint64{numberOf(value) != 0 ? -1 : 0}) : QVariant();
}

QVariant rounded(const QVariant& value, int decimals) {
    Decimal decimal = Decimal::fromDouble(numberOf(value));
    decimal.round(decimals, Decimal::Tie::even);
    return toDouble(QString::fromLatin1(decimal.fixed(decimals)));
}

}  // namespace platform::dialect
