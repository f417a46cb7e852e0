// The history at the command line: the proof of its end, a restore that is written down, a patient who is forgotten.
#include "CommandTest.h"
#include "FixedClock.h"
#include "TempProgramFolder.h"
#include "TestDatabase.h"
#include "db/DatabaseCheck.h"
#include "db/DatabaseFile.h"
#include "history/HistoryChain.h"
#include "history/HistorySeal.h"
#include "platform/data/Connection.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

class HistoryToolTest : public CommandTest {
protected:
    void SetUp() override {
        qputenv("XDG_DATA_HOME", path("data").toLocal8Bit());
        createDatabase(path("a.mdb"));
        change({u"INSERT INTO Patient (pat_LName, pat_Phone) VALUES ('Abernathy', '440-555-0117')"_s,
                u"INSERT INTO Patient (pat_LName) VALUES ('Stone')"_s,
                u"INSERT INTO Log (log_Name) VALUES ('Gel')"_s,
                u"INSERT INTO RXs (LogID, PatientID, rxs_Doctor) VALUES (1, 1, 'Dr. Reed')"_s,
                u"UPDATE Patient SET pat_City = 'Fenwick'"_s});
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }
    QString path(const QString& name) const { return folder.path(name); }
    void change(const QStringList& statements) const {
        platform::Connection connection;
        connection.open(u"Data Source="_s + path("a.mdb"));
        keepHistory(connection, {u"rkent@bench2"_s, u"9.9"_s});
        for (const QString& statement : statements)
            connection.execute(statement);
    }
    QString head() const {
        platform::Connection connection;
        connection.open(u"Data Source="_s + path("a.mdb"));
        return toText(historyHead(connection.engine()));
    }
    QString stored(const QString& statement) const {
        return support::rowsText(support::runSql(path("a.mdb"), statement));
    }
    int check() { return run({"check", path("a.mdb")}); }
    /// As the program leaves one at a signing.
    void journal(const QString& noted, const QString& signedAt) {
        QDir(folder.path()).mkpath("mixes/closed");
        const QString identity = stored("SELECT fid_Identity FROM FileIdentity");
        folder.write(
            "mixes/closed/1.xml",
            u"<Mix Database=\"%1\"><Rows>{\"History\":\"%2\",\"Log\":{\"log_Date\":\"%3\"}}</Rows></Mix>"_s
                .arg(identity, noted, signedAt)
                .toUtf8());
    }

    support::TempProgramFolder folder;
    support::FixedClock clock;
};

TEST_F(HistoryToolTest, CheckNamesTheFirstBrokenRow) {
    EXPECT_EQ(check(), 0) << qPrintable(out);
    stored("DROP TRIGGER History_Sealed; UPDATE History SET hst_Person = 'lm@bench1' WHERE HistoryID = 3");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("The history is broken at row 3 (Patient 2, made, ")) << qPrintable(out);
    EXPECT_TRUE(out.contains("History_Sealed is missing"));
}

TEST_F(HistoryToolTest, AnEndThatWasCutIsKnownFromTheJournalOfAMix) {
    journal(head(), u"2026-03-07 14:05:09"_s);
    EXPECT_EQ(check(), 0) << qPrintable(out);
    ASSERT_EQ(run({"backup", path("a.mdb"), path("copy.mdb")}), 0);
    change({u"UPDATE Patient SET pat_Zip = '1'"_s});
    journal(head(), u"2026-03-07 15:05:09"_s);
    EXPECT_EQ(check(), 0) << qPrintable(out);
    QFile::remove(path("a.mdb"));
    QFile::copy(path("copy.mdb"), path("a.mdb"));
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("The history does not go through its row 9 as ")) << qPrintable(out);
}

TEST_F(HistoryToolTest, AnEndThatWasCutIsKnownFromACopy) {
    change({u"UPDATE Patient SET pat_Zip = '1'"_s});
    QDir(folder.path()).mkpath("backups");
    ASSERT_EQ(run({"backup", path("a.mdb"), path("backups/older.mdb")}), 0) << qPrintable(err);
    change({u"UPDATE Patient SET pat_Zip = '2'"_s});
    const QString rows = stored("SELECT max(HistoryID) FROM History");
    ASSERT_EQ(run({"backup", path("a.mdb"), path("backups/newer.mdb")}), 0) << qPrintable(err);
    folder.write("backups/none.mdb", "no database");
    EXPECT_EQ(check(), 0) << qPrintable(out);
    change({u"UPDATE Patient SET pat_Zip = '3'"_s});
    EXPECT_EQ(check(), 0) << "longer than its copies: " << qPrintable(out);
    stored("DROP TRIGGER History_Kept; DELETE FROM History WHERE HistoryID >= " + rows +
           "; UPDATE sqlite_sequence SET seq = (SELECT max(HistoryID) FROM History) WHERE name = 'History'");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains(
        u"The history ends with row %1, but rows up to %2 are in the copy "_s.arg(rows.toInt() - 1)
            .arg(rows)))
        << qPrintable(out);
    EXPECT_TRUE(out.contains("newer.mdb"));
    change({u"UPDATE Patient SET pat_Zip = '4'"_s});
    change({u"UPDATE Patient SET pat_Zip = '5'"_s});
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains(u"does not go through its row %1 as the copy "_s.arg(rows))) << qPrintable(out);
}

TEST_F(HistoryToolTest, ARestoreFromAnOlderCopyExplainsTheNewerOne) {
    ASSERT_EQ(run({"backup", path("a.mdb"), path("older.mdb")}), 0);
    change({u"UPDATE Patient SET pat_Zip = '1'"_s});
    ASSERT_EQ(run({"backup", path("a.mdb"), path("newer.mdb")}), 0);
    ASSERT_EQ(run({"restore", path("older.mdb"), path("a.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(check(), 0) << qPrintable(out);
}

TEST_F(HistoryToolTest, ARestoreIsWrittenDownAndExplainsAShorterHistory) {
    ASSERT_EQ(run({"backup", path("a.mdb"), path("cop'y.mdb")}), 0);
    change({u"UPDATE Patient SET pat_Zip = '1'"_s});
    journal(head(), u"2026-03-07 15:05:09"_s);
    ASSERT_EQ(run({"restore", path("cop'y.mdb"), path("a.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("SELECT hst_What, hst_Fields FROM History ORDER BY HistoryID DESC LIMIT 1"),
              "restored|copy='cop''y.mdb'");
    EXPECT_EQ(check(), 0) << qPrintable(out);
    journal(head().replace(3, 4, "0000"), u"2999-01-01 10:00:00"_s);
    EXPECT_EQ(check(), 1) << "what was noted after the restore is to be there";
}

TEST_F(HistoryToolTest, APatientIsForgottenAndTheChainStaysProvable) {
    QDir(folder.path()).mkpath("drafts");
    const QString draft = u"{\"identity\":\"%1\",\"table\":\"Patient\",\"key\":%2}"_s;
    const QString identity = stored("SELECT fid_Identity FROM FileIdentity");
    folder.write("drafts/1.json", draft.arg(identity).arg(1).toUtf8());
    folder.write("drafts/2.json", draft.arg(identity).arg(2).toUtf8());
    folder.write("drafts/3.json", draft.arg("ffff").arg(1).toUtf8());
    const QString seals = stored("SELECT hex(hst_Seal) FROM History");
    ASSERT_EQ(run({"forget", path("a.mdb"), "--patient", "1"}), 0) << qPrintable(err);
    EXPECT_TRUE(out.contains("3 changes of patient 1 blanked, 1 unsaved texts removed")) << qPrintable(out);
    EXPECT_EQ(stored("SELECT HistoryID, hst_Table, hst_What FROM History WHERE hst_Fields IS NULL"),
              "2|Patient|made\n5|RXs|made\n6|Patient|changed");
    EXPECT_EQ(stored("SELECT count(*) FROM History WHERE hst_Salt IS NULL AND hst_Name IS NULL"), "3");
    EXPECT_EQ(
        stored(
            "SELECT hst_Table, hst_Key, hst_What, hst_Fields FROM History ORDER BY HistoryID DESC LIMIT 1"),
        "Patient|1|forgotten|rows=3");
    EXPECT_TRUE(stored("SELECT hex(hst_Seal) FROM History").startsWith(seals));
    EXPECT_EQ(QDir(path("drafts")).entryList(QDir::Files), (QStringList{"2.json", "3.json"}));
    EXPECT_EQ(check(), 0) << qPrintable(out);
    stored(
        "UPDATE Patient SET pat_LName = '', pat_Phone = '', pat_City = ''; UPDATE RXs SET rxs_Doctor = ''");
    EXPECT_EQ(check(), 0) << qPrintable(out);
    ASSERT_EQ(run({"forget", path("a.mdb"), "--patient", "1"}), 0) << "what was written down since";
    EXPECT_FALSE(folder.read("a.mdb").contains("440-555-0117")) << "also not in what is free";
}

TEST_F(HistoryToolTest, ABlankRowThatNobodyAskedForIsABreak) {
    stored(
        "DROP TRIGGER History_Sealed; UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL "
        "WHERE HistoryID = 3");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("broken at row 3")) << qPrintable(out);
}

TEST_F(HistoryToolTest, AForgottenPatientExcusesNoBlankRowOfAnythingElse) {
    change({u"INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Base', 1)"_s,
            u"INSERT INTO Formula (frm_Name) VALUES ('Gel')"_s,
            u"INSERT INTO LogChem (LogID, lch_Name) VALUES (1, 'Base')"_s});
    ASSERT_EQ(run({"forget", path("a.mdb"), "--patient", "1"}), 0) << qPrintable(err);
    EXPECT_EQ(check(), 0) << qPrintable(out);
    const QString sealed = stored("SELECT sql FROM sqlite_schema WHERE name = 'History_Sealed'");
    for (const QString& table : {u"Chemical"_s, u"Formula"_s, u"Log"_s, u"LogChem"_s}) {
        const QString rows = u" WHERE hst_Table = '%1' AND hst_Record = 1"_s.arg(table);
        ASSERT_EQ(stored("SELECT count(*) FROM History" + rows), "1") << qPrintable(table);
        QFile::remove(path("kept.mdb"));
        ASSERT_TRUE(QFile::copy(path("a.mdb"), path("kept.mdb")));
        stored(
            "DROP TRIGGER History_Sealed; UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL" +
            rows + u"; "_s + sealed);
        EXPECT_EQ(check(), 1) << qPrintable(table);
        EXPECT_TRUE(out.contains(u"(%1 1, made, "_s.arg(table))) << qPrintable(out);
        QFile::remove(path("a.mdb"));
        ASSERT_TRUE(QFile::copy(path("kept.mdb"), path("a.mdb")));
    }
    EXPECT_EQ(check(), 0) << qPrintable(out);
}

TEST_F(HistoryToolTest, ThatAPatientWasForgottenIsNotForgottenItself) {
    ASSERT_EQ(run({"forget", path("a.mdb"), "--patient", "1"}), 0) << qPrintable(err);
    change({u"UPDATE Patient SET pat_Zip = '1' WHERE PatientID = 1"_s});
    ASSERT_EQ(run({"forget", path("a.mdb"), "--patient", "1"}), 0) << qPrintable(err);
    EXPECT_EQ(check(), 0) << qPrintable(out);
    stored(
        "DROP TRIGGER History_Sealed; UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL "
        "WHERE HistoryID = (SELECT min(HistoryID) FROM History WHERE hst_What = 'forgotten')");
    EXPECT_EQ(check(), 1);
    EXPECT_TRUE(out.contains("(Patient 1, forgotten, ")) << qPrintable(out);
}

TEST_F(HistoryToolTest, WhatCanNotBeForgottenIsSaid) {
    EXPECT_EQ(run({"forget", path("a.mdb"), "--patient", "7"}), 1);
    EXPECT_TRUE(err.contains("The history holds nothing of patient 7")) << qPrintable(err);
    EXPECT_EQ(run({"forget", path("a.mdb"), "--patient", "x"}), 2);
    EXPECT_EQ(run({"forget", path("a.mdb")}), 2);
    support::createDatabaseFile(path("old.mdb"));
    EXPECT_EQ(run({"forget", path("old.mdb"), "--patient", "1"}), 1);
    EXPECT_TRUE(err.contains("keeps no history")) << qPrintable(err);
}

}  // namespace
}  // namespace sorvanto
