// Opening of good and bad files, and the numbers of failures on real ones: locked, read-only, full, damaged.
#include "DataTest.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "platform/data/sqlite/FileEngine.h"

#include <QDir>
#include <QFile>
#include <csignal>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/statvfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

bool mediumIsReadOnly = false;

}  // namespace

/// In the place of the system's own.
extern "C" int statvfs(const char* path, struct statvfs* medium) noexcept {
    struct statfs system {};
    if (::statfs(path, &system) != 0)
        return -1;
    *medium = {};
    medium->f_flag = mediumIsReadOnly ? ST_RDONLY : 0;
    return 0;
}

namespace platform {
namespace {

class ConnectionTest : public DataTest {
protected:
    RuntimeError openFailure(const QString& path) const {
        return failureOf([&] { Connection().open(source(path)); });
    }
    /// How the engine is set for the open connection.
    QString setting(const QString& name) const {
        Query statement(connection->engine(), u"PRAGMA "_s + name, {});
        return statement.step() ? statement.value(0, {FieldKind::Text, 0}).toString() : QString();
    }
    void writeFile(const QString& path, const QByteArray& content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

/// The effective user is one without rights for as long as the object lives; needs to start as root.
class WithoutRights {
public:
    WithoutRights() { m_changed = geteuid() == 0 && seteuid(65534) == 0; }
    ~WithoutRights() {
        if (m_changed) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    static bool possible() { return geteuid() == 0; }

private:
    bool m_changed = false;
};

/// Another program that holds the whole file.
class Locker {
public:
    explicit Locker(const QString& path) {
        sqlite3_open(path.toUtf8().constData(), &m_database);
        sqlite3_exec(m_database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    }
    ~Locker() { sqlite3_close(m_database); }

private:
    sqlite3* m_database = nullptr;
};

TEST_F(ConnectionTest, AChangeByAnyoneIsSeen) {
    const std::int64_t before = connection->changeState();
    EXPECT_EQ(connection->changeState(), before);
    connection->execute(u"UPDATE Options SET opt_Version = 1.1"_s);
    const std::int64_t own = connection->changeState();
    EXPECT_NE(own, before);
    support::runSql(path(), u"UPDATE Chemical SET chm_Notes = 'seen' WHERE ChemicalID = 1"_s);
    EXPECT_NE(connection->changeState(), own);
}

TEST_F(ConnectionTest, WhatWasReadOfAChangeThatIsTakenBackIsSeenToBeNoMore) {
    std::int64_t meanwhile = 0;
    {
        const Transaction span(connection->engine());
        connection->execute(u"UPDATE Options SET opt_Version = 1.1"_s);
        meanwhile = connection->changeState();
    }
    EXPECT_NE(connection->changeState(), meanwhile);
}

TEST_F(ConnectionTest, OpensAndCloses) {
    EXPECT_EQ(connection->state(), 1);
    EXPECT_FALSE(connection->isReadOnly());
    connection->close();
    EXPECT_EQ(connection->state(), 0);
    EXPECT_EQ(numberOf(u"SELECT 1"_s), error::objectClosed);
    EXPECT_EQ(failureOf([&] { rows(u"SELECT 1"_s); }).number(), error::objectClosed);
    EXPECT_EQ(failureOf([&] { Recordset::create()->open(u"SELECT 1"_s, nullptr); }).number(),
              error::objectClosed);
    connection->open(source(path()));
    EXPECT_EQ(connection->state(), 1);
    EXPECT_EQ(failureOf([&] { connection->open(source(path())); }).number(), error::invalidProcedureCall);
}

TEST_F(ConnectionTest, WhatIsOpenedForReadingStaysAsItIs) {
    const auto content = [this] {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    };
    const QDir folder(QFileInfo(path()).path());
    connection->close();
    const QByteArray before = content();
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    connection->openForReading(path());
    EXPECT_TRUE(connection->isReadOnly());
    EXPECT_FALSE(rows(u"SELECT ChemicalID FROM Chemical"_s)->eof());
    EXPECT_EQ(numberOf(u"UPDATE Options SET opt_Version = 1.1"_s), error::permissionDenied);
    EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden), names);
    connection->close();
    EXPECT_EQ(content(), before);
    EXPECT_EQ(failureOf([] { Connection().openForReading(u"/nowhere/a.mdb"_s); }).number(),
              error::cannotOpen);
}

TEST_F(ConnectionTest, NeverCreatesAFile) {
    const QString missing = path(u"missing.mdb"_s);
    EXPECT_EQ(openFailure(missing).number(), error::cannotOpen);
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_EQ(openFailure(QString()).number(), error::cannotOpen);
    EXPECT_EQ(openFailure(QFileInfo(path()).path()).number(), error::cannotOpen);
    EXPECT_EQ(failureOf([] { Connection().open(u"Provider=x"_s); }).number(), error::cannotOpen);
}

TEST_F(ConnectionTest, RefusesAFileThatIsNoDatabase) {
    const QString file = path(u"other.mdb"_s);
    writeFile(file, {});
    EXPECT_EQ(openFailure(file).number(), error::general);
    writeFile(file, QByteArray("no database\n").repeated(500));
    EXPECT_EQ(openFailure(file).number(), error::general);
    writeFile(file, QByteArray("SQLite format 3\0", 16));
    EXPECT_EQ(openFailure(file).number(), error::general);
    QFile good(path());
    ASSERT_TRUE(good.open(QIODevice::ReadOnly));
    QByteArray damaged = good.readAll();
    damaged.replace(100, 3000, QByteArray(3000, 'x'));
    writeFile(file, damaged);
    EXPECT_EQ(openFailure(file).number(), error::general);
    EXPECT_TRUE(openFailure(file).description().contains(file));
}

TEST_F(ConnectionTest, ALockedFileIsNotOpened) {
    EXPECT_EQ(setting(u"busy_timeout"_s), "2000") << "it is waited for, in milliseconds";
    const Locker locker(path());
    EXPECT_EQ(openFailure(path()).number(), error::general);
}

TEST_F(ConnectionTest, ALockIsNotTakenForARelation) {
    const Locker locker(path());
    const RuntimeError failure =
        failureOf([&] { connection->execute(u"DELETE FROM [Chemical] WHERE (ChemicalID = 1);"_s); });
    EXPECT_EQ(failure.number(), error::permissionDenied);
    EXPECT_TRUE(failure.description().contains("locked"_L1));
}

TEST_F(ConnectionTest, ReadsWhatItMayNotWrite) {
    if (!WithoutRights::possible())
        GTEST_SKIP() << "needs to start as root";
    connection->close();
    chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0755);
    chmod(QFile::encodeName(path()).constData(), 0644);
    {
        const WithoutRights user;
        connection->open(source(path()));
        EXPECT_TRUE(connection->isReadOnly());
        EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
        const RuntimeError failure =
            failureOf([&] { connection->execute(u"DELETE FROM [Log] WHERE (LogID = 12);"_s); });
        EXPECT_EQ(failure.number(), error::permissionDenied);
        EXPECT_TRUE(failure.description().contains("read-only"_L1));
        connection->close();
    }
    chmod(QFile::encodeName(path()).constData(), 0600);
    const WithoutRights user;
    EXPECT_EQ(openFailure(path()).number(), error::cannotOpen);
}

// A database can't be changed where no file can be made beside it.
TEST_F(ConnectionTest, ReadsInAFolderThatItMayNotWrite) {
    if (!WithoutRights::possible())
        GTEST_SKIP() << "needs to start as root";
    connection->close();
    const QString folder = QFileInfo(path()).path();
    chmod(QFile::encodeName(folder).constData(), 0755);
    chmod(QFile::encodeName(path()).constData(), 0666);
    const WithoutRights user;
    connection->open(source(path()));
    EXPECT_TRUE(connection->isReadOnly());
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
    connection->close();
}

// As on a medium that can't be written: a file in the engine's other mode would need files beside it.
TEST_F(ConnectionTest, ReadsFromAMediumThatNobodyCanWrite) {
    if (!WithoutRights::possible())
        GTEST_SKIP() << "needs to start as root";
    sqlite3_exec(sqlite::handleOf(connection->engine()), "PRAGMA journal_mode = WAL", nullptr, nullptr,
                 nullptr);
    connection->close();
    chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0755);
    chmod(QFile::encodeName(path()).constData(), 0444);
    const WithoutRights user;
    EXPECT_EQ(openFailure(path()).number(), error::general);
    mediumIsReadOnly = true;
    connection->open(source(path()));
    EXPECT_TRUE(connection->isReadOnly());
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
    connection->close();
    mediumIsReadOnly = false;
}

// What a crash has left beside it can't be taken back there, and must not be passed over.
TEST_F(ConnectionTest, AnUnfinishedChangeOnSuchAMediumIsNoDatabase) {
    if (!WithoutRights::possible())
        GTEST_SKIP() << "needs to start as root";
    sqlite3_exec(sqlite::handleOf(connection->engine()), "PRAGMA journal_mode = WAL", nullptr, nullptr,
                 nullptr);
    connection->close();
    chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0755);
    chmod(QFile::encodeName(path()).constData(), 0444);
    writeFile(path() + u"-journal"_s, "unfinished");
    const WithoutRights user;
    mediumIsReadOnly = true;
    EXPECT_EQ(openFailure(path()).number(), error::general);
    mediumIsReadOnly = false;
}

TEST_F(ConnectionTest, TellsAFullDiskAndKeepsTheFile) {
    sqlite3_exec(sqlite::handleOf(connection->engine()), "PRAGMA max_page_count = 1", nullptr, nullptr,
                 nullptr);
    const QString statement = u"UPDATE Chemical SET [chm_Notes] = '%1'"_s.arg(QString(100000, u'x'));
    EXPECT_EQ(numberOf(statement), error::diskFull);
    EXPECT_EQ(stored(u"SELECT max(length(chm_Notes)) < 100 FROM Chemical"_s), "1");
}

TEST_F(ConnectionTest, AWriteThatTheSystemCutsOffLeavesTheOldRows) {
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old;
    small.rlim_cur = 160 * 1024;
    setrlimit(RLIMIT_FSIZE, &small);
    const std::int32_t number =
        numberOf(u"UPDATE Chemical SET [chm_Notes] = '%1'"_s.arg(QString(100000, u'x')));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(number == error::diskFull || number == error::deviceIo) << number;
    connection->close();
    open();
    EXPECT_EQ(stored(u"SELECT max(length(chm_Notes)) < 100 FROM Chemical"_s), "1");
    EXPECT_EQ(connection->execute(u"UPDATE Chemical SET [chm_Notes] = 'x' WHERE [ChemicalID] = 1"_s), 1);
}

TEST_F(ConnectionTest, TracesTheTextAsItWasGiven) {
    QStringList seen;
    connection->setTrace([&](const QString& statement) { seen << statement; });
    const QString query = u"SELECT  [LogID]   FROM [Log];"_s;
    const QString broken = u"DELETE  FROM"_s;
    const RecordsetPtr set = rows(query);
    set->requery();
    failureOf([&] { connection->execute(broken); });
    const RecordsetPtr lines = editable(u"SELECT FormChemID, fch_Qty FROM FormChem"_s);
    lines->setValue(1, 3.0);
    lines->update();
    EXPECT_EQ(seen, (QStringList{query, query, broken, u"SELECT FormChemID, fch_Qty FROM FormChem"_s}));
}

TEST_F(ConnectionTest, LeavesNothingBesideTheFile) {
    connection->execute(u"UPDATE [Options] SET [opt_Version] = 2"_s);
    EXPECT_EQ(QDir(QFileInfo(path()).path()).entryList(QDir::Files), QStringList{u"test.mdb"_s});
}

// A statement that has come back stands on the disk, and in the one file alone.
TEST_F(ConnectionTest, EachStatementIsOnTheDiskWhenItComesBack) {
    support::runSql(path(), u"PRAGMA journal_mode = WAL"_s);
    connection->close();
    open();
    EXPECT_EQ(setting(u"synchronous"_s), "3") << "EXTRA";
    EXPECT_EQ(setting(u"journal_mode"_s), "delete");
}

TEST_F(ConnectionTest, HoldsNoLockBetweenStatements) {
    const RecordsetPtr keys =
        rows(u"SELECT LogID, log_Name FROM Log"_s, CursorLocation::Default, LockType::Pessimistic);
    EXPECT_EQ(keys->value(1).toString(), "Hydrocortisone 1% Cream");
    support::runSql(path(), u"BEGIN EXCLUSIVE; UPDATE Log SET log_Name = 'x'; COMMIT"_s);
}

TEST_F(ConnectionTest, KnowsATableThatHasComeSince) {
    const auto opened = [&](const char* statement) {
        return failureOf([&] { rows(QString::fromLatin1(statement)); }).number();
    };
    EXPECT_EQ(opened("SELECT a FROM Later"), error::statement);
    support::runSql(path(), u"CREATE TABLE Later (a INTEGER PRIMARY KEY)"_s);
    EXPECT_EQ(opened("SELECT a FROM Later"), 0);
    EXPECT_EQ(opened("SELECT name FROM sqlite_master"), error::statement);
}

TEST_F(ConnectionTest, AResultSetOnlyReads) {
    for (const char* statement :
         {"DELETE FROM Log", "INSERT INTO Options VALUES (1)", "UPDATE Log SET log_Name = ''",
          "INSERT INTO Options VALUES (1) RETURNING opt_Version"})
        EXPECT_EQ(failureOf([&] { rows(QString::fromLatin1(statement)); }).number(), error::statement)
            << statement;
    EXPECT_EQ(stored(u"SELECT count(*) FROM Log"_s), "12");
    EXPECT_EQ(connection->execute(u"SELECT LogID FROM Log"_s), 0);
}

}  // namespace
}  // namespace platform
