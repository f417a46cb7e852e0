// The walk of clicks, keys and mixer events: whatever happens in the waits for a server, the windows and the records are what
// the model says.
//   SORVANTO_WALK=2000 SORVANTO_SEED=7   a longer one, another one
#include "../desk/DeskWalk.h"
#include "Disturber.h"

#include <algorithm>
#include <iostream>

using namespace Qt::StringLiterals;

namespace {

class WaitWalkTest : public DeskWalk {
protected:
    WaitWalkTest() { line.likeASocket = true; }
    bool wantsEndInAWait() override { return m_random() % 2 == 0; }

    std::mt19937 m_random{1};
};

TEST_F(WaitWalkTest, WhateverHappensInAWait) {
    constexpr int usualSteps = 40, longSteps = 600;
    const bool isLong = qEnvironmentVariableIntValue("SORVANTO_LONG") != 0;
    const int wanted = qEnvironmentVariableIntValue("SORVANTO_WALK");
    const int steps = wanted > 0 ? wanted : isLong ? longSteps : usualSteps;
    const int seed = std::max(1, qEnvironmentVariableIntValue("SORVANTO_SEED"));
    Disturber::current().also = [this] { endsInAWait(); };
    walk(steps, static_cast<unsigned>(seed));
    std::cout << "walk: " << steps << " steps, seed " << seed << ", " << mixesEnded << " mixes ended\n";
}

}  // namespace
