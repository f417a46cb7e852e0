// What must not be interrupted by anything that the program does of itself: long work between two of its pieces, and a
// statement whose answer is waited for. An event loop runs inside both.
#pragma once

#include <functional>

class QObject;

namespace platform {

/// While one lives, something is under way.
class UnderWay {
public:
    UnderWay();
    ~UnderWay();
    UnderWay(const UnderWay&) = delete;
    UnderWay& operator=(const UnderWay&) = delete;

    static bool any();
};

/// Runs it from the event loop, as soon as nothing is under way; never where the receiver has gone before. For what asks
/// for records: a posted call would run inside a wait, where each statement is refused.
void whenIdle(QObject& receiver, std::function<void()> action);

}  // namespace platform
