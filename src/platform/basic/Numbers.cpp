// Numbers from text and text from numbers, and the checked conversions to 16 and 32 bits.
#include "platform/basic/Numbers.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Decimal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// A text that is a number as a whole; infinite when it is beyond the range, 0 when it is too small.
double parsed(QByteArray number) {
    if (number.startsWith('+'))
        number.remove(0, 1);
    double value = 0;
    const auto result = std::from_chars(number.constData(), number.constData() + number.size(), value);
    if (result.ec != std::errc::result_out_of_range)
        return value;
    const auto decimal = Decimal::fromText(number);
    if (!decimal || decimal->point < 0)
        return 0;
    const double infinity = std::numeric_limits<double>::infinity();
    return decimal->negative ? -infinity : infinity;
}

template <class Integer>
Integer toInteger(double value) {
    const double rounded = std::nearbyint(value);  // the default rounding mode takes a half to even
    if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max()))
        throwOverflow();
    return static_cast<Integer>(rounded);
}

}  // namespace

double leadingNumber(const QString& text) {
    QByteArray marks;
    for (const QChar mark : text) {
        if (mark == u' ' || mark == u'\t' || mark == u'\n' || mark == u'\r')
            continue;
        marks += mark.unicode() < 128 ? static_cast<char>(mark.unicode()) : '?';
    }
    marks.truncate(Decimal::numberLength(marks));
    if (marks.isEmpty())
        return 0;
    const double value = parsed(marks);
    return std::isinf(value) ? std::copysign(std::numeric_limits<double>::max(), value) : value;
}

double toDouble(const QString& text) {
    const QByteArray marks = trimmed(text).toUtf8();
    if (marks.isEmpty() || Decimal::numberLength(marks) != marks.size())
        throwTypeMismatch();
    const double value = parsed(marks);
    if (std::isinf(value))
        throwOverflow();
    return value;
}

double toDouble(const QVariant& value) {
    if (!value.isValid())
        throw RuntimeError(error::invalidUseOfNull, u"Invalid use of Null"_s);
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toDouble();
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? -1 : 0;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return toSerial(value.toDateTime());
    case QMetaType::QString:
        return toDouble(value.toString());
    default:
        bool number = false;
        const double result = value.toDouble(&number);
        if (!number)
            throwTypeMismatch();
        return result;
    }
}

std::int16_t toInt16(double value) { return toInteger<std::int16_t>(value); }
std::int32_t toInt32(double value) { return toInteger<std::int32_t>(value); }
std::int16_t toInt16(const QString& text) { return toInt16(toDouble(text)); }
std::int32_t toInt32(const QString& text) { return toInt32(toDouble(text)); }
std::int16_t toInt16(const QVariant& value) { return toInt16(toDouble(value)); }
std::int32_t toInt32(const QVariant& value) { return toInt32(toDouble(value)); }

QString numberText(double value) {
    constexpr int firstExponentUp = 15;    // 1E+15
    constexpr int lastFixedExponent = -4;  // 0.0001
    constexpr double mostPlain = 1e14;     // whole numbers below it are written as they are
    if (std::abs(value) < mostPlain && value == std::trunc(value))
        return QString::number(static_cast<qint64>(value));
    const Decimal decimal = Decimal::fromDouble(value);
    const int exponent = decimal.isZero() ? 0 : decimal.point - 1;
    if (exponent >= lastFixedExponent && exponent < firstExponentUp) {
        const auto decimals = std::max<qsizetype>(0, decimal.digits.size() - decimal.point);
        return QString::fromLatin1(decimal.fixed(static_cast<int>(decimals)));
    }
    QByteArray text = decimal.negative ? "-"_ba : QByteArray();
    text += decimal.digits.left(1);
    if (decimal.digits.size() > 1)
        text += '.' + decimal.digits.mid(1);
    text += exponent < 0 ? "E-" : "E+";
    text += QByteArray::number(std::abs(exponent)).rightJustified(2, '0');
    return QString::fromLatin1(text);
}

double quotient(double dividend, double divisor) {
    if (divisor == 0)
        throw RuntimeError(error::divisionByZero, u"Division by zero"_s);
    const double result = dividend / divisor;
    if (!std::isfinite(result))
        throwOverflow();
    return result;
}

QString hexText(std::uint32_t value) { return QString::number(value, 16).toUpper(); }

}  // namespace platform
