// The engine of the records that a PostgreSQL server keeps for several benches.
#pragma once

#include "platform/data/Engine.h"

#include <memory>

namespace platform::postgres {

/// address: see Address. Throws cannotOpen where there is no such server, database or account, general where the server
/// is not ready or has none of the tables.
std::unique_ptr<Engine> openServer(const QString& address);

}  // namespace platform::postgres
