// How the columns of a list share its width: texts are cut last, and those of names least.
#pragma once

#include <vector>

class QAbstractItemModel;
class QFontMetrics;

namespace platform {

/// Rows that the width of a column is made for.
inline constexpr int rowsLookedAt = 100;

/// Pixels of the column's widest text in these rows, without margins.
int widestText(const QAbstractItemModel& model, int column, const QFontMetrics& metrics);

/// What a column would take, in pixels.
struct ColumnWish {
    int designed = 0;  ///< its width where there is room; 0: it takes what the others leave
    int heading = 0;
    int content = 0;  ///< its widest text
};

/// Columns as designed where all texts of the open ones have their room, up to `enough` each. Else the others give first
/// what their texts leave empty, then a part of their headings so that the open ones keep `least`. What is left over
/// goes to texts that are cut, then to the open columns.
std::vector<int> sharedWidths(const std::vector<ColumnWish>& columns, int room, int least, int enough);

}  // namespace platform
