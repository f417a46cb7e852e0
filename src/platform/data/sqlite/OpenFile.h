// Opens a database file with the settings that the program relies on.
#pragma once

#include <QString>
#include <memory>

struct sqlite3;

namespace platform::sqlite {

struct CloseHandle {
    void operator()(sqlite3* database) const;
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;

/// What a file is opened for: to work on it as far as its rights go, or to leave it as it is, whatever they are.
enum class OpenFor { Work, Reading };

/// Never creates a file. Reads header and schema, so that a file that is no database fails here; one that can't be
/// written is opened for reading. Throws cannotOpen or general.
Handle openHandle(const QString& path, OpenFor use = OpenFor::Work);

}  // namespace platform::sqlite
