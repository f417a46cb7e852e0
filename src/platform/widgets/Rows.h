// The one pitch of rows in grids and lists.
#pragma once

namespace platform {

/// Pixels at 100 %.
inline constexpr int rowPitch = 32;
inline constexpr int headPitch = 34;

}  // namespace platform
