// The program's folder, paths, and files that are written whole or not at all.
#include "platform/basic/Paths.h"

#include "KilledWriter.h"
#include "Raises.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cerrno>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

/// What is flushed to the disk, and whether the disk takes it.
struct Disk {
    QStringList flushed;  ///< names of files and folders, in order
    int failure = 0;      ///< what flushing a file fails with
};
Disk disk;

}  // namespace

/// In the place of the system's own.
extern "C" int fsync(int file) {
    disk.flushed << QFileInfo(QFile::symLinkTarget(u"/proc/self/fd/%1"_s.arg(file))).fileName();
    if (disk.failure == 0)
        return static_cast<int>(syscall(SYS_fsync, file));
    errno = disk.failure;
    return -1;
}

namespace {

class Files : public testing::Test {
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    static QByteArray content(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    static void put(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    /// Names of all files there, hidden ones included.
    QStringList names() const {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir m_folder;
};

/// Limits the size of any written file, as a full disk would, and takes the limit off again.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, SIG_DFL);
    }

private:
    rlimit m_before{};
};

/// Acts as an ordinary user for a while where the tests run as root, whom no right stops.
class OrdinaryUser {
public:
    OrdinaryUser() : m_before(geteuid()) {
        if (m_before == 0) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    ~OrdinaryUser() {
        if (m_before == 0) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }

private:
    uid_t m_before;
};

}  // namespace

TEST(Paths, BackslashBecomesTheSystemsSeparator) {
    EXPECT_EQ(platformPath("a\\b\\c.xml"), u"a/b/c.xml"_s);
    EXPECT_EQ(platformPath("/srv/x" + u"\\options.xml"_s), u"/srv/x/options.xml"_s);
    EXPECT_EQ(platformPath(""), u""_s);
}

TEST(Paths, ProgramFolderIsTheExecutablesUnlessSet) {
    setProgramFolder({});
    const QString own = programFolder();
    EXPECT_EQ(own, QFileInfo("/proc/self/exe").canonicalPath());
    EXPECT_FALSE(own.endsWith(u'/'));
    setProgramFolder("/srv/pharmacy/");
    EXPECT_EQ(programFolder(), u"/srv/pharmacy"_s);
    setProgramFolder("/");
    EXPECT_EQ(programFolder(), u"/"_s);
    setProgramFolder({});
    EXPECT_EQ(programFolder(), own);
}

TEST_F(Files, ExistsMeansAFile) {
    put(path("there.xml"), "x");
    EXPECT_TRUE(fileExists(path("there.xml")));
    EXPECT_TRUE(fileExists(m_folder.path() + "\\there.xml"));
    EXPECT_FALSE(fileExists(path("missing.xml")));
    EXPECT_FALSE(fileExists(m_folder.path()));
    EXPECT_FALSE(fileExists(""));
}

TEST_F(Files, WritesNewAndReplacesOld) {
    writeFile(path("a.xml"), "first");
    EXPECT_EQ(content(path("a.xml")), "first");
    writeFile(m_folder.path() + "\\a.xml", "second, longer");
    EXPECT_EQ(content(path("a.xml")), "second, longer");
    writeFile(path("a.xml"), "");
    EXPECT_EQ(content(path("a.xml")), "");
    EXPECT_EQ(names(), QStringList{"a.xml"});
}

TEST_F(Files, WritesBinaryAndLargeContent) {
    QByteArray large;
    for (int i = 0; i < 3'000'000; ++i)
        large += static_cast<char>(i * 31);
    writeFile(path("große Datei.bin"), large);
    EXPECT_EQ(content(path("große Datei.bin")), large);
}

mode_t rightsOf(const QString& file) {
    struct stat info {};
    EXPECT_EQ(stat(file.toLocal8Bit().constData(), &info), 0);
    return info.st_mode & 07777;
}

TEST_F(Files, OnlyTheOwnerReadsWhatTheProgramWrites) {
    const mode_t mask = umask(022);
    writeFile(path("new.xml"), "x");
    EXPECT_EQ(rightsOf(path("new.xml")), 0600U);
    put(path("old.xml"), "as an older version left it");
    ASSERT_EQ(chmod(path("old.xml").toLocal8Bit().constData(), 0664), 0);
    writeFile(path("old.xml"), "x");
    EXPECT_EQ(rightsOf(path("old.xml")), 0600U);
    umask(mask);
}

TEST_F(Files, WhatTheUserSavesFollowsHisCustoms) {
    const mode_t mask = umask(027);
    writeFile(path("own.pdf"), "x", Readers::UsersChoice);
    EXPECT_EQ(rightsOf(path("own.pdf")), 0640U);
    ASSERT_EQ(chmod(path("own.pdf").toLocal8Bit().constData(), 0604), 0);
    writeFile(path("own.pdf"), "y", Readers::UsersChoice);
    EXPECT_EQ(rightsOf(path("own.pdf")), 0604U) << "those of the file that is replaced";
    umask(mask);
}

TEST_F(Files, AFolderOfTheProgramIsItsOwnersAlone) {
    EXPECT_TRUE(makePrivateFolder(m_folder.path() + "\\a\\b"));
    EXPECT_EQ(rightsOf(path("a")), 0700U);
    EXPECT_EQ(rightsOf(path("a/b")), 0700U);
    ASSERT_EQ(chmod(path("a").toLocal8Bit().constData(), 0750), 0);
    EXPECT_TRUE(makePrivateFolder(path("a")));
    EXPECT_EQ(rightsOf(path("a")), 0750U) << "as the user set it";
    put(path("file"), "x");
    EXPECT_FALSE(makePrivateFolder(path("file/below")));
}

TEST_F(Files, AFinishedFileTakesAnothersPlace) {
    put(path("a.part"), "new");
    put(path("a"), "old");
    replaceFile(path("a.part"), path("a"));
    EXPECT_EQ(content(path("a")), "new");
    EXPECT_EQ(names(), QStringList{"a"});
    EXPECT_RAISES(replaceFile(path("gone.part"), path("a")), error::deviceIo);
    EXPECT_EQ(content(path("a")), "new");
}

TEST_F(Files, WritesThroughALink) {
    put(path("real.xml"), "old");
    ASSERT_TRUE(QFile::link(path("real.xml"), path("link.xml")));
    writeFile(path("link.xml"), "new");
    EXPECT_TRUE(QFileInfo(path("link.xml")).isSymLink());
    EXPECT_EQ(content(path("real.xml")), "new");
}

TEST_F(Files, TheProgramsOwnAreNotWrittenThroughALinkToAnotherFolder) {
    ASSERT_TRUE(makePrivateFolder(path("home")) && makePrivateFolder(path("other")));
    put(path("other/theirs"), "old");
    ASSERT_TRUE(QFile::link(path("other/theirs"), path("home/options.xml")));
    EXPECT_RAISES(writeFile(path("home/options.xml"), "new"), error::permissionDenied);
    EXPECT_RAISES(appendToFile(path("home/options.xml"), "new"), error::deviceIo);
    EXPECT_EQ(unfitness(path("home/options.xml"), 100), "it is a link to another folder");
    EXPECT_EQ(content(path("other/theirs")), "old");
    writeFile(path("home/options.xml"), "new", Readers::UsersChoice);
    EXPECT_EQ(content(path("other/theirs")), "new") << "what the user names he means";
}

TEST_F(Files, AFileGrowsAtItsEnd) {
    const mode_t mask = umask(0);
    appendToFile(path("a.log"), "one ");
    appendToFile(path("a.log"), "two");
    umask(mask);
    EXPECT_EQ(content(path("a.log")), "one two");
    EXPECT_EQ(rightsOf(path("a.log")), 0600U);
    ASSERT_EQ(::chmod(path("a.log").toLocal8Bit().constData(), 0644), 0);
    appendToFile(path("a.log"), " three");
    EXPECT_EQ(rightsOf(path("a.log")), 0600U) << "also what was readable before";
    EXPECT_RAISES(appendToFile(path("no/such/a.log"), "x"), error::deviceIo);
    ASSERT_EQ(::mkfifo(path("pipe.log").toLocal8Bit().constData(), 0600), 0);
    EXPECT_RAISES(appendToFile(path("pipe.log"), "x"), error::deviceIo);
    const FullDisk disk(8);
    EXPECT_RAISES(appendToFile(path("a.log"), "three"), error::diskFull);
}

TEST_F(Files, WhyAFolderCanNotBeMadeIsTheSystemsWord) {
    put(path("file"), "x");
    for (const auto& [folder, reason] : {std::pair{"file", "File exists"}, {"file/below", "File exists"}}) {
        try {
            needPrivateFolder(path(QLatin1String(folder)));
            ADD_FAILURE() << folder;
        } catch (const RuntimeError& failure) {
            EXPECT_TRUE(failure.description().startsWith(u"The folder %1"_s.arg(path("file"))) &&
                        failure.description().endsWith(QLatin1String(reason)))
                << failure.description().toStdString();
        }
    }
    EXPECT_NO_THROW(needPrivateFolder(path("a/b")));
}

TEST_F(Files, FullDiskLeavesTheOldFileAndNothingElse) {
    put(path("a.xml"), "old");
    {
        const FullDisk disk(1000);
        EXPECT_RAISES(writeFile(path("a.xml"), QByteArray(5000, 'x')), error::diskFull);
        EXPECT_RAISES(writeFile(path("b.xml"), QByteArray(5000, 'x')), error::diskFull);
    }
    EXPECT_EQ(content(path("a.xml")), "old");
    EXPECT_EQ(names(), QStringList{"a.xml"});
}

// A name must not be there before what it names: after a power cut the file would be empty.
TEST_F(Files, TheContentIsOnTheDiskBeforeTheNameAndTheNameBeforeTheEnd) {
    put(path("a.xml"), "old");
    disk = {};
    writeFile(path("a.xml"), "new");
    ASSERT_EQ(disk.flushed.size(), 2) << disk.flushed.join(' ').toStdString();
    EXPECT_TRUE(disk.flushed[0].startsWith("a.xml.")) << "the file beside, before it got its name";
    EXPECT_EQ(disk.flushed[1], QFileInfo(m_folder.path()).fileName());
}

TEST_F(Files, ANewFoldersNameIsFlushedWithTheFolderAroundIt) {
    disk.flushed.clear();
    ASSERT_TRUE(makePrivateFolder(path("mixes/closed")));
    EXPECT_EQ(disk.flushed, QStringList({QFileInfo(m_folder.path()).fileName(), "mixes"}));
    disk.flushed.clear();
    ASSERT_TRUE(makePrivateFolder(path("mixes/closed")));
    EXPECT_EQ(disk.flushed, QStringList()) << "it was there";
}

TEST_F(Files, ASecondNameIsTheSameFileAndFlushed) {
    put(path("a.mdb"), "records");
    disk.flushed.clear();
    ASSERT_TRUE(giveSecondName(path("a.mdb"), path("b.mdb")));
    EXPECT_EQ(content(path("b.mdb")), "records");
    EXPECT_EQ(disk.flushed, QStringList{QFileInfo(m_folder.path()).fileName()});
    EXPECT_FALSE(giveSecondName(path("a.mdb"), path("b.mdb"))) << "the name is taken";
}

TEST_F(Files, ADiskThatDoesNotTakeTheContentIsToldAndTheOldFileStays) {
    put(path("a.xml"), "old");
    for (const auto& [failure, number] :
         {std::pair{EIO, error::deviceIo}, std::pair{ENOSPC, error::diskFull}}) {
        disk.failure = failure;
        EXPECT_RAISES(writeFile(path("a.xml"), "new"), number);
        EXPECT_RAISES(writeFile(path("b.xml"), "new"), number);
        disk.failure = 0;
        EXPECT_EQ(content(path("a.xml")), "old");
        EXPECT_EQ(names(), QStringList{"a.xml"});
    }
}

TEST_F(Files, FullDeviceIsADiskFull) { EXPECT_RAISES(writeFile("/dev/full", "x"), error::diskFull); }

TEST_F(Files, ADeviceIsWrittenAndStaysADevice) {
    writeFile("/dev/null", "x");
    EXPECT_FALSE(QFileInfo("/dev/null").isFile());
}

TEST_F(Files, ReadOnlyFileAndFolderAreRefused) {
    ASSERT_EQ(chmod(m_folder.path().toLocal8Bit().constData(), 0777), 0);
    put(path("a.xml"), "old");
    ASSERT_EQ(chmod(path("a.xml").toLocal8Bit().constData(), 0444), 0);
    QDir(m_folder.path()).mkdir("closed");
    ASSERT_EQ(chmod(path("closed").toLocal8Bit().constData(), 0555), 0);
    {
        const OrdinaryUser user;
        EXPECT_RAISES(writeFile(path("a.xml"), "new"), error::permissionDenied);
        EXPECT_RAISES(writeFile(path("closed/b.xml"), "new"), error::permissionDenied);
    }
    EXPECT_EQ(content(path("a.xml")), "old");
    EXPECT_EQ(names(), QStringList{"a.xml"});
}

TEST_F(Files, MissingFolderAndFolderAsFileFailWithThePath) {
    try {
        writeFile(path("missing/a.xml"), "x");
        ADD_FAILURE() << "nothing raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), error::deviceIo);
        EXPECT_TRUE(error.description().contains(path("missing/a.xml")));
    }
    EXPECT_RAISES(writeFile(m_folder.path(), "x"), error::deviceIo);
    EXPECT_RAISES(writeFile("", "x"), error::deviceIo);
}

TEST_F(Files, AKilledWriterLeavesTheOldFileWhole) {
    const QByteArray old(100'000, 'o');
    const QByteArray fresh(3'000'000, 'n');
    put(path("a.xml"), old);
    for (int round = 0; round < 10; ++round) {
        ASSERT_TRUE(support::killInTheMidst(
            round, [&](int number) { writeFile(path("a.xml"), number % 2 ? fresh : old); }));
        const QByteArray found = content(path("a.xml"));
        EXPECT_TRUE(found == old || found == fresh) << found.size();
    }
}
