// All rows of a server as they are stored.
#pragma once

#include "platform/data/WholeStore.h"

namespace platform::postgres {

/// One moment of the records. Throws as openServer. cancelled: also asked while the server lets wait, and a read that is ended
/// so throws.
std::unique_ptr<WholeStore> readWholeServer(const QString& address, const Cancelled& cancelled = {});

/// To be filled: nobody else reads or writes the records until the commit, and their triggers rest. Throws permissionDenied
/// where somebody is at work on them, or where the address is not that of the owner.
std::unique_ptr<WholeStore> fillWholeServer(const QString& address);

}  // namespace platform::postgres
