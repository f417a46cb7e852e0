// The database that the program works on, as a path that can be compared.
#pragma once

#include <QString>

namespace sorvanto {

struct Context;

/// With "/" and without links; empty when the options name none. Never throws.
QString databaseInUse(const Context& context);
/// The file that is open at this moment, which the options may no longer name; empty when none is. Never throws.
QString databaseOpen(const Context& context);
/// What every copy of the open file has in common; empty where it has none or no file is open. Never throws.
QString databaseIdentity(const Context& context);
/// Whether these name the database in use: by the identity, or by the path where either has no identity.
bool isDatabaseInUse(const Context& context, const QString& path, const QString& identity);

}  // namespace sorvanto
