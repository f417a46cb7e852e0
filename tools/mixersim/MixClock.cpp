// The course of a programme over time.
#include "MixClock.h"

#include <algorithm>

namespace sorvanto::mixersim {

std::int64_t cycleMilliseconds(int liftRpm) { return 120LL * 60'000 / std::max(1, liftRpm); }

std::int64_t stepMilliseconds(const protocol::Step& step) {
    return step.seconds > 0 ? step.seconds * 1000LL : step.cycles * cycleMilliseconds(step.liftRpm);
}

std::int64_t totalMilliseconds(const protocol::Programme& programme) {
    std::int64_t total = 0;
    for (const protocol::Step& step : programme.steps)
        total += stepMilliseconds(step);
    return total;
}

MixPosition positionAt(const protocol::Programme& programme, std::int64_t milliseconds) {
    MixPosition position;
    std::int64_t cycles = 0, revolutions = 0;
    for (const protocol::Step& step : programme.steps) {
        const std::int64_t begins = position.stepEnds;
        const std::int64_t run = std::clamp<std::int64_t>(milliseconds - begins, 0, stepMilliseconds(step));
        ++position.step;
        position.stepEnds = begins + stepMilliseconds(step);
        cycles += run / cycleMilliseconds(step.liftRpm);
        revolutions += run * step.mixRpm / 60'000;
        if (milliseconds < position.stepEnds)
            break;
    }
    position.cycles = static_cast<int>(cycles);
    position.revolutions = static_cast<int>(revolutions);
    return position;
}

}  // namespace sorvanto::mixersim
