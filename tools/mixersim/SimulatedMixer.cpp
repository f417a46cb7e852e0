// The device's side of the protocol, and the course of a mix.
#include "SimulatedMixer.h"

#include "MixClock.h"

#include <algorithm>

namespace sorvanto::mixersim {

using namespace protocol;

namespace {
constexpr std::size_t resultsKept = 8;
}

SimulatedMixer::SimulatedMixer(Identity identity, int preparations)
    : m_identity(std::move(identity)), m_preparations(preparations) {}

Frame SimulatedMixer::receive(const Frame& command) {
    if (m_lastCommand == command)
        return m_lastReply;
    m_lastReply = execute(command);
    m_lastCommand = command;
    return m_lastReply;
}

Frame SimulatedMixer::execute(const Frame& command) {
    if (readHello(command)) {
        m_greeted = true;
        return identityReply(command, m_identity);
    }
    if (!m_greeted)
        return refusalReply(command, "HELLO");
    if (command.kind == "STATUS")
        return statusReply(command, status());
    if (command.kind == "LOAD")
        return load(command);
    if (command.kind == "STEP")
        return takeStep(command);
    if (command.kind == "READ")
        return readBack(command);
    if (command.kind == "START")
        return start(command);
    if (command.kind == "PAUSE" || command.kind == "RESUME")
        return pauseOrResume(command);
    if (command.kind == "STOP")
        return stop(command);
    if (command.kind == "RESULT")
        return result(command);
    if (command.kind == "CLEAR")
        return clear(command);
    return refusalReply(command, "UNKNOWN");
}

Frame SimulatedMixer::load(const Frame& command) {
    const auto head = readLoad(command);
    if (!head)
        return refusalReply(command, "RANGE");
    if (m_state == MixerState::Fault)
        return refusalReply(command, "FAULT");
    if (m_state != MixerState::Idle && m_state != MixerState::Loaded)
        return refusalReply(command, "BUSY");
    std::tie(m_programme, m_stepsExpected) = *head;
    m_programme.steps.clear();
    m_state = MixerState::Idle;
    m_mixed = 0;
    return okReply(command);
}

Frame SimulatedMixer::takeStep(const Frame& command) {
    const auto numbered = readStep(command);
    if (!numbered)
        return refusalReply(command, "RANGE");
    const std::size_t number = static_cast<std::size_t>(numbered->first);
    if (m_state != MixerState::Idle || number != m_programme.steps.size() + 1 || number > m_stepsExpected)
        return refusalReply(command, "ORDER");
    m_programme.steps.push_back(numbered->second);
    if (std::exchange(m_misstore, false))
        m_programme.steps.back().mixRpm += 12;
    if (number == m_stepsExpected)
        m_state = MixerState::Loaded;
    return okReply(command);
}

Frame SimulatedMixer::readBack(const Frame& command) const {
    const auto number = readRead(command);
    if (!number)
        return refusalReply(command, "RANGE");
    if (m_state != MixerState::Loaded || static_cast<std::size_t>(*number) > m_programme.steps.size())
        return refusalReply(command, "ORDER");
    return *number == 0
               ? headReply(command, m_programme)
               : stepReply(command, *number, m_programme.steps[static_cast<std::size_t>(*number) - 1]);
}

Frame SimulatedMixer::start(const Frame& command) {
    const auto id = readMixId(command);
    if (!id)
        return refusalReply(command, "RANGE");
    const bool used =
        std::any_of(m_results.begin(), m_results.end(), [&](const MixResults& r) { return r.mix == *id; });
    if (used || (running() && *id == m_programme.id))
        return refusalReply(command, "USED");
    if (m_state != MixerState::Loaded || *id != m_programme.id)
        return refusalReply(command, "ORDER");
    if (m_emergencyStop)
        return refusalReply(command, "ESTOP");
    if (m_lidOpen)
        return refusalReply(command, "LID");
    m_state = MixerState::Mixing;
    m_reason = Reason::None;
    m_mixed = 0;
    m_preparation = ++m_preparations;
    if (onPreparation)
        onPreparation(m_preparations);
    return okReply(command);
}

Frame SimulatedMixer::pauseOrResume(const Frame& command) {
    if (!running())
        return refusalReply(command, "ORDER");
    if (command.kind == "PAUSE") {
        m_state = MixerState::Paused;
        m_reason = m_reason == Reason::None ? Reason::User : m_reason;
    } else if (m_lidOpen) {
        return refusalReply(command, "LID");
    } else {
        m_state = MixerState::Mixing;
        m_reason = Reason::None;
    }
    return okReply(command);
}

Frame SimulatedMixer::stop(const Frame& command) {
    if (m_state == MixerState::Done)
        return okReply(command);
    if (!running())
        return refusalReply(command, "ORDER");
    finish(true);
    return okReply(command);
}

Frame SimulatedMixer::result(const Frame& command) const {
    const auto id = readMixId(command);
    if (!id)
        return refusalReply(command, "RANGE");
    for (const MixResults& results : m_results) {
        if (results.mix == *id)
            return resultsReply(command, results);
    }
    return refusalReply(command, running() && m_programme.id == *id ? "BUSY" : "UNKNOWN");
}

Frame SimulatedMixer::clear(const Frame& command) {
    if (running())
        return refusalReply(command, "BUSY");
    if (m_emergencyStop)
        return refusalReply(command, "ESTOP");
    m_state = MixerState::Idle;
    m_reason = Reason::None;
    m_programme = {};
    m_stepsExpected = 0;
    return okReply(command);
}

void SimulatedMixer::advance(std::int64_t now) {
    const std::int64_t passed = now - std::exchange(m_now, now);
    if (m_state != MixerState::Mixing)
        return;
    m_mixed += passed;
    if (m_mixed >= totalMilliseconds(m_programme))
        finish(false);
}

void SimulatedMixer::finish(bool byUser) {
    const MixPosition position = positionAt(m_programme, m_mixed);
    m_results.push_back({m_programme.id, m_preparation, m_programme.jar, m_programme.type, position.cycles,
                         byUser, m_programme.preGrind, position.revolutions});
    if (m_results.size() > resultsKept)
        m_results.pop_front();
    m_state = MixerState::Done;
    m_reason = byUser ? Reason::User : Reason::None;
}

Status SimulatedMixer::status() const {
    Status s;
    s.state = m_state;
    s.reason = m_reason;
    s.mix = m_programme.id;
    s.steps = static_cast<int>(m_programme.steps.size());
    if (m_programme.steps.empty())
        return s;
    const std::int64_t total = totalMilliseconds(m_programme);
    s.secondsTotal = static_cast<int>((total + 999) / 1000);
    s.secondsLeft = m_state == MixerState::Done ? 0 : static_cast<int>((total - m_mixed + 999) / 1000);
    if (m_preparation > 0 && (running() || m_state == MixerState::Done || m_state == MixerState::Fault)) {
        const MixPosition position = positionAt(m_programme, m_mixed);
        s.step = position.step;
        s.cycles = position.cycles;
        if (m_state == MixerState::Mixing) {
            const Step& step = m_programme.steps[static_cast<std::size_t>(position.step) - 1];
            s.liftRpm = step.liftRpm;
            s.mixRpm = step.mixRpm;
        }
    }
    return s;
}

int SimulatedMixer::step() const { return running() ? positionAt(m_programme, m_mixed).step : 0; }

std::optional<std::int64_t> SimulatedMixer::untilChange() const {
    if (m_state != MixerState::Mixing)
        return std::nullopt;
    return positionAt(m_programme, m_mixed).stepEnds - m_mixed;
}

bool SimulatedMixer::running() const {
    return m_state == MixerState::Mixing || m_state == MixerState::Paused;
}

void SimulatedMixer::fail(Reason reason) {
    if (running())
        m_state = MixerState::Fault;
    m_reason = reason;
}

void SimulatedMixer::pressEmergencyStop() {
    m_emergencyStop = true;
    fail(Reason::EmergencyStop);
}

void SimulatedMixer::overload() { fail(Reason::Overload); }

void SimulatedMixer::openLid() {
    m_lidOpen = true;
    if (running()) {
        m_state = MixerState::Paused;
        m_reason = Reason::LidOpen;
    }
}

void SimulatedMixer::restart() {
    m_greeted = false;
    m_lastCommand.reset();
    m_state = MixerState::Idle;
    m_reason = Reason::None;
    m_programme = {};
    m_stepsExpected = 0;
    m_mixed = 0;
}

}  // namespace sorvanto::mixersim
