// The serial line on a real device or a pseudo-terminal.
#pragma once

#include "platform/serial/SerialPort.h"

#include <QSerialPort>

namespace platform {

class QtSerialPort : public SerialPort {
    Q_OBJECT

public:
    explicit QtSerialPort(QObject* parent = nullptr);
    ~QtSerialPort() override;

    bool open(const QString& path, int baudRate) override;
    bool isOpen() const override { return m_port.isOpen(); }
    void close() override;
    bool write(const QByteArray& bytes) override;
    QString errorText() const override { return m_errorText; }

private:
    void lineError(QSerialPort::SerialPortError error);

    QSerialPort m_port;
    QString m_errorText;
};

}  // namespace platform
