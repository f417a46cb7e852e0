// The address of a server in the parts that a person knows, and put together again.
#pragma once

#include <QString>

namespace platform::postgres {

struct AddressParts {
    QString computer;  ///< its name; a folder for the socket of a server on this computer
    QString port;      ///< digits; empty for the usual one
    QString database;
    QString account;  ///< the role on the server
    QString
        certificate;  ///< file with the certificate that the server is held against; empty for the account's own
    QString others;  ///< whatever else the address names ("service=sorvanto"), as it stands behind the "?"

    bool operator==(const AddressParts&) const = default;
};

/// Why a text is no address to keep.
enum class AddressFault {
    None,
    Unreadable,
    Secret,  ///< it can be read, and holds the password of an account or of a key
};
AddressFault faultOf(const QString& address);

/// Throws as readAddress does.
AddressParts partsOf(const QString& address);

/// The text for DataLocation, each part written so that it is read back as it was, whatever it holds.
QString addressOf(const AddressParts& parts);

}  // namespace platform::postgres
