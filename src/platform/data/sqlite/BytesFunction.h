// A function of the program, given to the engine's statements.
#pragma once

#include "platform/data/Engine.h"

struct sqlite3;

namespace platform::sqlite {

/// Any number of values; see Engine::addFunction.
void installBytesFunction(sqlite3* database, const char* name, BytesFunction function);

}  // namespace platform::sqlite
