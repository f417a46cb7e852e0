// A copy of the open database, made page by page by the engine, so that it is whole whatever happens
// meanwhile. It is checked before it gets its name, readable by its owner alone, and replaces an older file
// of that name only when it is good.
#pragma once

#include "platform/data/Connection.h"

#include <QString>
#include <QStringList>
#include <future>

struct sqlite3;
struct sqlite3_backup;

namespace platform {

class DatabaseCopy {
public:
    /// Starts the copy; the folder of the target is made when it is missing. Throws permissionDenied when the
    /// file can't be made.
    DatabaseCopy(ConnectionPtr source, const QString& target);
    /// A copy that is not finished leaves nothing behind.
    ~DatabaseCopy();
    DatabaseCopy(const DatabaseCopy&) = delete;
    DatabaseCopy& operator=(const DatabaseCopy&) = delete;

    /// Copies up to that many pages (-1: all that are left). The check runs beside, in a thread of its own;
    /// only with -1 it is waited for. True, once, when the copy is checked and in its place.
    /// Throws general when the copy is damaged, and as statements do when the disk fails.
    bool step(int pages);

private:
    /// True when the last page is written and the check has begun.
    bool copyPages(int pages);
    void takePlace(const QStringList& problems);

    ConnectionPtr m_source;
    QString m_target, m_unfinished;  ///< the latter empty once the copy has its name
    sqlite3* m_copy = nullptr;
    sqlite3_backup* m_backup = nullptr;  ///< null once all pages are there
    std::future<QStringList> m_check;
};

}  // namespace platform
