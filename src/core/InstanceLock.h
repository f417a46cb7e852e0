// Keeps a second program away from the program's folder and from the database: two folders may name one file.
// The locks belong to the process and fall with it, however it ends.
#pragma once

#include "platform/basic/ProcessLock.h"

#include <QString>
#include <future>
#include <optional>

namespace sorvanto {

/// What a start finds out about other programs.
struct InstanceState {
    InstanceState(bool another = false) : runs(another) {}  // NOLINT: an answer of yes or no is one
    bool runs;            ///< another one is proven to run on this folder or this database
    QString readingOnly;  ///< why nothing may be written, as a sentence; empty when it may
};

class InstanceLock {
public:
    InstanceLock() = default;
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// Takes all of them in a thread of its own: each is flushed to the disk, so that another computer sees who holds it.
    /// The folder's first; only where that is free the others, side by side. What has become of it is told by the
    /// functions below, which wait for it. An empty database or identity is none.
    void begin(const QString& folder, const QString& database, const QString& identity);
    /// folder: the program's. Taken once and kept.
    InstanceState takeFolder(const QString& folder);
    /// In the place of the lock of another database.
    InstanceState takeDatabase(const QString& file);
    /// By what every name and every copy of the database have in common, empty for none. Another program of this user
    /// that holds it is no second one on the file, but what is written into the one would be missing in the other:
    /// for reading only. Where the session has no folder for such things nothing is asked.
    InstanceState takeIdentity(const QString& identity);

private:
    platform::ProcessLock& folderLock(const QString& folder);
    platform::ProcessLock& databaseLock(const QString& file);
    /// Null where there is nothing to lock.
    platform::ProcessLock* identityLock(const QString& identity);
    bool firstVersionRuns(const QString& folder);
    void wait();

    std::optional<platform::ProcessLock> m_folder, m_database, m_identity;
    int m_firstVersion = -1;  ///< the file by which programs of version 1.0 know each other
    std::future<void> m_begun;
};

}  // namespace sorvanto
