// How long a programme takes, and how far it is after a while.
#pragma once

#include "mixer/protocol/Messages.h"

#include <cstdint>

namespace sorvanto::mixersim {

/// Where a mix stands.
struct MixPosition {
    int step = 0;  ///< from 1
    int cycles = 0;
    int revolutions = 0;
    std::int64_t stepEnds = 0;  ///< milliseconds of the programme at which the step ends
};

/// One lifting cycle at that speed: the arm goes down and up with 120 turns of its screw.
std::int64_t cycleMilliseconds(int liftRpm);
std::int64_t stepMilliseconds(const protocol::Step& step);
std::int64_t totalMilliseconds(const protocol::Programme& programme);
/// After that many milliseconds; at or past the end the last step with everything done.
MixPosition positionAt(const protocol::Programme& programme, std::int64_t milliseconds);

}  // namespace sorvanto::mixersim
