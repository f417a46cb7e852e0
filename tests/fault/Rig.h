// Session and simulated mixer with a line between them that a test can spoil, all in virtual time, and a user who
// wants one batch after the other: he loads, starts, signs, and logs what is offered.
#pragma once

#include "SimulatedMixer.h"
#include "VirtualTime.h"
#include "mixer/MixSession.h"
#include "mixer/protocol/FrameDecoder.h"
#include "support/FixedClock.h"
#include "support/TempProgramFolder.h"

#include <QPointer>
#include <map>

namespace fault {

class Rig;

/// The program's end of the line.
class RigPort : public platform::SerialPort {
    Q_OBJECT

public:
    explicit RigPort(Rig& rig);
    ~RigPort() override;
    bool open(const QString& path, int baudRate) override;
    bool isOpen() const override { return m_open; }
    void close() override { m_open = false; }
    bool write(const QByteArray& bytes) override;
    QString errorText() const override { return {}; }

    void arrive(const QByteArray& bytes);
    void pull();

private:
    Rig& m_rig;
    bool m_open = false;
};

class Rig {
public:
    explicit Rig(VirtualTime& time);
    ~Rig();
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

    /// Gets every frame that is to cross the line, and hands on what of it arrives, when it does.
    using Hand = std::function<void(const QByteArray& arriving)>;
    std::function<void(sorvanto::protocol::Direction, const QByteArray& frame, const Hand& hand)> carry;

    /// The plug is out for so long, from the next moment on.
    void unplug(int milliseconds);
    /// The program dies in the next moment, and is started again.
    void kill();
    /// The mixer loses its power for a moment.
    void restartMixer();
    /// Runs the thing after so long, as long as the rig lives.
    void later(int milliseconds, const std::function<void()>& thing);

    /// One batch, until it is in the log. False when it takes longer than an hour of virtual time.
    bool makeBatch();
    /// What was wrong: a frame that nobody sent was accepted, a result that is not the mixer's, a mix twice; and of all
    /// mixes in the end one that ran and is neither logged nor told of, or is told of as what it is not.
    QStringList wrongs() const;
    int accepted() const { return m_accepted; }
    int mixesRun() const { return m_mixer.preparations(); }
    int mixesLogged() const { return static_cast<int>(m_logged.size()); }
    int mixesWithoutResults() const { return static_cast<int>(m_withoutResults.size()); }
    /// Told as ended without results though they never ran: the mixer lost their programme, by its power or by a CLEAR or
    /// LOAD that came late, before their start arrived.
    int mixesToldInVain() const;
    /// Without that of the next formula, which may stand loaded already.
    int openJournals() const;
    /// Where session, link and mixer stand, as one text.
    QByteArray whereItStands() const;

private:
    friend class RigPort;
    void start();
    void noteWanted();
    void actAsUser();
    void handOver(const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results);
    void toMixer(const QByteArray& frame);
    void mixerHears(const QByteArray& bytes);
    void programHears(const QByteArray& bytes);
    void remember(const sorvanto::protocol::Frame& command, const sorvanto::protocol::Frame& reply);
    sorvanto::MixerEnvironment environment();

    VirtualTime& m_time;
    support::TempProgramFolder m_folder;
    support::FixedClock m_clock;
    QObject m_alive;  ///< of everything that was put off
    sorvanto::mixersim::SimulatedMixer m_mixer{{sorvanto::protocol::version, "SIM-2.1", "SV0426"}, 0};
    std::unique_ptr<sorvanto::MixSession> m_session;
    QPointer<RigPort> m_port;
    bool m_plugged = true;
    sorvanto::protocol::FrameDecoder m_atMixer{sorvanto::protocol::Direction::ToMixer};
    sorvanto::protocol::FrameDecoder m_atProgram{sorvanto::protocol::Direction::ToProgram};
    std::map<sorvanto::protocol::Direction, QSet<QByteArray>> m_sent;
    int m_accepted = 0;
    sorvanto::protocol::Programme m_heard;  ///< what the mixer took
    std::size_t m_heardSteps = 0;           ///< of so many
    std::map<sorvanto::protocol::MixId, sorvanto::protocol::Programme> m_wanted, m_run;
    std::map<sorvanto::protocol::MixId, int> m_preparations;
    QSet<int> m_logged;                                ///< preparation numbers
    QSet<sorvanto::protocol::MixId> m_withoutResults;  ///< told, and seen by the user
    QSet<sorvanto::protocol::MixId> m_cutOff;          ///< ran when the mixer lost its power
    QSet<sorvanto::protocol::MixId> m_forgotten;       ///< the mixer lost the programme, and tells of none
    int m_ids = 0;
    int m_batches = 0;
    QStringList m_wrongs;
};

}  // namespace fault
