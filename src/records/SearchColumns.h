// How a field of a search looks as a column of the list, and where the list's window stands.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/widgets/RecordGrid.h"

#include <vector>

namespace sorvanto {

/// Sizes of the list's font and window in pixels.
struct ListMeasure {
    int characterWidth = 8;
    int defaultWidth = 160;
};

/// Width and number format by the field's type number and defined size: a text of 20 characters or more
/// gets half its size, one below 5 gets 5; a double is shown as money, a flag as Yes or No; anything else
/// keeps the list's default. The heading is the field's name.
platform::GridColumn searchColumn(const platform::FieldInfo& field, const ListMeasure& measure);

/// What a column would take, in pixels.
struct ColumnNeed {
    int designed = 0;    ///< by its type and size; 0 for a hidden one
    int needed = 0;      ///< by its heading and the texts in it
    bool gives = false;  ///< a document or an identifier: it gives its room before the others
    int least = 0;       ///< its heading, which is never cut
};

/// The designed widths where the room holds them; else no column is wider than its texts, and the widest give of
/// theirs until all columns are seen, down to a few characters and their headings. Where even that is too much, the
/// list scrolls sideways and names and numbers keep their texts.
std::vector<int> fittedWidths(const std::vector<ColumnNeed>& columns, int room);

/// Left or top of the window: the wished place if it is above 0 and the window then ends on the screen,
/// otherwise the middle. All in one unit.
int searchPlace(int wished, int size, int screen);

}  // namespace sorvanto
