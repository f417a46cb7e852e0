// One section of a number picture taken apart: text in front, digit places, text behind.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

namespace platform {

class Currency;
struct Decimal;

class NumberPicture {
public:
    /// "0" is a digit that always shows, "#" one that shows when needed, a "," between places groups by
    /// three. A point or comma in front of the places belongs to the text, as in "Fr. ###,##0.00" and
    /// "Fr.###,##0.00".
    explicit NumberPicture(const QString& section);

    /// Whether there is a digit place at all; a picture without is text alone.
    bool hasPlaces() const { return m_hasPlaces; }
    const QString& prefix() const { return m_prefix; }
    /// The number in this picture without its sign.
    QString magnitude(Decimal value) const;
    QString magnitude(Currency value) const;
    /// Whether nothing of the value is left behind the rounding.
    bool roundsToZero(Decimal value) const;
    bool roundsToZero(Currency value) const;

private:
    void readPlaces(const QString& places);
    /// Digits before the point, none of nothing, and so many behind it as there are places.
    QString assembled(QByteArray whole, QByteArray fraction) const;
    std::uint64_t rounded(Currency value) const;

    QString m_prefix;
    QString m_suffix;
    bool m_hasPlaces = false;
    bool m_point = false;
    bool m_grouped = false;
    int m_leastWhole = 0;     ///< digits before the point that always show
    int m_leastDecimals = 0;  ///< digits behind the point that always show
    int m_decimals = 0;
};

}  // namespace platform
