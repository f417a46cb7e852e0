// Settings beside the program: read where they are what they should be, told where they are not.
#include "platform/basic/SettingsFile.h"

#include "Hindrances.h"
#include "Raises.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryDir>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

class SettingsFileTest : public ::testing::Test {
protected:
    QString path(const QString& name = u"copies.ini"_s) const { return m_folder.filePath(name); }
    void put(const QByteArray& content) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
    QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Neither read nor written, and said.
    void expectUnused(const QString& why) const {
        SettingsFile settings(path());
        EXPECT_EQ(settings.problem().toStdString(), why.toStdString());
        EXPECT_EQ(settings.value("a/b", 7), 7);
        EXPECT_RAISES(settings.setValue("a/b", 8), error::deviceIo);
        try {
            settings.expectRead();
            ADD_FAILURE() << "nothing is told";
        } catch (const RuntimeError& failure) {
            EXPECT_EQ(failure.description().toStdString(),
                      u"%1 can't be read: %2. It is not used, and stays as it is."_s.arg(path(), why)
                          .toStdString());
        }
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(SettingsFileTest, IsEmptyWhereThereIsNone) {
    const SettingsFile settings(path());
    EXPECT_EQ(settings.problem(), "");
    EXPECT_EQ(settings.value("a/b", 7), 7);
    EXPECT_NO_THROW(settings.expectRead());
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(SettingsFileTest, IsOnTheDiskAtOnceForItsOwnerAlone) {
    const mode_t mask = umask(0);
    SettingsFile(path()).setValue("a/b", QByteArray("\x01\xff", 2));
    umask(mask);
    EXPECT_EQ(SettingsFile(path()).value("a/b").toByteArray(), QByteArray("\x01\xff", 2));
    EXPECT_EQ(QFile::permissions(path()) & 0x0077, 0);
}

TEST_F(SettingsFileTest, APipeOrADeviceIsNotOpened) {
    ASSERT_EQ(::mkfifo(path().toLocal8Bit().constData(), 0600), 0);
    expectUnused("it is no regular file");
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_TRUE(QFile::link("/dev/zero", path()));
    expectUnused("it is a link to another folder");
}

TEST_F(SettingsFileTest, WhatLiesInThePlaceOfALockKeepsNobodyWaiting) {
    ASSERT_EQ(::mkfifo(path("copies.ini.lock").toLocal8Bit().constData(), 0600), 0);
    SettingsFile(path()).setValue("a/b", 8);
    EXPECT_EQ(SettingsFile(path()).value("a/b").toInt(), 8);
    ASSERT_TRUE(QFile::remove(path("copies.ini.lock")));
    QLockFile leftOver(
        path("copies.ini.lock"));  // by a program that the disk let make it, and not take it away
    ASSERT_TRUE(leftOver.tryLock(0));
    SettingsFile(path()).setValue("a/b", 9);
    EXPECT_EQ(SettingsFile(path()).value("a/b").toInt(), 9);
}

TEST_F(SettingsFileTest, AFullDiskIsToldAndTheOldFileStays) {
    SettingsFile settings(path());
    settings.setValue("a/b", 8);
    const QByteArray before = content();
    {
        const support::FullDisk full(1);
        EXPECT_ANY_THROW(settings.setValue("a/b", QString(5000, 'x')));
    }
    EXPECT_EQ(content(), before);
    EXPECT_EQ(SettingsFile(path()).value("a/b").toInt(), 8);
}

TEST_F(SettingsFileTest, AFileThatIsTooLargeIsToldWithItsSize) {
    put("[a]\nb=1\n");
    ASSERT_TRUE(QFile::resize(path(), 5'000'000));
    expectUnused("it has 5 MB, at most 1 are read");
}

TEST_F(SettingsFileTest, WhatIsNoSettingsIsNotWrittenOver) {
    put("These are my notes\n");
    expectUnused("it is no file of settings");
    EXPECT_EQ(content(), "These are my notes\n");
}

TEST_F(SettingsFileTest, AFolderThatCanNotBeWrittenIsTold) {
    ASSERT_EQ(::chmod(QFileInfo(path()).path().toLocal8Bit().constData(), 0755), 0);
    const support::OrdinaryUser user;
    SettingsFile settings(path());
    EXPECT_RAISES(settings.setValue("a/b", 8), error::permissionDenied);
}

}  // namespace
