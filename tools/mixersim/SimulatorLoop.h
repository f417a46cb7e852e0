// Device, line and faults together, over real time.
#pragma once

#include "FaultPlan.h"
#include "PseudoTerminal.h"
#include "SimulatedMixer.h"

#include "mixer/protocol/FrameDecoder.h"

#include <QElapsedTimer>
#include <deque>

namespace sorvanto::mixersim {

class SimulatorLoop {
public:
    /// speed: how many times faster than real the device's clock goes, 1 or more.
    SimulatorLoop(SimulatedMixer& mixer, PseudoTerminal& terminal, FaultPlan plan, double speed);
    /// One turn: waits a moment for bytes, answers, lets time pass and faults happen. False when the
    /// terminal could not be renewed.
    bool turn();

private:
    struct Reply {
        qint64 due;
        QByteArray bytes;
    };

    void answer(const protocol::Frame& command);
    void sendDue();
    void beginFault();
    void endFault();
    int waitTime() const;

    SimulatedMixer& m_mixer;
    PseudoTerminal& m_terminal;
    FaultPlan m_plan;
    LineSpoiler m_spoiler;
    protocol::FrameDecoder m_decoder{protocol::Direction::ToMixer};
    double m_speed;
    QElapsedTimer m_clock;
    std::deque<Reply> m_replies;
    bool m_faultBegun = false, m_faultEnded = false;
    qint64 m_faultSince = 0;
};

}  // namespace sorvanto::mixersim
