// Another process that has done something and stays, until it is killed with the object.
#pragma once

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

class OtherProcess {
public:
    /// Returns when the other one has done it; fails the test when that gave false.
    explicit OtherProcess(const std::function<bool()>& does) {
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        m_process = fork();
        if (m_process == 0) {
            const char word = does() ? 'y' : 'n';
            [[maybe_unused]] const auto told = write(ready[1], &word, 1);
            for (;;)
                pause();
        }
        char word = 'n';
        EXPECT_EQ(read(ready[0], &word, 1), 1);
        EXPECT_EQ(word, 'y');
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProcess() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

private:
    pid_t m_process;
};

}  // namespace support
