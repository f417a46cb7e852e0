// A workbook of one sheet in the binary spreadsheet format of .xls files (BIFF8 records in an OLE2
// container). Cells are given row by row; nothing is kept but the finished bytes and the shared texts.
#pragma once

#include "platform/report/ReportDefinition.h"
#include "platform/report/XlsTable.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <algorithm>
#include <cstdint>
#include <vector>

namespace platform {

using namespace Qt::StringLiterals;

/// The formats of dates that follow the reader's system: date alone, date with hour and minute.
enum class DateFormat { None = 0, Date = 14, DateAndTime = 22 };

/// How a cell looks. The number format is in the spreadsheet's own language; empty: general.
struct CellStyle {
    QString family = u"Arial"_s;
    int twips = 200;
    bool bold = false;
    bool italic = false;
    TextAlign align = TextAlign::Left;
    bool alignGiven = false;  ///< otherwise numbers go right and texts left by themselves
    bool wrapped = false;     ///< shows line ends, and wraps at the column's width
    QString numberFormat;
    DateFormat date = DateFormat::None;  ///< in place of a number format

    bool operator==(const CellStyle&) const = default;
};

class XlsWorkbook {
public:
    static constexpr int mostRows = 65'536;
    static constexpr int mostColumns = 256;
    static constexpr int mostCharacters = 32'767;
    static constexpr int plainHeight = 255;  ///< twips of a row that says nothing

    explicit XlsWorkbook(const QString& sheetName);

    /// Number to name the style by.
    std::uint16_t addStyle(const CellStyle& style);
    /// Width in twips of the layout.
    void setColumnWidth(int column, int twips);

    /// Rows never go back; columns go forward within a row. Throws overflow with a message for the user
    /// where the format has no room for the cell.
    void addText(int row, int column, std::uint16_t style, const QString& text);
    void addNumber(int row, int column, std::uint16_t style, double number);
    /// At least that height in twips for the row of the last cell.
    void growRow(int twips) { m_height = std::max(m_height, twips); }
    /// The cell goes on over the cells to its right, which stay empty.
    void mergeRight(int row, int column, int lastColumn);
    /// Heading row and filter.
    void setTable(const xls::Table& table) { m_table = table; }

    /// The finished file.
    QByteArray bytes();

private:
    void toCell(int row, int column);
    void flushRow();
    void flushBlock();
    void putStyles(QByteArray& out) const;
    QByteArray globals(std::uint32_t sheetSizeBefore) const;
    QByteArray sheetHead() const;
    QByteArray sharedTexts() const;
    QByteArray mergedCells() const;

    QString m_sheetName;
    std::vector<CellStyle> m_styles;
    std::vector<int> m_widths;
    QHash<QString, std::uint32_t> m_textIndex;
    std::vector<QString> m_texts;
    std::uint32_t m_textUses = 0;
    struct Merged {
        int row, first, last;
    };
    std::vector<Merged> m_merged;
    xls::Table m_table;
    QByteArray m_sheet, m_blockRows, m_blockCells;
    int m_height = plainHeight;  ///< of the row being filled
    int m_row = -1, m_firstColumn = 0, m_lastColumn = -1, m_rowsInBlock = 0, m_columns = 0;
};

}  // namespace platform
