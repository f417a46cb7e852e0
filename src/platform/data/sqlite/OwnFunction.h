// A function of the program, given to the engine's statements.
#pragma once

#include "platform/data/Engine.h"

struct sqlite3;

namespace platform::sqlite {

/// See Engine::addFunction.
void installFunction(sqlite3* database, const char* name, FunctionResult result, EngineFunction function);

}  // namespace platform::sqlite
