// The unfinished copy bears a name of its own until it is checked.
#include "platform/data/DatabaseCopy.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <sqlite3.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr int pagesAtOnce = 128;  // half a megabyte: a few milliseconds
constexpr auto pause = std::chrono::milliseconds(5);
constexpr int mostBusyRounds = 400;  // with the pause two seconds, beside the engine's own patience

const QString source = u"Database"_s;

/// The file under its provisional name; goes with the object unless it has taken its place.
class UnfinishedFile {
public:
    /// Only the owner may read it: it holds patients. Never through a link that lies there.
    explicit UnfinishedFile(const QString& target) : m_target(target), m_path(target + u".part"_s) {
        needPrivateFolder(QFileInfo(m_target).path());
        QFile::remove(m_path);
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
            throw RuntimeError(error::permissionDenied, file.errorString() + u": "_s + m_path, source);
    }
    ~UnfinishedFile() {
        if (!m_finished)
            QFile::remove(m_path);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const QString& path() const { return m_path; }
    void takePlace() {
        replaceFile(m_path, m_target);
        m_finished = true;
    }

private:
    QString m_target, m_path;
    bool m_finished = false;
};

/// The engine's copying from one connection to another.
class PageCopy {
public:
    PageCopy(sqlite3* from, const QString& to) {
        const int opened = sqlite3_open_v2(to.toUtf8().constData(), &m_copy,
                                           SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr);
        if (opened == SQLITE_OK)
            m_backup = sqlite3_backup_init(m_copy, "main", from, "main");
        if (!m_backup) {
            const QString why = QString::fromUtf8(sqlite3_errmsg(m_copy));
            sqlite3_close(m_copy);
            throw RuntimeError(error::general, why, source);
        }
    }
    ~PageCopy() {
        sqlite3_backup_finish(m_backup);
        sqlite3_close(m_copy);
    }
    PageCopy(const PageCopy&) = delete;
    PageCopy& operator=(const PageCopy&) = delete;

    int step(int pages) { return sqlite3_backup_step(m_backup, pages); }
    int total() const { return sqlite3_backup_pagecount(m_backup); }

private:
    sqlite3* m_copy = nullptr;
    sqlite3_backup* m_backup = nullptr;
};

[[noreturn]] void failCopy(int code) {
    const QString why = QString::fromUtf8(sqlite3_errstr(code));
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw RuntimeError(error::permissionDenied, u"The database is in use by another program"_s, source);
    case SQLITE_FULL:
        throw RuntimeError(error::diskFull, why, source);
    default:
        throw RuntimeError(error::deviceIo, why, source);
    }
}

/// False when it was cancelled.
bool copyPages(const QString& file, const QString& to, const Cancelled& cancelled) {
    Connection connection;
    connection.open(u"Data Source="_s + file);
    PageCopy copy(connection.handle(), to);
    int busy = 0;
    // A change by another connection begins the copy anew; after some rounds it is made in one go.
    for (qint64 copied = 0;; copied += pagesAtOnce) {
        const bool inOneGo = !cancelled || copied > 4LL * copy.total() + pagesAtOnce;
        const int code = copy.step(inOneGo ? -1 : pagesAtOnce);
        if (code == SQLITE_DONE)
            return true;
        const bool isBusy = code == SQLITE_BUSY || code == SQLITE_LOCKED;
        if ((code != SQLITE_OK && !isBusy) || (isBusy && (!cancelled || ++busy > mostBusyRounds)))
            failCopy(code);
        if (cancelled && cancelled())
            return false;
        std::this_thread::sleep_for(pause);
    }
}

}  // namespace

bool copyDatabase(const QString& file, const QString& target, const Cancelled& cancelled) {
    UnfinishedFile unfinished(platformPath(target));
    if (!copyPages(platformPath(file), unfinished.path(), cancelled))
        return false;
    const QStringList problems = integrityProblems(unfinished.path(), cancelled);
    if (cancelled && cancelled())
        return false;
    if (!problems.isEmpty())
        throw RuntimeError(error::general, u"The copy is not sound: "_s + problems.first(), source);
    unfinished.takePlace();
    return true;
}

}  // namespace platform
