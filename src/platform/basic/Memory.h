// Memory that a large thing has left behind.
#pragma once

namespace platform {

/// Hands free memory back to the system, where the system's library keeps it otherwise. To be called after a large
/// document has gone; takes some milliseconds.
void giveBackMemory();

}  // namespace platform
