// Ways to make writing fail for real during a scope: a full disk, and a user without rights.
#pragma once

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace support {

/// No file can grow beyond that many bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes = 0) {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_limit);
        rlimit tight = m_limit;
        tight.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_limit{};
    void (*m_handler)(int) = SIG_DFL;
};

/// File rights count, even where the tests run as the administrator.
class OrdinaryUser {
public:
    OrdinaryUser() {
        constexpr uid_t nobody = 65534;
        m_switched = geteuid() == 0 && seteuid(nobody) == 0;
    }
    ~OrdinaryUser() {
        if (m_switched && seteuid(0) != 0)
            std::raise(SIGABRT);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool m_switched = false;
};

}  // namespace support
