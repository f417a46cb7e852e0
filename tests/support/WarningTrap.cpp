// Qt's message handler of the tests.
#include "WarningTrap.h"

#include <QMutex>
#include <gtest/gtest.h>

namespace support {
namespace {

QMutex guard;
QStringList caught;
QtMessageHandler previous = nullptr;

/// Remarks of the offscreen platform and of a bare container, no fault of the program.
bool isNoise(const QString& message) {
    return message.startsWith("This plugin does not support") || message.contains("XDG_RUNTIME_DIR");
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type != QtWarningMsg && type != QtCriticalMsg) {
        previous(type, context, message);
        return;
    }
    if (isNoise(message))
        return;
    const QMutexLocker lock(&guard);
    caught.push_back(message);
}

QStringList taken() {
    const QMutexLocker lock(&guard);
    return std::exchange(caught, {});
}

}  // namespace

WarningTrap::WarningTrap() {
    taken();
    previous = qInstallMessageHandler(handle);
}

WarningTrap::~WarningTrap() {
    verify();
    qInstallMessageHandler(previous);
}

void WarningTrap::expectWarning(const QString& part) {
    const QMutexLocker lock(&guard);
    for (qsizetype i = 0; i < caught.size(); ++i) {
        if (caught.at(i).contains(part)) {
            caught.removeAt(i);
            return;
        }
    }
    ADD_FAILURE() << "No warning with \"" << qPrintable(part) << "\" came. There were:\n"
                  << qPrintable(caught.join('\n'));
}

void WarningTrap::verify() {
    for (const QString& message : taken())
        ADD_FAILURE() << "Unexpected warning: " << qPrintable(message);
}

}  // namespace support
