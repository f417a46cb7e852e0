// Tells whether the program already runs from this folder. The lock belongs to the process and falls with
// it, however it ends.
#pragma once

#include <QString>

namespace sorvanto {

class InstanceLock {
public:
    explicit InstanceLock(QString path);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// True when another process holds the lock; otherwise this one holds it from now on. A folder in which
    /// no file can be made has no lock, and the answer is false.
    bool heldByAnother();

private:
    QString m_path;
    int m_file = -1;
};

}  // namespace sorvanto
