// The serial line by QSerialPort. Two things that it does are kept from the listener: it announces "no error" on
// opening, which is not passed on; and it repeats the error of a line whose other end has gone without end, so that
// such a line is closed at the first one.
#include "platform/serial/QtSerialPort.h"

#include "platform/serial/PortProbe.h"

#include <QFileInfo>

namespace platform {

QtSerialPort::QtSerialPort(QObject* parent) : SerialPort(parent) {
    connect(&m_port, &QSerialPort::readyRead, this, [this] {
        const QByteArray bytes = m_port.readAll();
        if (!bytes.isEmpty())
            emit bytesRead(bytes);
    });
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialPort::lineError);
}

QtSerialPort::~QtSerialPort() { QtSerialPort::close(); }

bool QtSerialPort::open(const QString& path, int baudRate) {
    close();
    m_errorText.clear();
    if (const QString refused = openRefusal(path); !refused.isEmpty()) {
        m_errorText = refused;
        return false;
    }
    // A link beside the program may lead anywhere; the lock of the line belongs to the device itself.
    m_port.setPortName(QFileInfo(path).canonicalFilePath());
    const bool opened = [&] {
        const QSignalBlocker quiet(m_port);
        return m_port.open(QIODevice::ReadWrite) && m_port.setBaudRate(baudRate) &&
               m_port.setDataBits(QSerialPort::Data8) && m_port.setParity(QSerialPort::NoParity) &&
               m_port.setStopBits(QSerialPort::OneStop) && m_port.setFlowControl(QSerialPort::NoFlowControl);
    }();
    if (!opened) {
        m_errorText = m_port.errorString();
        close();
        return false;
    }
    // A pseudo-terminal has no such line and refuses; a device may need it to answer at all.
    const QSignalBlocker quiet(m_port);
    m_port.setDataTerminalReady(true);
    m_port.clearError();
    return true;
}

void QtSerialPort::close() {
    if (m_port.isOpen()) {
        const QSignalBlocker quiet(m_port);
        m_port.close();
    }
}

bool QtSerialPort::write(const QByteArray& bytes) {
    return m_port.isOpen() && m_port.write(bytes) == bytes.size();
}

void QtSerialPort::lineError(QSerialPort::SerialPortError error) {
    if (error == QSerialPort::NoError || error == QSerialPort::TimeoutError || !m_port.isOpen())
        return;
    if (error == QSerialPort::UnsupportedOperationError)
        return;
    m_errorText = m_port.errorString();
    close();
    // Told when the handler that met it has ended, so that no write() is interrupted by its own failure.
    QMetaObject::invokeMethod(
        this, [this] { emit failed(m_errorText); }, Qt::QueuedConnection);
}

}  // namespace platform
