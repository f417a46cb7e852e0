// The head that the four list reports share: the title in a box with a drop shadow, the moment of the report,
// and the headings of the columns.
#pragma once

#include "platform/report/Report.h"

#include <QString>
#include <span>
#include <vector>

namespace sorvanto {

struct Context;

/// Where the parts of a list report's head differ.
struct ListHead {
    int boxWidth, dateLeft, dateTop;
};

/// A head section with title and moment (controls Shape2, Shape1, lblReportTitle and lblDate), and the
/// further controls below them.
platform::Section listHead(platform::SectionKind kind, int height, const ListHead& places,
                           const std::vector<platform::Control>& further);

/// The moment, and window caption and title by their keys.
void translateListHead(platform::Report& report, const char* captionKey, const char* titleKey);

/// A heading of a column, of a line's height.
platform::Control heading(const QString& name, int left, int top, int width);

/// A column of a list: what its controls are called behind their prefix, its heading's English text ("" for none), and
/// where it stands.
struct ListColumn {
    const char* name;
    const char* heading;
    int left, width;
    platform::TextAlign align = platform::TextAlign::Left;
    platform::TextKind kind = platform::TextKind::Words;
};

/// The columns' headings at that height of a section.
std::vector<platform::Control> headings(std::span<const ListColumn> columns, const QString& prefix,
                                        int top = 0);
void translateHeadings(platform::Report& report, std::span<const ListColumn> columns, const QString& prefix);

/// The foot of a page: the store's name, and the page's number at the right.
platform::Section storeFooter();
/// To be called by the report's pageFooterFormat().
void fillStoreFooter(const Context& context, platform::Report& report);

}  // namespace sorvanto
