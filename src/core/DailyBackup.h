// A dated copy of the database a day, in backups/ beside the program, the newest fourteen. It is made in
// small pieces between the user's actions once the window is up, so that nobody waits for it.
#pragma once

#include <QDate>
#include <QTimer>
#include <memory>

namespace platform {
class DatabaseCopy;
}

namespace sorvanto {

class DailyBackup {
public:
    /// startDelay: milliseconds between startSoon and the first piece.
    explicit DailyBackup(int startDelay = 2000);
    ~DailyBackup();

    /// Once a run: makes today's copy unless there is one. Failures are reported ("DailyBackup:copy").
    void startSoon();
    /// Drops a copy that is not finished.
    void stop();
    bool running() const { return m_timer.isActive(); }

private:
    void proceed();
    void begin();

    QTimer m_timer;
    std::unique_ptr<platform::DatabaseCopy> m_copy;
    int m_startDelay;
    bool m_started = false;
};

}  // namespace sorvanto
