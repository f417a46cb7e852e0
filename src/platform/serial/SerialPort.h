// A serial line as the rest of the program sees it: open by path, write, be told of bytes and of failure.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace platform {

/// One line at a time, 8 data bits, no parity, one stop bit. Lives on the thread of its owner; both signals
/// come on that thread, and never from inside open(), write() or close().
class SerialPort : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~SerialPort() override = default;

    /// Opens the device for this program alone. False when that is refused; errorText() then says why and
    /// what the user can do. An open port is closed first.
    virtual bool open(const QString& path, int baudRate) = 0;
    virtual bool isOpen() const = 0;
    /// Closing a closed port does nothing. No signal follows.
    virtual void close() = 0;
    /// Hands the bytes to the line without waiting. False when the port is closed or the line is gone.
    virtual bool write(const QByteArray& bytes) = 0;
    /// Of the last failure; English.
    virtual QString errorText() const = 0;

signals:
    void bytesRead(const QByteArray& bytes);
    /// The line is gone (unplugged, peer ended). The port is closed already; told once.
    void failed(const QString& errorText);
};

}  // namespace platform
