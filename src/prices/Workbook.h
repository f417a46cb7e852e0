// What the two kinds of workbook share: sheets by their names, cells as values alone (what a formula came to, not how).
#pragma once

#include "prices/PriceText.h"

#include <QStringList>

namespace sorvanto {

class Workbook {
public:
    Workbook() = default;
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;
    virtual ~Workbook() = default;

    /// Why its sheets can't be read.
    PriceFault fault() const { return m_fault; }
    /// Names of those that have cells.
    const QStringList& sheets() const { return m_sheets; }
    /// sheet: its place among sheets().
    virtual ReadTable read(int sheet, const PriceProgress& goesOn = {}) const = 0;

protected:
    QStringList m_sheets;
    QStringList m_strings;  ///< shared by all sheets
    PriceFault m_fault = PriceFault::none;
};

}  // namespace sorvanto
