// Who changed it, and the chain of seals: each break is found, whoever made it and however.
#include "HistoryTest.h"
#include "history/HistoryChain.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class SealTest : public HistoryTest {
protected:
    QStringList problems() { return chainProblems(open()->engine()); }
    QString who() const {
        return outside(u"SELECT hst_Person, hst_Program FROM History ORDER BY HistoryID"_s);
    }
};

TEST_F(SealTest, TheProgramsOwnChangesBearItsPerson) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    run("UPDATE Chemical SET chm_Lot = 'A'");
    EXPECT_EQ(who(), "|9.9\nrkent@bench2|9.9\nrkent@bench2|9.9");
    EXPECT_EQ(outside(u"SELECT DISTINCT length(hst_Digest), length(hst_Seal) FROM History"_s), "32|32");
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(historyHead(connection->engine()).count, 3);
}

TEST_F(SealTest, WhatAnotherProgramDidIsSealedBeforeTheNextOwnChangeAndMarked) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    outside(u"UPDATE Chemical SET chm_Lot = 'A'; UPDATE Chemical SET chm_Lot = 'B'; DELETE FROM Chemical"_s);
    EXPECT_EQ(problems(), QStringList()) << "not sealed yet";
    EXPECT_EQ(historyHead(connection->engine()).count, 2);
    run("INSERT INTO Chemical (chm_Name) VALUES ('Menthol')");
    EXPECT_EQ(who(), "|9.9\nrkent@bench2|9.9\n|outside\n|outside\n|outside\nrkent@bench2|9.9");
    EXPECT_EQ(problems(), QStringList());
}

TEST_F(SealTest, OneStatementOnManyRowsIsOneChain) {
    for (int i = 0; i < 40; ++i)
        run("INSERT INTO Patient (pat_LName) VALUES ('O''Reed')");
    outside(u"UPDATE Patient SET pat_City = 'x'"_s);
    auto other = open(u"o'neil@bench1"_s);
    EXPECT_EQ(other->execute(u"UPDATE Patient SET pat_City = 'y'"_s), 40);
    EXPECT_EQ(outside(u"SELECT hst_Person, count(*) FROM History GROUP BY 1 ORDER BY 1"_s),
              "|41\no'neil@bench1|40\nrkent@bench2|40");
    EXPECT_EQ(problems(), QStringList());
}

// A change that takes its time because of them can be shown to do so; the chain is what it is without that.
TEST_F(SealTest, ManyRowsOfOtherProgramsAreToldOfOnce) {
    int told = 0;
    onLongSealing([&] { ++told; });
    const auto strangers = [&](int rows) {
        outside(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "INSERT INTO Chemical (chm_Name) SELECT 'Urea' FROM n"_s.arg(rows));
    };
    strangers(quicklySealed);
    run("INSERT INTO Patient (pat_LName) VALUES ('Stone')");
    EXPECT_EQ(told, 0);
    strangers(quicklySealed + 100);
    run("INSERT INTO Patient (pat_LName) VALUES ('Reed')");
    EXPECT_EQ(told, 1);
    strangers(10);
    run("INSERT INTO Patient (pat_LName) VALUES ('Hill')");
    EXPECT_EQ(told, 1);
    strangers(quicklySealed + 100);
    run("INSERT INTO Patient (pat_LName) VALUES ('Moss')");
    EXPECT_EQ(told, 2) << "each change by itself";
    onLongSealing({});
    EXPECT_EQ(problems(), QStringList());
}

TEST_F(SealTest, AChangeThatIsTakenBackLeavesNothing) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    EXPECT_THROW(run("INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (5, 1)"), platform::RuntimeError);
    {
        platform::Transaction transaction(connection->engine());
        run("DELETE FROM Chemical");
    }
    EXPECT_EQ(historyHead(connection->engine()).count, 2);
    run("UPDATE Chemical SET chm_Lot = 'A'");
    EXPECT_EQ(problems(), QStringList());
    EXPECT_EQ(historyHead(connection->engine()).count, 3);
}

// The same values and the same sum as in tests/server/history_test.py.
TEST_F(SealTest, TheSumIsThatOfAServer) {
    platform::Query hash(connection->engine(),
                         u"SELECT hex(history_hash(NULL, 1, -70000, 'Größe', '', x'00ff'))"_s, {});
    ASSERT_TRUE(hash.step());
    EXPECT_EQ(hash.value(0, platform::asText).toString().toLower(),
              "4b7598bad7da50e1d8aff7ff2110141f8e309753dcc2e4f5c272dd7feaa1262b");
}

TEST_F(SealTest, ACutEndIsSeen) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    run("UPDATE Chemical SET chm_Lot = 'A'");
    const HistoryHead head = historyHead(connection->engine());
    EXPECT_EQ(headFromText(toText(head)).seal, head.seal);
    EXPECT_TRUE(holdsHead(connection->engine(), headFromText(toText(head))));
    connection.reset();
    outside(u"DROP TRIGGER History_Kept; DELETE FROM History WHERE HistoryID = 3"_s);
    EXPECT_EQ(problems(), QStringList{"The history ends with row 2, although row 3 was written"});
    outside(u"UPDATE sqlite_sequence SET seq = 2 WHERE name = 'History'"_s);
    EXPECT_EQ(problems(), QStringList()) << "whoever knows the engine can";
    EXPECT_FALSE(holdsHead(open()->engine(), head)) << "but not where the head is noted elsewhere";
    EXPECT_FALSE(holdsHead(open()->engine(), headFromText(u"2:00"_s)));
    EXPECT_TRUE(headFromText(u"0:"_s + u"ab"_s.repeated(32)).seal.isEmpty()) << "no row has that number";
    EXPECT_FALSE(holdsHead(open()->engine(), {2, head.seal})) << "another row's seal";
}

TEST_F(SealTest, AFileWithoutHistoryIsLeftAlone) {
    const QString old = folder.filePath("old.mdb");
    support::createDatabaseFile(old);
    platform::Connection connectionToOld;
    connectionToOld.open(u"Data Source="_s + old);
    keepHistory(connectionToOld);
    EXPECT_EQ(connectionToOld.execute(u"INSERT INTO Chemical (chm_Name) VALUES ('Urea')"_s), 1);
    EXPECT_EQ(historyHead(connectionToOld.engine()).count, 0);
    EXPECT_EQ(chainProblems(connectionToOld.engine()), QStringList());
}

TEST_F(SealTest, TheWriterIsTheAccountAtThisComputer) {
    EXPECT_FALSE(currentWriter().person.section('@', 0, 0).isEmpty());
    EXPECT_EQ(currentWriter().person.section('@', 1), QSysInfo::machineHostName());
}

}  // namespace
