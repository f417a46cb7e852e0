// What lies inside the files that spreadsheets keep their tables in: a compound file's streams, a zip's parts.
#pragma once

#include "prices/PriceTable.h"

#include <QByteArray>

namespace sorvanto {

struct WorkbookPart {
    QByteArray bytes;
    PriceFault fault = PriceFault::none;
};

bool isCompoundFile(const QByteArray& file);
bool isZipFile(const QByteArray& file);

/// The stream of that name; notATable where there is none.
WorkbookPart streamOf(const QByteArray& compoundFile, const QByteArray& name);
/// The part by its path ("xl/workbook.xml"), unpacked; notATable where there is none.
WorkbookPart partOf(const QByteArray& zipFile, const QByteArray& path);

/// A cell's number as its digits, the 15 that spreadsheets show.
QString numberInCell(double value);

/// Puts a cell into its place, and rows that were left out before it. False beyond the bounds of a list.
bool putCell(PriceTable& table, int row, int column, PriceCell cell);

}  // namespace sorvanto
