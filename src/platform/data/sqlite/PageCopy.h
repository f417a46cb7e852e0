// A copy of a file by the engine's own copying, page by page.
#pragma once

#include "platform/data/Engine.h"

struct sqlite3;

namespace platform::sqlite {

/// Writes everything into the existing, empty file of that path, as of one moment. False when it was cancelled. With cancelled in small pieces, between which other connections can write. Throws
/// permissionDenied when another program keeps the file, deviceIo or diskFull when the disk fails.
bool copyPages(sqlite3* from, const QString& to, const Cancelled& cancelled);

}  // namespace platform::sqlite
