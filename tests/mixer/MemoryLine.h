// A serial line in memory with a simulated mixer at its other end.
//   line.mixer        the device; line.now its clock in milliseconds (moved by the test)
//   line.answers      false: commands arrive, no reply comes back
//   line.arrives      false: commands do not even arrive
//   line.present      false: the port can't be opened
//   line.loseReplies  number of the next replies to lose
//   line.likeASocket  replies come by a timer, which does not run while the program waits for a server
//   line.alter        changes a reply on its way
//   line.cut()        the plug is pulled
//   line.transcript   every frame both ways, one a line; a lost reply is marked
#pragma once

#include "SimulatedMixer.h"

#include "mixer/MixSession.h"
#include "mixer/protocol/FrameDecoder.h"
#include "platform/serial/SerialPort.h"
#include "support/Waiting.h"

namespace sorvanto::test {

using namespace Qt::StringLiterals;

/// Outlives the control that uses it; its ports come and go.
struct MemoryLine {
    mixersim::SimulatedMixer mixer{{protocol::version, "SIM-2.1", "SV0426"}, 11};
    std::int64_t now = 0;
    bool answers = true;
    bool arrives = true;
    bool present = true;
    bool likeASocket = false;
    int loseReplies = 0;
    std::function<void(protocol::Frame& reply)> alter;
    QStringList transcript;
    platform::SerialPort* port = nullptr;

    void run(std::int64_t milliseconds) { mixer.advance(now += milliseconds); }
    void cut();
    /// Times of a few milliseconds, ids "00000001", "00000002" ...
    MixerEnvironment environment();
    int mixIds = 0;
};

class MemoryPort : public platform::SerialPort {
    Q_OBJECT

public:
    explicit MemoryPort(MemoryLine& line) : m_line(line) {}
    ~MemoryPort() override;
    bool open(const QString& path, int baudRate) override;
    bool isOpen() const override { return m_open; }
    void close() override { m_open = false; }
    bool write(const QByteArray& bytes) override;
    QString errorText() const override { return m_line.present ? QString() : u"no such port"_s; }

private:
    void arrive(const QByteArray& reply);

    MemoryLine& m_line;
    bool m_open = false;
    protocol::FrameDecoder m_decoder{protocol::Direction::ToMixer};
};

/// Lets events happen until the condition holds, soon where it does soon. False when it never did.
template <class Condition>
bool waitFor(Condition condition) {
    constexpr int quickTurns = 50;  // most of what is waited for is a few turns of the loop away
    for (int turn = 0; turn < quickTurns; ++turn) {
        if (condition())
            return true;
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return support::waitFor(condition);
}

/// A formula document as the program makes it.
platform::XmlDocumentPtr formulaDocument(const QString& customMix, int type = 9, int jar = 7, int make = 250,
                                         const QString& name = u"Hydrocortisone 1% Cream"_s);
/// Two steps: ten seconds, and two cycles.
platform::XmlDocumentPtr shortFormula();
inline constexpr const char* shortMix =
    R"(<CustomMix PreGrind="2" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="1200" MixTime="00:00:10" Cycles="0"/>)"
    R"(<Mix LiftRPM="1440" MixRPM="1992" MixTime="00:00:00" Cycles="2"/></CustomMix>)";

}  // namespace sorvanto::test
