// The faults that the simulator can be asked for, and what they do to bytes on the line.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <optional>
#include <random>

namespace sorvanto::mixersim {

enum class Fault {
    None,
    Noise,      ///< random bytes between and inside the replies
    Dropped,    ///< every 211th byte is missing, both ways
    Doubled,    ///< every 199th byte comes twice, both ways
    Repeated,   ///< every command and every reply comes twice
    Late,       ///< every fourth reply comes after the program has given up waiting
    WrongCrc,   ///< every third reply has a wrong check
    Garbled,    ///< every reply has a wrong check
    Silent,     ///< no reply any more from the step on; step 0: none at all
    Misstored,  ///< a step is stored with another speed than it was sent with
    Unplugged,  ///< the line is cut at the step and comes back; the mix goes on
    Gone,       ///< the line is cut at the step for good
    PowerLoss,  ///< no power for a while
    Reboot,     ///< the device restarts within a moment
    EmergencyStop,
    LidOpen,
    Overload,
};

/// "noise", "dropped" ... in the order above.
QByteArrayList faultNames();

struct FaultPlan {
    Fault fault = Fault::None;
    int step = 1;
    /// Whether the fault begins when the mix reaches the step (the others act on the line all the time).
    bool atStep() const;
};

/// "NAME" or "NAME@step"; nothing when there is no such fault.
std::optional<FaultPlan> parseFault(const QByteArray& text);

/// Spoils bytes as the plan says; the same seed gives the same course.
class LineSpoiler {
public:
    explicit LineSpoiler(Fault fault) : m_fault(fault) {}
    QByteArray toMixer(const QByteArray& bytes);
    QByteArray toProgram(const QByteArray& reply);
    /// Whether the reply just spoiled comes late.
    bool isLate() const { return m_fault == Fault::Late && m_replies % 4 == 0; }

private:
    QByteArray thinned(const QByteArray& bytes, int every, int copies);
    QByteArray noisy(const QByteArray& reply);

    Fault m_fault;
    int m_bytes = 0;
    int m_replies = 0;
    std::minstd_rand m_random{20'260'101};
};

}  // namespace sorvanto::mixersim
