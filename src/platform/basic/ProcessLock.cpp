// Beyond what the library's lock file does, the proof: a living holder keeps the file locked for the system as
// well, so that a left file is told from a held one even where its text is garbage or its process's number has
// been given out again.
#include "platform/basic/ProcessLock.h"

#include "platform/basic/Paths.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Neither a link nor a pipe nor a folder; also when there is nothing yet.
bool isPlainPlace(const QString& path) {
    struct stat found {};
    return ::lstat(QFile::encodeName(path).constData(), &found) != 0 || S_ISREG(found.st_mode);
}

bool isLockedForTheSystem(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (file < 0)
        return false;
    const bool locked = ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(file);
    return locked;
}

}  // namespace

ProcessLock::ProcessLock(const QString& path) : m_lock(platformPath(path)) { m_lock.setStaleLockTime(0); }

ProcessLock::Outcome ProcessLock::take() {
    m_computer.clear();
    if (m_lock.isLocked())
        return Outcome::Taken;
    if (!isPlainPlace(m_lock.fileName()))
        return Outcome::Impossible;
    if (m_lock.tryLock(0))
        return Outcome::Taken;
    if (m_lock.error() != QLockFile::LockFailedError)
        return Outcome::Impossible;
    const Outcome outcome = whoHolds();
    if (outcome != Outcome::Impossible)
        return outcome;
    return m_lock.removeStaleLockFile() && m_lock.tryLock(0) ? Outcome::Taken : whoHolds();
}

/// Impossible: nobody is known to.
ProcessLock::Outcome ProcessLock::whoHolds() {
    qint64 process = 0;
    QString program;
    QString computer;
    const bool told = m_lock.getLockInfo(&process, &computer, &program);
    const bool elsewhere = told && !computer.isEmpty() && computer != QSysInfo::machineHostName();
    if (told && !elsewhere && process == ::getpid())
        return Outcome::Taken;
    if (isLockedForTheSystem(m_lock.fileName()))
        return Outcome::Held;
    if (!elsewhere)
        return Outcome::Impossible;
    m_computer = computer;
    return Outcome::OtherComputer;
}

QString lockPathOf(const QString& file) {
    const QString path = platformPath(file);
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return (canonical.isEmpty() ? QFileInfo(path).absoluteFilePath() : canonical) + u".lock"_s;
}

}  // namespace platform
