// Money as a count of ten-thousandths in 64 bits: exact sums, one rounding rule, never a double.
#pragma once

#include <QMetaType>
#include <QString>
#include <compare>
#include <cstdint>

namespace platform {

class Currency {
public:
    constexpr Currency() = default;
    /// Any product or quotient enters here: rounded to 0.0001, a tie to the even neighbour,
    /// judged on the decimal text of 15 significant digits. Throws overflow outside the 64-bit range; at its
    /// very end, where 15 digits would round beyond it, the nearest amount is taken.
    static Currency fromDouble(double value);
    /// An amount that has been stored as a floating number: the amount that this number is the nearest to.
    static Currency fromStored(double value);
    /// A number as text with a point ("12.5", " 3 ", "-0.07"), exact to its last digit, then rounded as
    /// above. Throws typeMismatch on anything else, overflow outside the 64-bit range.
    static Currency fromText(const QString& text);
    static constexpr Currency fromTenThousandths(std::int64_t count) {
        Currency c;
        c.m_count = count;
        return c;
    }

    constexpr std::int64_t tenThousandths() const { return m_count; }
    double toDouble() const { return static_cast<double>(m_count) / 10000.0; }
    /// Default rendering: as few decimals as needed, always a point: "12.5", "100", "-0.07".
    QString toText() const;

    /// Product in floating point, then fromDouble.
    Currency operator*(double factor) const { return fromDouble(toDouble() * factor); }
    constexpr auto operator<=>(const Currency&) const = default;

private:
    std::int64_t m_count = 0;
};

}  // namespace platform

Q_DECLARE_METATYPE(platform::Currency)
