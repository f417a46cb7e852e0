// Numbers as suppliers write them. Whether the point or the comma is the decimal mark is found out for a whole column;
// where its numbers read both ways nobody guesses.
#pragma once

#include "platform/basic/Decimal.h"
#include "prices/PriceTable.h"

#include <cstdint>
#include <optional>

namespace sorvanto {

enum class DecimalMark : std::uint8_t { point, comma };

/// What a cell of a pack says: "100 g", "100", "2,5 kg". unit is empty where the cell has none.
struct PackText {
    QString number;
    QString unit;
};
/// Nothing for what is neither ("6 x 10 ml", "each").
std::optional<PackText> packText(const QString& text);

/// The number of a price without its currency: "1.234,50" for "€ 1.234,50".
QString priceText(const QString& text);

/// A number with this decimal mark, whole. Groups of three may be parted by the other mark, by blanks or by apostrophes,
/// in one number by one of them.
std::optional<platform::Decimal> amountIn(const QString& text, DecimalMark mark);
/// A number with a point and nothing else, as a spreadsheet's own.
std::optional<platform::Decimal> amountIn(const QString& plain);

struct MarkFinding {
    /// Nothing where each number reads both ways ("1.234"), or where some read one way alone and some the other.
    std::optional<DecimalMark> mark;
    QString example;  ///< one of the numbers in doubt
};

/// The decimal mark of a column from its texts; the point where none has a mark. isPack: the cells may have a unit.
MarkFinding detectedMark(const PriceTable& table, int firstRow, int column, bool isPack);

}  // namespace sorvanto
