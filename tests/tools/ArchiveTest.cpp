// Making room: what goes into the archive, what stays in the file, and that neither is ever half done.
#include "db/Archive.h"
#include "CommandTest.h"
#include "FixedClock.h"
#include "Hindrances.h"
#include "OtherProcess.h"
#include "TempProgramFolder.h"
#include "TestDatabase.h"
#include "WarningTrap.h"
#include "db/DatabaseCheck.h"
#include "db/DatabaseFile.h"
#include "platform/basic/Paths.h"
#include "platform/basic/ProcessLock.h"
#include "platform/basic/RuntimeError.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <csignal>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;
using platform::RuntimeError;

class ArchiveTest : public CommandTest {
protected:
    void SetUp() override { qputenv("XDG_DATA_HOME", path("data").toLocal8Bit()); }
    void TearDown() override {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("SORVANTO_FOLDER");
    }
    QString path(const QString& name) const { return folder.path(name); }
    QString stored(const QString& file, const QString& statement) const {
        return support::rowsText(support::runSql(path(file), statement));
    }
    /// Sixty batches, one a month up to January 2026, each with two lines; every third has a prescription. Gaps
    /// in the keys, as deletions leave them.
    void fill() {
        createSample(path("s.mdb"));
        support::runSql(
            path("s.mdb"),
            "DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM Log;"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60)"
            "INSERT INTO Log (LogID, FormulaID, log_Name, log_Lot, log_Date, log_Quantity) SELECT 100 + 7 * i, 3, "
            "'Gel ' || i, 'SV' || i, datetime('2021-01-15 10:00:00', i || ' months'), i FROM n;"
            "INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_QTY) SELECT LogID, 5, 'a' || LogID, 1.25 FROM Log;"
            "INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_QTY) SELECT LogID, 6, 'b' || LogID, 2.5 FROM Log;"
            "INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY) SELECT LogID, 1, '2026-03-01 00:00:00', 30.0 "
            "FROM Log WHERE LogID % 3 = 0;");
    }
    QByteArray hashOf(const QString& name) const {
        return QCryptographicHash::hash(folder.read(name), QCryptographicHash::Sha256);
    }
    /// Batches that stay, with their lines and prescriptions, without keys.
    QString content(const QString& file) const {
        const QString since = "log_Date >= '2025-03-07 00:00:00'";
        return stored(file, "SELECT log_Name, log_Lot, log_Date, log_Quantity, FormulaID FROM Log WHERE " +
                                since + " ORDER BY log_Date") +
               "\n" +
               stored(file,
                      "SELECT log_Lot, lch_Name, ChemicalID, lch_QTY FROM LogChem JOIN Log ON Log.LogID = "
                      "LogChem.LogID WHERE " +
                          since + " ORDER BY log_Date, lch_Name") +
               "\n" +
               stored(file,
                      "SELECT log_Lot, PatientID, rxs_QTY FROM RXs JOIN Log ON Log.LogID = RXs.LogID WHERE " +
                          since + " ORDER BY log_Date");
    }
    QString counts(const QString& file) const {
        return stored(
            file,
            "SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM LogChem), (SELECT count(*) FROM RXs)");
    }

    support::TempProgramFolder folder;
    support::FixedClock clock;  // 7 March 2026
    support::WarningTrap warnings;
};

TEST_F(ArchiveTest, TheArchiveHoldsEverythingAndTheFileTheLastTwelveMonths) {
    fill();
    const QString before = content("s.mdb");
    const QString all = counts("s.mdb");
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(counts("old.mdb"), all);
    EXPECT_EQ(content("old.mdb"), before);
    EXPECT_EQ(content("s.mdb"), before);
    EXPECT_EQ(stored("s.mdb", "SELECT count(*), min(LogID), max(LogID), min(log_Date) FROM Log"),
              "11|1|11|2025-03-15 10:00:00");
    EXPECT_EQ(stored("s.mdb", "SELECT min(LogChemID), max(LogChemID), count(*) FROM LogChem"), "1|22|22");
    EXPECT_TRUE(checkDatabase(path("s.mdb")).isEmpty());
    EXPECT_TRUE(checkDatabase(path("old.mdb")).isEmpty());
    EXPECT_TRUE(out.contains("11 batches since 2025-03-07 stay, 49 older ones")) << qPrintable(out);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), (QStringList{"old.mdb", "s.mdb"}));
    EXPECT_EQ(QFile::permissions(path("old.mdb")) & 0x0077, 0);
}

/// A file in the midst of a change, with the journal that takes it back, under that name.
void leaveUnfinishedChange(const QString& file, const QString& name) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &database), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(database,
                     "PRAGMA cache_size = 2; PRAGMA cache_spill = 1; BEGIN; UPDATE Chemical SET chm_Notes = "
                     "hex(randomblob(3000)); UPDATE Log SET log_Notes = hex(randomblob(3000))",
                     nullptr, nullptr, nullptr),
        SQLITE_OK);
    EXPECT_TRUE(QFile::copy(file, name));
    EXPECT_TRUE(QFile::copy(file + u"-journal"_s, name + u"-journal"_s));
    sqlite3_close(database);
}

TEST_F(ArchiveTest, WhatAKilledRunHasLeftIsNotPlayedIntoTheNextArchive) {
    fill();
    createSample(path("other.mdb"));
    leaveUnfinishedChange(path("other.mdb"), path("old.mdb.making"));
    const QString before = content("s.mdb");
    const QString all = counts("s.mdb");
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(counts("old.mdb"), all);
    EXPECT_EQ(content("old.mdb"), before);
    EXPECT_TRUE(checkDatabase(path("old.mdb")).isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), (QStringList{"old.mdb", "other.mdb", "s.mdb"}));
}

// The old chain is in the archive, and the file's goes on from it.
TEST_F(ArchiveTest, TheHistoryGoesAlongAndTheFilesOwnGoesOn) {
    fill();
    const int rows = stored("s.mdb", "SELECT count(*) FROM History").toInt();
    ASSERT_GT(rows, 100);
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("old.mdb", "SELECT count(*), sum(hst_Seal IS NULL) FROM History"),
              u"%1|0"_s.arg(rows + 1))
        << "what others had changed is sealed";
    EXPECT_EQ(stored("s.mdb", "SELECT HistoryID, hst_What FROM History"), u"%1|archived"_s.arg(rows + 2));
    const QString seal =
        stored("old.mdb", "SELECT lower(hex(hst_Seal)) FROM History ORDER BY HistoryID DESC LIMIT 1");
    EXPECT_TRUE(stored("s.mdb", "SELECT hst_Fields FROM History")
                    .contains(u"before='%1:%2',"_s.arg(rows + 1).arg(seal)));
    support::runSql(path("s.mdb"),
                    "UPDATE Log SET log_Notes = 'x' WHERE LogID = 1; DELETE FROM RXs WHERE RXsID = 1");
    EXPECT_EQ(stored("s.mdb", "SELECT count(*) FROM History"), "3") << "the file writes its history again";
    EXPECT_EQ(checkDatabase(path("s.mdb")), QStringList());
    EXPECT_EQ(checkDatabase(path("old.mdb")), QStringList());
    support::runSql(path("s.mdb"),
                    "DROP TRIGGER History_Log_Changed; UPDATE Log SET log_Notes = 'y' WHERE LogID = 1");
    EXPECT_EQ(run({"archive", path("s.mdb"), path("older.mdb"), "--keep", "6"}), 0)
        << "a broken history keeps nobody from making room";
}

// An archive that was changed and sealed anew is whole in itself.
TEST_F(ArchiveTest, CheckHoldsTheArchiveAgainstWhatTheFileGoesOnFrom) {
    fill();
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    support::runSql(path("s.mdb"), "UPDATE Log SET log_Notes = 'x' WHERE LogID = 1");
    createSample(path("other.mdb"), 5);
    folder.write("none.mdb", "no database");
    EXPECT_EQ(run({"check", path("s.mdb")}), 0) << "other files are not meant: " << qPrintable(out);
    const QString last = stored("old.mdb", "SELECT max(HistoryID) FROM History");
    const QString seal = stored("old.mdb", "SELECT hex(hst_Seal) FROM History WHERE HistoryID = " + last);
    support::runSql(path("old.mdb"),
                    "DROP TRIGGER History_Sealed; UPDATE History SET hst_Seal = randomblob(32) "
                    "WHERE HistoryID = " +
                        last);
    const QString expected =
        u"The history goes on from row %1 of the archive %2, which does not hold it"_s.arg(last,
                                                                                           path("old.mdb"));
    EXPECT_EQ(run({"check", path("s.mdb")}), 1);
    EXPECT_TRUE(out.contains(expected)) << qPrintable(out);
    support::runSql(path("old.mdb"),
                    "UPDATE History SET hst_Seal = x'" + seal + "' WHERE HistoryID = " + last);
    EXPECT_EQ(run({"check", path("s.mdb")}), 0) << qPrintable(out);
    support::runSql(path("old.mdb"), "DROP TABLE History");
    EXPECT_EQ(run({"check", path("s.mdb")}), 1);
    EXPECT_TRUE(out.contains(expected)) << qPrintable(out);
    QFile::remove(path("old.mdb"));
    EXPECT_EQ(run({"check", path("s.mdb")}), 0) << "an archive that is not at hand proves nothing";
}

TEST_F(ArchiveTest, TheArchiveHasAnIdentityOfItsOwnAndNamesItsParent) {
    fill();
    const QString identity = stored("s.mdb", "SELECT fid_Identity FROM FileIdentity");
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("s.mdb", "SELECT fid_Identity, fid_Parent FROM FileIdentity"), identity + "|NULL");
    EXPECT_EQ(stored("old.mdb", "SELECT fid_Parent FROM FileIdentity"), identity);
    EXPECT_NE(stored("old.mdb", "SELECT fid_Identity FROM FileIdentity"), identity);
    EXPECT_EQ(run({"archive", path("old.mdb"), path("older.mdb")}), 1);
    EXPECT_TRUE(err.contains("archive itself"));
}

TEST_F(ArchiveTest, BothFilesHoldTheMapOfTheKeys) {
    fill();
    const QString key = stored("s.mdb", "SELECT LogID FROM Log WHERE log_Lot = 'SV51'");
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    const QString map = "SELECT kmp_Archive, kmp_Table, kmp_Old, kmp_New FROM KeyMap ORDER BY 2, 3";
    EXPECT_EQ(stored("s.mdb", map), stored("old.mdb", map));
    EXPECT_EQ(stored("s.mdb", "SELECT log_Lot FROM Log JOIN KeyMap ON kmp_Table = 'Log' AND kmp_New = LogID "
                              "WHERE kmp_Old = " +
                                  key),
              "SV51");
    EXPECT_EQ(stored("s.mdb", "SELECT DISTINCT kmp_Archive FROM KeyMap"),
              stored("old.mdb", "SELECT fid_Identity FROM FileIdentity"));
    EXPECT_EQ(stored("s.mdb", "SELECT count(*) FROM ArchivedBatch"), "49");
    EXPECT_EQ(stored("s.mdb", "SELECT abt_Date FROM ArchivedBatch WHERE abt_Lot = 'SV1'"),
              "2021-02-15 10:00:00");
}

TEST_F(ArchiveTest, TheNextBatchFollowsTheLastOne) {
    fill();
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("s.mdb", "INSERT INTO Log (log_Name) VALUES ('New'); SELECT last_insert_rowid()"), "12");
    EXPECT_EQ(stored("s.mdb", "INSERT INTO Formula (frm_Name) VALUES ('New'); SELECT last_insert_rowid()"),
              "23");
}

TEST_F(ArchiveTest, ASecondArchiveOfTheSameFileWorks) {
    fill();
    ASSERT_EQ(run({"archive", path("s.mdb"), path("one.mdb")}), 0) << qPrintable(err);
    ASSERT_EQ(run({"archive", path("s.mdb"), path("two.mdb"), "--keep", "6"}), 0) << qPrintable(err);
    EXPECT_EQ(counts("two.mdb").section('|', 0, 0), "11");
    EXPECT_EQ(stored("s.mdb", "SELECT count(*), min(LogID), max(LogID) FROM Log"), "5|1|5");
    EXPECT_EQ(stored("s.mdb", "SELECT count(*) FROM ArchivedBatch"), "55");
}

TEST_F(ArchiveTest, ABatchWithoutADateStays) {
    fill();
    support::runSql(path("s.mdb"), "UPDATE Log SET log_Date = NULL WHERE log_Lot = 'SV2'");
    ASSERT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("s.mdb", "SELECT LogID FROM Log WHERE log_Lot = 'SV2'"), "1");
}

TEST_F(ArchiveTest, RefusalsChangeNothing) {
    fill();
    const QByteArray before = hashOf("s.mdb");
    const auto refused = [&](const QStringList& more, const QString& why) {
        EXPECT_EQ(run(QStringList{"archive", path("s.mdb"), path("old.mdb")} + more), 1);
        EXPECT_TRUE(err.contains(why)) << qPrintable(err);
        EXPECT_EQ(hashOf("s.mdb"), before);
    };
    refused({"--keep", "100"}, "nothing to archive");
    QDir(folder.path()).mkpath("mixes");
    folder.write("mixes/0000000A.xml", "<Mix ID=\"0000000A\" State=\"finished\"/>");
    refused({}, "not in the log yet: 1");
    QFile::remove(path("mixes/0000000A.xml"));
    QDir(folder.path()).mkpath("drafts");
    folder.write("drafts/x.json", "{\"identity\": \"\", \"table\": \"Log\"}");
    refused({}, "not saved: 1");
    folder.write("drafts/x.json", "{\"identity\": \"another\", \"table\": \"Log\"}");
    EXPECT_FALSE(folder.has("old.mdb"));
    folder.write("old.mdb", "mine");
    refused({}, "exists already");
    EXPECT_EQ(folder.read("old.mdb"), "mine");
}

TEST_F(ArchiveTest, AFileOfVersionOneIsToBeBroughtUpToDateFirst) {
    QFile statements(QStringLiteral(SORVANTO_SOURCE_DIR "/tests/version-1.0/sorvanto.sql"));
    ASSERT_TRUE(statements.open(QIODevice::ReadOnly));
    QProcess engine;
    engine.start("sqlite3", {path("one.mdb")});
    engine.write(statements.readAll());
    engine.closeWriteChannel();
    ASSERT_TRUE(engine.waitForFinished());
    EXPECT_EQ(run({"archive", path("one.mdb"), path("old.mdb")}), 1);
    EXPECT_TRUE(err.contains("of an older version")) << qPrintable(err);
    EXPECT_FALSE(folder.has("old.mdb"));
}

// The tool lies where it was installed; the program's folder is elsewhere.
TEST_F(ArchiveTest, OpenWorkIsLookedForWhereverTheProgramMayHaveItsFolder) {
    fill();
    const QString own = stored("s.mdb", "SELECT fid_Identity FROM FileIdentity");
    QDir(folder.path()).mkpath("tool");
    platform::setProgramFolder(path("tool"));
    qputenv("SORVANTO_FOLDER", path("chosen").toLocal8Bit());
    for (const char* place : {"mixes", "chosen/mixes", "data/sorvanto/mixes", "tool/mixes"}) {
        const QString mix = QLatin1String(place) + "/0000000A.xml"_L1;
        QDir(folder.path()).mkpath(QLatin1String(place));
        folder.write(mix, "<Mix ID=\"0000000A\" State=\"finished\" Database=\"" + own.toLatin1() + "\"/>");
        EXPECT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 1) << place;
        EXPECT_TRUE(err.contains("not in the log yet: 1")) << qPrintable(err);
        folder.write(mix, "<Mix ID=\"0000000A\" State=\"finished\" Database=\"another\"/>");
    }
    folder.write("mixes/0000000B.xml", "<Mix ID=\"0000000B\" State=\"loaded\"/>");  // no batch yet
    EXPECT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 0) << qPrintable(err);
}

TEST_F(ArchiveTest, AFileInUseOrUnsoundIsRefused) {
    fill();
    {
        const support::OtherProcess program([&] {
            static platform::ProcessLock lock(platform::lockPathOf(path("s.mdb")));
            return lock.take() == platform::ProcessLock::Outcome::Taken;
        });
        EXPECT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 1) << "while the program has it open";
        EXPECT_TRUE(err.contains("in use")) << qPrintable(err);
    }
    {
        QProcess shell;
        shell.start("sqlite3", {path("s.mdb")});
        shell.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
        ASSERT_TRUE(shell.waitForReadyRead());
        EXPECT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 1);
        shell.closeWriteChannel();
        shell.waitForFinished();
    }
    support::runSql(
        path("s.mdb"),
        "PRAGMA foreign_keys = OFF; UPDATE LogChem SET LogID = 9999 WHERE LogChemID = (SELECT min(LogChemID) FROM LogChem)");
    EXPECT_EQ(run({"archive", path("s.mdb"), path("old.mdb")}), 1);
    EXPECT_TRUE(err.contains("not sound")) << qPrintable(err);
    EXPECT_FALSE(folder.has("old.mdb"));
}

TEST_F(ArchiveTest, AWrongCommandLineShowsTheUsage) {
    for (const QStringList& more : {QStringList{"--keep"}, QStringList{"--keep", "0"},
                                    QStringList{"--keep", "many"}, QStringList{"--forget", "3"}})
        EXPECT_EQ(run(QStringList{"archive", "a", "b"} + more), 2);
    EXPECT_EQ(run({"archive", "a"}), 2);
}

/// Old and whole, or new and whole, whatever has happened.
class BrokenOffTest : public ArchiveTest {
protected:
    void SetUp() override {
        fill();
        before = content("s.mdb");
        all = counts("s.mdb");
        whole = folder.read("s.mdb");
    }
    void again() {
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files))
            QFile::remove(path(name));
        folder.write("s.mdb", whole);
    }
    bool expectWhole(const std::string& when) {
        EXPECT_TRUE(checkDatabase(path("s.mdb")).isEmpty()) << when;
        EXPECT_EQ(content("s.mdb"), before) << when;
        const bool changed = counts("s.mdb") != all;
        if (changed || folder.has("old.mdb")) {
            EXPECT_TRUE(folder.has("old.mdb")) << when;
            EXPECT_TRUE(checkDatabase(path("old.mdb")).isEmpty()) << when;
            EXPECT_EQ(counts("old.mdb"), all) << when;
        }
        return changed;
    }

    QString before, all;
    QByteArray whole;
};

TEST_F(BrokenOffTest, AFullDiskAtAnySizeLeavesTheFileAsItWas) {
    int failed = 0;
    for (int kilobytes = 4; kilobytes < 2000; kilobytes += kilobytes / 3 + 4) {
        again();
        int code = 0;
        {
            const support::FullDisk full(1024 * kilobytes);
            code = run({"archive", path("s.mdb"), path("old.mdb")});
        }
        const bool changed = expectWhole(std::to_string(kilobytes) + " kB");
        EXPECT_EQ(changed, code == 0) << kilobytes;
        if (code != 0) {
            ++failed;
            EXPECT_FALSE(folder.has("old.mdb")) << kilobytes;
        }
    }
    EXPECT_GT(failed, 5);
}

TEST_F(BrokenOffTest, KilledAtAnyMomentOneOfTheTwoIsThere) {
    int killed = 0;
    int changed = 0;
    for (int microseconds = 0; changed < 3; microseconds += 9'000) {
        again();
        const pid_t child = ::fork();
        if (child == 0) {
            try {
                archiveDatabase(path("s.mdb"), path("old.mdb"), QDate(2025, 3, 7));
            } catch (const RuntimeError&) {
                ::_exit(1);
            }
            ::_exit(0);
        }
        ::usleep(static_cast<useconds_t>(microseconds));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        killed += WIFSIGNALED(status) ? 1 : 0;
        changed += expectWhole(std::to_string(microseconds) + " microseconds") ? 1 : 0;
    }
    std::printf("killed in the midst: %d, with the new file: %d\n", killed, changed);
    EXPECT_GT(killed, 3);
}

}  // namespace
}  // namespace sorvanto
