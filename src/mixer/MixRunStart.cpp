// The programme on its way into the mixer, and its start.
#include "mixer/MixRun.h"

namespace sorvanto {

using namespace protocol;

void MixRun::load(const Programme& programme) {
    m_notStarted = {};
    loadAgain(programme);
}

void MixRun::loadAgain(const Programme& programme) {
    m_transfer.giveUp();
    m_wanted = programme;
    m_verified.clear();
    if (m_state == RunState::Loaded || m_state == RunState::Ready)
        set(RunState::Ready, m_notStarted);
    if (m_state == RunState::Ready)
        m_link.askState();
}

void MixRun::unload() {
    if (isBusy())
        return;
    m_transfer.giveUp();
    m_wanted.reset();
    m_verified.clear();
    if (m_state == RunState::Loaded || m_state == RunState::Ready) {
        set(RunState::Ready);
        m_link.askState();
    }
}

void MixRun::programmeVerified(const MixId& mix) {
    m_verified = mix;
    set(RunState::Loaded, m_notStarted);
    m_link.askState();
}

void MixRun::programmeRefused(const PanelMessage& why) {
    m_wanted.reset();
    set(RunState::Ready, why);
    clearMixer();
}

// ---- the start ------------------------------------------------------------------------------------

void MixRun::start() {
    if (m_state != RunState::Loaded || m_starting || m_holding || !m_wanted)
        return;
    const MixId mix = m_wanted->id;
    if (beforeStart && !beforeStart(mix))
        return;
    m_running = mix;
    m_serial = m_link.identity().serial;
    m_watched.insert(mix);
    m_notStarted = {};
    m_starting = true;
    m_link.send(startCommand(mix), [this](const std::optional<Frame>& reply) { started(reply); });
    say({});
}

void MixRun::started(const std::optional<Frame>& reply) {
    m_starting = false;
    const auto refusal = reply ? readRefusal(*reply) : std::nullopt;
    if (!refusal || *refusal == "USED") {
        m_link.askState();
        return;
    }
    m_notStarted = {PanelText::StartRefused, {QString::fromLatin1(*refusal)}};
    if (*refusal == "LID")
        m_notStarted = {PanelText::StartLid, {}};
    else if (*refusal == "ESTOP")
        m_notStarted = {PanelText::StartEmergency, {}};
    displace(m_running);
}

// A copy of the start may still be under way, and would start a programme that stands loaded at any later time. So
// it is never left standing: the head of a programme takes its place, without steps to follow. LOAD is the command
// for this since a mixer that runs the mix, or has ended it meanwhile, refuses it.
void MixRun::displace(const MixId& mix) {
    if (m_displacing)
        return;
    m_displacing = true;
    m_displaced = m_running = mix;
    m_serial = m_link.identity().serial;
    if (m_notStarted.empty() && m_wanted && m_wanted->id == mix)
        m_notStarted = {PanelText::CommandUnanswered, {}};
    set(RunState::Ready, m_notStarted);
    Programme head;
    head.id = mix;
    head.jar = 1;
    head.steps.resize(mostSteps);
    m_link.send(loadCommand(head), [this](const std::optional<Frame>& reply) {
        m_displacing = false;
        if (reply && isOk(*reply))
            m_link.askState();  // else with the mixer's next word
    });
}

void MixRun::undoStart(const MixId& mix) {
    m_watched.remove(mix);
    if (m_wanted && m_wanted->id == mix)
        m_wanted.reset();
    if (m_running == mix) {
        m_running.clear();
        set(RunState::Ready, m_notStarted);
    }
    emit startUndone(mix);
    m_link.askState();
}

}  // namespace sorvanto
