// The head that the four list reports share: the title in a box with a drop shadow, the moment of the report,
// and the headings of the columns.
#pragma once

#include "platform/report/Report.h"

#include <QString>
#include <vector>

namespace sorvanto {

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

}  // namespace sorvanto
