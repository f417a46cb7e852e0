// Which column of a supplier's list is what: guessed from the headings of eight languages, decided by the user.
#pragma once

#include "prices/PriceAmount.h"
#include "prices/PriceTable.h"

#include <QStringList>
#include <array>
#include <cstdint>

namespace sorvanto {

enum class PriceField : std::uint8_t { name, ndc, lot, price, awp, packSize, packUnit };
inline constexpr std::size_t priceFields = 7;

struct PriceColumns {
    static constexpr int none = -1;
    std::array<int, priceFields> column{none, none, none, none, none, none, none};
    /// Decimal marks of price, AWP and pack size; nothing until the user has said which where that is in doubt.
    std::array<std::optional<DecimalMark>, priceFields> mark{};
    int firstRow = 0;  ///< after the headings

    int of(PriceField field) const { return column[static_cast<std::size_t>(field)]; }
    bool has(PriceField field) const { return of(field) != none; }
    std::optional<DecimalMark> markOf(PriceField field) const {
        return mark[static_cast<std::size_t>(field)];
    }
};

/// Whether a field is a number with a decimal mark.
constexpr bool isAmount(PriceField field) {
    return field == PriceField::price || field == PriceField::awp || field == PriceField::packSize;
}

/// Columns by their headings, which are looked for in the first rows; each column is one field at most. Marks as detected.
PriceColumns guessedColumns(const PriceTable& table);

/// Finds the decimal mark of the field's column anew, as after a change of it.
MarkFinding findMark(const PriceTable& table, PriceColumns& columns, PriceField field);

/// What stands above the columns: their headings, or the first row's cells where there is none.
QStringList headings(const PriceTable& table, const PriceColumns& columns);

}  // namespace sorvanto
