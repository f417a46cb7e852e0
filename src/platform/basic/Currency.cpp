// Money as a count of ten-thousandths: in from numbers and texts, out as text, checked sums.
#include "platform/basic/Currency.h"

#include "platform/basic/Decimal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int decimals = 4;
constexpr double lastWholeUnit = 922337203685477.0;

std::int64_t counted(Decimal decimal) {
    decimal.round(decimals, Decimal::Tie::even);
    constexpr int longest = 19;  // digits of the largest count
    if (decimal.point + decimals > longest)
        throwOverflow();
    const QByteArray digits = decimal.integerDigits() + decimal.fractionDigits(decimals);
    std::uint64_t magnitude = 0;
    std::from_chars(digits.constData(), digits.constData() + digits.size(), magnitude);
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > largest + (decimal.negative ? 1 : 0))
        throwOverflow();
    return static_cast<std::int64_t>(decimal.negative ? 0 - magnitude : magnitude);
}

/// The amount that the value is so near to that no way of rounding could take another one, which every sum and every
/// stored amount is: the digits of the others decide, and cost twenty times as much.
std::optional<std::int64_t> clearlyNearest(double value) {
    constexpr double mostCertain = 1e11, near = 0.25;
    const double count = value * 10000;
    const double nearest = std::nearbyint(count);
    if (std::abs(count) < mostCertain && std::abs(count - nearest) < near)
        return static_cast<std::int64_t>(nearest);
    return std::nullopt;
}

}  // namespace

Currency Currency::fromDouble(double value) {
    if (const auto count = clearlyNearest(value))
        return fromTenThousandths(*count);
    if (std::abs(value) > lastWholeUnit)
        return fromStored(value);
    return fromTenThousandths(counted(Decimal::fromDouble(value)));
}

Currency Currency::fromStored(double value) {
    if (const auto count = clearlyNearest(value))
        return fromTenThousandths(*count);
    // The neighbour of the greatest amount among the floating numbers lies a little above it.
    constexpr auto most = std::numeric_limits<std::int64_t>::max(),
                   least = std::numeric_limits<std::int64_t>::min();
    if (value == fromTenThousandths(most).toDouble())
        return fromTenThousandths(most);
    if (value == fromTenThousandths(least).toDouble())
        return fromTenThousandths(least);
    if (!(std::abs(value) <= lastWholeUnit + 1))
        throwOverflow();
    std::array<char, 40> buffer{};
    constexpr int digits = decimals + 2;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, digits)
            .ptr;
    return fromTenThousandths(counted(*Decimal::fromText(QByteArray(buffer.data(), end - buffer.data()))));
}

Currency Currency::fromText(const QString& text) {
    const auto decimal = Decimal::fromText(trimmed(text).toUtf8());
    if (!decimal)
        throw RuntimeError(error::typeMismatch, u"Type mismatch"_s);
    return fromTenThousandths(counted(*decimal));
}

QString Currency::toText() const {
    constexpr std::uint64_t unit = 10000;
    const auto bits = static_cast<std::uint64_t>(m_count);
    const std::uint64_t magnitude = m_count < 0 ? 0 - bits : bits;
    QString text = m_count < 0 ? u"-"_s : QString();
    text += QString::number(magnitude / unit);
    if (magnitude % unit != 0) {
        text += u'.' + QString::number(magnitude % unit).rightJustified(decimals, u'0');
        while (text.endsWith(u'0'))
            text.chop(1);
    }
    return text;
}

}  // namespace platform
