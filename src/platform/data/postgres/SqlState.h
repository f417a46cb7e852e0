// The numbers of failures by a server's five characters, so that they mean what they mean for a file.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <cstdint>

namespace platform::postgres {

struct Failure {
    std::int32_t number;
    const char* text;  ///< before the server's own words
};

/// Of a statement. An empty state, and one that nobody knows, is a line that has failed: it is not known then whether
/// the statement was carried out.
Failure failureOf(QByteArrayView state);

/// On opening: no such host, database or account, or a wrong password, is cannotOpen; a server that is not ready, or has
/// none of the tables, is general.
Failure openFailureOf(QByteArrayView state);

/// What the client library says of a failed opening, without the hints behind it: of several addresses that it tried the
/// last.
QByteArray lastAttempt(const QByteArray& words);

/// The five characters at the end of what the client library says of a refusal when it is to say no more
/// (PQERRORS_SQLSTATE), in whatever language; empty where the server has not spoken.
QByteArray stateAtEnd(const QByteArray& words);

}  // namespace platform::postgres
