// The newest copy of a server's records, opened in its place, and how that is said.
#pragma once

#include <QString>

namespace sorvanto {

struct Context;
struct StandIn;

/// "Copy of sorvanto on records of 3/7/2026 2:05 PM, read only"
QString standInText(const StandIn& copy);

/// Makes openDB open the newest good copy of the server that the options name. Does nothing where they name none, and where
/// there is no such copy. Throws for an address in which a password stands.
void takeStandIn(Context& context);

}  // namespace sorvanto
