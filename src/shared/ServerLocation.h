// A server in the place of the database's file. It can be tried by now; the records are still kept in a file.
#pragma once

#include <QString>

namespace sorvanto {

/// Whether the location of the records names a server.
bool isServerLocation(const QString& location);

/// A sentence for the user: why a server can't be the location of the records, and what to do.
QString serverNotYet();

}  // namespace sorvanto
