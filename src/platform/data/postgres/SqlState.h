// The numbers of failures by a server's five characters, so that they mean what they mean for a file.
#pragma once

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

}  // namespace platform::postgres
