// Suppliers price packs, the system prices a unit: one becomes the other, exactly or not at all.
// A number that is worked out is said with its calculation; one that isn't, with the reason. Nothing is guessed.
#pragma once

#include "platform/basic/Currency.h"
#include "platform/basic/Decimal.h"

#include <QString>
#include <optional>

namespace sorvanto {

struct Pack {
    platform::Decimal price;  ///< of the whole pack, 0 or more
    platform::Decimal size;   ///< how many of `unit` are in it, above 0
    QString unit;             ///< as the supplier writes it: "g", "KG", "mcg", "ml"
};

enum class PackTrouble {
    none,
    negativePrice,
    noSize,         ///< 0 or less
    tooManyDigits,  ///< more than 11 in the price or the size
    noPackUnit,
    noChemicalUnit,
    ambiguousUnit,  ///< "gr" is a grain or a gram, an "oz" one of many ounces
    weightAndVolume,
    unknownConversion,
    tooSmall,  ///< the pack costs something, but one unit would be kept as 0
    tooLarge
};

struct PackPrice {
    /// Price of one of the chemical's units, rounded to four decimals, a half upwards; nothing with a trouble.
    std::optional<platform::Currency> price;
    PackTrouble trouble = PackTrouble::none;
};

PackPrice packPrice(const Pack& pack, const QString& chemicalUnit);

/// "28.50 for 100 g = 0.285 a GMS", or a sentence that says why there is no price; translated, in the system's
/// number marks.
QString packPriceText(const Pack& pack, const QString& chemicalUnit, const PackPrice& result);

}  // namespace sorvanto
