// A thread whose clock stands still between two events: timers fire in their order without anybody waiting, so that
// an hour of the program passes in a moment and the same course comes again each time.
//   VirtualTime::run([](VirtualTime& time) { ... while (!done && time.step()) {} });
#pragma once

#include <QAbstractEventDispatcher>
#include <functional>
#include <vector>

namespace fault {

class VirtualTime : public QAbstractEventDispatcher {
public:
    /// Runs the body to its end on a thread of its own, whose timers are virtual.
    static void run(const std::function<void(VirtualTime&)>& body);

    /// Milliseconds since the beginning.
    qint64 now() const { return m_now; }
    /// What was posted, or else the next timer. False when there is neither.
    bool step();

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    void registerTimer(int id, qint64 interval, Qt::TimerType type, QObject* object) override;
    bool unregisterTimer(int id) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int id) override;
    void registerSocketNotifier(QSocketNotifier*) override {}
    void unregisterSocketNotifier(QSocketNotifier*) override {}
    void wakeUp() override { m_posted = true; }
    void interrupt() override {}

private:
    struct Timer {
        int id;
        qint64 interval;
        qint64 due;
        quint64 order;  ///< of two that are due at once the older one is first
        QObject* object;
    };

    std::vector<Timer> m_timers;
    qint64 m_now = 0;
    quint64 m_orders = 0;
    bool m_posted = true;
};

}  // namespace fault
