// The records of the workbook in the order that readers ask for, and the container around them.
#include "platform/report/XlsWorkbook.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/OleContainer.h"
#include "platform/report/XlsRecords.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {

using namespace xls;

namespace {

constexpr int styleFormats = 15;     // the formats of named styles that stand before those of cells
constexpr int firstOwnFormat = 164;  // lower numbers are the application's own
constexpr int mostHeight = 8190;     // of a row, in twips
constexpr int rowsOfBlock = 32;      // row records stand together for so many rows

void putWords(QByteArray& out, Id id, std::initializer_list<int> words) {
    QByteArray data;
    for (const int word : words)
        put16(data, word);
    record(out, id, data);
}

void putBof(QByteArray& out, int kind) {
    QByteArray data;
    for (const int word : {0x0600, kind, 0x0DBB, 0x07CC})
        put16(data, word);
    put32(data, 0);
    put32(data, 6);
    record(out, Bof, data);
}

void putFont(QByteArray& out, const CellStyle& style) {
    QByteArray data;
    for (const int word : {style.twips, style.italic ? 2 : 0, 0x7FFF, style.bold ? 700 : 400, 0})
        put16(data, word);
    put32(data, 0);
    record(out, Id::Font, data + shortText(style.family, false));
}

void putCellFormat(QByteArray& out, int font, int format, int typeAndParent, int align) {
    QByteArray data;
    put16(data, font >= 4 ? font + 1 : font);  // number 4 is never used
    put16(data, format);
    put16(data, typeAndParent);
    put8(data, align);
    put8(data, 0);
    put8(data, 0);
    put8(data, typeAndParent == 1 ? 0x1C : 0);  // number, font and alignment are the cell's own
    put32(data, 0);
    put32(data, 0);
    put16(data, 0x20C0);
    record(out, Xf, data);
}

/// The packed form of a number: an integer or hundredth of 30 bits; 0 when it has none.
std::uint32_t packed(double number) {
    constexpr double most = 536'870'911;
    if (std::signbit(number) && number == 0)
        return 0;
    for (const int hundredths : {0, 1}) {
        const double scaled = hundredths ? number * 100 : number;
        if (std::fabs(scaled) > most || scaled != std::floor(scaled) ||
            (hundredths && scaled / 100 != number))
            continue;
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(scaled)) << 2 | 2u |
               (hundredths ? 1u : 0u);
    }
    return 0;
}

}  // namespace

XlsWorkbook::XlsWorkbook(const QString& sheetName) : m_sheetName(sheetName.left(31)) {
    for (QChar& character : m_sheetName) {
        if (u"[]*?/\\:"_s.contains(character))
            character = ' '_L1;
    }
    if (m_sheetName.isEmpty())
        m_sheetName = u"Report"_s;
    addStyle({});
}

std::uint16_t XlsWorkbook::addStyle(const CellStyle& style) {
    auto place = std::find(m_styles.begin(), m_styles.end(), style);
    if (place == m_styles.end())
        place = m_styles.insert(place, style);
    return static_cast<std::uint16_t>(place - m_styles.begin());
}

void XlsWorkbook::setColumnWidth(int column, int twips) {
    if (column >= mostColumns)
        return;
    if (column >= static_cast<int>(m_widths.size()))
        m_widths.resize(static_cast<std::size_t>(column) + 1);
    m_widths[static_cast<std::size_t>(column)] = twips;
}

void XlsWorkbook::toCell(int row, int column) {
    if (row >= mostRows || column >= mostColumns)
        throw RuntimeError(error::overflow,
                           u"The report has more than 65,536 rows or 256 columns, which a "
                           u"spreadsheet file of this kind can't hold. Choose a smaller part."_s);
    if (row != m_row) {
        flushRow();
        m_row = row;
        m_firstColumn = column;
    }
    m_lastColumn = column;
    m_columns = std::max(m_columns, column + 1);
}

void XlsWorkbook::addText(int row, int column, std::uint16_t style, const QString& text) {
    if (text.size() > mostCharacters)
        throw RuntimeError(error::overflow, u"A text of the report has more than 32,767 characters, which a "
                                            u"spreadsheet cell can't hold: \"%1 ...\""_s.arg(text.left(40)));
    toCell(row, column);
    auto place = m_textIndex.constFind(text);
    if (place == m_textIndex.constEnd()) {
        place = m_textIndex.insert(text, static_cast<std::uint32_t>(m_texts.size()));
        m_texts.push_back(text);
    }
    ++m_textUses;
    put16(m_blockCells, LabelShared);
    put16(m_blockCells, 10);
    put16(m_blockCells, row);
    put16(m_blockCells, column);
    put16(m_blockCells, styleFormats + style);
    put32(m_blockCells, *place);
}

void XlsWorkbook::addNumber(int row, int column, std::uint16_t style, double number) {
    toCell(row, column);
    const std::uint32_t small = packed(number);
    put16(m_blockCells, small ? Rk : Number);
    put16(m_blockCells, small ? 10 : 14);
    put16(m_blockCells, row);
    put16(m_blockCells, column);
    put16(m_blockCells, styleFormats + style);
    if (small)
        put32(m_blockCells, small);
    else
        putDouble(m_blockCells, number);
}

void XlsWorkbook::flushRow() {
    if (m_row < 0)
        return;
    constexpr int ownHeight = 0x40;
    const int flags = 0x0100 | (m_height > plainHeight ? ownHeight : 0);
    const int height = std::min(m_height, mostHeight);
    putWords(m_blockRows, Row, {m_row, m_firstColumn, m_lastColumn + 1, height, 0, 0, flags, 0x000F});
    m_height = plainHeight;
    if (++m_rowsInBlock == rowsOfBlock)
        flushBlock();
}

void XlsWorkbook::flushBlock() {
    m_sheet += m_blockRows;
    m_sheet += m_blockCells;
    m_blockRows.resize(0);
    m_blockCells.resize(0);
    m_rowsInBlock = 0;
}

QByteArray XlsWorkbook::sharedTexts() const {
    QByteArray out;
    {
        LongRecord texts(out, SharedTexts);
        QByteArray counts;
        put32(counts, m_textUses);
        put32(counts, static_cast<std::uint32_t>(m_texts.size()));
        texts.append(counts);
        for (const QString& text : m_texts)
            texts.appendText(text);
    }
    return out;
}

void XlsWorkbook::putStyles(QByteArray& out) const {
    // A font and, where it has one, a number format for each style; equal ones are few enough to repeat.
    for (const CellStyle& style : m_styles)
        putFont(out, style);
    for (std::size_t i = m_styles.size(); i < 4; ++i)
        putFont(out, {});
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        if (m_styles[i].numberFormat.isEmpty())
            continue;
        QByteArray data;
        put16(data, firstOwnFormat + static_cast<int>(i));
        record(out, Id::Format, data + shortText(m_styles[i].numberFormat, true));
    }
    for (int i = 0; i < styleFormats; ++i)
        putCellFormat(out, 0, 0, 0xFFF5, 0x20);
    for (std::size_t i = 0; i < m_styles.size(); ++i) {
        const CellStyle& style = m_styles[i];
        const int align = style.alignGiven ? 1 + static_cast<int>(style.align == TextAlign::Centre) +
                                                 2 * static_cast<int>(style.align == TextAlign::Right)
                                           : 0;
        const int index = static_cast<int>(i);
        const int format =
            style.numberFormat.isEmpty() ? static_cast<int>(style.date) : firstOwnFormat + index;
        constexpr int wrapped = 0x08, atBottom = 0x20;  // several lines stand at the top
        putCellFormat(out, index, format, 1, align | (style.wrapped ? wrapped : atBottom));
    }
    putWords(out, Style, {0x8000, 0xFF00});
}

void XlsWorkbook::mergeRight(int row, int column, int lastColumn) {
    m_merged.push_back({row, column, lastColumn});
    m_columns = std::max(m_columns, lastColumn + 1);
}

QByteArray XlsWorkbook::mergedCells() const {
    constexpr std::size_t mostOfRecord = 1027;
    QByteArray out;
    for (std::size_t first = 0; first < m_merged.size(); first += mostOfRecord) {
        const std::size_t end = std::min(first + mostOfRecord, m_merged.size());
        QByteArray data;
        put16(data, static_cast<int>(end - first));
        for (std::size_t i = first; i < end; ++i) {
            for (const int word : {m_merged[i].row, m_merged[i].row, m_merged[i].first, m_merged[i].last})
                put16(data, word);
        }
        record(out, MergedCells, data);
    }
    return out;
}

QByteArray XlsWorkbook::globals(std::uint32_t sheetSizeBefore) const {
    QByteArray out;
    putBof(out, 0x0005);
    putWords(out, CodePage, {1200});
    putWords(out, Window1, {0, 0, 0x4000, 0x2000, 0x0038, 0, 0, 1, 0x0258});
    putWords(out, DateMode, {0});
    putStyles(out);
    // What is still to come before the sheet: this record and the end mark.
    const QByteArray name = shortText(m_sheetName, false);
    const auto here = static_cast<std::uint32_t>(out.size() + 4 + 6 + name.size());
    QByteArray data;
    put32(data, here + sheetSizeBefore + 4);
    put16(data, 0);
    record(out, BoundSheet, data + name);
    return out;
}

QByteArray XlsWorkbook::sheetHead() const {
    QByteArray out, data;
    putBof(out, 0x0010);
    out += pageSetup(m_table);
    constexpr int twipsOfCharacter = 105;  // the digit of Arial 10 at 96 dpi
    for (std::size_t column = 0; column < m_widths.size(); ++column) {
        const int index = static_cast<int>(column);
        const int width = m_widths[column] * 256 / twipsOfCharacter + 256;
        putWords(out, ColInfo, {index, index, width, styleFormats, 0, 0});
    }
    put32(data, 0);
    put32(data, static_cast<std::uint32_t>(m_row + 1));
    put16(data, 0);
    put16(data, m_columns);
    put16(data, 0);
    record(out, Dimensions, data);
    return out;
}

QByteArray XlsWorkbook::bytes() {
    flushRow();
    flushBlock();
    const QByteArray texts = tableNames(m_table) + sharedTexts();
    QByteArray stream = globals(static_cast<std::uint32_t>(texts.size()));
    stream.reserve(stream.size() + texts.size() + m_sheet.size() + 4096);
    stream += texts;
    record(stream, Eof, {});
    stream += sheetHead();
    stream += m_sheet;
    stream += filterButtons(m_table);
    stream += sheetWindow(m_table);
    stream += mergedCells();
    record(stream, Eof, {});
    return inOleContainer("Workbook"_ba, stream);
}

}  // namespace platform
