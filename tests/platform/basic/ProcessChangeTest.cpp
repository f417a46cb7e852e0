// A program that gives its place to another one: the process stays, what it held does not.
#include "platform/basic/ProcessChange.h"

#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

using platform::changeProcess;

constexpr int leftOpen = 77;

/// What the shell, in the place of a child of this process, says of itself.
QByteArray saidBy(const QString& script, const QStringList& words) {
    const QTemporaryDir folder;
    const QString told = folder.filePath(u"told"_s);
    const pid_t child = ::fork();
    if (child == 0) {
        // Open, and not to be closed by itself.
        if (::dup2(::open("/dev/null", O_RDONLY), leftOpen) == leftOpen)
            changeProcess(u"/bin/sh"_s, QStringList{u"-c"_s, script, u"sh"_s, told} + words);
        ::_exit(99);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    QFile file(told);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().trimmed();
}

TEST(ProcessChangeTest, TheArgumentsArriveWordForWord) {
    EXPECT_EQ(saidBy(u"printf '%s|' \"$2\" \"$3\" > \"$1\""_s, {u"--folder"_s, u"/a b/\u00fc"_s}),
              "--folder|/a b/\u00fc|");
}

TEST(ProcessChangeTest, WhatWasOpenIsClosed) {
    EXPECT_EQ(
        saidBy(u"[ -e /proc/$$/fd/%1 ] && echo open > \"$1\" || echo closed > \"$1\""_s.arg(leftOpen), {}),
        "closed");
}

TEST(ProcessChangeTest, AProgramThatIsNotThereLeavesThisOneAsItIs) {
    changeProcess(u"/nowhere/program"_s, {});
    SUCCEED();
}

TEST(ProcessChangeTest, TheArgumentsOfThisProcessAreThoseOfItsBeginning) {
    QFile line(u"/proc/self/cmdline"_s);
    ASSERT_TRUE(line.open(QIODevice::ReadOnly));
    QByteArray whole = line.readAll();
    whole.chop(1);
    QByteArrayList words = whole.split('\0');
    words.removeFirst();
    QByteArrayList own;
    for (const QString& word : platform::ownArguments())
        own << word.toLocal8Bit();
    EXPECT_EQ(own, words);
}

}  // namespace
