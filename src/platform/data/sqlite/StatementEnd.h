// Where a statement in the engine's own words ends.
#pragma once

#include <QByteArray>

namespace platform::sqlite {

/// Whether the text ends with a whole statement: the body of a trigger holds semicolons of its own.
bool endsStatement(const QByteArray& text);

}  // namespace platform::sqlite
