// Whatever is changed past the program, in the records or in what is written down of them, the check finds.
#include "HistoryTest.h"
#include "db/DatabaseCheck.h"
#include "history/HistoryChain.h"
#include "history/HistoryReplay.h"

#include <QRandomGenerator>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

/// A database in memory of a small pharmacy, whose every record has its history.
class ProofTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        for (int i = 1; i <= 6; ++i) {
            connection->execute(
                u"INSERT INTO Chemical (chm_Name, chm_Cost, chm_Notes) VALUES ('Chemical %1', %1, 'it''s')"_s
                    .arg(i));
            connection->execute(
                u"INSERT INTO Formula (frm_Name, frm_Quantity) VALUES ('Formula %1', %1)"_s.arg(i));
            connection->execute(
                u"INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (%1, %1, 0.1)"_s.arg(i));
            connection->execute(
                u"INSERT INTO Log (FormulaID, log_Name, log_Date) VALUES (%1, 'Batch %1', '3/7/2026')"_s.arg(
                    i));
            connection->execute(
                u"INSERT INTO LogChem (LogID, lch_Name, lch_QTY) VALUES (%1, 'Chemical %1', 1.5)"_s.arg(i));
            connection->execute(
                u"INSERT INTO Patient (pat_LName, pat_Phone) VALUES ('Patient %1', '555')"_s.arg(i));
            connection->execute(u"INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (%1, %1, 30)"_s.arg(i));
            connection->execute(u"UPDATE Chemical SET chm_Lot = 'L%1' WHERE ChemicalID = %1"_s.arg(i));
        }
        run("DELETE FROM RXs WHERE RXsID = 6");
        outside(u"UPDATE Patient SET pat_City = 'Fenwick' WHERE PatientID = 3"_s);
        run("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID < 4");
        ASSERT_EQ(checkDatabase(path), QStringList());
        connection.reset();
    }
    QStringList problems() const {
        auto opened = std::make_shared<platform::Connection>();
        opened->open(u"Data Source="_s + path);
        return chainProblems(opened->engine()) + recordProblems(opened->engine());
    }
    QStringList column(const QString& query) const { return outside(query).split('\n'); }
};

/// One edit somewhere past the triggers: a field of a record, a record more or less, the same in the history.
class RandomEdit {
public:
    RandomEdit(platform::Engine& engine, QRandomGenerator& random)
        : m_engine(engine), m_database(platform::sqlite::handleOf(engine)), m_random(random) {}

    std::string make() {
        const QString table = oneOf({"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs",
                                     "History", "History", "History", "History", "History", "History"});
        const int kind = static_cast<int>(m_random.bounded(8));
        const QString key = value(u"SELECT rowid FROM %1 ORDER BY random() LIMIT 1"_s.arg(table));
        if (kind == 0)
            return run(u"DELETE FROM %1 WHERE rowid = %2"_s.arg(table, key));
        if (kind == 1 && table == "History")
            return run(u"UPDATE History SET HistoryID = HistoryID + 1000 WHERE rowid = %1"_s.arg(key));
        if (kind == 1)
            return run(copied(table, key));
        const QString column = value(
            u"SELECT name FROM pragma_table_info('%1') WHERE pk = 0 ORDER BY random() LIMIT 1"_s.arg(table));
        return run(
            u"UPDATE %1 SET %2 = %3 WHERE rowid = %4"_s.arg(table, column, other(table, column, key), key));
    }

private:
    QString oneOf(const QStringList& all) { return all.at(m_random.bounded(static_cast<int>(all.size()))); }
    /// Another value than the one that is there.
    QString other(const QString& table, const QString& column, const QString& key) {
        const QString now = value(u"SELECT quote(%1) FROM %2 WHERE rowid = %3"_s.arg(column, table, key));
        const QString type =
            value(u"SELECT type FROM pragma_table_info('%1') WHERE name = '%2'"_s.arg(table, column));
        const QString next = type == "DATETIME"      ? u"'2026-03-08 00:00:00'"_s
                             : type == "BLOB"        ? u"x'%1'"_s.arg(m_random.bounded(100), 64, 10, '0'_L1)
                             : type.contains("TEXT") ? u"'t%1'"_s.arg(m_random.bounded(1000))
                             : type == "YESNO"       ? u"1"_s
                                                     : QString::number(m_random.bounded(13, 1000));
        EXPECT_NE(next, now);
        return next;
    }
    QString copied(const QString& table, const QString& key) {
        const QString columns =
            value(u"SELECT group_concat(name) FROM pragma_table_info('%1') WHERE pk = 0"_s.arg(table));
        return u"INSERT INTO %1 (%2) SELECT %2 FROM %1 WHERE rowid = %3"_s.arg(table, columns, key);
    }
    QString value(const QString& query) {
        platform::Query row(m_engine, query, query);
        return row.step() ? row.value(0, {platform::FieldKind::Text, 0}).toString() : QString();
    }
    std::string run(const QString& sql) {
        EXPECT_EQ(sqlite3_exec(m_database, sql.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(m_database) << " in " << qPrintable(sql);
        EXPECT_EQ(sqlite3_changes(m_database), 1) << qPrintable(sql);
        return sql.toStdString();
    }

    platform::Engine& m_engine;
    sqlite3* m_database;
    QRandomGenerator& m_random;
};

TEST_F(ProofTest, AThousandEditsPastTheProgramAreFound) {
    platform::Connection opened;
    opened.open(u"Data Source="_s + path);
    platform::Engine& engine = opened.engine();
    sqlite3* database = platform::sqlite::handleOf(engine);
    for (const QString& trigger : column(u"SELECT name FROM sqlite_schema WHERE type = 'trigger'"_s))
        sqlite3_exec(database, ("DROP TRIGGER " + trigger).toUtf8().constData(), nullptr, nullptr, nullptr);
    sqlite3_exec(database, "PRAGMA foreign_keys = OFF", nullptr, nullptr, nullptr);
    QRandomGenerator random(1);
    for (int i = 0; i < 1000; ++i) {
        sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
        const std::string edit = RandomEdit(engine, random).make();
        ASSERT_FALSE(chainProblems(engine).isEmpty() && recordProblems(engine).isEmpty()) << edit;
        sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
    }
    EXPECT_EQ(chainProblems(engine) + recordProblems(engine), QStringList()) << "each was taken back";
}

TEST_F(ProofTest, TheFirstBrokenRowIsNamed) {
    outside(u"DROP TRIGGER History_Sealed"_s);
    outside(
        u"UPDATE History SET hst_When = '2026-03-07 14:05:09.000', hst_Fields = 'chm_Cost=1' WHERE HistoryID IN (4, 9)"_s);
    EXPECT_EQ(
        problems().first(),
        "The history is broken at row 4 (FormChem 1, made, 2026-03-07 14:05:09.000): it is not as it was sealed");
}

TEST_F(ProofTest, NameAndFieldsOfARowAreSealedToo) {
    outside(u"DROP TRIGGER History_Sealed"_s);
    for (const char* column : {"hst_Name", "hst_Fields"}) {
        const QString before = outside(u"SELECT %1 FROM History WHERE HistoryID = 2"_s.arg(column));
        outside(u"UPDATE History SET %1 = %1 || 'x' WHERE HistoryID = 2"_s.arg(column));
        EXPECT_TRUE(problems().value(0).contains("broken at row 2 ")) << column;
        outside(u"UPDATE History SET %1 = '%2' WHERE HistoryID = 2"_s.arg(
            column, QString(before).replace('\'', "''")));
    }
    EXPECT_EQ(problems(), QStringList());
}

TEST_F(ProofTest, RecordsAreHeldAgainstTheirHistory) {
    outside(
        u"DROP TRIGGER History_Chemical_Changed; DROP TRIGGER History_Patient_Made; DROP TRIGGER History_LogChem_Deleted;"
        "UPDATE Chemical SET chm_Cost = 5 WHERE ChemicalID = 4; INSERT INTO Patient (pat_LName) VALUES ('Stone');"
        "DELETE FROM LogChem WHERE LogChemID = 2"_s);
    EXPECT_EQ(problems(),
              (QStringList{"Chemical 4 differs in chm_Cost from what the history says",
                           "LogChem 2 is not there, although the history doesn't say that it was deleted",
                           "Patient 7 is there, although the history doesn't say that it was made"}));
    EXPECT_EQ(checkDatabase(path).mid(0, 3),
              (QStringList{"History_Chemical_Changed is missing", "History_LogChem_Deleted is missing",
                           "History_Patient_Made is missing"}));
}

TEST_F(ProofTest, ATriggerThatDoesSomethingElseIsNoticed) {
    outside(u"DROP TRIGGER History_Log_Changed; CREATE TRIGGER History_Log_Changed AFTER UPDATE ON Log BEGIN "
            "SELECT 1; END"_s);
    EXPECT_EQ(checkDatabase(path), QStringList{"History_Log_Changed is not as it was delivered"});
}

TEST_F(ProofTest, AKeyThatAnotherProgramChangesIsFollowed) {
    outside(u"PRAGMA foreign_keys = OFF; UPDATE Chemical SET ChemicalID = 99 WHERE ChemicalID = 2;"
            "UPDATE Chemical SET ChemicalID = 1 + 1 WHERE ChemicalID = 99"_s);
    EXPECT_EQ(problems(), QStringList());
}

TEST_F(ProofTest, RecordsFromBeforeTheHistoryAreNoProblem) {
    const QString sample = folder.filePath("sample.mdb");
    createSample(sample, 200);
    EXPECT_EQ(checkDatabase(sample), QStringList());
    support::runSql(
        sample, u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID < 5; DELETE FROM Log WHERE LogID = 1 "
                "AND LogID NOT IN (SELECT LogID FROM RXs)"_s);
    EXPECT_EQ(checkDatabase(sample), QStringList());
}

}  // namespace
