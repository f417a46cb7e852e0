// A server that could not be opened is not asked again by each statement, which would hold up every click: it is asked in
// the background, until it answers.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <memory>

namespace platform::postgres {
class Trial;
}

namespace sorvanto {

class ServerWait {
public:
    ServerWait();
    ~ServerWait();

    /// That server could not be opened, or may not be worked on.
    void begin(const QString& address);
    /// Whether it may be tried once more: any other one, and that one once it has answered.
    bool isOver(const QString& address);
    /// No server is waited for.
    void end();

private:
    QString m_address;
    std::unique_ptr<platform::postgres::Trial> m_trial;
    QElapsedTimer m_asked;  ///< since the last time
};

}  // namespace sorvanto
