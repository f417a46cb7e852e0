// The engine of the records that a PostgreSQL server keeps for several benches.
#pragma once

#include "platform/data/Engine.h"

#include <memory>

namespace platform {
class Waiter;
}

namespace platform::postgres {

/// address: see Address. waiter: may be none. Throws cannotOpen where there is no such server, database or account, general where the server
/// is not ready or has none of the tables.
std::unique_ptr<Engine> openServer(const QString& address, std::shared_ptr<Waiter> waiter);

}  // namespace platform::postgres
