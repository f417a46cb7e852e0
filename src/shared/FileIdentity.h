// What tells one database file from every other one, and how often it was changed.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace platform {
class Connection;
}

namespace sorvanto {

struct FileIdentity {
    QString identity;          ///< 32 hexadecimal digits, kept by every copy of the file
    QString parent;            ///< for an archive, the identity of the file it was taken from
    std::int64_t changes = 0;  ///< rows made, changed and deleted since the file got its identity
};

/// Nothing for a file older than version 1.1, and for one that can't be read.
std::optional<FileIdentity> readFileIdentity(const platform::Connection& connection);

/// The same, for whoever does not need the count of changes, which may be that of an earlier moment: a server is asked once.
std::optional<FileIdentity> knownFileIdentity(const platform::Connection& connection);

}  // namespace sorvanto
