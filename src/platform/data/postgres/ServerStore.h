// What the parts of the engine share: the connection, the catalogue, and how the dialect is written for them.
#pragma once

#include "platform/data/postgres/Catalogue.h"
#include "platform/data/postgres/ServerWords.h"
#include "platform/data/postgres/Session.h"

#include <memory>
#include <utility>

namespace platform::postgres {

struct ServerStore {
    ServerStore(const QString& address, std::shared_ptr<Waiter> waiter)
        : session(address, std::move(waiter)) {
        catalogue.read(session);
    }

    Session session;
    Catalogue catalogue;
    ServerWords words{catalogue};
    bool refusesChanges = false;
    std::int64_t spansTakenBack = 0;
};

}  // namespace platform::postgres
