// Rows in blocks, as readers ask for them.
#include "platform/report/XlsSheet.h"

#include "platform/basic/RuntimeError.h"
#include "platform/report/XlsRecords.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace platform::xls {

namespace {

constexpr int mostHeight = 8190;  // of a row, in twips
constexpr int rowsOfBlock = 32;   // row records stand together for so many rows

constexpr std::uint16_t word(int number) { return static_cast<std::uint16_t>(number); }

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

Sheet::Sheet(const QString& name) : m_name(name.left(31)) {
    for (QChar& character : m_name) {
        if (u"[]*?/\\:"_s.contains(character))
            character = ' '_L1;
    }
    if (m_name.isEmpty())
        m_name = u"Report"_s;
}

void Sheet::setColumnWidth(int column, int twips) {
    if (column >= mostColumns)
        return;
    if (column >= static_cast<int>(m_widths.size()))
        m_widths.resize(static_cast<std::size_t>(column) + 1);
    m_widths[static_cast<std::size_t>(column)] = twips;
}

void Sheet::toCell(int row, int column) {
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

void Sheet::addText(int row, int column, std::uint16_t style, std::uint32_t text) {
    toCell(row, column);
    plainRecord(m_blockCells, LabelShared, word(row), word(column), word(styleFormats + style), text);
}

void Sheet::addNumber(int row, int column, std::uint16_t style, double number) {
    toCell(row, column);
    const std::uint16_t format = word(styleFormats + style);
    if (const std::uint32_t small = packed(number))
        plainRecord(m_blockCells, Rk, word(row), word(column), format, small);
    else
        plainRecord(m_blockCells, Number, word(row), word(column), format, bitsOf(number));
}

void Sheet::flushRow() {
    if (m_row < 0)
        return;
    constexpr int ownHeight = 0x40;
    const int flags = 0x0100 | (m_height > plainHeight ? ownHeight : 0);
    const int height = std::min(m_height, mostHeight);
    plainRecord(m_blockRows, Row, word(m_row), word(m_firstColumn), word(m_lastColumn + 1), word(height),
                word(0), word(0), word(flags), word(0x000F));
    m_height = plainHeight;
    if (++m_rowsInBlock == rowsOfBlock)
        flushBlock();
}

void Sheet::flushBlock() {
    for (std::string* block : {&m_blockRows, &m_blockCells}) {
        m_cells.append(block->data(), static_cast<qsizetype>(block->size()));
        block->clear();
    }
    m_rowsInBlock = 0;
}

void Sheet::mergeRight(int row, int column, int lastColumn) {
    m_merged.push_back({row, column, lastColumn});
    m_columns = std::max(m_columns, lastColumn + 1);
}

QByteArray Sheet::mergedCells() const {
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

QByteArray Sheet::head() const {
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

QByteArray Sheet::bytes(int place, int drawing) {
    flushRow();
    flushBlock();
    QByteArray out = head();
    out += m_cells;
    out += filterButtons(m_table, drawing);
    out += sheetWindow(m_table, place == 0);
    out += mergedCells();
    record(out, Eof, {});
    return out;
}

}  // namespace platform::xls
