// Field values as text, and the rules by which NULL is read.
#include "platform/basic/Values.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"

#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

[[noreturn]] void throwNull() { throw RuntimeError(error::invalidUseOfNull, u"Invalid use of Null"_s); }

/// The joined text as a number: "0-3" is what the digit makes of a negative value, and reads as 0.
QString readableNumber(const QVariant& value) {
    const QString joined = zeroText(value);
    if (!joined.startsWith(u"0-"_s))
        return joined;
    toDouble(joined.mid(1));  // still refuses what is no number at all
    return u"0"_s;
}

}  // namespace

QString valueText(const QVariant& value) {
    if (!value.isValid())
        throwNull();
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>().toText();
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"True"_s : u"False"_s;
    case QMetaType::Double:
    case QMetaType::Float:
        return numberText(value.toDouble());
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return dateText(value.toDateTime());
    default:
        if (!value.canConvert<QString>())
            throw RuntimeError(error::typeMismatch, u"Type mismatch"_s);
        return value.toString();
    }
}

QString nullText(const QVariant& value) { return value.isValid() ? valueText(value) : QString(); }

QString zeroText(const QVariant& value) { return u'0' + nullText(value); }

namespace {

/// Most numbers are read without their text: whole ones to which the digit in front does nothing.
template <class Integer>
std::optional<Integer> plainNumber(const QVariant& value) {
    if (value.typeId() != QMetaType::LongLong)
        return std::nullopt;
    const qint64 number = *static_cast<const qint64*>(value.constData());
    return number >= 0 && number <= std::numeric_limits<Integer>::max()
               ? std::optional(static_cast<Integer>(number))
               : std::nullopt;
}

}  // namespace

std::int16_t nullInt16(const QVariant& value) {
    const auto plain = plainNumber<std::int16_t>(value);
    return plain ? *plain : toInt16(readableNumber(value));
}

std::int32_t nullInt32(const QVariant& value) {
    const auto plain = plainNumber<std::int32_t>(value);
    return plain ? *plain : toInt32(readableNumber(value));
}

Currency nullCurrency(const QVariant& value) {
    // The text of a number has 15 digits, which may lie beyond the greatest amount where the number does not.
    if (value.typeId() == QMetaType::Double && value.toDouble() >= 0)
        return Currency::fromDouble(value.toDouble());
    return Currency::fromText(readableNumber(value));
}

Currency toCurrency(const QVariant& value) {
    if (!value.isValid())
        throwNull();
    if (value.metaType() == QMetaType::fromType<Currency>())
        return value.value<Currency>();
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::LongLong:
        return Currency::fromText(value.toString());  // exact, also beyond 15 digits
    default:
        return Currency::fromDouble(toDouble(value));
    }
}

}  // namespace platform
