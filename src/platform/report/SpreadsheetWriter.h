// From the bands and items of pages to the rows and cells of a sheet. Pages come one after the other, and nothing of them
// is kept but what the sheet holds.
#pragma once

#include "platform/report/PageDocument.h"
#include "platform/report/SheetPlan.h"
#include "platform/report/TextMeasure.h"
#include "platform/report/XlsWorkbook.h"

#include <QHash>
#include <QStringList>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

class SpreadsheetWriter {
public:
    /// The document outlives the writer; its pages need not be in it.
    explicit SpreadsheetWriter(const PageDocument& document);

    /// The next page. A table has its foot once, from the last one. Throws overflow with a message for the user where the
    /// format has no room.
    void addPage(const Page& page, bool last);
    /// The finished file.
    QByteArray bytes();

private:
    /// A cell to be: its column and its item.
    using Line = std::vector<std::pair<int, const PageItem*>>;
    /// The room that a text gets: cells up to lastColumn, and lines in them.
    struct Fit {
        int lastColumn;
        int lines;
    };
    struct KnownStyle {
        QString format;
        std::uint16_t style;
    };

    SectionKind kindOf(const PageBand& band) const {
        return m_document.definition.sections[band.section].kind;
    }
    void addBands(const Page& page, std::size_t first, std::size_t end);
    bool isRepeated(const Line& line, int row);
    void noteTable(const PageBand& band, int row);
    const Line& lineOf(const Page& page, const PageBand& band, int row);
    void addRow(const Page& page, const PageBand& band, int row);
    void addCell(const Page& page, const PageBand& band, const PageItem& item, int column, int nextColumn);

    double pointsOf(const PageItem& item) const { return m_document.styles[item.style].points; }
    int widthOf(const PageItem& item, const QString& line) const;
    bool surelyFits(const PageItem& item, const QString& text, int room) const;
    Fit fitOf(const PageItem& item, const QString& text, int column, int nextColumn, bool number);
    std::uint16_t cellStyle(const PageBand& band, const PageItem& item, const TypedValue& typed, bool number,
                            bool wrapped);
    CellStyle textLook(const PageBand& band, const PageItem& item) const;

    const PageDocument& m_document;
    SheetPlan m_plan;
    std::unique_ptr<TextMeasure> m_measure;
    XlsWorkbook m_workbook;
    std::vector<int> m_widths;  ///< of the columns, in twips
    Line m_line;                ///< the one at work
    int m_row = 0;
    xls::Table m_table;
    QHash<int, QStringList> m_headLines;  ///< what each line of the page's head said last
    QHash<quint64, KnownStyle> m_styles;
};

}  // namespace platform
