// A child process that is killed in the midst of its work.
#pragma once

#include <csignal>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

/// A child does work(1), work(2) and so on without end, and is killed when it has done as many as `times` and is
/// at the next. `later` moves the moment on by turns of the scheduler. False when it came to another end.
template <class Work>
bool killInTheMidst(int times, int later, Work work) {
    int ends[2];
    if (pipe(ends) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0) {
        for (int number = 1;; ++number) {
            work(number);
            if (write(ends[1], "x", 1) != 1)
                _exit(1);
        }
    }
    close(ends[1]);
    char word = 0;
    for (int done = 0; done < times && read(ends[0], &word, 1) == 1;)
        ++done;
    for (int turn = 0; turn < later; ++turn)
        sched_yield();
    int status = 0;
    const bool killed = child > 0 && kill(child, SIGKILL) == 0 && waitpid(child, &status, 0) == child &&
                        WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    close(ends[0]);
    return killed;
}

}  // namespace support
