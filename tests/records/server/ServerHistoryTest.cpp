// What is written down of changes where several benches work on one server: a chain each, and the proof of them all.
#include "history/HistoryTest.h"

#include "db/DatabaseCheck.h"
#include "db/RecordsCopy.h"
#include "history/HistoryBook.h"
#include "history/HistoryRange.h"
#include "history/HistoryRestore.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class ServerHistoryTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        other = open(u"mlopez@bench7"_s);
        for (int i = 0; i < 2; ++i) {
            run("INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Urea', 2.5)");
            other->execute(u"INSERT INTO Chemical (chm_Name, chm_Notes) VALUES ('Menthol', 'it''s')"_s);
            outside(u"UPDATE Chemical SET chm_Lot = 'L%1'"_s.arg(i));
        }
    }
    /// The last row of a person.
    QString lastOf(const QString& person) const {
        return outside(u"SELECT max(HistoryID) FROM History WHERE hst_Person = '%1'"_s.arg(person));
    }
    QString problem() const { return chainProblems(connection->engine()).value(0); }

    std::shared_ptr<platform::Connection> other;
};

TEST_F(ServerHistoryTest, EachBenchHasAChainAndAllAreWhole) {
    EXPECT_EQ(outside(u"SELECT hst_Person, count(*) FROM History GROUP BY hst_Person ORDER BY hst_Person"_s),
              "|7\nmlopez@bench7|2\nrkent@bench2|2");
    EXPECT_EQ(proofProblems(), QStringList());
}

TEST_F(ServerHistoryTest, TheHeadIsThatOfTheBench) {
    EXPECT_EQ(QString::number(historyHead(connection->engine()).count), lastOf(u"rkent@bench2"_s));
    const HistoryHead head = historyHead(other->engine());
    EXPECT_EQ(QString::number(head.count), lastOf(u"mlopez@bench7"_s));
    EXPECT_TRUE(holdsHead(connection->engine(), headFromText(toText(head))));
    EXPECT_FALSE(holdsHead(connection->engine(), {head.count + 1, head.seal}));
}

TEST_F(ServerHistoryTest, EachValueOfARowIsSealed) {
    place().unlockHistory(path);
    const QString row = lastOf(u"mlopez@bench7"_s);
    for (const QString& column : connection->engine().columns(u"History"_s).mid(1)) {
        const bool isNumber = connection->engine().declaredType(u"History"_s, column) == "INTEGER"_L1;
        const bool isBytes = connection->engine().declaredType(u"History"_s, column) == "BLOB"_L1;
        outside(u"CREATE TABLE kept AS SELECT * FROM History WHERE HistoryID = %1"_s.arg(row));
        outside(u"UPDATE History SET %1 = %2 WHERE HistoryID = %3"_s.arg(column,
                                                                         isNumber  ? u"77"_s
                                                                         : isBytes ? u"'\\x00ff'"_s
                                                                                   : u"'z@bench7'"_s,
                                                                         row));
        EXPECT_TRUE(problem().startsWith(u"The history is broken at row %1 "_s.arg(row)))
            << column.toStdString() << ": " << problem().toStdString();
        outside(u"UPDATE History SET %1 = (SELECT %1 FROM kept) WHERE HistoryID = %2; DROP TABLE kept"_s.arg(
            column, row));
    }
    EXPECT_EQ(problem(), "");
}

TEST_F(ServerHistoryTest, ARowThatIsGoneIsMissedInTheMiddleAndAtTheEnd) {
    place().unlockHistory(path);
    const QString first = outside(u"SELECT min(HistoryID) FROM History WHERE hst_Person = 'mlopez@bench7'"_s);
    const QString last = lastOf(u"mlopez@bench7"_s);
    outside(u"CREATE TABLE kept AS SELECT * FROM History WHERE hst_Person = 'mlopez@bench7'"_s);
    outside(u"DELETE FROM History WHERE HistoryID = "_s + first);
    EXPECT_TRUE(problem().startsWith(u"The history is broken at row %1 "_s.arg(last)))
        << problem().toStdString();
    outside(u"INSERT INTO History SELECT * FROM kept WHERE HistoryID = "_s + first);
    EXPECT_EQ(problem(), "");
    outside(u"DELETE FROM History WHERE HistoryID = "_s + last);
    EXPECT_EQ(problem(),
              u"The history of bench7 ends with row %1, although row %2 was written"_s.arg(first, last));
    outside(u"UPDATE HistoryChain SET chn_Last = %1 WHERE chn_Bench = 'bench7'"_s.arg(first));
    EXPECT_EQ(problem(), "The history of bench7 ends with another seal than was noted");
    outside(u"DELETE FROM HistoryChain WHERE chn_Bench = 'bench7'"_s);
    EXPECT_EQ(problem(), "The history knows of no rows of bench7, although there are some");
}

TEST_F(ServerHistoryTest, ACopyInAFileProvesTheChainsAndGoesOnAsOne) {
    {
        const platform::Transaction takenBack(connection->engine());
        run("DELETE FROM Chemical WHERE ChemicalID = 1");  // its number is lost
    }
    other->execute(u"UPDATE Chemical SET chm_Cost = 3 WHERE ChemicalID = 1"_s);
    const QString file = folder.filePath(u"copy.mdb"_s);
    ASSERT_TRUE(copyToFile(place().location(path), file));
    EXPECT_EQ(checkDatabase(file), QStringList());
    for (const QString& person : {u"rkent@bench2"_s, u"mlopez@bench7"_s, u"new@bench9"_s}) {
        platform::Connection copy;
        copy.open(u"Data Source="_s + file);
        keepHistory(copy, {person, u"9.9"_s});
        copy.execute(u"UPDATE Chemical SET chm_Lot = '%1' WHERE ChemicalID = 2"_s.arg(person));
        EXPECT_EQ(checkDatabase(file), QStringList()) << person.toStdString();
    }
    support::runSql(file,
                    u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Deed = 'x' WHERE hst_Person = "
                    "'mlopez@bench7' AND HistoryID < 6"_s);
    EXPECT_TRUE(checkDatabase(file).last().contains("is broken at row 3 "_L1))
        << checkDatabase(file).join(u'\n').toStdString();
}

TEST_F(ServerHistoryTest, RecordsAreHeldAgainstTheirHistory) {
    outside(
        u"ALTER TABLE Chemical DISABLE TRIGGER USER; UPDATE Chemical SET chm_Cost = 5 WHERE ChemicalID = 1;"
        "DELETE FROM Chemical WHERE ChemicalID = 4"_s);
    EXPECT_EQ(
        proofProblems(),
        (QStringList{u"Chemical 1 differs in chm_Cost from what the history says"_s,
                     u"Chemical 4 is not there, although the history doesn't say that it was deleted"_s}));
}

TEST_F(ServerHistoryTest, ALongHistoryIsProvenInPortions) {
    platform::Transaction whole(connection->engine());
    for (int i = 0; i < 1100; ++i)
        run("INSERT INTO Patient (pat_LName) VALUES ('Reed')");
    whole.commit();
    EXPECT_EQ(proofProblems(), QStringList());
    place().unlockHistory(path);
    outside(u"UPDATE History SET hst_Fields = 'x' WHERE HistoryID = 1050"_s);
    EXPECT_TRUE(problem().startsWith("The history is broken at row 1050 "_L1)) << problem().toStdString();
}

// A connection lasts from winter into summer.
TEST_F(ServerHistoryTest, HowFarTheClockIsAheadIsToldWithEachChange) {
    int ahead = 60;
    connection->engine().tellWriter({u"rkent@bench2"_s, u"9.9"_s, [&] { return ahead; }});
    run("UPDATE Chemical SET chm_Lot = 'winter' WHERE ChemicalID = 1");
    ahead = 120;
    run("UPDATE Chemical SET chm_Lot = 'summer' WHERE ChemicalID = 1");
    EXPECT_EQ(outside(u"SELECT hst_Zone FROM History ORDER BY HistoryID DESC LIMIT 2"_s), "120\n60");
    EXPECT_EQ(problem(), "");
    const auto entries = historyOf(connection->engine(), u"Chemical"_s, 1);
    EXPECT_EQ(entries.at(0).moment.offsetFromUtc(), 7200);
    connection->engine().tellWriter({});
}

TEST_F(ServerHistoryTest, ARecordAsItWasIsWorkedOutWhoeverChangedIt) {
    const auto entries = historyOf(connection->engine(), u"Chemical"_s, 2);
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries.back().person, "mlopez@bench7");
    const auto made = recordAsOf(connection->engine(), u"Chemical"_s, 2, entries, entries.back().moment);
    ASSERT_EQ(made.size(), 1U);
    EXPECT_FALSE(made.front().values.value(u"chm_Lot"_s).isValid());
    EXPECT_EQ(made.front().values.value(u"chm_Notes"_s), "it's");
    const auto changes = changesSince(connection->engine(), u"Chemical"_s, 2,
                                      QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(changes, (ChangeCount{3, false})) << "the history began later";
    EXPECT_TRUE(historyBegin(connection->engine()).isValid());
}

TEST_F(ServerHistoryTest, MoneyOfEachSizeComesBackToTheTenThousandth) {
    outside(u"UPDATE Chemical SET chm_AWP = 922337203685477.5807 WHERE ChemicalID = 1"_s);
    const DeletedRecord deleted{u"Chemical"_s, 1, lastHistoryRow(connection->engine())};
    run("DELETE FROM Chemical WHERE ChemicalID = 1");
    platform::Transaction transaction(connection->engine());
    EXPECT_EQ(addDeletedRows(connection->engine(), deleted), Restored::Whole);
    transaction.commit();
    EXPECT_EQ(outside(u"SELECT chm_AWP FROM Chemical WHERE ChemicalID = 1"_s), "922337203685477.5807");
}

/// Numbers are given out before a change is kept.
TEST_F(ServerHistoryTest, ARowThatIsKeptLateWithALowerNumberIsNotReadAmongTheOthers) {
    outside(u"INSERT INTO Chemical (chm_Name) SELECT 'Urea' FROM generate_series(1, 2400)"_s);
    place().unlockHistory(path);
    outside(u"UPDATE History SET HistoryID = HistoryID + 10000 WHERE HistoryID > 2300"_s);
    const int rows = outside(u"SELECT count(*) FROM History"_s).toInt();
    HistoryRange range(connection->engine(), {}, {});
    EXPECT_EQ(range.next()->number, 1);
    outside(u"UPDATE History SET HistoryID = 2350 WHERE HistoryID = 1"_s);
    int read = 1;
    for (auto entry = range.next(); entry; entry = range.next(), ++read)
        EXPECT_NE(entry->number, 2350);
    EXPECT_EQ(read, rows);
}

}  // namespace
