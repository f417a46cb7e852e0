// The course of a mix as an explicit state machine, fed by the mixer's replies and the user's buttons.
#pragma once

#include "mixer/MixerLink.h"
#include "mixer/PanelTexts.h"
#include "mixer/ProgrammeTransfer.h"

#include <QObject>
#include <QSet>
#include <functional>
#include <optional>

namespace sorvanto {

enum class RunState {
    Disconnected,  ///< no mixer answers; what it does is not known
    Ready,         ///< nothing is loaded, or a programme is on its way
    Loaded,        ///< the mixer has the programme, read back and compared
    Mixing,
    Paused,
    Done,   ///< ended with results, which the owner holds until release()
    Fault,  ///< ended without results, or the mixer reports a problem; until acknowledge()
};

class MixRun : public QObject {
    Q_OBJECT

public:
    explicit MixRun(MixerLink& link, QObject* parent = nullptr);

    RunState state() const { return m_state; }
    const protocol::Status& status() const { return m_status; }
    /// What the user should know or do; empty when nothing is out of the ordinary.
    const PanelMessage& message() const { return m_message; }
    /// A programme is being sent or read back, or one whose start was in vain is taken out of the mixer for it.
    bool isSending() const { return m_transfer.isActive() || m_displacing; }
    /// A programme waits for the mixer, is on its way or was taken; none behind one that the mixer refused.
    bool hasProgramme() const { return m_wanted.has_value(); }
    /// The mix that runs, or whose end is not known; empty when there is none.
    protocol::MixId running() const { return m_running; }
    /// The mixer's last word on a mix while it ran; nothing when its end was not followed without a gap.
    const std::optional<protocol::Status>& reached() const { return m_reached; }
    /// The mix that is held was stopped before its end.
    bool wasStopped() const { return m_holding && m_stopped; }
    /// The mixer runs a mix that this program did not start.
    bool isForeign() const;
    /// A mix is under way, held, ending, or can't be seen at the moment.
    bool isBusy() const;

    /// Sends the programme as soon as the mixer is ready for one; replaces one that was not started.
    /// Not while busy.
    void load(const protocol::Programme& programme);
    /// The same behind a start that was undone; why that one was in vain stays said.
    void loadAgain(const protocol::Programme& programme);
    /// Takes a programme that was not started out of the mixer.
    void unload();
    /// A mix that was started before, whose end this program has not seen.
    void watch(const protocol::MixId& mix) { m_watched.insert(mix); }
    void forget(const protocol::MixId& mix) { m_watched.remove(mix); }

    // The buttons. Each does nothing when the state has no use for it.
    void start();
    void pause();
    void resume();
    void stop();
    void acknowledge();
    /// The results have been handed on: the mixer may have its next programme.
    void release();

    /// Called before the start is sent; false keeps it from being sent.
    std::function<bool(const protocol::MixId&)> beforeStart;

signals:
    void changed();
    /// Once for each mix. seen: its running was followed here; else it ended while nobody looked.
    void finished(const sorvanto::protocol::MixResults& results, bool seen);
    /// The mix ended without results.
    void aborted(const sorvanto::protocol::MixId& mix);
    /// The mixer did not take the start and will not, however late a copy of it comes: the programme is out of it
    /// and has to be loaded anew, under another id.
    void startUndone(const sorvanto::protocol::MixId& mix);

private:
    void linkConnected();
    void linkLost();
    void apply(const protocol::Status& status);
    void applyRunning(const protocol::Status& status);
    void applyEnded(const protocol::Status& status);
    void applyAtRest(const protocol::Status& status);
    void applyFault(const protocol::Status& status);
    void askResults(const protocol::MixId& mix);
    void takeResults(const protocol::MixId& mix, const std::optional<protocol::Frame>& reply);
    void abortMix(const protocol::MixId& mix, PanelText why);

    void programmeVerified(const protocol::MixId& mix);
    void programmeRefused(const PanelMessage& why);
    void started(const std::optional<protocol::Frame>& reply);
    void displace(const protocol::MixId& mix);
    void undoStart(const protocol::MixId& mix);
    void simple(const protocol::Frame& command);
    void clearMixer();
    void set(RunState state, PanelMessage message = {});
    void say(PanelMessage message);

    MixerLink& m_link;
    ProgrammeTransfer m_transfer;
    RunState m_state = RunState::Disconnected;
    protocol::Status m_status;
    PanelMessage m_message;
    std::optional<protocol::Programme> m_wanted;  ///< to be sent, or being sent
    protocol::MixId m_verified;                   ///< of the programme the mixer holds, compared
    protocol::MixId m_running;
    QByteArray m_serial;  ///< of the mixer that runs it
    QSet<protocol::MixId> m_watched;
    QSet<protocol::MixId> m_asked;  ///< results asked for, not answered yet
    bool m_unsettled = false;       ///< mixes of earlier are still to be asked for
    bool m_starting = false;
    bool m_displacing = false;    ///< LOAD is on its way to where a started programme stands
    protocol::MixId m_displaced;  ///< it stood loaded behind its start, as far as the mixer was heard since
    PanelMessage m_notStarted;    ///< why the last start was in vain, until the next one
    bool m_holding = false;       ///< results are with the owner
    bool m_acknowledging = false;
    std::optional<protocol::Status> m_reached;
    bool m_stopped = false;
};

}  // namespace sorvanto
