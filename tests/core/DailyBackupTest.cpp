// The dated copies of the database.
#include "core/DailyBackup.h"
#include "TestProgram.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DatabaseCopy.h"
#include "shared/basMain.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class DailyBackupTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        openDatabase();
    }
    /// Runs a whole backup.
    void run() {
        DailyBackup backup(0);
        backup.startSoon();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !backup.running(); }, 20000));
    }
    QStringList copies() { return QDir(folder.path("backups")).entryList(QDir::Files, QDir::Name); }
};

TEST_F(DailyBackupTest, MakesACheckedCopyOfTheDay) {
    openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('Zinc oxide')");
    run();
    ASSERT_EQ(copies(), QStringList{"sorvanto-2026-03-07.mdb"});
    const QString copy = folder.path("backups/sorvanto-2026-03-07.mdb");
    EXPECT_EQ(support::rowsText(support::runSql(copy, "SELECT chm_Name FROM Chemical")), "Zinc oxide");
    EXPECT_EQ(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(DailyBackupTest, OneADayIsEnough) {
    folder.write("dummy", {});
    QDir(folder.path()).mkdir("backups");
    folder.write("backups/sorvanto-2026-03-07.mdb", "this morning's");
    run();
    EXPECT_EQ(folder.read("backups/sorvanto-2026-03-07.mdb"), "this morning's");
}

TEST_F(DailyBackupTest, TheNewestFourteenStayAndOtherFilesToo) {
    QDir(folder.path()).mkdir("backups");
    for (int day = 1; day <= 16; ++day)
        folder.write(u"backups/sorvanto-2026-02-%1.mdb"_s.arg(day, 2, 10, QChar('0')), "old");
    folder.write("backups/sorvanto-before-the-move.mdb", "mine");
    folder.write("backups/before-update-from-1.mdb", "kept");
    run();
    const QStringList names = copies();
    EXPECT_EQ(names.size(), 14 + 2);
    EXPECT_TRUE(names.contains("sorvanto-2026-03-07.mdb"));
    EXPECT_TRUE(names.contains("sorvanto-2026-02-04.mdb"));
    EXPECT_FALSE(names.contains("sorvanto-2026-02-03.mdb"));
    EXPECT_TRUE(names.contains("sorvanto-before-the-move.mdb"));
    EXPECT_TRUE(names.contains("before-update-from-1.mdb"));
}

TEST_F(DailyBackupTest, AFailureIsReportedAndNothingIsLeft) {
    folder.write("backups", "a file where the folder should be");
    run();
    expectReport("DailyBackup:copy");
}

TEST_F(DailyBackupTest, WithoutADatabaseThereIsNothingToCopy) {
    basMain::gConnection = std::make_shared<platform::Connection>();
    run();
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DailyBackupTest, AnUnfinishedCopyLeavesNothing) {
    {
        platform::DatabaseCopy copy(openDB(), folder.path() + "\\backups\\part.mdb");
        EXPECT_FALSE(copy.step(1));
        EXPECT_FALSE(copies().isEmpty());
    }
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DailyBackupTest, AWholeCopyIsCheckedBeforeStepComesBack) {
    platform::DatabaseCopy copy(openDB(), folder.path() + "\\backups\\whole.mdb");
    EXPECT_TRUE(copy.step(-1));
    EXPECT_EQ(copies(), QStringList{"whole.mdb"});
}

TEST_F(DailyBackupTest, ACopyDroppedDuringItsCheckLeavesNothing) {
    {
        platform::DatabaseCopy copy(openDB(), folder.path() + "\\backups\\part.mdb");
        copy.step(100'000);
    }
    for (const QString& name : copies())
        EXPECT_FALSE(name.endsWith(".part"));
}

TEST_F(DailyBackupTest, ChangesDuringTheCopyAreInIt) {
    platform::DatabaseCopy copy(openDB(), folder.path() + "\\copy.mdb");
    EXPECT_FALSE(copy.step(2));
    openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    while (!copy.step(1)) {
    }
    EXPECT_EQ(support::rowsText(support::runSql(folder.path("copy.mdb"), "SELECT chm_Name FROM Chemical")),
              "Urea");
}

}  // namespace
