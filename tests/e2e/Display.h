// A virtual screen for the programs under test, on a display number of its own.
#pragma once

#include <QProcess>
#include <QString>

namespace e2e {

class Display {
public:
    Display() = default;
    ~Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// False when there is no virtual screen on this machine.
    bool start();
    /// As in DISPLAY.
    const QString& name() const { return m_name; }

private:
    QProcess m_server;
    QString m_name;
};

}  // namespace e2e
