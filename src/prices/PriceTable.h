// A supplier's list as it lies in its file: rows of cells, nothing of it understood yet.
#pragma once

#include <QString>
#include <algorithm>
#include <functional>
#include <vector>

namespace sorvanto {

struct PriceCell {
    QString text;
    bool number = false;  ///< a spreadsheet's own number: the text has a point, whatever the column's mark
};
using PriceRow = std::vector<PriceCell>;

struct PriceTable {
    std::vector<PriceRow> rows;

    /// Of the longest row.
    int columns() const {
        std::size_t most = 0;
        for (const PriceRow& row : rows)
            most = std::max(most, row.size());
        return static_cast<int>(most);
    }
    /// Blanks around it taken off; empty where the row ends before.
    static QString text(const PriceRow& row, int column) {
        return column >= 0 && static_cast<std::size_t>(column) < row.size()
                   ? row[static_cast<std::size_t>(column)].text.trimmed()
                   : QString();
    }
};

/// Asked between two pieces of long work, with how much of it is done (0 to 1); false stops it.
using PriceProgress = std::function<bool(double done)>;
/// So many rows are a piece.
inline constexpr int rowsBetweenAsks = 256;

/// Why there is no table.
enum class PriceFault {
    none,
    unreadable,   ///< the system's reason is told with it
    tooLarge,     ///< bytes, rows or columns
    notATable,    ///< neither a text nor a spreadsheet
    webPage,      ///< many a shop's .xls is one
    locked,       ///< with a password
    oldWorkbook,  ///< of before 1997
    broken,
    openQuotation,  ///< a quotation mark that nothing closes
    empty,
    stopped  ///< by the user
};

inline constexpr int mostPriceRows = 200'000;
inline constexpr int mostPriceColumns = 256;
inline constexpr qint64 largestPriceFile = 64'000'000;  ///< bytes; of a part of a workbook too, unpacked

}  // namespace sorvanto
