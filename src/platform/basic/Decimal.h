// A number as its decimal digits: the ground on which every rounding rule of the program stands.
// Rounding a double directly would follow its binary neighbour (1.0005 is stored a little below);
// here the digits that a person sees are rounded. Neither the toolkit nor the standard library rounds so.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace platform {

/// Value = 0.d1d2d3... times 10 to the power of `point`.
struct Decimal {
    bool negative = false;
    QByteArray digits;  ///< "0" to "9", neither leading nor trailing zeros; empty for zero
    int point = 0;

    enum class Tie { away, even };

    /// The 15 significant digits of a double. Throws overflow for infinity and for not-a-number.
    static Decimal fromDouble(double value);
    /// All digits of a text that is a number as a whole: sign, digits with a point, exponent.
    static std::optional<Decimal> fromText(const QByteArray& text);
    /// Length of the number at the very start of a text, 0 when there is none. Digits are needed; an
    /// "e" that no digits follow is not part of it.
    static qsizetype numberLength(const QByteArray& text);

    bool isZero() const { return digits.isEmpty(); }
    /// Leaves at most so many decimals.
    void round(int decimals, Tie tie);
    /// Digits with exactly so many decimals, further ones cut off; "-" in front unless all are zero.
    QByteArray fixed(int decimals) const;
    /// Digits before the point ("0" at least), without a sign.
    QByteArray integerDigits() const;
    /// Exactly so many digits behind the point.
    QByteArray fractionDigits(int decimals) const;

private:
    void normalise();
};

}  // namespace platform
