// What the parts of the engine share: the connection, the catalogue, and how the dialect is written for them.
#pragma once

#include "platform/data/postgres/Catalogue.h"
#include "platform/data/postgres/ServerWords.h"
#include "platform/data/postgres/Session.h"

namespace platform::postgres {

struct ServerStore {
    explicit ServerStore(const QString& address) : session(address) { catalogue.read(session); }

    Session session;
    Catalogue catalogue;
    ServerWords words{catalogue};
    bool refusesChanges = false;
};

}  // namespace platform::postgres
