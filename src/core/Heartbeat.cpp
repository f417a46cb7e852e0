#include "core/Heartbeat.h"

#include <QAbstractEventDispatcher>
#include <utility>

using namespace Qt::StringLiterals;

namespace sorvanto {

Heartbeat::Heartbeat(QAbstractEventDispatcher& dispatcher, qint64 limit, Listener listener, Clock clock)
    : m_limit(limit), m_listener(std::move(listener)), m_clock(std::move(clock)) {
    m_time.start();
    if (!m_clock)
        m_clock = [this] { return m_time.elapsed(); };
    // One of them comes from every turn of a loop; which of them stands before the waiting is each dispatcher's own.
    connect(&dispatcher, &QAbstractEventDispatcher::awake, this, &Heartbeat::look);
    connect(&dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &Heartbeat::look);
}

qint64 Heartbeat::begin() {
    const qint64 now = m_clock();
    if (m_depth++ == 0 || std::exchange(m_looked, false)) {
        m_since = now;
        m_longest = 0;
        m_longestBegan = now;
        m_looked = false;
        m_beganAt = m_depth;
    }
    return now;
}

void Heartbeat::end(qint64 begun, const QString& receiver, const char* receiverClass) {
    const qint64 now = m_clock();
    const qint64 took = now - begun;
    // A click goes through the window to the button: what took most of it is named, not what it came through.
    const bool tookMostInside = begun <= m_longestBegan && 4 * m_longest >= 3 * took;
    if (took >= m_longest && !tookMostInside) {
        m_longest = took;
        m_longestBegan = begun;
        m_receiver = receiver;
        m_receiverClass = receiverClass;
    }
    // What ends the stretch that it began, or goes on alone after a loop inside it.
    if (m_depth-- == m_beganAt || m_looked)
        tellOfBlock(now);
}

void Heartbeat::look() {
    if (m_depth == 0)
        return;
    if (!m_looked)
        tellOfBlock(m_clock());
    m_since = m_clock();
    m_looked = true;
}

void Heartbeat::tellOfBlock(qint64 now) {
    const qint64 block = now - std::exchange(m_since, now);
    m_looked = true;
    if (block > m_limit)
        m_listener(block, u"%1 (%2)"_s.arg(m_receiver, QLatin1String(m_receiverClass)).trimmed());
}

}  // namespace sorvanto
