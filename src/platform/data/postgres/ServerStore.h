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

    /// Another number after each change by this connection, also after one was taken back.
    std::int64_t ownChanges() const { return session.changesMade() + spansTakenBack; }

    Session session;
    Catalogue catalogue;
    ServerWords words{catalogue};
    bool refusesChanges = false;
    std::int64_t spansTakenBack = 0;
    int readAhead = 0;  ///< the number of the one that has begun
};

}  // namespace platform::postgres
