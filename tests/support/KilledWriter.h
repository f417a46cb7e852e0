// A child process that is killed in the midst of its work.
#pragma once

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

/// A child does work(1), work(2) and so on, and is killed when it has done as many as `times` and is at one of the
/// next: where in it, is chance. False when it came to another end.
template <class Work>
bool killInTheMidst(int times, Work work) {
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0) {
        constexpr int ahead = 4;  // no more, where the parent's turn is long in coming
        for (int number = 1; number <= times + ahead; ++number) {
            work(number);
            if (write(ends[1], "x", 1) != 1)
                _exit(1);
        }
        pause();
    }
    close(ends[1]);
    char word = 0;
    for (int done = 0; done < times && read(ends[0], &word, 1) == 1;)
        ++done;
    int status = 0;
    const bool killed = child > 0 && kill(child, SIGKILL) == 0 && waitpid(child, &status, 0) == child &&
                        WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    close(ends[0]);
    return killed;
}

}  // namespace support
