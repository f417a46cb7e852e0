// The connection to a server as the program keeps it: waits that the user sees and can end, and a look after the line while
// nobody uses it. For a file nothing of it ever happens.
#pragma once

#include <QString>

namespace sorvanto {

struct Context;

/// To be called before the connection of the context is opened at that location; ends with that connection.
void watchServer(const Context& context, const QString& location);

}  // namespace sorvanto
