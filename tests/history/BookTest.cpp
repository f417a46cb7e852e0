// What a record's history says: how often it changed since a moment, and what it was at one.
#include "history/HistoryBook.h"

#include "history/HistoryTest.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

class BookTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
        run("INSERT INTO Formula (frm_Name) VALUES ('Gel')");
        run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 1, 1.5)");
        run("UPDATE Formula SET frm_Name = 'Cream' WHERE FormulaID = 1");
        run("INSERT INTO Formula (frm_Name) VALUES ('Other')");
        run("DELETE FROM FormChem WHERE FormChemID = 1");
    }
    /// A row a day from 1 March on, each at noon by a clock two hours ahead of UTC.
    void spreadOverDays() const {
        outside(u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Zone = 120, "
                "hst_When = '2026-03-' || printf('%02d', HistoryID) || ' 10:00:00.000'"_s);
    }
    /// By that clock.
    std::optional<ChangeCount> since(const QString& clock) const {
        return changesSince(connection->engine(), u"Formula"_s, 1,
                            QDateTime::fromString(clock, u"yyyy-MM-dd HH:mm:ss.zzz"_s));
    }
};

TEST_F(BookTest, ChangesSinceAMomentAreThoseOfTheRecordAndItsLines) {
    spreadOverDays();
    EXPECT_EQ(since(u"2026-03-01 12:00:00.000"_s), ChangeCount(4, true)) << "the history begins with it";
    EXPECT_EQ(since(u"2026-03-03 12:00:00.000"_s), ChangeCount(4, true));
    EXPECT_EQ(since(u"2026-03-03 12:00:00.001"_s), ChangeCount(3, true));
    EXPECT_EQ(since(u"2026-03-07 12:00:00.000"_s), ChangeCount(1, true)) << "a line was deleted";
    EXPECT_EQ(since(u"2026-03-07 12:00:00.001"_s), ChangeCount(0, true));
}

TEST_F(BookTest, BeforeItsBeginTheHistoryKnowsOfSomeChangesAlone) {
    spreadOverDays();
    EXPECT_EQ(since(u"2026-03-01 11:59:59.999"_s), ChangeCount(4, false));
    outside(u"DROP TRIGGER History_Kept; DELETE FROM History WHERE HistoryID <= 4"_s);
    EXPECT_EQ(since(u"2026-03-05 12:00:00.000"_s), ChangeCount(2, true));
    EXPECT_EQ(since(u"2026-03-05 11:59:59.999"_s), ChangeCount(2, false));
    outside(u"DELETE FROM History WHERE hst_Table <> 'Chemical'"_s);
    EXPECT_EQ(since(u"2026-03-05 12:00:00.000"_s), ChangeCount(0, false));
}

TEST_F(BookTest, AFileWithoutHistoryKnowsOfNone) {
    outside(
        u"DROP TRIGGER History_Kept; DROP TRIGGER History_Sealed; ALTER TABLE History RENAME TO Former"_s);
    connection = open();
    EXPECT_EQ(since(u"2026-03-05 12:00:00.000"_s), std::nullopt);
}

}  // namespace
}  // namespace sorvanto
