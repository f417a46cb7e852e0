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
    /// Whether a server is waited for.
    bool isOn() const { return m_trial != nullptr; }
    /// Whether what it was asked last has come to an end.
    bool hasAsked() const;
    /// Whether that server gave its records to this program when it was last asked, which waits for nothing. Asks anew where
    /// that began longer ago than the pause, in milliseconds.
    bool answers(int pause);
    /// Whether it may be tried once more: any other one, and that one once it has answered.
    bool isOver(const QString& address);
    /// No server is waited for.
    void end();

private:
    void ask();

    QString m_address;
    std::unique_ptr<platform::postgres::Trial> m_trial;
    QElapsedTimer m_asked;  ///< since the last time
    bool m_answers = false;
};

}  // namespace sorvanto
