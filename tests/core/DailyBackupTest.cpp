// The dated copies of the database.
#include "core/DailyBackup.h"
#include "Hindrances.h"
#include "TestProgram.h"
#include "Waiting.h"
#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Connection.h"
#include "shared/basMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

std::atomic<bool> diskHangs = false;
std::atomic<bool> somebodyWaits = false;

/// Of the folder "stick": which threads have listed it. A share that has gone away would hold them up.
struct Listed {
    std::atomic<int> byTheWindow = 0, byOthers = 0;
    std::thread::id window = std::this_thread::get_id();
};
Listed stickListed;
std::atomic<bool> stickHangs = false;

}  // namespace

/// In the place of the system's own, which it calls.
extern "C" DIR* opendir(const char* path) {
    using OpenDir = DIR* (*)(const char*);
    static const auto systems = reinterpret_cast<OpenDir>(dlsym(RTLD_NEXT, "opendir"));
    if (QByteArray(path).endsWith("/stick")) {
        ++(std::this_thread::get_id() == stickListed.window ? stickListed.byTheWindow : stickListed.byOthers);
        while (stickHangs)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return systems(path);
}

/// In the place of the system's own: a share that has gone away.
extern "C" int fsync(int file) {
    while (diskHangs) {
        somebodyWaits = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return static_cast<int>(syscall(SYS_fsync, file));
}

namespace {

using namespace sorvanto;
constexpr int longestCopy = 20'000;  // milliseconds

class DailyBackupTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        openDatabase();
    }
    /// Runs a whole backup.
    void run() {
        DailyBackup backup(context, 0);
        backup.startSoon();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !backup.running(); }, longestCopy));
    }
    QStringList copies() { return QDir(folder.path("backups")).entryList(QDir::Files, QDir::Name); }
};

TEST_F(DailyBackupTest, SaysWhenACopyWasMadeAndOnlyThen) {
    int said = 0;
    for (const int expected : {1, 1}) {
        DailyBackup backup(context, 0);
        backup.whenCopied([this, &said] {
            ++said;
            EXPECT_EQ(copies().size(), 1) << "it is there by then";
        });
        backup.startSoon();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !backup.running(); }, longestCopy));
        EXPECT_EQ(said, expected) << "none is due the second time";
    }
}

TEST_F(DailyBackupTest, MakesACheckedCopyOfTheDay) {
    openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('Zinc oxide')");
    run();
    ASSERT_EQ(copies(), QStringList{"sorvanto-0001-2026-03-07-140509.mdb"});
    const QString copy = folder.path("backups/" + copies().first());
    EXPECT_EQ(support::rowsText(support::runSql(copy, "SELECT chm_Name FROM Chemical")), "Zinc oxide");
    EXPECT_EQ(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(QFile::permissions(folder.path("backups")) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(DailyBackupTest, OneADayIsEnough) {
    run();
    run();
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(DailyBackupTest, ADayOfTheFirstVersionCounts) {
    QDir(folder.path()).mkdir("backups");
    folder.write("backups/sorvanto-2026-03-07.mdb", "this morning's");
    run();
    EXPECT_EQ(copies(), QStringList{"sorvanto-2026-03-07.mdb"});
}

TEST_F(DailyBackupTest, AProgramThatStaysOpenMakesOneEachDay) {
    DailyBackup backup(context, 0, 1);
    backup.startSoon();
    for (int day = 7; day <= 13; ++day) {
        clock.set(QDateTime(QDate(2026, 3, day), QTime(8, 0)));
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return copies().size() == day - 6 && !backup.running(); }, longestCopy))
            << day << ": " << copies().join(' ').toStdString();
    }
}

TEST_F(DailyBackupTest, OverAWeekOfAMovedClockEachDayHasItsCopyAndTheNewestMadeStaysTheFirst) {
    const QDate days[]{{2026, 3, 7},  {2026, 3, 8}, {2031, 1, 1},  {2031, 1, 2},
                       {2026, 3, 11}, {2001, 1, 1}, {2026, 3, 13}, {2026, 3, 14}};
    DailyBackup backup(context, 0, 1);
    backup.startSoon();
    int made = 0;
    for (const QDate day : days) {
        clock.set(QDateTime(day, QTime(8, 0), Qt::UTC));
        ++made;
        const QString name =
            u"sorvanto-%1-%2-080000.mdb"_s.arg(made, 4, 10, '0'_L1).arg(day.toString(u"yyyy-MM-dd"_s));
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return copies().size() == made && !backup.running(); }, longestCopy));
        EXPECT_TRUE(copies().contains(name)) << copies().join(' ').toStdString();
        EXPECT_EQ(QFileInfo(CopyShelf(folder.path("backups"), {}).copies().front().path).fileName(), name);
    }
}

TEST_F(DailyBackupTest, FiftyBatchesMakeAnother) {
    DailyBackup backup(context, 0, 1);
    backup.startSoon();
    ASSERT_TRUE(QTest::qWaitFor([&] { return copies().size() == 1 && !backup.running(); }, longestCopy));
    const auto logBatches = [](int count) {
        for (int i = 0; i < count; ++i)
            openDB()->execute("INSERT INTO Log (log_Name) VALUES ('Gel')");
    };
    logBatches(49);
    bool looked = false;
    QTimer::singleShot(2, [&] { looked = true; });  // due after the next look, which is one away
    ASSERT_TRUE(support::waitFor([&] { return looked; }));
    EXPECT_FALSE(backup.running()) << "no copy is due";
    EXPECT_EQ(copies(), QStringList{"sorvanto-0001-2026-03-07-140509.mdb"});
    logBatches(1);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return copies() == QStringList{"sorvanto-0002-2026-03-07-140509.mdb"}; }, longestCopy))
        << "it stands for the day from now on";
}

TEST_F(DailyBackupTest, AnotherDatabaseOfTheDayGetsItsOwn) {
    sql("CREATE TABLE FileIdentity (fid_Identity TEXT(32), fid_Parent TEXT(32), fid_Changes INTEGER)");
    sql("INSERT INTO FileIdentity VALUES ('0123456789abcdef0123456789abcdef', NULL, 0)");
    QDir(folder.path()).mkdir("backups");
    folder.write("backups/sorvanto-fedcba98-0007-2026-03-07-080000.mdb", "another one's");
    run();
    EXPECT_EQ(copies(), (QStringList{"sorvanto-01234567-0001-2026-03-07-140509.mdb",
                                     "sorvanto-fedcba98-0007-2026-03-07-080000.mdb"}));
}

TEST_F(DailyBackupTest, ASecondPlaceHoldsTheSame) {
    QDir(folder.path()).mkdir("stick");
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    run();
    EXPECT_EQ(QDir(folder.path("stick")).entryList(QDir::Files), copies());
    EXPECT_EQ(CopySettings::read().lastRehearsal, "2026-03");
}

TEST_F(DailyBackupTest, TheWindowNeverLooksAtTheSecondPlaceItself) {
    run();
    QDir(folder.path()).mkdir("stick");
    CopySettings settings = CopySettings::read();
    settings.secondPlace = folder.path("stick");
    settings.write();
    stickListed.byTheWindow = stickListed.byOthers = 0;
    run();
    EXPECT_EQ(stickListed.byTheWindow, 0);
    EXPECT_GT(stickListed.byOthers, 0);
    stickListed.byOthers = 0;
    run();
    EXPECT_EQ(stickListed.byTheWindow, 0) << "nor when it has its copy";
    EXPECT_GT(stickListed.byOthers, 0);
}

TEST_F(DailyBackupTest, ASecondPlaceWithNewerNumbersKeepsTheNewCopyAndIsThinnedOut) {
    QDir(folder.path()).mkdir("stick");
    for (int day = 1; day <= 20; ++day) {
        const QString number = u"%1"_s.arg(day, 4, 10, QChar('0'));
        folder.write(u"stick/sorvanto-%1-2026-03-%2-080000.mdb"_s.arg(number, number.right(2)), "of before");
    }
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    run();
    const QStringList there = QDir(folder.path("stick")).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(copies(), QStringList{"sorvanto-0021-2026-03-07-140509.mdb"});
    EXPECT_EQ(there.last(), copies().first());
    EXPECT_EQ(there.size(), 14) << there.join('\n').toStdString();
}

TEST_F(DailyBackupTest, ASecondPlaceThatIsGoneIsToldAndTheCopyIsThere) {
    CopySettings settings;
    settings.secondPlace = folder.path("no stick");
    settings.write();
    run();
    EXPECT_TRUE(expectReport("DailyBackup:secondPlace").description.contains("no stick"));
    EXPECT_EQ(copies().size(), 1);
    EXPECT_EQ(CopySettings::read().lastRehearsal, "2026-03") << "what was done is noted";
    run();  // not told again, since no copy is due
    QDir(folder.path()).mkdir("no stick");
    run();
    EXPECT_EQ(QDir(folder.path("no stick")).entryList(QDir::Files), copies()) << "when it comes along";
    EXPECT_EQ(copies().size(), 1) << "it gets the copy that is there";
}

TEST_F(DailyBackupTest, ASecondPlaceThatHangsIsToldAndHoldsUpNoCopyOfTheFirst) {
    QDir(folder.path()).mkdir("stick");
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    struct Hang {
        Hang() { stickHangs = true; }
        ~Hang() { stickHangs = false; }
    };
    DailyBackup backup(context, 0, 1, 0, 0);
    {
        const Hang hang;
        backup.startSoon();
        for (int day = 7; day <= 9; ++day) {
            clock.set(QDateTime(QDate(2026, 3, day), QTime(8, 0), Qt::UTC));
            ASSERT_TRUE(QTest::qWaitFor([&] { return !reporter->calls.empty(); }, longestCopy)) << day;
            EXPECT_EQ(expectReport("DailyBackup:secondPlace").description,
                      "The second place for copies does not answer: " + folder.path("stick"));
            EXPECT_EQ(copies().size(), day - 6) << "made before the second place is asked";
        }
    }
    const QDir stick(folder.path("stick"));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return stick.entryList(QDir::Files).contains(copies().last()); }, longestCopy));
    backup.stop();
}

TEST_F(DailyBackupTest, TheSecondPlaceIsTidiedAsWell) {
    QDir(folder.path()).mkdir("stick");
    folder.write("stick/sorvanto-0001-2026-03-06-080000.mdb.part", "half");
    folder.write("stick/sorvanto-0001-2026-03-06-080000.mdb.part-journal", "half");
    folder.write("stick/letter.part", "the user's");
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    run();
    EXPECT_EQ(QDir(folder.path("stick")).entryList(QDir::Files, QDir::Name),
              (QStringList{"letter.part", "sorvanto-0001-2026-03-07-140509.mdb"}));
}

TEST_F(DailyBackupTest, FiftyBatchesCountOverStartsOfTheProgram) {
    run();
    for (int start = 0; start < 2; ++start) {
        ASSERT_EQ(copies(), QStringList{"sorvanto-0001-2026-03-07-140509.mdb"}) << start;
        for (int i = 0; i < 25; ++i)
            openDB()->execute("INSERT INTO Log (log_Name) VALUES ('Gel')");
        run();
    }
    EXPECT_EQ(copies(), QStringList{"sorvanto-0002-2026-03-07-140509.mdb"});
    run();
    EXPECT_EQ(copies(), QStringList{"sorvanto-0002-2026-03-07-140509.mdb"});
}

TEST_F(DailyBackupTest, EachDatabaseIsTriedOutOnceAMonth) {
    run();
    sql("CREATE TABLE FileIdentity (fid_Identity TEXT(32), fid_Parent TEXT(32), fid_Changes INTEGER)");
    sql("INSERT INTO FileIdentity VALUES ('0123456789abcdef0123456789abcdef', NULL, 0)");
    EXPECT_EQ(CopySettings::read("0123456789abcdef0123456789abcdef").lastRehearsal, "");
    run();
    EXPECT_EQ(CopySettings::read("0123456789abcdef0123456789abcdef").lastRehearsal, "2026-03");
}

TEST_F(DailyBackupTest, ADayOfTheFirstVersionDoesNotCountForADatabaseWithAnIdentity) {
    sql("CREATE TABLE FileIdentity (fid_Identity TEXT(32), fid_Parent TEXT(32), fid_Changes INTEGER)");
    sql("INSERT INTO FileIdentity VALUES ('0123456789abcdef0123456789abcdef', NULL, 0)");
    QDir(folder.path()).mkdir("backups");
    folder.write("backups/sorvanto-2026-03-07.mdb", "this morning's, of whatever database");
    run();
    EXPECT_EQ(copies().size(), 2) << copies().join(' ').toStdString();
}

TEST_F(DailyBackupTest, WhatAKilledCopyLeftIsTidied) {
    QDir(folder.path()).mkdir("backups");
    folder.write("backups/sorvanto-0001-2026-03-06-080000.mdb.part", "half");
    folder.write("backups/sorvanto-0001-2026-03-06-080000.mdb.part-journal", "half");
    folder.write("backups/sorvanto-0001-2026-03-06-080000.mdb.rehearsal", "half");
    run();
    EXPECT_EQ(copies(), QStringList{"sorvanto-0001-2026-03-07-140509.mdb"});
}

TEST_F(DailyBackupTest, AFolderThatCanNotBeMadeIsToldWithTheSystemsReason) {
    folder.write("backups", "a file where the folder should be");
    run();
    EXPECT_EQ(expectReport("DailyBackup:copy").description,
              u"The folder %1 can't be made: File exists"_s.arg(folder.path("backups")));
    ASSERT_TRUE(QFile::remove(folder.path("backups")));
    {
        const support::OrdinaryUser user;
        run();
        EXPECT_EQ(expectReport("DailyBackup:copy").description,
                  u"The folder %1 can't be made: Permission denied"_s.arg(folder.path("backups")));
    }
    run();
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(DailyBackupTest, SettingsThatCanNotBeReadAreToldAndTheCopyIsMade) {
    ASSERT_EQ(::mkfifo(folder.path("copies.ini").toLocal8Bit().constData(), 0600), 0);
    run();
    EXPECT_TRUE(expectReport("DailyBackup:note").description.contains("no regular file"));
    EXPECT_EQ(copies().size(), 1);
}

TEST_F(DailyBackupTest, ATrialThatFailsIsToldAndMadeAgainWithTheNextCopy) {
    const QString scratch = "backups/sorvanto-0001-2026-03-07-140509.mdb.rehearsal.part/x";
    QDir(folder.path()).mkpath(scratch);
    run();
    expectReport("DailyBackup:rehearse");
    EXPECT_EQ(CopySettings::read().lastRehearsal, "");
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(9, 0), Qt::UTC));
    run();
    EXPECT_EQ(CopySettings::read().lastRehearsal, "2026-03");
    QDir(folder.path()).mkpath("backups/sorvanto-0003-2026-03-09-090000.mdb.rehearsal.part/x");
    clock.set(QDateTime(QDate(2026, 3, 9), QTime(9, 0), Qt::UTC));
    run();  // no report: once a month is enough
    EXPECT_EQ(copies().size(), 3);
}

TEST_F(DailyBackupTest, ACopyThatIsNotSoundIsReportedAndNotKept) {
    sql("PRAGMA foreign_keys = OFF; INSERT INTO RXs (LogID, PatientID) VALUES (12345, 54321)");
    for (int day = 1; day <= 16; ++day) {
        QDir(folder.path()).mkdir("backups");
        folder.write(u"backups/sorvanto-2026-02-%1.mdb"_s.arg(day, 2, 10, QChar('0')), "old");
    }
    run();
    EXPECT_TRUE(expectReport("DailyBackup:copy").description.contains("not sound"));
    EXPECT_EQ(copies().size(), 16) << "no older one goes for it, and no part of it is left";
}

TEST_F(DailyBackupTest, ACopyStoppedInTheMidstLeavesNothing) {
    sql("INSERT INTO Chemical (chm_Notes) VALUES (hex(zeroblob(4000000)))");
    DailyBackup backup(context, 0, 60'000, longestCopy);
    backup.startSoon();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !copies().isEmpty(); }, longestCopy));
    // The engine's own journal may lie beside it.
    EXPECT_EQ(copies().first(), "sorvanto-0001-2026-03-07-140509.mdb.part");
    EXPECT_TRUE(copies().filter(QRegularExpression(u"mdb$"_s)).isEmpty()) << "no name before it is whole";
    EXPECT_TRUE(backup.running());
    backup.stop();
    EXPECT_FALSE(backup.running());
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DailyBackupTest, WithoutADatabaseThereIsNothingToCopy) {
    basMain::gConnection = std::make_shared<platform::Connection>();
    run();
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DailyBackupTest, EndingInTheMidstLeavesNothingHalfMade) {
    sql("INSERT INTO Chemical (chm_Notes) VALUES (hex(zeroblob(4000000)))");
    {
        DailyBackup backup(context, 0, 1);
        backup.startSoon();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !copies().isEmpty(); }, longestCopy));
        EXPECT_TRUE(backup.running());
    }
    EXPECT_TRUE(copies().isEmpty()) << copies().join(' ').toStdString();
}

TEST_F(DailyBackupTest, TheEndOfTheProgramNeverWaitsForACopyThatTheDiskHoldsUp) {
    DailyBackup backup(context, 0, 1, 0);
    diskHangs = true;
    backup.startSoon();
    EXPECT_TRUE(QTest::qWaitFor([] { return somebodyWaits.load(); }, longestCopy));
    backup.stop();
    EXPECT_TRUE(backup.running()) << "it is left to itself";
    diskHangs = false;
}

}  // namespace
