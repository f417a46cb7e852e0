#include "core/InstanceLock.h"

#include "platform/basic/Paths.h"

#include <QFile>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace sorvanto {

InstanceLock::InstanceLock(QString path) : m_path(std::move(path)) {}

InstanceLock::~InstanceLock() {
    if (m_file >= 0)
        ::close(m_file);
}

bool InstanceLock::heldByAnother() {
    if (m_file >= 0)
        return false;
    const QByteArray path = QFile::encodeName(platform::platformPath(m_path));
    m_file = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (m_file < 0 || ::flock(m_file, LOCK_EX | LOCK_NB) == 0)
        return false;
    const bool held = errno == EWOULDBLOCK;
    ::close(m_file);
    m_file = -1;
    return held;
}

}  // namespace sorvanto
