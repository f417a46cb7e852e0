// The simulator's turn: bytes in, time on, bytes out.
#include "SimulatorLoop.h"

#include <algorithm>

namespace sorvanto::mixersim {
namespace {

constexpr qint64 lateBy = 700;        // ms; longer than the program waits for a reply
constexpr qint64 faultLasts = 1'500;  // ms; then the plug is in, the power on, the lid closed again

}  // namespace

SimulatorLoop::SimulatorLoop(SimulatedMixer& mixer, PseudoTerminal& terminal, FaultPlan plan, double speed)
    : m_mixer(mixer), m_terminal(terminal), m_plan(plan), m_spoiler(plan.fault), m_speed(speed) {
    m_clock.start();
    if (plan.fault == Fault::Misstored)
        m_mixer.misstoreNextStep();
}

bool SimulatorLoop::turn() {
    const QByteArray bytes = m_terminal.read(waitTime());
    m_mixer.advance(static_cast<std::int64_t>(static_cast<double>(m_clock.elapsed()) * m_speed));
    for (const protocol::Frame& command : m_decoder.feed(m_spoiler.toMixer(bytes)))
        answer(command);
    sendDue();
    const bool reached = m_mixer.step() > 0 && m_mixer.step() >= m_plan.step;
    if (m_plan.atStep() && !m_faultBegun && (reached || m_plan.step == 0))
        beginFault();
    if (m_faultBegun && !m_faultEnded && m_clock.elapsed() - m_faultSince >= faultLasts)
        endFault();
    if (m_terminal.isLeftLocked())
        return m_terminal.open();
    return m_terminal.isOpen() || m_faultBegun;
}

int SimulatorLoop::waitTime() const {
    qint64 wait = 25;
    if (!m_replies.empty())
        wait = std::min(wait, m_replies.front().due - m_clock.elapsed());
    if (const auto change = m_mixer.untilChange())
        wait = std::min(wait, static_cast<qint64>(static_cast<double>(*change) / m_speed) + 1);
    return static_cast<int>(std::max<qint64>(wait, 0));
}

void SimulatorLoop::answer(const protocol::Frame& command) {
    const bool dead = m_faultBegun &&
                      (m_plan.fault == Fault::Silent || (m_plan.fault == Fault::PowerLoss && !m_faultEnded));
    if (dead)
        return;
    const QByteArray bytes = m_spoiler.toProgram(protocol::encode(m_mixer.receive(command)));
    m_replies.push_back({m_clock.elapsed() + (m_spoiler.isLate() ? lateBy : 0), bytes});
}

void SimulatorLoop::sendDue() {
    while (!m_replies.empty() && m_replies.front().due <= m_clock.elapsed()) {
        m_terminal.write(m_replies.front().bytes);
        m_replies.pop_front();
    }
}

void SimulatorLoop::beginFault() {
    m_faultBegun = true;
    m_faultSince = m_clock.elapsed();
    switch (m_plan.fault) {
    case Fault::Unplugged:
    case Fault::Gone:
        m_terminal.close();
        break;
    case Fault::PowerLoss:
    case Fault::Reboot:
        m_mixer.restart();
        break;
    case Fault::EmergencyStop:
        m_mixer.pressEmergencyStop();
        break;
    case Fault::LidOpen:
        m_mixer.openLid();
        break;
    case Fault::Overload:
        m_mixer.overload();
        break;
    default:
        break;
    }
}

void SimulatorLoop::endFault() {
    m_faultEnded = true;
    switch (m_plan.fault) {
    case Fault::Unplugged:
        m_terminal.open();
        break;
    case Fault::EmergencyStop:
        m_mixer.releaseEmergencyStop();
        break;
    case Fault::LidOpen:
        m_mixer.closeLid();
        break;
    default:
        break;
    }
}

}  // namespace sorvanto::mixersim
