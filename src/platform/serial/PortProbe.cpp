// The port probe: finding the device of a port number, and opening it for a moment.
#include "platform/serial/PortProbe.h"

#include "platform/basic/Descriptor.h"
#include "platform/basic/Paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

/// Devices of one kind, by the number behind the kind's name (ttyUSB2 before ttyUSB10).
QStringList devicesOfKind(const QString& folder, const QString& kind) {
    QStringList names =
        QDir(folder).entryList({kind + '*'_L1}, QDir::System | QDir::Files | QDir::AllEntries);
    const auto number = [&](const QString& name) { return name.mid(kind.size()).toInt(); };
    std::sort(names.begin(), names.end(), [&](const QString& a, const QString& b) {
        return number(a) != number(b) ? number(a) < number(b) : a < b;
    });
    for (QString& name : names)
        name = folder + '/'_L1 + name;
    return names;
}

/// The kernel's mark of a device that some program opened for itself alone. A privileged user could open
/// it all the same, so the mark is read and not only met as a refusal.
bool heldExclusively(int fd) {
    int exclusive = 0;
    return ::ioctl(fd, TIOCGEXCL, &exclusive) == 0 && exclusive != 0;
}

}  // namespace

QString portPath(int n) { return portPath(n, u"/dev"_s); }

QString portPath(int n, const QString& deviceFolder) {
    if (n < 1 || n > 4)
        return {};
    const QString own = programFolder() + u"/ports/COM%1"_s.arg(n);
    const QFileInfo info(own);
    if (info.exists() || info.isSymLink())
        return own;
    QStringList devices;
    for (const char* kind : {"ttyUSB", "ttyACM", "ttyS"})
        devices += devicesOfKind(deviceFolder, QLatin1String(kind));
    return devices.value(n - 1);
}

bool portPresent(int n) { return portState(portPath(n)) == PortState::Present; }

PortState portState(const QString& path) {
    if (path.isEmpty())
        return PortState::Absent;
    const Descriptor device(
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (device.number() < 0) {
        if (errno == EBUSY)
            return PortState::Held;
        return errno == EACCES || errno == EPERM ? PortState::Forbidden : PortState::Absent;
    }
    termios settings;
    if (::tcgetattr(device.number(), &settings) != 0)  // a plain file, or a port number without hardware
        return PortState::Absent;
    return heldExclusively(device.number()) ? PortState::Held : PortState::Present;
}

QString deviceGroup(const QString& path) {
    const QString group = QFileInfo(path).group();
    return group == "root"_L1 ? QString() : group;
}

QString openRefusal(const QString& path) {
    switch (portState(path)) {
    case PortState::Present:
        return {};
    case PortState::Held:
        return u"Another program uses %1. Close that program."_s.arg(path);
    case PortState::Absent:
        return u"There is no device at %1. Check the cable and the power of the device."_s.arg(path);
    case PortState::Forbidden:
        break;
    }
    const QString group = deviceGroup(path);
    if (group.isEmpty())
        return u"You may not use %1. Ask the administrator for the right to use it."_s.arg(path);
    return u"You may not use %1. Join the group \"%2\" and sign in again."_s.arg(path, group);
}

}  // namespace platform
