// The address of a server, read by the client library's own rules.
#pragma once

#include <QString>

namespace platform::postgres {

struct Address {
    QString host;      ///< several are separated by commas; empty or a folder for a server on this computer
    QString database;  ///< empty where the address names none
};

/// Whether the text means a server at all; also one in capitals, which the library can't read: a password in it must not
/// be stored as that of a file's name.
bool isAddress(const QString& text);

/// Throws cannotOpen where the library can't read it, or where it holds a secret: a password of the account or of a key.
/// The error never repeats the text.
Address readAddress(const QString& text);

}  // namespace platform::postgres
