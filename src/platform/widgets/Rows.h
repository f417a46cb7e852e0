// The one pitch of rows in grids and lists.
#pragma once

class QTableView;

namespace platform {

/// Pixels at 100 %.
inline constexpr int rowPitch = 32;
inline constexpr int headPitch = 34;

/// What all tables have in common: rows and headings of that pitch, no lines, texts on one line; the tab key
/// leaves them.
void setUpRows(QTableView& view);

}  // namespace platform
