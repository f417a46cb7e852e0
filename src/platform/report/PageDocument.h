// What layout makes and every output reads: pages of text, lines, boxes and bar codes at fixed places.
// All measures are twips from the top left of the paper.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace platform {

enum class ItemKind : std::uint8_t { Text, Line, Box, BarCode };

/// A piece of text on one baseline, ready to draw.
struct TextRun {
    int x = 0;
    int baseline = 0;
    QString text;
};

struct PageItem {
    ItemKind kind = ItemKind::Text;
    std::uint16_t style = 0;    ///< index into PageDocument::styles
    std::uint16_t drawn = 0;    ///< style in which the page shows it: as above, or in smaller type
    std::uint16_t control = 0;  ///< index of the control in its section
    int x = 0, y = 0, width = 0, height = 0;
    std::uint32_t firstRun = 0, runCount = 0;  ///< into Page::runs
    std::int32_t value = -1;  ///< into Page::values; -1: the text was written from nothing else
    QString text;             ///< the whole text, also where the page shows less
};

/// The number, money or date behind a text, and its picture.
struct TypedValue {
    QVariant value;
    QString format;
};

/// One section as it was placed; its items follow one another.
struct PageBand {
    std::uint16_t section = 0;  ///< index into ReportDefinition::sections
    std::uint16_t column = 0;   ///< detail column, from 0
    int x = 0, y = 0;
    std::uint32_t firstItem = 0, itemCount = 0;
};

struct Page {
    std::vector<PageBand> bands;
    std::vector<PageItem> items;
    std::vector<TextRun> runs;
    std::vector<TypedValue> values;
};

/// Words that end in "…"; bars that are missing; a value that stands as "####"; a label that does not print
/// because one of its values would.
enum class WarningKind { TextCut, NoBarCode, ValueHidden, LabelLeftOut };

/// Something the reader of the paper must know before it is used. Equal ones are counted.
struct PageWarning {
    WarningKind kind = WarningKind::TextCut;
    int page = 0;  ///< first page, from 1
    int count = 1;
    QString control;
    QString title;  ///< the control's English caption, where it has one
    QString text;
};

class PageDocument {
public:
    ReportDefinition definition;
    QString caption;
    QString fileName;  ///< proposed for a file of it, without ending; empty: the caption
    std::vector<TextStyle> styles;
    std::vector<Page> pages;
    std::vector<PageWarning> warnings;
    int cutTexts = 0;  ///< how often each kind of warning came, also of those not kept
    int missingBarCodes = 0;
    int hiddenValues = 0;
    int leftOutLabels = 0;  ///< labels, however many of their values have no room
    int smallerValues = 0;  ///< values set in smaller type, whole
    QStringList notes;      ///< what the report itself says about its figures

    /// Index of the style, added when new.
    std::uint16_t styleIndex(const TextStyle& style);
    /// Counts a warning (a label that is left out is counted by layout, once); the first thousand different ones are kept.
    void warn(WarningKind kind, const Control& control);

    /// How often something came that the reader must know.
    int warningCount() const { return cutTexts + missingBarCodes + hiddenValues + leftOutLabels; }

    const Control& controlOf(const PageBand& band, const PageItem& item) const {
        return definition.sections[band.section].controls[item.control];
    }
};

/// The document as text, an item a line: kind, x, y, width, height, text. For people and for tests.
QString dumped(const PageDocument& document);

}  // namespace platform
