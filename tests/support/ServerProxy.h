// Stands between a test and its server, and does to the line what networks do: loses replies, goes silent, cuts, delays.
// Counts the ways there and back.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace support {

class ServerProxy {
public:
    /// In front of the server of that address, which names the folder of its socket.
    explicit ServerProxy(const QString& address);
    ~ServerProxy();
    ServerProxy(const ServerProxy&) = delete;
    ServerProxy& operator=(const ServerProxy&) = delete;

    /// The same, through this one.
    QString address() const { return m_address; }

    enum class Fault {
        LoseServer,  ///< as LoseReply, and nobody is let in from then on
        LoseReply,   ///< the server gets it and answers; then the line is cut, and the answer is lost
        Cut,         ///< the server never gets it, and the line is cut
        FallSilent   ///< the server never gets it, and nothing comes back from then on; the line stands
    };
    /// Does that, once, to the next message of the client that holds the text, or to a later one.
    void arm(const QByteArray& text, Fault fault, int skipped = 0);
    /// Whether that is still to come.
    bool isArmed() const;
    void disarm();
    /// All lines that there are stand, and bring nothing any more in either direction.
    void fallSilent();
    /// From now on all lines do so, new ones as well, as behind a firewall; or lines that are opened then bring something.
    void silence(bool silent);
    /// Cuts all lines that there are.
    void cut();
    /// From now on nobody is let in, or everybody again.
    void refuse(bool refused);
    /// How much later an answer comes.
    void delay(int milliseconds);
    /// Messages that the client had to wait for since the last time it was asked.
    int takeTrips();
    /// What these were, a line each as far as it is text; forgotten then.
    QString takeMessages();
    /// Called each time the client begins to wait, from a thread of its own.
    void whenAsked(std::function<void()> asked);
    /// How many lines were opened.
    int lines() const;

private:
    class Loop;
    QString m_address;
    std::unique_ptr<Loop> m_loop;
};

}  // namespace support
