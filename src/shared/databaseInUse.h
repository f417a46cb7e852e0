// The database that the program works on, as a path or an address that can be compared.
#pragma once

#include <QString>

namespace sorvanto {

struct Context;

/// A path with "/" and without links, or the address of a server; empty when the options name none, or an address that may
/// not be stored. Never throws.
QString databaseInUse(const Context& context);
/// The file as the options name it; empty with a server, around which there is nothing to look for. Never throws.
QString databaseFile(const Context& context);
/// The file or server that is open at this moment, which the options may no longer name; empty when none is. Never throws.
QString databaseOpen(const Context& context);
/// What every copy of the open file has in common; empty where it has none, no file is open, or its server is away. Never throws.
QString databaseIdentity(const Context& context);
/// Whether these name the database in use: by the identity, or by the path where either has no identity.
bool isDatabaseInUse(const Context& context, const QString& path, const QString& identity);

}  // namespace sorvanto
