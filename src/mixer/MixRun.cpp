// The state machine of a mix. Every state is what the mixer last said, held against what this program
// knows of its own mixes; a lost or repeated word can therefore not lead it astray.
#include "mixer/MixRun.h"

namespace sorvanto {

using namespace protocol;

MixRun::MixRun(MixerLink& link, QObject* parent) : QObject(parent), m_link(link), m_transfer(link) {
    connect(&m_link, &MixerLink::connected, this, &MixRun::linkConnected);
    connect(&m_link, &MixerLink::lost, this, &MixRun::linkLost);
    connect(&m_link, &MixerLink::status, this, &MixRun::apply);
    connect(&m_transfer, &ProgrammeTransfer::verified, this, &MixRun::programmeVerified);
    connect(&m_transfer, &ProgrammeTransfer::refused, this, &MixRun::programmeRefused);
    connect(&m_link, &MixerLink::changed, this, [this] {
        if (m_link.state() == MixerLink::State::Closed)
            linkLost();
        emit changed();
    });
}

bool MixRun::isForeign() const {
    return (m_state == RunState::Mixing || m_state == RunState::Paused) && m_running.isEmpty();
}

bool MixRun::isBusy() const { return m_holding || m_starting || !m_running.isEmpty() || isForeign(); }

// ---- the link -------------------------------------------------------------------------------------

void MixRun::linkConnected() {
    m_transfer.giveUp();
    m_asked.clear();
    m_starting = m_displacing = m_acknowledging = false;
    m_verified.clear();
    m_displaced.clear();  // the mixer may have been without power, and have lost a mix that it ran
    m_unsettled = true;
    if (!m_running.isEmpty() && m_serial != m_link.identity().serial) {
        m_running
            .clear();  // another mixer has been put in its place; the first one will be asked when it is back
        m_wanted.reset();
    }
    m_link.askState();
}

void MixRun::linkLost() {
    m_transfer.giveUp();
    m_asked.clear();
    m_starting = m_displacing = m_acknowledging = false;
    m_verified.clear();
    m_link.setMixing(false);
    if (!m_holding)
        m_reached.reset();  // how far it comes meanwhile is not seen
    if (m_holding || m_state == RunState::Fault)
        return;
    const bool wasMixing = !m_running.isEmpty();
    set(RunState::Disconnected, wasMixing ? PanelMessage{PanelText::LostMixing, {}} : PanelMessage{});
}

void MixRun::apply(const Status& status) {
    m_status = status;
    const bool running = status.state == MixerState::Mixing || status.state == MixerState::Paused;
    m_link.setMixing(running);
    if (m_holding || m_starting)
        return;
    if (running)
        applyRunning(status);
    else if (status.state == MixerState::Done)
        applyEnded(status);
    else if (status.state == MixerState::Fault)
        applyFault(status);
    else
        applyAtRest(status);
    if (std::exchange(m_unsettled, false)) {
        for (const MixId& mix : std::as_const(m_watched)) {
            if (mix != m_running)
                askResults(mix);
        }
    }
    emit changed();
}

void MixRun::applyRunning(const Status& status) {
    m_running = m_watched.contains(status.mix) ? status.mix : MixId();
    m_serial = m_link.identity().serial;
    m_reached = status;
    if (m_running.isEmpty())
        set(status.state == MixerState::Paused ? RunState::Paused : RunState::Mixing,
            {PanelText::ForeignMix, {}});
    else if (status.state == MixerState::Mixing)
        set(RunState::Mixing, m_state == RunState::Mixing ? m_message : PanelMessage{});
    else if (status.reason == Reason::LidOpen)
        set(RunState::Paused,
            m_message.text == PanelText::ResumeLid ? m_message : PanelMessage{PanelText::LidOpened, {}});
    else
        set(RunState::Paused, m_state == RunState::Paused ? m_message : PanelMessage{});
}

void MixRun::applyEnded(const Status& status) {
    if (m_watched.contains(status.mix))
        askResults(status.mix);
    else
        clearMixer();
}

void MixRun::applyFault(const Status& status) {
    PanelText text = PanelText::FaultUnknown;
    if (status.reason == Reason::EmergencyStop)
        text = PanelText::EmergencyStop;
    else if (status.reason == Reason::Overload)
        text = PanelText::Overload;
    if (m_watched.contains(status.mix))
        abortMix(status.mix, text);
    else if (m_state != RunState::Fault)
        set(RunState::Fault, {text, {}});
}

void MixRun::applyAtRest(const Status& status) {
    if (m_state == RunState::Fault)
        return;  // until the user has seen it
    if (status.state == MixerState::Loaded && m_watched.contains(status.mix))
        return displace(status.mix);
    if (!m_running.isEmpty()) {
        askResults(m_running);
        return;
    }
    if (isSending())
        return;
    if (m_wanted && status.state == MixerState::Loaded && status.mix == m_wanted->id &&
        status.mix == m_verified) {
        if (m_state != RunState::Loaded)
            set(RunState::Loaded, m_notStarted);
    } else if (m_wanted) {
        set(RunState::Ready, m_notStarted);
        m_transfer.begin(*m_wanted);
    } else {
        set(RunState::Ready, m_state == RunState::Ready ? m_message : PanelMessage{});
        if (status.state == MixerState::Loaded)
            clearMixer();
    }
}

// ---- results --------------------------------------------------------------------------------------

void MixRun::askResults(const MixId& mix) {
    if (m_asked.contains(mix))
        return;
    m_asked.insert(mix);
    m_link.send(resultCommand(mix), [this, mix](const std::optional<Frame>& reply) {
        m_asked.remove(mix);
        takeResults(mix, reply);
    });
}

void MixRun::takeResults(const MixId& mix, const std::optional<Frame>& reply) {
    if (!reply)
        m_unsettled = true;  // asked again with the next word of the mixer
    if (!reply || !m_watched.contains(mix))
        return;
    if (const auto results = readResults(*reply); results && results->mix == mix) {
        const bool seen = mix == m_running;
        m_watched.remove(mix);
        if (seen) {
            m_running.clear();
            m_wanted.reset();
            m_holding = true;
            m_stopped = results->stoppedByUser;
            if (m_reached && m_reached->mix != mix)
                m_reached.reset();
            set(RunState::Done);
        }
        emit finished(*results, seen);
    } else if (readRefusal(*reply) == QByteArray("UNKNOWN")) {
        const bool displaced = m_displaced == mix && m_status.state == MixerState::Idle;
        displaced ? undoStart(mix) : abortMix(mix, PanelText::MixLost);
    }
}

void MixRun::abortMix(const MixId& mix, PanelText why) {
    const bool seen = mix == m_running;
    m_watched.remove(mix);
    if (seen) {
        m_running.clear();
        m_wanted.reset();
    }
    if (seen || why != PanelText::MixLost)
        set(RunState::Fault, {why, {}});
    emit aborted(mix);
}

void MixRun::release() {
    if (!m_holding)
        return;
    m_holding = false;
    if (m_link.state() != MixerLink::State::Connected) {
        set(RunState::Disconnected);
        return;
    }
    set(RunState::Ready);
    clearMixer();
}

void MixRun::clearMixer() {
    m_link.send(clearCommand(), [this](const std::optional<Frame>&) { m_link.askState(); });
}

// ---- the buttons ----------------------------------------------------------------------------------

void MixRun::simple(const Frame& command) {
    say({});
    m_link.send(command, [this](const std::optional<Frame>& reply) {
        if (!reply)
            say({PanelText::CommandUnanswered, {}});
        else if (readRefusal(*reply) == QByteArray("LID"))
            say({PanelText::ResumeLid, {}});
        m_link.askState();
    });
}

void MixRun::pause() {
    if (m_state == RunState::Mixing)
        simple(pauseCommand());
}

void MixRun::resume() {
    if (m_state == RunState::Paused)
        simple(resumeCommand());
}

void MixRun::stop() {
    if (m_state == RunState::Mixing || m_state == RunState::Paused)
        simple(stopCommand());
}

void MixRun::acknowledge() {
    if (m_state != RunState::Fault || m_acknowledging)
        return;
    if (m_link.state() != MixerLink::State::Connected) {
        set(RunState::Disconnected);
        return;
    }
    m_acknowledging = true;
    m_link.send(clearCommand(), [this](const std::optional<Frame>& reply) {
        m_acknowledging = false;
        if (!reply)
            say({PanelText::CommandUnanswered, {}});
        else if (readRefusal(*reply) == QByteArray("ESTOP"))
            say({PanelText::EmergencyHeld, {}});
        else
            set(RunState::Ready);
        m_link.askState();
    });
}

void MixRun::set(RunState state, PanelMessage message) {
    m_state = state;
    m_message = std::move(message);
    emit changed();
}

void MixRun::say(PanelMessage message) {
    m_message = std::move(message);
    emit changed();
}

}  // namespace sorvanto
