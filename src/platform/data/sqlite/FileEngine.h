// The engine of one database file.
#pragma once

#include "platform/data/Engine.h"
#include "platform/data/sqlite/OpenFile.h"

#include <memory>

namespace platform::sqlite {

/// Never creates a file. Reads header and schema, so that a file that is no database fails here. Throws cannotOpen
/// or general.
std::unique_ptr<Engine> openFile(const QString& path, OpenFor use = OpenFor::Work);

/// How the dialect's words are written for this engine.
const EngineWords& fileWords();

/// A database in memory, made by these statements; nothing of it is kept.
std::unique_ptr<Engine> inMemory(const QByteArray& statements);

/// The engine's handle, for what looks at the engine itself. Null for an engine of another kind.
sqlite3* handleOf(const Engine& engine);

}  // namespace platform::sqlite
