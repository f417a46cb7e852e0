// Pseudo-terminal by the system's own calls.
#include "PseudoTerminal.h"

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace sorvanto::mixersim {
namespace {

/// Raw bytes both ways: no echo, no line editing, no translation of line ends.
void makeRaw(int fd) {
    termios settings;
    if (::tcgetattr(fd, &settings) == 0) {
        ::cfmakeraw(&settings);
        ::tcsetattr(fd, TCSANOW, &settings);
    }
}

}  // namespace

PseudoTerminal::PseudoTerminal(QString link) : m_link(std::move(link)) {}

PseudoTerminal::~PseudoTerminal() { close(); }

bool PseudoTerminal::open() {
    close();
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[128];
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0 ||
        ::ptsname_r(m_master, name, sizeof name) != 0) {
        m_errorText = QString::fromLocal8Bit(std::strerror(errno));
        close();
        return false;
    }
    m_path = QFile::decodeName(name);
    makeRaw(m_master);
    m_peer = true;
    m_checked = false;
    if (!setLink()) {
        close();
        return false;
    }
    return true;
}

bool PseudoTerminal::setLink() {
    if (m_link.isEmpty())
        return true;
    const QFileInfo present(m_link);
    if (present.exists() && !present.isSymLink()) {
        m_errorText = m_link + u" is there and is no link"_s;
        return false;
    }
    const QByteArray link = QFile::encodeName(m_link), fresh = link + ".new";
    ::unlink(fresh.constData());
    if (::symlink(QFile::encodeName(m_path).constData(), fresh.constData()) != 0 ||
        ::rename(fresh.constData(), link.constData()) != 0) {
        m_errorText = m_link + u": "_s + QString::fromLocal8Bit(std::strerror(errno));
        return false;
    }
    return true;
}

void PseudoTerminal::close() {
    if (m_master < 0)
        return;
    if (!m_link.isEmpty() && QFileInfo(m_link).symLinkTarget() == m_path)
        QFile::remove(m_link);
    ::close(m_master);
    m_master = -1;
}

QByteArray PseudoTerminal::read(int waitMilliseconds) {
    if (m_master < 0) {
        ::poll(nullptr, 0, waitMilliseconds);
        return {};
    }
    pollfd wanted{m_master, POLLIN, 0};
    // A line that nobody has open is always "ready" with its hang-up: then only the time is waited for.
    if (m_peer)
        ::poll(&wanted, 1, waitMilliseconds);
    else
        ::poll(nullptr, 0, waitMilliseconds);
    char buffer[4096];
    const ssize_t count = ::read(m_master, buffer, sizeof buffer);
    if (count > 0 || (count < 0 && errno == EAGAIN)) {
        m_peer = true;
        m_checked = false;
        m_quietReads = 0;
        return QByteArray(buffer, static_cast<int>(std::max<ssize_t>(count, 0)));
    }
    m_peer = false;
    ++m_quietReads;
    return {};
}

void PseudoTerminal::write(const QByteArray& bytes) {
    // A full line loses the rest, as a line without anyone at the other end would.
    if (m_master >= 0 && m_peer &&
        ::write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size())) < 0)
        m_errorText = QString::fromLocal8Bit(std::strerror(errno));
}

bool PseudoTerminal::isLeftLocked() {
    constexpr int settled = 5;
    if (m_master < 0 || m_peer || m_checked || m_quietReads < settled)
        return false;
    m_checked = true;
    const int slave =
        ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave < 0)
        return errno == EBUSY;
    int exclusive = 0;
    const bool locked = ::ioctl(slave, TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
    ::close(slave);
    return locked;
}

}  // namespace sorvanto::mixersim
