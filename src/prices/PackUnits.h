// How much of one unit is in another, as suppliers and the eight languages write them.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace sorvanto {

/// mantissa times 10 to the power of exponent, exactly.
struct UnitRatio {
    std::uint64_t mantissa = 1;
    int exponent = 0;
};

enum class UnitsFit {
    convertible,
    differentKinds,  ///< a weight and a volume: only the density would tell
    ambiguous,       ///< one of them means different quantities to different people ("gr", "oz")
    unknown          ///< nothing is known that holds for both
};

/// Two units by what they are made of: (value in `unit`) times multiply / divide = (value in `other`), where
/// both are known to be exact. Case, blanks and dots make no difference; the same text on both sides is the
/// same unit whatever it says, unless it is ambiguous.
struct UnitComparison {
    UnitsFit fit = UnitsFit::unknown;
    UnitRatio multiply, divide;
    QString ambiguous;  ///< the one that is
};
UnitComparison compareUnits(const QString& unit, const QString& other);

}  // namespace sorvanto
