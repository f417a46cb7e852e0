// One sheet of a workbook: cells row by row, as finished bytes, and what its columns and headings are.
#pragma once

#include "platform/report/XlsTable.h"

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace platform::xls {

inline constexpr int styleFormats = 15;  ///< formats of named styles that stand before those of cells

class Sheet {
public:
    static constexpr int mostRows = 65'536;
    static constexpr int mostColumns = 256;
    static constexpr int plainHeight = 255;  ///< twips of a row that says nothing

    /// The name is made one that the format takes.
    explicit Sheet(const QString& name);

    const QString& name() const { return m_name; }
    const Table& table() const { return m_table; }
    void setTable(const Table& table) { m_table = table; }
    void setColumnWidth(int column, int twips);

    /// text: its number among the shared ones. Throws overflow where the format has no room.
    void addText(int row, int column, std::uint16_t style, std::uint32_t text);
    void addNumber(int row, int column, std::uint16_t style, double number);
    void growRow(int twips) { m_height = std::max(m_height, twips); }
    void mergeRight(int row, int column, int lastColumn);

    /// The sheet's records from first to last; nothing is added afterwards. place: among the sheets, from 0.
    /// drawing: number of its drawing, from 1.
    QByteArray bytes(int place, int drawing);

private:
    void toCell(int row, int column);
    void flushRow();
    void flushBlock();
    QByteArray head() const;
    QByteArray mergedCells() const;

    struct Merged {
        int row, first, last;
    };
    QString m_name;
    Table m_table;
    std::vector<int> m_widths;
    std::vector<Merged> m_merged;
    QByteArray m_cells;
    std::string m_blockRows, m_blockCells;  ///< of the rows that stand together
    int m_height = plainHeight;             ///< of the row being filled
    int m_row = -1, m_firstColumn = 0, m_lastColumn = -1, m_rowsInBlock = 0, m_columns = 0;
};

}  // namespace platform::xls
