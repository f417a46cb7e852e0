// The lock that tells a second program from the first.
#include "core/InstanceLock.h"
#include "TempProgramFolder.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

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

TEST(InstanceLock, AFolderThatCantBeWrittenRefusesNobody) {
    EXPECT_FALSE(InstanceLock("/nowhere/at/all/sorvanto.lock").heldByAnother());
}

}  // namespace
