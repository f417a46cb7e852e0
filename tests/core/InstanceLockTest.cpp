// The lock that tells a second program from the first.
#include "core/InstanceLock.h"
#include "TempProgramFolder.h"

#include <QProcess>
#include <cerrno>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What a lock asked for fails with; 0: the system decides.
int lockFailure = 0;

}  // namespace

/// In the place of the system's own.
extern "C" int flock(int file, int operation) noexcept {
    if (lockFailure == 0)
        return static_cast<int>(syscall(SYS_flock, file, operation));
    errno = lockFailure;
    return -1;
}

namespace {

using sorvanto::InstanceLock;

/// Asks in a process of its own; 1 when the lock is held by another.
int askedElsewhere(const QString& path) {
    const pid_t child = fork();
    if (child == 0)
        _exit(InstanceLock(path).heldByAnother() ? 1 : 0);
    int status = -1;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

TEST(InstanceLock, IsHeldAsLongAsItsOwnerLives) {
    const support::TempProgramFolder folder;
    const QString path = folder.path() + "\\sorvanto.lock";
    {
        InstanceLock first(path);
        EXPECT_FALSE(first.heldByAnother());
        EXPECT_FALSE(first.heldByAnother()) << "its own lock is no other's";
        EXPECT_EQ(askedElsewhere(path), 1);
        EXPECT_EQ(askedElsewhere(path), 1) << "asking does not take it";
    }
    EXPECT_EQ(askedElsewhere(path), 0);
    EXPECT_TRUE(folder.has("sorvanto.lock"));
}

// A program that was started from this one and goes on, as a viewer does.
TEST(InstanceLock, IsNotHandedOnToOtherPrograms) {
    const support::TempProgramFolder folder;
    QProcess other;
    {
        InstanceLock lock(folder.path("sorvanto.lock"));
        EXPECT_FALSE(lock.heldByAnother());
        other.start("cat", {});
        ASSERT_TRUE(other.waitForStarted());
    }
    EXPECT_EQ(askedElsewhere(folder.path("sorvanto.lock")), 0);
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished());
}

// As on a network folder whose server knows no locks: nobody may be kept out by that.
TEST(InstanceLock, ALockThatTheFolderCantGiveRefusesNobody) {
    const support::TempProgramFolder folder;
    for (const int failure : {ENOLCK, EOPNOTSUPP, EIO, EINTR}) {
        InstanceLock lock(folder.path("sorvanto.lock"));
        lockFailure = failure;
        EXPECT_FALSE(lock.heldByAnother()) << strerror(failure);
        lockFailure = EWOULDBLOCK;
        EXPECT_TRUE(lock.heldByAnother());
        lockFailure = 0;
        EXPECT_FALSE(lock.heldByAnother()) << "it can be asked again";
        EXPECT_EQ(askedElsewhere(folder.path("sorvanto.lock")), 1) << "and is held from then on";
    }
}

TEST(InstanceLock, AFolderThatCantBeWrittenRefusesNobody) {
    EXPECT_FALSE(InstanceLock("/nowhere/at/all/sorvanto.lock").heldByAnother());
}

}  // namespace
