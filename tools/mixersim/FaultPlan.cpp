// Names of the faults, and those that act on the bytes of the line.
#include "FaultPlan.h"

#include <algorithm>
#include <array>

namespace sorvanto::mixersim {
namespace {

struct Named {
    Fault fault;
    const char* name;
    bool atStep;
};
constexpr std::array<Named, 16> faults{{{Fault::Noise, "noise", false},
                                        {Fault::Dropped, "dropped", false},
                                        {Fault::Doubled, "doubled", false},
                                        {Fault::Repeated, "repeated", false},
                                        {Fault::Late, "late", false},
                                        {Fault::WrongCrc, "wrongcrc", false},
                                        {Fault::Garbled, "garbled", false},
                                        {Fault::Silent, "silent", true},
                                        {Fault::Misstored, "misstored", false},
                                        {Fault::Unplugged, "unplug", true},
                                        {Fault::Gone, "gone", true},
                                        {Fault::PowerLoss, "powerloss", true},
                                        {Fault::Reboot, "reboot", true},
                                        {Fault::EmergencyStop, "estop", true},
                                        {Fault::LidOpen, "lid", true},
                                        {Fault::Overload, "overload", true}}};

}  // namespace

QByteArrayList faultNames() {
    QByteArrayList names;
    for (const Named& named : faults)
        names << named.name;
    return names;
}

bool FaultPlan::atStep() const {
    return std::any_of(faults.begin(), faults.end(),
                       [this](const Named& named) { return named.fault == fault && named.atStep; });
}

std::optional<FaultPlan> parseFault(const QByteArray& text) {
    const QByteArrayList parts = text.split('@');
    bool isNumber = true;
    const int step = parts.size() == 2 ? parts[1].toInt(&isNumber) : 1;
    if (parts.size() > 2 || !isNumber || step < 0 || step > 16)
        return std::nullopt;
    for (const Named& named : faults) {
        if (parts[0] == named.name)
            return FaultPlan{named.fault, step};
    }
    return std::nullopt;
}

QByteArray LineSpoiler::thinned(const QByteArray& bytes, int every, int copies) {
    QByteArray spoiled;
    for (const char byte : bytes)
        spoiled += QByteArray(++m_bytes % every == 0 ? copies : 1, byte);
    return spoiled;
}

QByteArray LineSpoiler::noisy(const QByteArray& reply) {
    QByteArray noise;
    for (auto length = m_random() % 12; length > 0; --length)
        noise += static_cast<char>(m_random() % 256);
    QByteArray spoiled = noise + reply;
    if (m_replies % 5 == 0)
        spoiled.insert(static_cast<qsizetype>(m_random() % static_cast<unsigned>(spoiled.size())),
                       noise + '~');
    return spoiled;
}

QByteArray LineSpoiler::toMixer(const QByteArray& bytes) {
    switch (m_fault) {
    case Fault::Dropped:
        return thinned(bytes, 211, 0);
    case Fault::Doubled:
        return thinned(bytes, 199, 2);
    case Fault::Repeated:
        return bytes + bytes;
    default:
        return bytes;
    }
}

QByteArray LineSpoiler::toProgram(const QByteArray& reply) {
    ++m_replies;
    const bool wrongCheck = m_fault == Fault::Garbled || (m_fault == Fault::WrongCrc && m_replies % 3 == 0);
    if (wrongCheck) {
        QByteArray spoiled = reply;
        char& digit = spoiled[spoiled.size() - 2];
        digit = digit == '0' ? '1' : '0';
        return spoiled;
    }
    switch (m_fault) {
    case Fault::Noise:
        return noisy(reply);
    case Fault::Dropped:
        return thinned(reply, 211, 0);
    case Fault::Doubled:
        return thinned(reply, 199, 2);
    case Fault::Repeated:
        return reply + reply;
    default:
        return reply;
    }
}

}  // namespace sorvanto::mixersim
