#include "platform/data/sqlite/PageCopy.h"

#include "platform/basic/RuntimeError.h"

#include <chrono>
#include <sqlite3.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace platform::sqlite {

namespace {

constexpr int pagesAtOnce = 128;  // half a megabyte: a few milliseconds
constexpr auto pause = std::chrono::milliseconds(5);
constexpr int mostBusyRounds = 400;  // with the pause two seconds, beside the engine's own patience

const QString source = u"Database"_s;

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

}  // namespace

bool copyPages(sqlite3* from, const QString& to, const Cancelled& cancelled) {
    PageCopy copy(from, to);
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

}  // namespace platform::sqlite
