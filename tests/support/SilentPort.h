// A port of this computer on which something listens and never says a word.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace support {

class SilentPort {
public:
    SilentPort() : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        ::bind(m_socket, reinterpret_cast<const sockaddr*>(&place), size);
        ::listen(m_socket, 5);
        ::getsockname(m_socket, reinterpret_cast<sockaddr*>(&place), &size);
        m_number = ntohs(place.sin_port);
    }
    ~SilentPort() { close(); }
    SilentPort(const SilentPort&) = delete;
    SilentPort& operator=(const SilentPort&) = delete;

    int number() const { return m_number; }
    /// Whether somebody has come.
    bool hasCaller() const {
        pollfd caller{m_socket, POLLIN, 0};
        return ::poll(&caller, 1, 0) > 0;
    }
    /// From now on nothing listens there.
    void close() {
        if (m_socket >= 0)
            ::close(m_socket);
        m_socket = -1;
    }

private:
    int m_socket, m_number = 0;
};

}  // namespace support
