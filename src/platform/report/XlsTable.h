// What makes a sheet a table: heading rows that stay on show and repeat on paper, buttons that filter below
// them, and pages one sheet wide. The bytes of its records.
#pragma once

#include <QByteArray>
#include <vector>

namespace platform::xls {

/// Rows and columns count from 0.
struct Table {
    int headingRow = -1;    ///< repeated at the head of each printed page; -1: none
    bool frozen = false;    ///< the heading row, and what is above it, stays when the sheet is scrolled
    int lastFiltered = -1;  ///< last row of the list below the heading row that can be filtered; -1: none
    int firstColumn = 0, lastColumn = 0;  ///< of the filter

    bool filtered() const { return headingRow >= 0 && lastFiltered > headingRow; }
    int columns() const { return lastColumn - firstColumn + 1; }
};

/// For the workbook, between its sheet list and its texts: the names of the repeated rows and of the filters of all
/// sheets, in their order, and the count of the buttons.
QByteArray tableNames(const std::vector<Table>& tables);

/// Before the sheet's columns: fit to one page wide, margins, page number, and the filter's count of columns.
QByteArray pageSetup(const Table& table);

/// After the sheet's cells: the buttons in the heading row. drawing: its number among those of all sheets, from 1.
QByteArray filterButtons(const Table& table, int drawing);

/// The sheet's window, last before its end. One sheet is on show.
QByteArray sheetWindow(const Table& table, bool shown);

}  // namespace platform::xls
