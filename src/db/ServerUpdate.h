// Records on a server brought up to date, by their owner and while no bench works on them.
#pragma once

#include "platform/data/Engine.h"

#include <QString>

namespace sorvanto {

/// Whether the account of an open server owns the tables: it alone updates, fills, archives and forgets.
bool ownsTables(platform::Engine& records);

struct ServerUpdate {
    QString from, to;  ///< versions of the records; the same where nothing was to be done
};

/// address: of the server, for the account that owns the tables. updateFile: see UpdateFile; its steps for a server are done
/// all together, or none of them. Throws permissionDenied for an account that may not, and as long as benches are at work,
/// which the error names; otherwise as Connection::open and readUpdateFile.
ServerUpdate updateServer(const QString& address, const QString& updateFile);

}  // namespace sorvanto
