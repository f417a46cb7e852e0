// Sending, waiting, repeating, and noticing when nobody is there.
#include "mixer/MixerLink.h"

#include "platform/basic/Dates.h"

#include <QRandomGenerator>

namespace sorvanto {

using namespace protocol;

namespace {
constexpr int baudRate = 57'600;
}

MixerLink::MixerLink(std::unique_ptr<platform::SerialPort> port, std::function<QString()> path,
                     LinkTiming timing, QObject* parent)
    : QObject(parent), m_port(std::move(port)), m_path(std::move(path)), m_timing(timing),
      // Begun anywhere, so that a new run of the program is not taken for a repetition of the last.
      m_sequence(static_cast<std::uint8_t>(QRandomGenerator::global()->bounded(256))) {
    m_replyTimer.setSingleShot(true);
    m_reopenTimer.setSingleShot(true);
    connect(&m_replyTimer, &QTimer::timeout, this, &MixerLink::replyStayedOut);
    connect(&m_pollTimer, &QTimer::timeout, this, &MixerLink::poll);
    connect(&m_reopenTimer, &QTimer::timeout, this, &MixerLink::tryOpen);
    connect(m_port.get(), &platform::SerialPort::bytesRead, this, &MixerLink::bytesRead);
    connect(m_port.get(), &platform::SerialPort::failed, this, [this] {
        if (m_state != State::Closed)
            lose();
    });
}

void MixerLink::open() {
    if (m_state == State::Closed)
        tryOpen();
}

void MixerLink::close() {
    dropCommands();
    m_pollTimer.stop();
    m_reopenTimer.stop();
    m_port->close();
    m_failed = false;
    m_lastWord = {};
    setState(State::Closed);
}

void MixerLink::tryOpen() {
    m_openPath = m_path();
    m_portTrouble = platform::PortState::Present;
    if (!m_port->open(m_openPath, baudRate)) {
        m_portTrouble = platform::portState(m_openPath);
        m_reopenTimer.start(m_timing.reopen);
        setState(State::NoPort);
        return;
    }
    m_decoder.reset();
    m_missed = 0;
    setState(State::Searching);
    greet();
}

void MixerLink::greet() {
    dropCommands();
    m_pollTimer.stop();
    const QByteArray session =
        QByteArray::number(QRandomGenerator::global()->generate() | 0x80000000U, 16).toUpper();
    enqueue(
        helloCommand(session),
        [this](const std::optional<Frame>& reply) {
            const auto identity = reply ? readIdentity(*reply) : std::nullopt;
            if (!identity) {
                lose();
                return;
            }
            m_identity = *identity;
            m_failed = false;
            m_pollTimer.start(m_mixing ? m_timing.mixPoll : m_timing.idlePoll);
            setState(State::Connected);
            emit connected();
        },
        m_timing.missedForLost);
}

void MixerLink::send(const Frame& command, Answer answer) {
    if (m_state == State::Connected)
        enqueue(command, std::move(answer), m_timing.tries);
}

void MixerLink::enqueue(const Frame& command, Answer answer, int tries) {
    m_queue.push_back({command, std::move(answer), tries});
    if (!m_current)
        sendNext();
}

void MixerLink::sendNext() {
    if (m_queue.empty())
        return;
    m_current = std::move(m_queue.front());
    m_queue.pop_front();
    m_current->command.sequence = ++m_sequence;
    sendCurrent();
}

void MixerLink::sendCurrent() {
    --m_current->triesLeft;
    m_port->write(encode(m_current->command));
    m_replyTimer.start(m_timing.reply);
}

void MixerLink::replyStayedOut() {
    if (!m_current)
        return;
    if (++m_missed >= m_timing.missedForLost) {
        lose();
        return;
    }
    if (isStale())
        emit changed();
    if (m_current->triesLeft > 0) {
        sendCurrent();
        return;
    }
    const Pending given = std::move(*m_current);
    m_current.reset();
    if (given.answer)
        given.answer(std::nullopt);
    if (!m_current)
        sendNext();
}

void MixerLink::setMixing(bool mixing) {
    if (m_mixing == mixing)
        return;
    m_mixing = mixing;
    if (m_pollTimer.isActive())
        m_pollTimer.start(m_mixing ? m_timing.mixPoll : m_timing.idlePoll);
}

void MixerLink::poll() {
    if (!m_current)
        askState();
}

void MixerLink::askState() {
    if (m_state != State::Connected)
        return;
    enqueue(
        statusCommand(),
        [this](const std::optional<Frame>& reply) {
            if (const auto told = reply ? readStatus(*reply) : std::nullopt)
                emit status(*told);
        },
        1);
}

void MixerLink::bytesRead(const QByteArray& bytes) {
    for (const Frame& reply : m_decoder.feed(bytes)) {
        // Anything else is the reply to a command given up meanwhile, or a reply come twice.
        if (m_current && reply.sequence == m_current->command.sequence)
            take(reply);
    }
}

void MixerLink::take(const Frame& reply) {
    const bool wasStale = isStale();
    m_replyTimer.stop();
    m_missed = 0;
    m_lastWord = platform::now();
    if (m_state == State::Connected && readRefusal(reply) == QByteArray("HELLO")) {
        setState(State::Searching);  // it has restarted and knows nothing of this program any more
        greet();
        return;
    }
    const Pending given = std::move(*m_current);
    m_current.reset();
    if (given.answer)
        given.answer(reply);
    if (wasStale)
        emit changed();
    if (!m_current)
        sendNext();
}

bool MixerLink::isStale() const { return m_state == State::Connected && m_missed >= m_timing.missedForStale; }

void MixerLink::lose() {
    dropCommands();
    m_pollTimer.stop();
    m_port->close();
    m_failed = true;
    m_reopenTimer.start(m_timing.reopen);
    const bool wasConnected = m_state == State::Connected;
    setState(State::Searching);
    if (wasConnected)
        emit lost();
}

void MixerLink::dropCommands() {
    m_replyTimer.stop();
    m_queue.clear();
    m_current.reset();
}

void MixerLink::setState(State state) {
    m_state = state;
    emit changed();
}

}  // namespace sorvanto
