// The engine's own look through a file.
#pragma once

#include "platform/data/Engine.h"

struct sqlite3;

namespace platform::sqlite {

/// See Engine::problems.
QStringList integrityOf(sqlite3* database, const Cancelled& cancelled);

}  // namespace platform::sqlite
