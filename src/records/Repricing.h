// What a formula stores of its chemicals' prices, and what they come to now. Its cost is worked out each time and has no
// column; its AWP is stored, as of the last time that the formula was saved.
#pragma once

#include "platform/basic/Currency.h"
#include "records/ChangedMeanwhile.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace sorvanto {

struct RepricedFormula {
    std::int16_t key = 0;
    QString name;
    platform::Currency cost;       ///< as it is now
    platform::Currency storedAWP;  ///< as of the last save
    platform::Currency awp;        ///< as saving the formula would store it now

    bool operator==(const RepricedFormula&) const = default;
};

/// Of all formulas, by name; an AWP that would stay as it is, is among them. goesOn is told between pieces of some
/// milliseconds how much is done, 0 to 1, and stops it by false: then there are none.
std::vector<RepricedFormula> formulaPrices(const std::function<bool(double)>& goesOn = {});

/// What formulas cost, by their keys.
using FormulaCosts = std::map<std::int16_t, platform::Currency>;
/// The former costs of those formulas whose cost, or AWP as saving would store it, is another one now.
FormulaCosts repriced(const std::vector<RepricedFormula>& before, const std::vector<RepricedFormula>& now);

enum class PricesStored {
    All,
    ChangedMeanwhile,  ///< one of them is not what was shown any more
    Failed             ///< which is reported
};
/// Stores the AWP of these formulas as saving them would, where it and what it is to replace are as shown; all or none, and
/// nothing else of them changes.
PricesStored storePrices(const std::vector<RepricedFormula>& shown);

/// The first formula that is not as shown any more, and who has changed it, a line or a chemical of it last.
ChangedMeanwhile firstChanged(const std::vector<RepricedFormula>& shown);

}  // namespace sorvanto
