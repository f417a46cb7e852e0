// What a span of changes was to the user: signed, imported, restored.
#include "HistoryTest.h"
#include "history/HistoryBook.h"
#include "history/HistoryChain.h"
#include "history/HistoryDeed.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class DeedTest : public HistoryTest {
protected:
    /// Of each row behind the first.
    QString deeds() const {
        return outside(
            u"SELECT hst_What, hst_Deed, hst_Note FROM History WHERE HistoryID > 1 ORDER BY HistoryID"_s);
    }
};

TEST_F(DeedTest, EachRowOfTheSpanBearsItAndNoOther) {
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    {
        const HistoryDeed deed(connection->engine(), Deed::Imported, u"o'prices.csv"_s);
        run("UPDATE Chemical SET chm_Cost = 2");
        run("INSERT INTO Chemical (chm_Name) VALUES ('Menthol')");
    }
    run("DELETE FROM Chemical WHERE chm_Name = 'Urea'");
    EXPECT_EQ(deeds(),
              "made|NULL|NULL\nchanged|imported|o'prices.csv\nmade|imported|o'prices.csv\ndeleted|NULL|NULL");
    EXPECT_EQ(chainProblems(connection->engine()), QStringList());
    const auto entries = historyOf(connection->engine(), u"Chemical"_s, 1);
    EXPECT_EQ(entries.at(1).deed, "imported");
    EXPECT_EQ(entries.at(1).note, "o'prices.csv");
    EXPECT_EQ(entries.at(2).deed, "");
}

TEST_F(DeedTest, SpansLieWithinEachOther) {
    const HistoryDeed outer(connection->engine(), Deed::Restored);
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    {
        const HistoryDeed inner(connection->engine(), Deed::Signed, u"x"_s);
        run("UPDATE Chemical SET chm_Cost = 2");
    }
    run("UPDATE Chemical SET chm_Cost = 3");
    EXPECT_EQ(deeds(), "made|restored|NULL\nchanged|signed|x\nchanged|restored|NULL");
}

TEST_F(DeedTest, OtherConnectionsAreNotMeant) {
    const HistoryDeed deed(connection->engine(), Deed::Imported, u"x"_s);
    open(u"lm@bench1"_s)->execute(u"INSERT INTO Chemical (chm_Name) VALUES ('Urea')"_s);
    outside(u"UPDATE Chemical SET chm_Cost = 2"_s);
    run("UPDATE Chemical SET chm_Cost = 3");
    EXPECT_EQ(deeds(), "made|NULL|NULL\nchanged|NULL|NULL\nchanged|imported|x");
    EXPECT_EQ(chainProblems(connection->engine()), QStringList());
}

TEST_F(DeedTest, WhatIsTakenBackLeavesNothing) {
    const HistoryDeed deed(connection->engine(), Deed::Imported, u"x"_s);
    {
        platform::Transaction transaction(connection->engine());
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    }
    EXPECT_EQ(outside(u"SELECT count(*) FROM History"_s), "1");
}

TEST_F(DeedTest, ADeedIsSealed) {
    place().unlockHistory(path);
    for (const char* column : {"hst_Deed", "hst_Note"}) {
        {
            const HistoryDeed deed(connection->engine(), Deed::Imported, u"x"_s);
            run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
        }
        const QString was = outside(u"SELECT max(%1) FROM History"_s.arg(column));
        outside(u"UPDATE History SET %1 = 'y' WHERE %1 = '%2'"_s.arg(column, was));
        EXPECT_EQ(chainProblems(connection->engine()).size(), 1) << column;
        outside(u"UPDATE History SET %1 = '%2' WHERE %1 = 'y'"_s.arg(column, was));
    }
    EXPECT_EQ(chainProblems(connection->engine()), QStringList());
}

TEST_F(DeedTest, ALongNoteIsCut) {
    const HistoryDeed deed(connection->engine(), Deed::Imported, QString(300, u'x'));
    run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    EXPECT_EQ(outside(u"SELECT length(hst_Note) FROM History WHERE HistoryID = 2"_s), "200");
}

}  // namespace
