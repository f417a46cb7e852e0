// How a look through many records lets its caller do something else between two pieces, and end it.
#pragma once

#include <functional>
#include <utility>

namespace sorvanto {

/// Thrown by a look that was ended on its way: nothing of what it had found until then is given.
struct TraceEnded {};

class TracePace {
public:
    /// goesOn: asked between pieces of far less than a millisecond; false ends the look. None: nothing comes between.
    void set(std::function<bool()> goesOn) { m_goesOn = std::move(goesOn); }
    /// Between two pieces. Throws TraceEnded.
    void turn() const {
        if (m_goesOn && !m_goesOn())
            throw TraceEnded();
    }
    /// To be called for each row, comparison or other step that is too short for a turn of its own.
    void step() {
        if (++m_steps % stepsBetween == 0)
            turn();
    }

private:
    static constexpr unsigned stepsBetween = 64;
    std::function<bool()> m_goesOn;
    unsigned m_steps = 0;
};

}  // namespace sorvanto
