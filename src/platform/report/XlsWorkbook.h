// A workbook in the binary spreadsheet format of .xls files (BIFF8 records in an OLE2 container). Cells are given
// sheet by sheet, row by row; nothing is kept but the finished bytes and the shared texts. The libraries at
// hand write .xlsx alone.
#pragma once

#include "platform/report/ReportDefinition.h"
#include "platform/report/XlsSheet.h"

#include <QByteArray>
#include <QHash>
#include <QString>
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
    static constexpr int mostRows = xls::Sheet::mostRows;
    static constexpr int mostColumns = xls::Sheet::mostColumns;
    static constexpr int mostCharacters = 32'767;
    static constexpr int plainHeight = xls::Sheet::plainHeight;

    explicit XlsWorkbook(const QString& sheetName);

    /// All that follows goes into a further sheet; its name is unlike the others'.
    void addSheet(const QString& name) { m_sheets.emplace_back(name); }

    /// Number to name the style by, in all sheets.
    std::uint16_t addStyle(const CellStyle& style);
    /// Width in twips of the layout.
    void setColumnWidth(int column, int twips) { sheet().setColumnWidth(column, twips); }

    /// Rows never go back; columns go forward within a row. Throws overflow with a message for the user
    /// where the format has no room for the cell.
    void addText(int row, int column, std::uint16_t style, const QString& text);
    void addNumber(int row, int column, std::uint16_t style, double number) {
        sheet().addNumber(row, column, style, number);
    }
    /// At least that height in twips for the row of the last cell.
    void growRow(int twips) { sheet().growRow(twips); }
    /// The cell goes on over the cells to its right, which stay empty.
    void mergeRight(int row, int column, int lastColumn) { sheet().mergeRight(row, column, lastColumn); }
    /// Heading row and filter.
    void setTable(const xls::Table& table) { sheet().setTable(table); }

    /// The finished file.
    QByteArray bytes();

private:
    xls::Sheet& sheet() { return m_sheets.back(); }
    std::uint32_t textNumber(int column, const QString& text);
    void putStyles(QByteArray& out) const;
    QByteArray globals() const;
    QByteArray sharedTexts() const;

    std::vector<xls::Sheet> m_sheets;
    std::vector<CellStyle> m_styles;
    QHash<QString, std::uint32_t> m_textIndex;  ///< place in m_texts, from 1
    struct Numbered {
        QString text;
        std::int64_t number = -1;  ///< none yet
    };
    std::vector<Numbered> m_above;  ///< the last text of each column
    std::vector<QString> m_texts;
    std::uint32_t m_textUses = 0;
};

}  // namespace platform
