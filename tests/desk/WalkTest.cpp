// A seeded walk of clicks, keys and mixer events, in the windows and in the model of them.
//   SORVANTO_WALK=100000 SORVANTO_SEED=7   a longer one, another one
#include "DeskWalk.h"

#include <iostream>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int usualSteps = 2'000;  // each takes several times as long
#else
constexpr int usualSteps = 10'000;
#endif

class WalkTest : public DeskWalk {};

TEST_F(WalkTest, TheWindowsDoWhatTheModelDoes) {
    const int steps = qEnvironmentVariableIntValue("SORVANTO_WALK");
    const int seed = qEnvironmentVariableIntValue("SORVANTO_SEED");
    const int walked = steps > 0 ? steps : usualSteps;
    walk(walked, static_cast<unsigned>(seed > 0 ? seed : 1));
    if (!HasFailure())
        std::cout << "walk: " << walked << " steps, seed " << (seed > 0 ? seed : 1) << ", " << windowsSeen
                  << " windows came up, " << mixesEnded << " mixes ended\n";
}

}  // namespace
