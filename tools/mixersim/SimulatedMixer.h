// The device itself, without a line: takes command frames, gives reply frames, and mixes in simulated time.
#pragma once

#include "mixer/protocol/Messages.h"

#include <deque>
#include <functional>
#include <optional>

namespace sorvanto::mixersim {

/// Time is handed in from outside, in milliseconds of the device's own time, and never runs back.
class SimulatedMixer {
public:
    /// preparations: the number of mixes made in the device's life so far.
    SimulatedMixer(protocol::Identity identity, int preparations);

    /// The reply to a command. A repeated frame gets the same reply again and is not executed.
    protocol::Frame receive(const protocol::Frame& command);
    /// Lets the mix run on to that time.
    void advance(std::int64_t now);

    protocol::MixerState state() const { return m_state; }
    /// The step that runs or in which the mix stands, from 1; 0 when none does.
    int step() const;
    int preparations() const { return m_preparations; }
    /// Milliseconds until the running step or mix ends by itself; nothing when no mix runs.
    std::optional<std::int64_t> untilChange() const;

    // What befalls a device.
    void pressEmergencyStop();
    void releaseEmergencyStop() { m_emergencyStop = false; }
    void openLid();
    void closeLid() { m_lidOpen = false; }
    void overload();
    /// Power off and on: programme and running mix are gone, the counter and the results are kept.
    void restart();
    /// Stores the next step it is sent with a wrong speed.
    void misstoreNextStep() { m_misstore = true; }

    /// Told when the counter goes up, so that it can be kept.
    std::function<void(int)> onPreparation;

private:
    using Frame = protocol::Frame;

    Frame execute(const Frame& command);
    Frame load(const Frame& command);
    Frame takeStep(const Frame& command);
    Frame readBack(const Frame& command) const;
    Frame start(const Frame& command);
    Frame pauseOrResume(const Frame& command);
    Frame stop(const Frame& command);
    Frame result(const Frame& command) const;
    Frame clear(const Frame& command);
    protocol::Status status() const;
    void finish(bool byUser);
    void fail(protocol::Reason reason);
    bool running() const;

    protocol::Identity m_identity;
    int m_preparations;
    bool m_greeted = false;
    std::optional<Frame> m_lastCommand;
    Frame m_lastReply;

    protocol::MixerState m_state = protocol::MixerState::Idle;
    protocol::Reason m_reason = protocol::Reason::None;
    protocol::Programme m_programme;
    std::size_t m_stepsExpected = 0;
    std::int64_t m_now = 0;
    std::int64_t m_mixed = 0;  ///< milliseconds of the programme that have run
    int m_preparation = 0;     ///< number of the mix that runs
    std::deque<protocol::MixResults> m_results;
    bool m_emergencyStop = false;
    bool m_lidOpen = false;
    bool m_misstore = false;
};

}  // namespace sorvanto::mixersim
