// What the frames say: the commands of the program, the replies of the mixer, and the values they carry.
#pragma once

#include "mixer/protocol/Frame.h"

#include <QByteArray>
#include <optional>
#include <vector>

namespace sorvanto::protocol {

inline constexpr int version = 1;
inline constexpr int mostSteps = 16;
inline constexpr int highestLiftRpm = 2880;
inline constexpr int highestMixRpm = 3000;
inline constexpr int longestStepSeconds = 3600;
inline constexpr int mostCycles = 255;

/// Eight hexadecimal digits that the program makes for every programme it sends.
using MixId = QByteArray;
bool isMixId(const QByteArray& text);

/// A step runs for a time or for a number of cycles; the other of the two is 0.
struct Step {
    int liftRpm = 0;
    int mixRpm = 0;
    int seconds = 0;
    int cycles = 0;
    bool operator==(const Step&) const = default;
};

struct Programme {
    MixId id;
    int type = 0;      ///< 0 to 9
    int jar = 0;       ///< 1 to 9
    int quantity = 0;  ///< -32768 to 32767, for the mixer's own display
    int preGrind = 0;  ///< 0 to 15
    int freeSpin = 1;  ///< 1 to 16
    std::vector<Step> steps;
    bool operator==(const Programme&) const = default;
};

struct Identity {
    int protocolVersion = version;
    QByteArray hardware;  ///< as "2.1"; begins with "SIM" when it is no real mixer
    QByteArray serial;    ///< two capital letters and four digits, as "SV0426"
    bool simulated() const { return hardware.startsWith("SIM"); }
    bool operator==(const Identity&) const = default;
};

enum class MixerState { Idle, Loaded, Mixing, Paused, Done, Fault };
/// Why the mixer is paused or in fault, or why a mix ended.
enum class Reason { None, User, LidOpen, EmergencyStop, Overload };

struct Status {
    MixerState state = MixerState::Idle;
    MixId mix;     ///< the programme loaded or running; empty when there is none
    int step = 0;  ///< running step from 1; 0 before the start
    int steps = 0;
    int secondsLeft = 0;  ///< of the whole programme
    int secondsTotal = 0;
    int cycles = 0;   ///< lifting cycles done
    int liftRpm = 0;  ///< now
    int mixRpm = 0;   ///< now
    Reason reason = Reason::None;
    bool operator==(const Status&) const = default;
};

/// What the mixer keeps of a finished mix. It remembers the last eight.
struct MixResults {
    MixId mix;
    int preparation = 0;  ///< counted by the mixer through its life, from 1
    int jar = 0;
    int type = 0;
    int cycles = 0;
    bool stoppedByUser = false;
    int preGrind = 0;
    int revolutions = 0;
    bool operator==(const MixResults&) const = default;
};

// Commands. The sequence number is set by the sender.
Frame helloCommand(const QByteArray& session);
Frame statusCommand();
Frame loadCommand(const Programme& programme);    ///< all but the steps
Frame stepCommand(int number, const Step& step);  ///< from 1, in order
Frame readCommand(int number);                    ///< 0: what LOAD gave; n: step n
Frame startCommand(const MixId& mix);
Frame pauseCommand();
Frame resumeCommand();
Frame stopCommand();
Frame resultCommand(const MixId& mix);
Frame clearCommand();  ///< leave Loaded, Done or Fault for Idle

// What the mixer reads. Nothing when the frame is not that command or a value is out of range.
std::optional<QByteArray> readHello(const Frame& frame);                ///< the session
std::optional<std::pair<Programme, int>> readLoad(const Frame& frame);  ///< and the number of steps
std::optional<std::pair<int, Step>> readStep(const Frame& frame);       ///< also of a reply
std::optional<int> readRead(const Frame& frame);
std::optional<MixId> readMixId(const Frame& frame);  ///< of START and RESULT

// Replies: the frame answers the given command (its sequence number).
Frame identityReply(const Frame& command, const Identity& identity);
Frame okReply(const Frame& command);
/// Words: HELLO, BUSY, FAULT, ORDER, RANGE, UNKNOWN, USED, LID, ESTOP.
Frame refusalReply(const Frame& command, const QByteArray& word);
Frame statusReply(const Frame& command, const Status& status);
Frame headReply(const Frame& command, const Programme& programme);
Frame stepReply(const Frame& command, int number, const Step& step);
Frame resultsReply(const Frame& command, const MixResults& results);

// What the program reads.
std::optional<Identity> readIdentity(const Frame& frame);
bool isOk(const Frame& frame);
std::optional<QByteArray> readRefusal(const Frame& frame);
std::optional<Status> readStatus(const Frame& frame);
std::optional<std::pair<Programme, int>> readHead(const Frame& frame);
std::optional<MixResults> readResults(const Frame& frame);

}  // namespace sorvanto::protocol
