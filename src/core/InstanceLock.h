// Keeps a second program away from the program's folder and from the database: two folders may name one file.
// The locks belong to the process and fall with it, however it ends.
#pragma once

#include "platform/basic/ProcessLock.h"

#include <QString>
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

    /// folder: the program's. Taken once and kept.
    InstanceState takeFolder(const QString& folder);
    /// In the place of the lock of another database.
    InstanceState takeDatabase(const QString& file);
    /// By what every name and every copy of the database have in common, empty for none. Another program of this user
    /// that holds it is no second one on the file, but what is written into the one would be missing in the other:
    /// for reading only. Where the session has no folder for such things nothing is asked.
    InstanceState takeIdentity(const QString& identity);

private:
    bool firstVersionRuns(const QString& folder);

    std::optional<platform::ProcessLock> m_folder, m_database, m_identity;
    int m_firstVersion = -1;  ///< the file by which programs of version 1.0 know each other
};

}  // namespace sorvanto
