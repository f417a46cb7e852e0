// A lock that belongs to a process and falls with it, however it ends: a small file that names the process. Never
// given up for its age.
#pragma once

#include <QLockFile>
#include <QString>

namespace platform {

class ProcessLock {
public:
    enum class Outcome {
        Taken,          ///< or held by this process already
        Held,           ///< another process is proven to hold it
        OtherComputer,  ///< another computer has left it; whether the program still runs there can't be seen
        Impossible,     ///< the file can't be made, or something else lies in its place
    };

    explicit ProcessLock(const QString& path);

    /// Nothing waits. What a dead process or a failure has left in the place is cleared away.
    Outcome take();
    void release() { m_lock.unlock(); }
    QString path() const { return m_lock.fileName(); }
    /// Of OtherComputer.
    QString computer() const { return m_computer; }

private:
    Outcome whoHolds();

    QLockFile m_lock;
    QString m_computer;
};

/// The lock of a file in use: beside it, through links, as "sorvanto.mdb.lock".
QString lockPathOf(const QString& file);

}  // namespace platform
