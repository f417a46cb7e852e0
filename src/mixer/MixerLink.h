// The conversation with one mixer: one command at a time, its reply awaited, repeated when it stays out,
// and a regular question for the state, so that a lost mixer is noticed.
#pragma once

#include "mixer/protocol/FrameDecoder.h"
#include "mixer/protocol/Messages.h"
#include "platform/serial/PortProbe.h"
#include "platform/serial/SerialPort.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

namespace sorvanto {

/// Milliseconds and counts.
struct LinkTiming {
    int reply = 300;        ///< wait for a reply before the command is repeated
    int tries = 4;          ///< sends of one command
    int idlePoll = 1000;    ///< between questions for the state
    int mixPoll = 250;      ///< the same while mixing
    int reopen = 1500;      ///< before a port that failed is tried again
    int missedForLost = 5;  ///< sends without reply, one after the other, that make the link lost
    int missedForStale = 2;
};

class MixerLink : public QObject {
    Q_OBJECT

public:
    enum class State {
        Closed,     ///< not wanted
        NoPort,     ///< the port can't be opened; tried again and again
        Searching,  ///< the port is open, no mixer has answered yet
        Connected,
    };
    /// Gets the reply, or nothing when none came. Not called any more once the link is lost or closed.
    using Answer = std::function<void(const std::optional<protocol::Frame>&)>;

    /// path is asked at each opening, since a link beside the program may come and go.
    MixerLink(std::unique_ptr<platform::SerialPort> port, std::function<QString()> path, LinkTiming timing,
              QObject* parent = nullptr);

    void open();
    void close();
    void send(const protocol::Frame& command, Answer answer);
    /// Asks for the state now and from now on at the pace of a running mix, or of an idle mixer.
    void setMixing(bool mixing);
    void askState();

    State state() const { return m_state; }
    /// Connected, but the last questions went unanswered.
    bool isStale() const;
    /// Searching has gone on for longer than a first answer takes.
    bool hasFailed() const { return m_failed; }
    QString path() const { return m_openPath; }
    /// Why the port can't be opened, in state NoPort.
    platform::PortState portTrouble() const { return m_portTrouble; }
    QString portErrorText() const { return m_port->errorText(); }
    const protocol::Identity& identity() const { return m_identity; }
    /// Time of the last reply; invalid before the first.
    QDateTime lastWord() const { return m_lastWord; }

signals:
    /// A mixer has answered: at first, after a loss, or after it restarted.
    void connected();
    void lost();
    void status(const sorvanto::protocol::Status& status);
    /// State, staleness or trouble may have changed.
    void changed();

private:
    struct Pending {
        protocol::Frame command;
        Answer answer;
        int triesLeft;
    };

    void tryOpen();
    void greet();
    void enqueue(const protocol::Frame& command, Answer answer, int tries);
    void sendNext();
    void sendCurrent();
    void replyStayedOut();
    void poll();
    void bytesRead(const QByteArray& bytes);
    void take(const protocol::Frame& reply);
    void lose();
    void dropCommands();
    void setState(State state);

    std::unique_ptr<platform::SerialPort> m_port;
    std::function<QString()> m_path;
    const LinkTiming m_timing;
    State m_state = State::Closed;
    platform::PortState m_portTrouble = platform::PortState::Present;
    QString m_openPath;
    protocol::Identity m_identity;
    protocol::FrameDecoder m_decoder{protocol::Direction::ToProgram};
    std::deque<Pending> m_queue;
    std::optional<Pending> m_current;
    std::uint8_t m_sequence;
    int m_missed = 0;
    bool m_failed = false;
    bool m_mixing = false;
    QDateTime m_lastWord;
    QTimer m_replyTimer, m_pollTimer, m_reopenTimer;
};

}  // namespace sorvanto
