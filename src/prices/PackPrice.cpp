// Long division on decimal digits, and what is said about it.
#include "prices/PackPrice.h"

#include "platform/basic/LocalMarks.h"
#include "prices/PackUnits.h"
#include "shared/Translator.h"

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

constexpr int priceDecimals = 4;
// Eleven digits times the seven of a grain, and ten times that, stay below the 64 bits of the division.
constexpr qsizetype mostDigits = 11;
constexpr int farthestPoint = 30;
constexpr int mostWholeDigits = 14;  // below the largest amount of money

bool fits(const Decimal& number) {
    return number.digits.size() <= mostDigits && std::abs(number.point) <= farthestPoint;
}

/// A number as a whole count of a power of ten.
struct Count {
    std::uint64_t mantissa;
    int exponent;
};

Count counted(const Decimal& number, const UnitRatio& ratio) {
    return {number.digits.toULongLong() * ratio.mantissa,
            number.point - static_cast<int>(number.digits.size()) + ratio.exponent};
}

/// A quotient with one digit behind those that are kept: a half or more shows there.
Decimal divided(const Count& dividend, const Count& divisor) {
    const int exponent = dividend.exponent - divisor.exponent;
    const int zeros = std::max(exponent + priceDecimals + 1, 0);
    QByteArray digits;
    std::uint64_t rest = 0;
    for (const char digit : QByteArray::number(dividend.mantissa) + QByteArray(zeros, '0')) {
        rest = rest * 10 + static_cast<std::uint64_t>(digit - '0');
        digits += static_cast<char>('0' + rest / divisor.mantissa);
        rest %= divisor.mantissa;
    }
    return *Decimal::fromText(digits + 'e' + QByteArray::number(exponent - zeros));
}

PackTrouble troubleOfNumbers(const Pack& pack) {
    if (pack.price.negative)
        return PackTrouble::negativePrice;
    if (pack.size.isZero() || pack.size.negative)
        return PackTrouble::noSize;
    return fits(pack.price) && fits(pack.size) ? PackTrouble::none : PackTrouble::tooManyDigits;
}

PackTrouble troubleOfUnits(const QString& packUnit, const QString& chemicalUnit, UnitsFit fit) {
    if (packUnit.trimmed().isEmpty())
        return PackTrouble::noPackUnit;
    if (chemicalUnit.trimmed().isEmpty())
        return PackTrouble::noChemicalUnit;
    if (fit == UnitsFit::ambiguous)
        return PackTrouble::ambiguousUnit;
    if (fit == UnitsFit::differentKinds)
        return PackTrouble::weightAndVolume;
    return fit == UnitsFit::unknown ? PackTrouble::unknownConversion : PackTrouble::none;
}

PackPrice refused(PackTrouble trouble) { return {std::nullopt, trouble}; }

/// "28.50" for money, "100" or "0.5" for a size: as many decimals as there are, at least these.
QString shown(const Decimal& number, int leastDecimals) {
    const int decimals = static_cast<int>(number.digits.size()) - number.point;
    return shownNumber(QString::fromLatin1(number.fixed(std::max(decimals, leastDecimals))));
}

}  // namespace

PackPrice packPrice(const Pack& pack, const QString& chemicalUnit) {
    if (const PackTrouble trouble = troubleOfNumbers(pack); trouble != PackTrouble::none)
        return refused(trouble);
    const UnitComparison units = compareUnits(pack.unit, chemicalUnit);
    if (const PackTrouble trouble = troubleOfUnits(pack.unit, chemicalUnit, units.fit);
        trouble != PackTrouble::none)
        return refused(trouble);
    Decimal price = divided(counted(pack.price, units.divide), counted(pack.size, units.multiply));
    price.round(priceDecimals, Decimal::Tie::away);
    if (price.isZero() && !pack.price.isZero())
        return refused(PackTrouble::tooSmall);
    if (price.point > mostWholeDigits)
        return refused(PackTrouble::tooLarge);
    return {Currency::fromText(QString::fromLatin1(price.fixed(priceDecimals))), PackTrouble::none};
}

QString packPriceText(const Pack& pack, const QString& chemicalUnit, const PackPrice& result) {
    const QString packUnit = pack.unit.trimmed(), unit = chemicalUnit.trimmed();
    switch (result.trouble) {
    case PackTrouble::none:
        return translated(u"%1 for %2 %3 = %4 a %5"_s)
            .arg(shown(pack.price, 2), shown(pack.size, 0), packUnit, shownNumber(result.price->toText()),
                 unit);
    case PackTrouble::negativePrice:
        return translated(u"The price of a pack can’t be below 0."_s);
    case PackTrouble::noSize:
        return translated(u"The size of a pack must be above 0."_s);
    case PackTrouble::tooManyDigits:
        return translated(u"The price and the size of a pack can have at most 11 digits."_s);
    case PackTrouble::noPackUnit:
        return translated(u"The pack has no unit, so its price can’t be calculated."_s);
    case PackTrouble::noChemicalUnit:
        return translated(u"The chemical has no unit, so its price can’t be calculated."_s);
    case PackTrouble::ambiguousUnit:
        return translated(u"\"%1\" can mean different units, so the price can’t be calculated."_s)
            .arg(compareUnits(packUnit, unit).ambiguous);
    case PackTrouble::weightAndVolume:
        return translated(u"\"%1\" and \"%2\" are a weight and a volume, so the price can’t be calculated."_s)
            .arg(packUnit, unit);
    case PackTrouble::unknownConversion:
        return translated(u"\"%1\" can’t be converted to \"%2\", so the price can’t be calculated."_s)
            .arg(packUnit, unit);
    case PackTrouble::tooSmall:
        return translated(u"The price of one \"%1\" is too small to be kept."_s).arg(unit);
    case PackTrouble::tooLarge:
        return translated(u"The price of one \"%1\" is too large to be kept."_s).arg(unit);
    }
    return {};
}

}  // namespace sorvanto
