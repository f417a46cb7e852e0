// Steps applied to a real database file.
#include "core/DatabaseUpdater.h"
#include "TestProgram.h"
#include "platform/basic/RuntimeError.h"
#include "shared/basMain.h"

#include <QDir>

namespace {

using namespace sorvanto;

class DatabaseUpdaterTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        createDatabase();
        before = sql("SELECT count(*) FROM sqlite_master");
    }
    void updates(const QByteArray& steps) {
        folder.write("dbupdate.xml", "<DatabaseUpdates>" + steps + "</DatabaseUpdates>");
    }
    void apply() { updater.ApplyUpdates(openDB(), folder.path() + "\\dbupdate.xml", version, applied); }
    QStringList copies() { return QDir(folder.path("backups")).entryList({"*.mdb*"}, QDir::Files); }
    bool hasTable(const QString& name) {
        return sqlText("SELECT count(*) FROM sqlite_master WHERE name = '" + name + "'") == "1";
    }

    static constexpr auto two =
        "<Step From=\"1\" To=\"1.1\"><Statement>CREATE TABLE Shelf(Place TEXT(20))</Statement>"
        "<Statement>INSERT INTO Shelf VALUES('upper')</Statement></Step>"
        "<Step From=\"1.1\" To=\"2\"><Statement>ALTER TABLE Shelf ADD COLUMN Level SMALLINT"
        "</Statement></Step>";
    DatabaseUpdater updater;
    support::Rows before;
    QString version = "1";
    bool applied = false;
};

TEST_F(DatabaseUpdaterTest, AppliesAllStepsAndSaysSo) {
    updates(two);
    apply();
    EXPECT_TRUE(applied);
    EXPECT_EQ(version, "2");
    EXPECT_EQ(sqlText("SELECT Place, Level FROM Shelf"), "upper|NULL");
    EXPECT_EQ(sqlText("SELECT opt_Version FROM Options"), "1.0")
        << "written by the program, not by the updater";
}

TEST_F(DatabaseUpdaterTest, KeepsACheckedCopyAsItWasBefore) {
    updates(two);
    QVariant unread;
    updater.IdentifyStore({}, {}, "Kelmar Systems", "(555)010-0188", unread);
    apply();
    ASSERT_EQ(copies(), QStringList{"before-update-from-1.mdb"});
    const QString copy = folder.path("backups/before-update-from-1.mdb");
    EXPECT_EQ(support::runSql(copy, "SELECT count(*) FROM sqlite_master"), before);
    EXPECT_EQ(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(folder.read("backups/updates.txt"),
              "2026-03-07 14:05:09   1 -> 2   Kelmar Systems (555)010-0188\n");
    EXPECT_FALSE(unread.isValid());
}

TEST_F(DatabaseUpdaterTest, MissingFileNewestVersionAndClosedConnectionChangeNothing) {
    apply();
    EXPECT_FALSE(applied);
    updates(two);
    version = "2";
    apply();
    EXPECT_FALSE(applied);
    EXPECT_EQ(version, "2");
    updater.ApplyUpdates(std::make_shared<platform::Connection>(), folder.path() + "\\dbupdate.xml", version,
                         applied);
    EXPECT_FALSE(applied);
    EXPECT_TRUE(copies().isEmpty());
    EXPECT_FALSE(hasTable("Shelf"));
}

TEST_F(DatabaseUpdaterTest, AFailedStatementTakesAllStepsBack) {
    updates(QByteArray(two).replace("ADD COLUMN Level SMALLINT", "ADD COLUMN"));
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_FALSE(applied);
    EXPECT_EQ(version, "1");
    EXPECT_FALSE(hasTable("Shelf"));
    EXPECT_EQ(sqlText("PRAGMA user_version"), "0");
    // The connection works on, relations included.
    updates(two);
    apply();
    EXPECT_TRUE(applied);
    EXPECT_THROW(openDB()->execute("INSERT INTO RXs (LogID) VALUES (12345)"), platform::RuntimeError);
}

TEST_F(DatabaseUpdaterTest, AStepMayNotEndTheTransaction) {
    updates(QByteArray(two).replace("INSERT INTO Shelf VALUES('upper')", "ROLLBACK"));
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_FALSE(hasTable("Shelf"));
}

TEST_F(DatabaseUpdaterTest, BrokenRelationsAreRefused) {
    updates("<Step From=\"1\" To=\"2\"><Statement>INSERT INTO RXs (LogID) VALUES (12345)</Statement></Step>");
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_EQ(sqlText("SELECT count(*) FROM RXs"), "0");
}

TEST_F(DatabaseUpdaterTest, ABrokenFileChangesNothing) {
    folder.write("dbupdate.xml", "<DatabaseUpdates><Step");
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_FALSE(applied);
    EXPECT_TRUE(copies().isEmpty());
}

// A program that was killed between the update and the writing of the version.
TEST_F(DatabaseUpdaterTest, StepsThatAreDoneAreNotRunTwice) {
    updates(two);
    apply();
    version = "1";
    apply();
    EXPECT_TRUE(applied) << "the program is told again to write the version";
    EXPECT_EQ(version, "2");
    EXPECT_EQ(sqlText("SELECT count(*) FROM Shelf"), "1");
}

TEST_F(DatabaseUpdaterTest, NoCopyNoUpdate) {
    updates(two);
    folder.write("backups", "a file where the folder should be");
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_FALSE(hasTable("Shelf"));
}

}  // namespace
