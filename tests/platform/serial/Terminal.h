// A pseudo-terminal of the test's own: what a program writes to path() comes out of read(), and back.
#pragma once

#include "support/Waiting.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTest>
#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace platform::test {

class Terminal {
public:
    Terminal() : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
        ::grantpt(m_master);
        ::unlockpt(m_master);
        char name[128];
        ::ptsname_r(m_master, name, sizeof name);
        m_path = QFile::decodeName(name);
        termios settings;
        ::tcgetattr(m_master, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(m_master, TCSANOW, &settings);
    }
    ~Terminal() { close(); }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    QString path() const { return m_path; }
    void write(const QByteArray& bytes) const {
        EXPECT_EQ(::write(m_master, bytes.constData(), static_cast<std::size_t>(bytes.size())), bytes.size());
    }
    /// Waits for that many bytes.
    QByteArray read(int count) const {
        QByteArray bytes;
        static_cast<void>(support::waitFor([&] {
            char buffer[4096];
            const auto got = ::read(m_master, buffer, sizeof buffer);
            bytes.append(buffer, got > 0 ? static_cast<int>(got) : 0);
            return bytes.size() >= count;
        }));
        return bytes;
    }
    /// Pulls the plug.
    void close() {
        if (m_master >= 0)
            ::close(m_master);
        m_master = -1;
    }

private:
    int m_master;
    QString m_path;
};

}  // namespace platform::test
