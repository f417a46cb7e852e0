// The locks that tell a second program from the first: on the folder, and on the database of two folders.
#include "core/InstanceLock.h"
#include "TempProgramFolder.h"
#include "support/Hindrances.h"
#include "support/OtherProcess.h"

#include <QProcess>
#include <cerrno>
#include <functional>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
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
using sorvanto::InstanceState;

enum class LockAnswer { Alone, Runs, ReadingOnly };

LockAnswer answerOf(const InstanceState& state) {
    if (state.runs)
        return LockAnswer::Runs;
    return state.readingOnly.isEmpty() ? LockAnswer::Alone : LockAnswer::ReadingOnly;
}

/// Asks in a process of its own.
LockAnswer askedElsewhere(const std::function<InstanceState(InstanceLock&)>& ask) {
    const pid_t child = fork();
    if (child == 0) {
        InstanceLock lock;
        _exit(static_cast<int>(answerOf(ask(lock))));
    }
    int status = -1;
    waitpid(child, &status, 0);
    return static_cast<LockAnswer>(WEXITSTATUS(status));
}

LockAnswer folderElsewhere(const QString& folder) {
    return askedElsewhere([&](InstanceLock& lock) { return lock.takeFolder(folder); });
}

class InstanceLockTest : public testing::Test {
protected:
    const support::TempProgramFolder folder;
    InstanceLock lock;

    LockAnswer take() { return answerOf(lock.takeFolder(folder.path())); }
    /// What a running program's lock file holds, with other values for process and computer.
    QByteArray lockText(const QByteArray& process, const QByteArray& computer) const {
        QList<QByteArray> lines;
        {
            InstanceLock own;
            own.takeFolder(folder.path());
            lines = folder.read("running.lock").split('\n');
        }
        lines[0] = process;
        if (lines[2] != computer)
            lines[3] = "00000000000000000000000000000000";  // its number
        lines[2] = computer;
        return lines.join('\n');
    }
};

TEST_F(InstanceLockTest, IsHeldAsLongAsItsOwnerLives) {
    {
        InstanceLock first;
        EXPECT_EQ(answerOf(first.takeFolder(folder.path())), LockAnswer::Alone);
        EXPECT_EQ(answerOf(first.takeFolder(folder.path())), LockAnswer::Alone)
            << "its own lock is no other's";
        EXPECT_EQ(folderElsewhere(folder.path()), LockAnswer::Runs);
        EXPECT_EQ(folderElsewhere(folder.path()), LockAnswer::Runs) << "asking does not take it";
    }
    EXPECT_EQ(folderElsewhere(folder.path()), LockAnswer::Alone);
}

TEST_F(InstanceLockTest, FallsWithAKilledProgram) {
    {
        const support::OtherProcess other([&] { return take() == LockAnswer::Alone; });
        EXPECT_EQ(take(), LockAnswer::Runs);
    }
    EXPECT_TRUE(folder.has("running.lock")) << "left by the killed one";
    EXPECT_EQ(take(), LockAnswer::Alone);
}

// A program that was started from this one and goes on, as a viewer does.
TEST_F(InstanceLockTest, IsNotHandedOnToOtherPrograms) {
    QProcess other;
    {
        InstanceLock own;
        EXPECT_EQ(answerOf(own.takeFolder(folder.path())), LockAnswer::Alone);
        other.start("cat", {});
        ASSERT_TRUE(other.waitForStarted());
    }
    EXPECT_EQ(folderElsewhere(folder.path()), LockAnswer::Alone);
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished());
}

TEST_F(InstanceLockTest, TwoFoldersMayNotHaveOneDatabase) {
    folder.write("sorvanto.mdb", "x");
    const QString file = folder.path("sorvanto.mdb");
    ASSERT_TRUE(QFile::link(file, folder.path("link.mdb")));
    EXPECT_EQ(answerOf(lock.takeDatabase(file)), LockAnswer::Alone);
    for (const QString& path :
         {file, folder.path("link.mdb"),
          QString(folder.path() + "/../" + QFileInfo(folder.path()).fileName() + "\\sorvanto.mdb")})
        EXPECT_EQ(askedElsewhere([&](InstanceLock& other) { return other.takeDatabase(path); }),
                  LockAnswer::Runs)
            << qPrintable(path);
    folder.write("other.mdb", "x");
    EXPECT_EQ(answerOf(lock.takeDatabase(folder.path("other.mdb"))), LockAnswer::Alone);
    EXPECT_EQ(askedElsewhere([&](InstanceLock& other) { return other.takeDatabase(file); }),
              LockAnswer::Alone)
        << "given back with the change to another one";
}

TEST_F(InstanceLockTest, AllOfThemAreTakenTogether) {
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    folder.write("sorvanto.mdb", "x");
    const QString file = folder.path("sorvanto.mdb");
    const QString identity(32, 'c');
    lock.begin(folder.path(), file, identity);
    EXPECT_EQ(take(), LockAnswer::Alone) << "waits for all";
    EXPECT_EQ(askedElsewhere([&](InstanceLock& other) { return other.takeDatabase(file); }),
              LockAnswer::Runs);
    EXPECT_EQ(askedElsewhere([&](InstanceLock& other) { return other.takeIdentity(identity); }),
              LockAnswer::ReadingOnly);
    EXPECT_EQ(answerOf(lock.takeDatabase(file)), LockAnswer::Alone) << "its own";
    EXPECT_EQ(answerOf(lock.takeIdentity(identity)), LockAnswer::Alone) << "its own";
    qunsetenv("XDG_RUNTIME_DIR");
}

TEST_F(InstanceLockTest, AHeldFolderLeavesTheDatabaseUntouched) {
    folder.write("sorvanto.mdb", "x");
    const support::OtherProcess other([&] { return take() == LockAnswer::Alone; });
    InstanceLock second;
    second.begin(folder.path(), folder.path("sorvanto.mdb"), QString());
    EXPECT_EQ(answerOf(second.takeFolder(folder.path())), LockAnswer::Runs);
    EXPECT_FALSE(folder.has("sorvanto.mdb.lock"));
}

// A hard link, a folder mounted twice, a copy: other paths, one identity.
TEST_F(InstanceLockTest, ACopyIsReadOnlyWhileTheDatabaseIsOpen) {
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    const QString one(32, 'a');
    const QString other(32, 'b');
    const auto elsewhere = [](const QString& identity) {
        return askedElsewhere([&](InstanceLock& asked) { return asked.takeIdentity(identity); });
    };
    EXPECT_EQ(answerOf(lock.takeIdentity(one)), LockAnswer::Alone);
    EXPECT_EQ(answerOf(lock.takeIdentity(one)), LockAnswer::Alone) << "its own lock is no other's";
    EXPECT_EQ(elsewhere(one), LockAnswer::ReadingOnly);
    EXPECT_EQ(elsewhere(other), LockAnswer::Alone);
    EXPECT_EQ(answerOf(lock.takeIdentity(other)), LockAnswer::Alone);
    EXPECT_EQ(elsewhere(one), LockAnswer::Alone) << "given back with the change to another one";
    EXPECT_EQ(answerOf(lock.takeIdentity(QString())), LockAnswer::Alone);
    EXPECT_EQ(elsewhere(other), LockAnswer::Alone);
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    EXPECT_EQ(answerOf(lock.takeIdentity(one)), LockAnswer::Alone);
    qunsetenv("XDG_RUNTIME_DIR");
}

TEST_F(InstanceLockTest, WhatDeadProgramsAndFailuresLeaveIsClearedAway) {
    const QByteArray own = QSysInfo::machineHostName().toUtf8();
    for (const QByteArray& left :
         {QByteArray(), QByteArray("garbage"), QByteArray(100'000, '\n'), QByteArray("\0\1\2", 3),
          lockText("999999999", own), lockText("1", own), lockText(QByteArray::number(getppid()), own)}) {
        folder.write("running.lock", left);
        InstanceLock fresh;
        EXPECT_EQ(answerOf(fresh.takeFolder(folder.path())), LockAnswer::Alone) << left.left(40).constData();
    }
}

TEST_F(InstanceLockTest, WhatIsNoLockFileIsLeftAloneAndNothingHangs) {
    const QString path = folder.path("running.lock");
    const std::function<void()> things[] = {
        [&] { EXPECT_TRUE(QDir().mkdir(path)); },
        [&] { EXPECT_EQ(mkfifo(qPrintable(path), 0600), 0); },
        [&] { EXPECT_TRUE(QFile::link("/dev/zero", path)); },
        [&] { EXPECT_TRUE(QFile::link(folder.path("elsewhere"), path)); },
    };
    for (const auto& make : things) {
        make();
        InstanceLock fresh;
        const InstanceState state = fresh.takeFolder(folder.path());
        EXPECT_FALSE(state.runs);
        EXPECT_EQ(state.readingOnly,
                  folder.path() + " can not be locked, since the file " + path + " can not be made.");
        EXPECT_FALSE(folder.has("elsewhere"));
        EXPECT_EQ(::remove(qPrintable(path)), 0);
    }
}

TEST_F(InstanceLockTest, AnotherComputersLockIsNotTaken) {
    folder.write("running.lock", lockText("4711", "bench-2"));
    const InstanceState state = lock.takeFolder(folder.path());
    EXPECT_FALSE(state.runs) << "not proven";
    EXPECT_EQ(state.readingOnly, folder.path() +
                                     " was locked on the computer bench-2. If the program does not " +
                                     "run there, delete the file " + folder.path("running.lock") + ".");
    EXPECT_TRUE(folder.has("running.lock"));
}

TEST_F(InstanceLockTest, AFolderThatCantBeWrittenIsOnlyRead) {
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                         QFile::ExeOther));
    {
        const support::OrdinaryUser user;
        EXPECT_EQ(take(), LockAnswer::ReadingOnly);
    }
    EXPECT_EQ(answerOf(InstanceLock().takeFolder("/nowhere/at/all")), LockAnswer::ReadingOnly);
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST_F(InstanceLockTest, AnotherUsersProgramIsProvenToo) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs two users";
    ASSERT_EQ(chmod(qPrintable(folder.path()), 01777), 0);
    {
        const support::OtherProcess other([&] { return take() == LockAnswer::Alone; });
        const support::OrdinaryUser user;
        EXPECT_EQ(take(), LockAnswer::Runs);
    }
    // What the other one has left can't be cleared away by this one.
    const support::OrdinaryUser user;
    EXPECT_EQ(take(), LockAnswer::ReadingOnly);
}

TEST_F(InstanceLockTest, AProgramOfTheFirstVersionIsNoticedAndKeptOut) {
    const auto flockIt = [&] {
        const int file = open(qPrintable(folder.path("sorvanto.lock")), O_RDWR | O_CREAT, 0600);
        return flock(file, LOCK_EX | LOCK_NB) == 0;
    };
    {
        const support::OtherProcess first(flockIt);
        EXPECT_EQ(take(), LockAnswer::Runs);
    }
    EXPECT_EQ(take(), LockAnswer::Alone);
    const pid_t child = fork();
    if (child == 0)
        _exit(flockIt() ? 1 : 0);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "it would have started beside this one";
}

// As on a network folder whose server knows no locks: nobody is proven, so nobody is refused.
TEST_F(InstanceLockTest, ALockThatTheFolderCantGiveRefusesNobody) {
    for (const int failure : {ENOLCK, EOPNOTSUPP, EIO}) {
        InstanceLock fresh;
        lockFailure = failure;
        EXPECT_FALSE(fresh.takeFolder(folder.path()).runs) << strerror(failure);
        lockFailure = 0;
    }
}

}  // namespace
