// The comparison Like of the dialect, for the engine.
#pragma once

struct sqlite3;

namespace platform::sqlite {

/// Puts LikePattern in the place of the engine's own LIKE on this connection.
void installLike(sqlite3* database);

}  // namespace platform::sqlite
