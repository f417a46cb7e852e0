// What is wrong with a database file, told apart.
#include "platform/data/sqlite/DatabaseState.h"
#include "support/Hindrances.h"
#include "support/TestDatabase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using platform::databaseState;
using platform::DatabaseState;

class DatabaseStateTest : public ::testing::Test {
protected:
    void SetUp() override { support::createDatabaseFile(path); }
    void write(const QByteArray& content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("sorvanto.mdb");
};

TEST_F(DatabaseStateTest, AWholeFileIsUsable) { EXPECT_EQ(databaseState(path), DatabaseState::Usable); }

TEST_F(DatabaseStateTest, AbsentFolderEmptyFolderAndMissingFileDiffer) {
    EXPECT_EQ(databaseState(folder.filePath("share/sorvanto.mdb")), DatabaseState::FolderAbsent);
    QDir(folder.path()).mkdir("stick");
    EXPECT_EQ(databaseState(folder.filePath("stick/sorvanto.mdb")), DatabaseState::FolderEmpty);
    EXPECT_EQ(databaseState(folder.filePath("other.mdb")), DatabaseState::Missing);
    EXPECT_EQ(databaseState(QString()), DatabaseState::Missing);
}

TEST_F(DatabaseStateTest, WhatIsNoFileIsNotOpened) {
    EXPECT_EQ(databaseState(folder.path()), DatabaseState::NotAFile);
    QFile::remove(path);
    ASSERT_EQ(::mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    EXPECT_EQ(databaseState(path), DatabaseState::NotAFile);
}

TEST_F(DatabaseStateTest, DamageOfEachKind) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    for (const QByteArray& content :
         {QByteArray(),
          QByteArray("no database, but a text that is long enough to be taken for its header ..."),
          QByteArray(8192, '\0'), whole.left(whole.size() / 2 + 100),
          QByteArray(whole).replace(16, 2000, QByteArray(2000, '\7'))}) {
        write(content);
        EXPECT_EQ(databaseState(path), DatabaseState::Damaged) << content.left(20).toStdString();
    }
}

TEST_F(DatabaseStateTest, AFileThatMayNotBeRead) {
    QFile::setPermissions(folder.path(), QFile::Permissions(0x5755));
    QFile::setPermissions(path, QFile::Permissions());
    const support::OrdinaryUser user;
    EXPECT_EQ(databaseState(path), DatabaseState::Forbidden);
}

TEST_F(DatabaseStateTest, AFileThatAnotherProgramKeeps) {
    QProcess shell;
    shell.start("sqlite3", {path});
    shell.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
    ASSERT_TRUE(shell.waitForReadyRead());
    EXPECT_EQ(databaseState(path), DatabaseState::Locked);
    shell.closeWriteChannel();
    shell.waitForFinished();
    EXPECT_EQ(databaseState(path), DatabaseState::Usable);
}

}  // namespace
