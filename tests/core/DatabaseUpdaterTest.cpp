// Steps applied to a real database file.
#include "core/DatabaseUpdater.h"
#include "Hindrances.h"
#include "TestProgram.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/sqlite/FileEngine.h"
#include "shared/basMain.h"

#include <QDir>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

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
    /// What an update was refused with; empty when it was done.
    QString refusal() {
        try {
            apply();
        } catch (const platform::RuntimeError& failure) {
            return failure.description();
        }
        return {};
    }
    QStringList copies() { return QDir(folder.path("backups")).entryList({"*.mdb*"}, QDir::Files); }
    bool hasTable(const QString& name) {
        return sqlText("SELECT count(*) FROM sqlite_master WHERE name = '" + name + "'") == "1";
    }

    /// new.mdb, as the tool makes it.
    void createDatabaseElsewhere() {
        QFile schema(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/schema.sql"));
        QFile identity(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/identity.sql"));
        QFile history(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/history.sql"));
        ASSERT_TRUE(schema.open(QIODevice::ReadOnly) && identity.open(QIODevice::ReadOnly) &&
                    history.open(QIODevice::ReadOnly));
        folder.write("new.mdb", {});
        support::runSql(folder.path("new.mdb"),
                        QString::fromUtf8(schema.readAll() + identity.readAll() + history.readAll()));
    }

    /// Whether the connection refuses a row whose batch and patient are not there.
    bool relationsCount() {
        try {
            openDB()->execute(toNowhere);
        } catch (const platform::RuntimeError& failure) {
            return failure.description().contains("FOREIGN KEY");
        }
        return false;
    }

    /// Whole but for the rows it refers to.
    static constexpr auto toNowhere = "INSERT INTO RXs (LogID, PatientID) VALUES (12345, 54321)";
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
    ASSERT_EQ(copies(), QStringList{"sorvanto-before-update-from-1-2026-03-07-140509.mdb"});
    const QString copy = folder.path("backups/" + copies().first());
    EXPECT_EQ(support::runSql(copy, "SELECT count(*) FROM sqlite_master"), before);
    EXPECT_EQ(QFile::permissions(copy) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(folder.read("backups/updates.txt"),
              "2026-03-07 14:05:09   1 -> 2   Kelmar Systems (555)010-0188\n");
    EXPECT_FALSE(unread.isValid());
}

TEST_F(DatabaseUpdaterTest, AnArchiveStaysAsItIs) {
    sql("CREATE TABLE FileIdentity (fid_Identity TEXT(32), fid_Parent TEXT(32), fid_Changes INTEGER)");
    sql("INSERT INTO FileIdentity VALUES ('0123456789abcdef0123456789abcdef', 'fedcba98', 0)");
    before = support::runSql(folder.path("sorvanto.mdb"), "SELECT count(*) FROM sqlite_master");
    updates(two);
    apply();
    EXPECT_FALSE(applied);
    EXPECT_EQ(version, "1");
    EXPECT_EQ(support::runSql(folder.path("sorvanto.mdb"), "SELECT count(*) FROM sqlite_master"), before);
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DatabaseUpdaterTest, AFileThatIsOpenForReadingStaysAsItIs) {
    updates(two);
    const QString file = folder.path("sorvanto.mdb");
    ASSERT_EQ(::chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
    ASSERT_EQ(::chmod(file.toLocal8Bit().constData(), 0444), 0);
    const support::OrdinaryUser user;
    ASSERT_TRUE(openDB()->isReadOnly());
    apply();
    EXPECT_FALSE(applied);
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(DatabaseUpdaterTest, MissingFileNewestVersionAndClosedConnectionChangeNothing) {
    applied = true;  // of an update before
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
    EXPECT_TRUE(relationsCount());
}

TEST_F(DatabaseUpdaterTest, RelationsCountAfterAnUpdate) {
    ASSERT_TRUE(relationsCount());
    updates(two);
    apply();
    EXPECT_TRUE(relationsCount());
}

// Another program is writing: nothing has begun, and the connection works on as before.
TEST_F(DatabaseUpdaterTest, RelationsCountAfterAnUpdateThatCouldNotBegin) {
    updates(two);
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(databasePath().toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_busy_timeout(platform::sqlite::handleOf(openDB()->engine()), 0);
    EXPECT_THROW(apply(), platform::RuntimeError);
    sqlite3_close(other);
    EXPECT_FALSE(applied);
    EXPECT_FALSE(hasTable("Shelf"));
    EXPECT_TRUE(relationsCount());
}

TEST_F(DatabaseUpdaterTest, AStepMayNotEndTheTransaction) {
    updates(QByteArray(two).replace("INSERT INTO Shelf VALUES('upper')", "ROLLBACK"));
    EXPECT_EQ(refusal(), "dbupdate.xml: a statement that is not the step's to run: ROLLBACK");
    EXPECT_FALSE(hasTable("Shelf"));
}

TEST_F(DatabaseUpdaterTest, BrokenRelationsAreRefused) {
    updates(QByteArray("<Step From=\"1\" To=\"2\"><Statement>") + toNowhere + "</Statement></Step>");
    EXPECT_EQ(refusal(), "The updated tables break a relation");
    EXPECT_EQ(sqlText("SELECT count(*) FROM RXs"), "0");
    EXPECT_EQ(sqlText("PRAGMA user_version"), "0");
}

TEST_F(DatabaseUpdaterTest, ATakenBackUpdateLeavesNoCopyAndAnotherCopyIsNeverReplaced) {
    QDir(folder.path()).mkdir("backups");
    const QString name = "backups/sorvanto-before-update-from-1-2026-03-07-140509.mdb";
    folder.write(name, "of another database");
    updates(QByteArray(two).replace("ADD COLUMN Level SMALLINT", "ADD COLUMN"));
    EXPECT_THROW(apply(), platform::RuntimeError);
    EXPECT_EQ(copies().size(), 1);
    updates(two);
    apply();
    EXPECT_EQ(folder.read(name), "of another database");
    EXPECT_EQ(copies().size(), 2);
}

// Of two statements the engine would run the first alone, and the step would count as done.
TEST_F(DatabaseUpdaterTest, TwoStatementsInAnElementAreRefusedBeforeAnythingRuns) {
    for (const char* tail : {"; DELETE FROM Shelf", ";;DELETE FROM Shelf;", "; COMMIT"}) {
        updates(QByteArray(two).replace("VALUES('upper')", QByteArray("VALUES('up;per')") + tail));
        EXPECT_THROW(apply(), platform::RuntimeError) << tail;
        EXPECT_TRUE(copies().isEmpty()) << tail;
        EXPECT_FALSE(hasTable("Shelf")) << tail;
    }
}

TEST_F(DatabaseUpdaterTest, ATriggerIsOneStatement) {
    updates(
        "<Step From=\"1\" To=\"1.1\"><Statement>CREATE TABLE Shelf(Place TEXT(20));</Statement><Statement>"
        "CREATE TRIGGER Full AFTER INSERT ON Shelf BEGIN UPDATE Shelf SET Place = 'x;'; DELETE FROM Shelf; END;"
        "</Statement></Step>");
    apply();
    EXPECT_TRUE(applied);
    EXPECT_TRUE(hasTable("Full"));
}

// The engine would see the word behind the comment as well, but only at its turn.
TEST_F(DatabaseUpdaterTest, AStepCantEndItsTransactionInDisguise) {
    for (const char* word : {"COMMIT", "ROLLBACK", "END", "SAVEPOINT a", "ATTACH ':memory:' AS other"}) {
        updates(QByteArray(two).replace("INSERT INTO Shelf VALUES('upper')", QByteArray("/* */ ") + word));
        EXPECT_TRUE(refusal().contains("not the step's to run")) << word;
        EXPECT_FALSE(hasTable("Shelf")) << word;
        EXPECT_EQ(sqlText("PRAGMA user_version"), "0") << word;
    }
}

TEST_F(DatabaseUpdaterTest, TheDeliveredStepsGiveWhatANewFileHas) {
    QFile delivered(QString::fromUtf8(SORVANTO_SOURCE_DIR "/data/dbupdate.xml"));
    ASSERT_TRUE(delivered.open(QIODevice::ReadOnly));
    folder.write("dbupdate.xml", delivered.readAll());
    apply();
    EXPECT_EQ(version, "1.2");
    createDatabaseElsewhere();
    const QString shape =
        "SELECT type, name, replace(replace(sql, char(10), ''), ' ', '') FROM sqlite_master ORDER BY 1, 2";
    EXPECT_EQ(sqlText(shape), support::rowsText(support::runSql(folder.path("new.mdb"), shape)));
    EXPECT_EQ(support::rowsText(support::runSql(folder.path("new.mdb"), "PRAGMA user_version")),
              sqlText("PRAGMA user_version"));
    const QString changesBefore = sqlText("SELECT fid_Changes FROM FileIdentity");
    openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    openDB()->execute("UPDATE Chemical SET chm_Lot = 'A'");
    openDB()->execute("DELETE FROM Chemical");
    EXPECT_EQ(sqlText("SELECT fid_Changes FROM FileIdentity").toInt(), changesBefore.toInt() + 3);
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

TEST_F(DatabaseUpdaterTest, TheMarkOfTheFileIsToldAsAVersion) {
    updates(two);
    for (const auto& [mark, told] : {std::pair{10'500, "1.05"}, std::pair{12'000, "1.2"},
                                     std::pair{20'001, "2.0001"}, std::pair{100'000, "10"}}) {
        sql(u"PRAGMA user_version = %1"_s.arg(mark));
        version = "1";
        apply();
        EXPECT_TRUE(applied);
        EXPECT_EQ(version, told);
    }
    EXPECT_FALSE(hasTable("Shelf"));
}

TEST_F(DatabaseUpdaterTest, AHistoryThatCanNotBeWrittenTakesNothingBack) {
    QDir(folder.path()).mkpath("backups/updates.txt");
    updates(two);
    apply();
    EXPECT_TRUE(applied);
    EXPECT_TRUE(hasTable("Shelf"));
}

TEST_F(DatabaseUpdaterTest, APipeInThePlaceOfTheHistoryKeepsNobodyWaiting) {
    QDir(folder.path()).mkpath("backups");
    ASSERT_EQ(::mkfifo(folder.path("backups/updates.txt").toLocal8Bit().constData(), 0600), 0);
    updates(two);
    apply();
    EXPECT_TRUE(applied);
}

TEST_F(DatabaseUpdaterTest, NoCopyNoUpdate) {
    updates(two);
    folder.write("backups", "a file where the folder should be");
    try {
        apply();
        ADD_FAILURE() << "updated without a copy";
    } catch (const platform::RuntimeError& failure) {
        EXPECT_EQ(failure.description(),
                  u"The folder %1 can't be made: File exists"_s.arg(folder.path("backups")));
    }
    EXPECT_FALSE(hasTable("Shelf"));
}

}  // namespace
