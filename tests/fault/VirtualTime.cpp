// The event dispatcher behind the virtual clock.
#include "VirtualTime.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimerEvent>
#include <algorithm>

namespace fault {

void VirtualTime::run(const std::function<void(VirtualTime&)>& body) {
    auto* time = new VirtualTime;  // the thread deletes it
    QThread* thread = QThread::create([&] { body(*time); });
    thread->setEventDispatcher(time);
    thread->start();
    thread->wait();
    delete thread;
}

bool VirtualTime::step() {
    if (std::exchange(m_posted, false)) {
        QCoreApplication::sendPostedEvents();
        return true;
    }
    const auto next = std::min_element(m_timers.begin(), m_timers.end(), [](const Timer& a, const Timer& b) {
        return std::pair(a.due, a.order) < std::pair(b.due, b.order);
    });
    if (next == m_timers.end())
        return false;
    m_now = next->due;
    next->due += std::max<qint64>(next->interval, 1);
    next->order = ++m_orders;
    QTimerEvent event(next->id);
    QCoreApplication::sendEvent(next->object, &event);
    return true;
}

bool VirtualTime::processEvents(QEventLoop::ProcessEventsFlags) { return step(); }

void VirtualTime::registerTimer(int id, qint64 interval, Qt::TimerType, QObject* object) {
    m_timers.push_back({id, interval, m_now + interval, ++m_orders, object});
}

bool VirtualTime::unregisterTimer(int id) {
    return std::erase_if(m_timers, [&](const Timer& timer) { return timer.id == id; }) > 0;
}

bool VirtualTime::unregisterTimers(QObject* object) {
    return std::erase_if(m_timers, [&](const Timer& timer) { return timer.object == object; }) > 0;
}

QList<QAbstractEventDispatcher::TimerInfo> VirtualTime::registeredTimers(QObject* object) const {
    QList<TimerInfo> found;
    for (const Timer& timer : m_timers) {
        if (timer.object == object)
            found.append(TimerInfo(timer.id, static_cast<int>(timer.interval), Qt::CoarseTimer));
    }
    return found;
}

int VirtualTime::remainingTime(int id) {
    for (const Timer& timer : m_timers) {
        if (timer.id == id)
            return static_cast<int>(timer.due - m_now);
    }
    return -1;
}

}  // namespace fault
