// Numbers from text and text from numbers, and the checked conversions to 16 and 32 bits.
// Text of a number always has a point, whatever the user's language.
#pragma once

#include <QString>
#include <QVariant>
#include <cstdint>

namespace platform {

/// The number at the start of a text; blanks, tabs and line ends are skipped wherever they stand
/// ("12 ml" is 12, "1 2" too, "1.5e3x" 1500, "abc" 0). Never fails; beyond the range the largest double.
double leadingNumber(const QString& text);

/// The whole text as a number: sign, digits with a point, exponent. Blanks around it are fine; a group
/// separator is not. Throws typeMismatch on anything else, overflow beyond the range.
double toDouble(const QString& text);
/// Any field value as a number: text by toDouble, flags -1/0, dates as days since 30 December 1899.
/// NULL throws invalidUseOfNull.
double toDouble(const QVariant& value);

/// Nearest integer, a half to the even one. Throws overflow outside the type's range.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);
/// Text or field value by toDouble, then as above.
std::int16_t toInt16(const QString& text);
std::int32_t toInt32(const QString& text);
std::int16_t toInt16(const QVariant& value);
std::int32_t toInt32(const QVariant& value);

/// Default rendering with at most 15 significant digits: "0.1", "1200", "-2.5". From 1E+15 up and below
/// 0.0001 with an exponent of two digits at least: "1E+15", "1.5E-05". Throws overflow for infinity.
QString numberText(double value);

/// quotient as 64-bit floating point; throws divisionByZero when the divisor is 0,
/// overflow when the result is beyond the range.
double quotient(double dividend, double divisor);

/// Upper-case hexadecimal without leading zeros ("0" for 0).
QString hexText(std::uint32_t value);

}  // namespace platform
