// From bands and items to rows and cells.
#include "platform/report/SpreadsheetExport.h"

#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Paths.h"
#include "platform/report/ReportRun.h"
#include "platform/report/SheetPlan.h"
#include "platform/report/XlsWorkbook.h"

#include <QHash>
#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

bool isDate(const QVariant& value) { return value.userType() == QMetaType::QDateTime; }

/// The value as a cell's number, where it is one.
std::optional<double> cellNumber(const QVariant& value) {
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::LongLong:
    case QMetaType::UInt:
    case QMetaType::Double: {
        const double number = value.toDouble();
        return std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
    case QMetaType::QDateTime: {
        // Before 1 March 1900 spreadsheets count days differently.
        const double days = toSerial(value.toDateTime());
        return days >= 61 ? std::optional(days) : std::nullopt;
    }
    default:
        break;
    }
    if (value.userType() == qMetaTypeId<Currency>())
        return value.value<Currency>().toDouble();
    return std::nullopt;
}

constexpr qsizetype mostWidened = 40;                    // characters for which a column is made wider
constexpr double digitWidth = 0.56, lineHeight = 1.275;  // of a font, in its points

QString quoted(const QString& literal) {
    if (literal.isEmpty())
        return {};
    return '"'_L1 + QString(literal).remove('"'_L1) + '"'_L1;
}

class Writer {
public:
    explicit Writer(const PageDocument& document)
        : m_document(document), m_plan(document.definition),
          m_workbook(document.caption.isEmpty() ? document.definition.name : document.caption) {}

    QByteArray bytes() {
        const int groups = std::max(1, m_document.definition.detailColumns);
        for (int column = 0; column < m_plan.columns() * groups; ++column)
            m_widths.push_back(m_plan.columnWidth(column % m_plan.columns()));
        for (const Page& page : m_document.pages)
            addPage(page);
        for (std::size_t column = 0; column < m_widths.size(); ++column)
            m_workbook.setColumnWidth(static_cast<int>(column), m_widths[column]);
        return m_workbook.bytes();
    }

private:
    void addPage(const Page& page) {
        for (std::size_t first = 0; first < page.bands.size();) {
            std::size_t end = first + 1;  // details beside one another share their rows
            while (end < page.bands.size() && page.bands[end].column > 0)
                ++end;
            addBands(page, first, end);
            first = end;
        }
    }

    void addBands(const Page& page, std::size_t first, std::size_t end) {
        const int rows = m_plan.rows(page.bands[first].section);
        for (int row = 0; row < rows; ++row) {
            for (std::size_t i = first; i < end; ++i)
                addRow(page, page.bands[i], row);
        }
        m_row += rows;
    }

    void addRow(const Page& page, const PageBand& band, int row) {
        m_line.clear();
        for (std::uint32_t i = band.firstItem; i < band.firstItem + band.itemCount; ++i) {
            const PageItem& item = page.items[i];
            if (item.kind == ItemKind::Text && !item.text.isEmpty() &&
                m_plan.place(band.section, item.control).row == row)
                m_line.emplace_back(m_plan.place(band.section, item.control).column, &item);
        }
        std::sort(m_line.begin(), m_line.end());
        for (std::size_t i = 0; i < m_line.size(); ++i) {
            const auto& [column, item] = m_line[i];
            const bool neighbour = i + 1 < m_line.size() && m_line[i + 1].first == column + 1;
            addCell(page, band, *item, m_row + row, band.column * m_plan.columns() + column, neighbour);
        }
    }

    void addCell(const Page& page, const PageBand& band, const PageItem& item, int row, int column,
                 bool neighbour) {
        static const TypedValue none;
        const TypedValue& typed = item.value < 0 ? none : page.values[static_cast<std::size_t>(item.value)];
        const std::optional<double> number = cellNumber(typed.value);
        int& width = m_widths[static_cast<std::size_t>(column)];
        Fit fit = fitOf(item, width);
        // A number that its column is too narrow for would show as "###", a text would end at its neighbour.
        if (fit.narrow && (number || neighbour)) {
            width = std::max(width, widthOf(item, std::min(item.text.size(), mostWidened)));
            fit = fitOf(item, width);
        }
        const std::uint16_t style = cellStyle(band, item, typed, number.has_value(), fit);
        if (number)
            m_workbook.addNumber(row, column, style, *number);
        else
            m_workbook.addText(row, column, style, item.text);
        m_workbook.growRow(static_cast<int>(std::ceil(pointsOf(item) * 20 * lineHeight * fit.lines)));
    }

    double pointsOf(const PageItem& item) const { return m_document.styles[item.style].points; }

    /// About how wide so many characters are, in twips.
    int widthOf(const PageItem& item, qsizetype characters) const {
        return static_cast<int>(
            std::ceil(static_cast<double>(characters) * pointsOf(item) * 20 * digitWidth));
    }

    /// What a text needs in a cell of the width.
    struct Fit {
        bool narrow;  ///< one line that is wider than the cell
        int lines;    ///< more than one where the text has line ends
    };
    Fit fitOf(const PageItem& item, int width) const {
        if (!item.text.contains('\n'_L1))
            return {widthOf(item, item.text.size()) > width, 1};
        int lines = 0;
        for (const QString& line : item.text.trimmed().split('\n'_L1))
            lines += std::max(1, (widthOf(item, line.trimmed().size()) + width - 1) / std::max(1, width));
        return {false, std::max(2, lines)};
    }

    /// The looks of cells, kept by what decides them.
    std::uint16_t cellStyle(const PageBand& band, const PageItem& item, const TypedValue& typed, bool number,
                            const Fit& fit) {
        const bool date = number && isDate(typed.value);
        const bool time = date && typed.value.toDateTime().time() != QTime(0, 0);
        const quint64 key = quint64(band.section) << 48 | quint64(item.control) << 32 |
                            quint64(item.style) << 16 | quint64(fit.lines > 1) << 4 |
                            quint64(fit.narrow) << 3 | quint64(number) << 2 | quint64(date) << 1 |
                            quint64(time);
        const auto known = m_styles.constFind(key);
        if (known != m_styles.constEnd() && known->format == typed.format)
            return known->style;
        CellStyle cell = textLook(band, item);
        cell.wrapped = fit.lines > 1;
        cell.alignGiven = cell.alignGiven && !fit.narrow;  // its start would hang out of the sheet
        if (number && !typed.format.isEmpty())
            cell.numberFormat = numberFormatOf(typed.format);
        else if (date)
            cell.numberFormat = time ? u"m/d/yyyy h:mm:ss AM/PM"_s : u"m/d/yyyy"_s;
        const std::uint16_t style = m_workbook.addStyle(cell);
        m_styles.insert(key, {typed.format, style});
        return style;
    }

    CellStyle textLook(const PageBand& band, const PageItem& item) const {
        const TextStyle& text = m_document.styles[item.style];
        const SectionKind kind = m_document.definition.sections[band.section].kind;
        const bool head = m_document.controlOf(band, item).kind == ControlKind::Label &&
                          (kind == SectionKind::ReportHeader || kind == SectionKind::PageHeader ||
                           kind == SectionKind::GroupHeader);
        CellStyle cell;
        cell.family = text.family;
        cell.twips = static_cast<int>(std::lround(text.points * 20));
        cell.bold = text.bold || head;
        cell.italic = text.italic;
        cell.align = text.align;
        cell.alignGiven = text.align != TextAlign::Left;
        return cell;
    }

    struct KnownStyle {
        QString format;
        std::uint16_t style;
    };
    const PageDocument& m_document;
    SheetPlan m_plan;
    XlsWorkbook m_workbook;
    std::vector<int> m_widths;  ///< of the columns, in twips
    int m_row = 0;
    std::vector<std::pair<int, const PageItem*>> m_line;
    QHash<quint64, KnownStyle> m_styles;
};

}  // namespace

QString numberFormatOf(const QString& picture) {
    const QString first = picture.section(';'_L1, 0, 0);
    qsizetype start = 0, end = first.size();
    const auto isPlace = [&](qsizetype i) { return first[i] == '#'_L1 || first[i] == '0'_L1; };
    while (start < end && !isPlace(start))
        ++start;
    if (start == end) {  // a date: letters stand, marks between them are literal
        QString format;
        for (const QChar character : first)
            format += character.isLetter() ? QString(character) : '\\'_L1 + QString(character);
        return format;
    }
    while (end > start && !isPlace(end - 1))
        --end;
    return quoted(first.left(start)) + first.mid(start, end - start) + quoted(first.mid(end));
}

QByteArray spreadsheet(const PageDocument& document) { return Writer(document).bytes(); }

void exportReport(std::unique_ptr<Report> report, const QString& path) {
    ReportRun run(std::move(report));
    run.makeAll();
    writeFile(platformPath(path), spreadsheet(run.document()));
}

}  // namespace platform
