#include "platform/report/SpreadsheetWriter.h"

#include "platform/report/CellValue.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

bool isDate(const QVariant& value) { return value.userType() == QMetaType::QDateTime; }

constexpr int mostWidened = 4800;       // twips up to which a column is made wider for a text
constexpr double lineOfType = 1.275;    // of a font, in its points
constexpr int cellPadding = 100;        // twips that a cell keeps free beside its text
constexpr double roomForOthers = 1.04;  // fonts of other systems are a little wider

/// Lines that break at words leave some room at their ends.
int linesOf(int needed, int room) {
    return needed <= room ? 1 : static_cast<int>(std::ceil(1.15 * needed / std::max(1, room)));
}

}  // namespace

SpreadsheetWriter::SpreadsheetWriter(const PageDocument& document)
    : m_document(document), m_plan(document.definition), m_measure(fontMeasure()),
      m_workbook(document.caption.isEmpty() ? document.definition.name : document.caption) {
    const int groups = std::max(1, document.definition.detailColumns);
    for (int column = 0; column < m_plan.columns() * groups; ++column)
        m_widths.push_back(m_plan.columnWidth(column % m_plan.columns()));
}

QByteArray SpreadsheetWriter::bytes() {
    for (std::size_t column = 0; column < m_widths.size(); ++column)
        m_workbook.setColumnWidth(static_cast<int>(column), m_widths[column]);
    m_table.firstColumn = m_plan.heading().firstColumn;
    m_table.lastColumn = m_plan.heading().lastColumn;
    m_workbook.setTable(m_table);
    return m_workbook.bytes();
}

void SpreadsheetWriter::addPage(const Page& page, bool last) {
    for (std::size_t first = 0; first < page.bands.size();) {
        std::size_t end = first + 1;  // details beside one another share their rows
        while (end < page.bands.size() && page.bands[end].column > 0)
            ++end;
        if (kindOf(page.bands[first]) != SectionKind::PageFooter || last)
            addBands(page, first, end);
        first = end;
    }
}

void SpreadsheetWriter::addBands(const Page& page, std::size_t first, std::size_t end) {
    const PageBand& band = page.bands[first];
    for (int row = 0; row < m_plan.rows(band.section); ++row) {
        if (kindOf(band) == SectionKind::PageHeader && isRepeated(lineOf(page, band, row), row))
            continue;
        for (std::size_t i = first; i < end; ++i)
            addRow(page, page.bands[i], row);
        noteTable(band, row);
        ++m_row;
    }
}

/// Whether a line of the page's head says what it said last: a table has its headings once.
bool SpreadsheetWriter::isRepeated(const Line& line, int row) {
    QStringList texts;
    for (const auto& [column, item] : line)
        texts << item->text;
    const auto said = m_headLines.constFind(row);
    if (said != m_headLines.constEnd() && *said == texts)
        return true;
    m_headLines.insert(row, texts);
    return false;
}

void SpreadsheetWriter::noteTable(const PageBand& band, int row) {
    const HeadingPlace heading = m_plan.heading();
    if (band.section == heading.section && row == heading.row && m_table.headingRow < 0) {
        m_table.headingRow = m_row;
        m_table.frozen = kindOf(band) == SectionKind::PageHeader;
    }
    if (kindOf(band) == SectionKind::Detail && m_table.frozen)
        m_table.lastFiltered = m_row;
}

const SpreadsheetWriter::Line& SpreadsheetWriter::lineOf(const Page& page, const PageBand& band, int row) {
    m_line.clear();
    for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
        const PageItem& item = page.items[i];
        if (item.kind != ItemKind::Text || item.text.isEmpty())
            continue;
        const CellPlace place = m_plan.place(band.section, item.control);
        if (place.row == row)
            m_line.emplace_back(place.column, &item);
    }
    if (!std::is_sorted(m_line.begin(), m_line.end()))
        std::sort(m_line.begin(), m_line.end());
    return m_line;
}

void SpreadsheetWriter::addRow(const Page& page, const PageBand& band, int row) {
    const Line& line = lineOf(page, band, row);
    const int before = band.column * m_plan.columns();
    for (std::size_t i = 0; i < line.size(); ++i) {
        const int next = i + 1 < line.size() ? line[i + 1].first : m_plan.columns();
        addCell(page, band, *line[i].second, before + line[i].first, before + next);
    }
}

void SpreadsheetWriter::addCell(const Page& page, const PageBand& band, const PageItem& item, int column,
                                int nextColumn) {
    static const TypedValue none;
    const TypedValue& typed = item.value < 0 ? none : page.values[static_cast<std::size_t>(item.value)];
    const std::optional<double> number = cellNumber(typed.value);
    const QString text = number ? item.text : cellText(item.text);
    const bool inList = kindOf(band) == SectionKind::Detail && m_document.definition.detailColumns == 1;
    const Fit fit = fitOf(item, text, column, inList || number ? column + 1 : nextColumn, number.has_value());
    const std::uint16_t style = cellStyle(band, item, typed, number.has_value(), fit.lines > 1);
    if (number)
        m_workbook.addNumber(m_row, column, style, *number);
    else
        m_workbook.addText(m_row, column, style, text);
    if (fit.lastColumn > column)
        m_workbook.mergeRight(m_row, column, fit.lastColumn);
    m_workbook.growRow(static_cast<int>(std::ceil(pointsOf(item) * 20 * lineOfType * fit.lines)));
}

int SpreadsheetWriter::widthOf(const PageItem& item, const QString& line) const {
    return static_cast<int>(m_measure->width(m_document.styles[item.style], line) * roomForOthers) +
           cellPadding;
}

/// Whether a text of one line fits into a cell, found without shaping it: most cells of a long list do.
bool SpreadsheetWriter::surelyFits(const PageItem& item, const QString& text, int room) const {
    return m_measure->surelyFits(m_document.styles[item.style], text,
                                 static_cast<int>((room - cellPadding) / roomForOthers));
}

/// A number's column is as wide as the number, which would show as "###" otherwise. A text takes the empty
/// cells beside it, makes its column wider up to a limit, and goes on in further lines.
SpreadsheetWriter::Fit SpreadsheetWriter::fitOf(const PageItem& item, const QString& text, int column,
                                                int nextColumn, bool number) {
    if (surelyFits(item, text, m_widths[static_cast<std::size_t>(column)]))
        return {column, 1};
    const QStringList all = text.split('\n'_L1);
    int needed = 0;
    for (const QString& line : all)
        needed = std::max(needed, widthOf(item, line));
    int& own = m_widths[static_cast<std::size_t>(column)];
    int room = own, last = column;
    while (room < needed && last + 1 < nextColumn)
        room += m_widths[static_cast<std::size_t>(++last)];
    if (room < needed) {
        const int more = number ? needed - room : std::clamp(mostWidened - own, 0, needed - room);
        own += more;
        room += more;
    }
    int lines = 0;
    for (const QString& line : all)
        lines += linesOf(widthOf(item, line), room);
    return {last, lines};
}

/// The looks of cells, kept by what decides them.
std::uint16_t SpreadsheetWriter::cellStyle(const PageBand& band, const PageItem& item,
                                           const TypedValue& typed, bool number, bool wrapped) {
    const bool date = number && isDate(typed.value);
    const bool time = date && typed.value.toDateTime().time() != QTime(0, 0);
    const quint64 key = quint64(band.section) << 48 | quint64(item.control) << 32 |
                        quint64(item.style) << 16 | quint64(wrapped) << 3 | quint64(number) << 2 |
                        quint64(date) << 1 | quint64(time);
    const auto known = m_styles.constFind(key);
    if (known != m_styles.constEnd() && known->format == typed.format)
        return known->style;
    CellStyle cell = textLook(band, item);
    cell.wrapped = wrapped;
    if (date)
        cell.date = time ? DateFormat::DateAndTime : DateFormat::Date;
    else if (number && !typed.format.isEmpty())
        cell.numberFormat = numberFormatOf(typed.format);
    const std::uint16_t style = m_workbook.addStyle(cell);
    m_styles.insert(key, {typed.format, style});
    return style;
}

CellStyle SpreadsheetWriter::textLook(const PageBand& band, const PageItem& item) const {
    const TextStyle& text = m_document.styles[item.style];
    const SectionKind kind = kindOf(band);
    const bool head = m_document.controlOf(band, item).kind == ControlKind::Label &&
                      (kind == SectionKind::ReportHeader || kind == SectionKind::PageHeader ||
                       kind == SectionKind::GroupHeader);
    CellStyle cell;
    cell.family = text.family;
    cell.twips = static_cast<int>(std::lround(text.points * 20));
    cell.bold = text.bold || head;
    cell.italic = text.italic;
    cell.align = text.align;
    cell.alignGiven = true;
    return cell;
}

}  // namespace platform
