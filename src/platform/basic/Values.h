// Field values (QVariant) as text, and the rules by which NULL is read.
// A field value is NULL (invalid QVariant), qint64, double, Currency, bool, QDateTime or QString.
#pragma once

#include "platform/basic/Currency.h"

#include <QString>
#include <QVariant>
#include <cstdint>

namespace platform {

/// Default rendering of a value: numbers by numberText, money by Currency::toText, flags "True"/"False",
/// dates by dateText. NULL throws invalidUseOfNull.
QString valueText(const QVariant& value);

/// The empty text joined with the value: NULL reads as the empty text.
QString nullText(const QVariant& value);

/// The digit 0 joined in front of the value, then converted: NULL reads as 0. A negative value does not
/// survive the 0 in front and reads as 0. Numbers pass through their default rendering of 15
/// significant digits. Throws typeMismatch on what is no number then (a flag, a date, other
/// text) and overflow beyond the type's range.
std::int16_t nullInt16(const QVariant& value);
std::int32_t nullInt32(const QVariant& value);
Currency nullCurrency(const QVariant& value);

/// The digit 0 joined in front of the value, as text ("0" for NULL, "012.5", "0-3").
QString zeroText(const QVariant& value);

/// Any value as money, NULL throws invalidUseOfNull.
Currency toCurrency(const QVariant& value);

}  // namespace platform
