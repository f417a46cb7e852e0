// A table by state or by its class, the two characters in front; the longer one counts.
#include "platform/data/postgres/SqlState.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <array>

namespace platform::postgres {

namespace {

struct Known {
    QByteArrayView state;  ///< five characters, or the first two or three
    Failure failure;
};

constexpr Failure related{error::general, "The record is related to records of another table"};
constexpr Failure unfit{error::dataMismatch, "A value does not fit its column"};
constexpr Failure busy{error::permissionDenied, "The records are in use by another program"};
constexpr Failure overtaken{error::permissionDenied, "Another bench has changed the records meanwhile"};
constexpr Failure refused{error::permissionDenied, "The records can't be changed"};
constexpr Failure full{error::permissionDenied, "The server takes no more connections"};
constexpr Failure noRoom{error::diskFull, "The server's disk is full"};
constexpr Failure lineLost{error::deviceIo, "The server can't be reached"};
constexpr Failure wrong{error::statement, "The statement failed"};

/// The longer ones first.
constexpr std::array known{Known{"23503", related},
                           Known{"23001", related},
                           Known{"42804", unfit},
                           Known{"22012", {error::divisionByZero, "Division by zero"}},
                           Known{"DX006", {error::overflow, "Overflow"}},
                           Known{"55P03", busy},
                           Known{"57014", busy},
                           Known{"40P01", busy},
                           Known{"40001", overtaken},
                           Known{"25006", refused},
                           Known{"42501", refused},
                           Known{"53300", full},
                           Known{"53100", noRoom},
                           Known{"57P", lineLost},
                           Known{"23", unfit},
                           Known{"22", unfit},
                           Known{"08", lineLost},
                           Known{"58", lineLost},
                           Known{"XX", lineLost}};

constexpr qsizetype stateLength = 5;

}  // namespace

Failure failureOf(QByteArrayView state) {
    if (state.size() != stateLength)
        return lineLost;
    const auto found = std::find_if(known.begin(), known.end(),
                                    [&](const Known& one) { return state.startsWith(one.state); });
    return found == known.end() ? wrong : found->failure;
}

Failure openFailureOf(QByteArrayView state) {
    const bool notReady = state.startsWith("57P") || state.startsWith("53") || state == "42P01";
    if (notReady)
        return {error::general, "The server is not ready, or has none of the tables"};
    return {error::cannotOpen, "The server can't be opened"};
}

/// Each attempt has a line that begins in the same words of whatever language; hints begin otherwise.
QByteArray lastAttempt(const QByteArray& words) {
    constexpr qsizetype beginning = 12;
    const QByteArrayList lines = words.trimmed().split('\n');
    const auto last = std::find_if(lines.rbegin(), lines.rend(), [&](const QByteArray& line) {
        return line.startsWith(lines.front().left(beginning));
    });
    return last->trimmed();
}

QByteArray stateAtEnd(const QByteArray& words) {
    const QByteArray last = words.mid(words.lastIndexOf(':') + 1).trimmed();
    const bool isState = last.size() == stateLength && std::all_of(last.begin(), last.end(), [](char letter) {
                             return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z');
                         });
    return isState ? last : QByteArray();
}

}  // namespace platform::postgres
