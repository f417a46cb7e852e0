// The history of the whole file within a range of days.
#include "HistoryTest.h"
#include "history/HistoryRange.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class RangeTest : public HistoryTest {
protected:
    QList<std::int64_t> numbers(const QString& first, const QString& last,
                                HistoryOrder order = HistoryOrder::OldestFirst) const {
        QList<std::int64_t> all;
        HistoryRange range(connection->engine(), QDate::fromString(first, Qt::ISODate),
                           QDate::fromString(last, Qt::ISODate), order);
        for (auto entry = range.next(); entry; entry = range.next())
            all << entry->number;
        return all;
    }
};

TEST_F(RangeTest, BothDaysAreIncludedAsTheClockShowedThem) {
    for (int i = 2; i <= 5; ++i)
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    place().unlockHistory(path);
    outside(u"UPDATE History SET hst_Zone = 120, hst_When = '2026-03-0' || HistoryID || ' "
            "23:00:00.000'"_s);  // an hour after midnight there
    EXPECT_EQ(numbers(u"2026-03-04"_s, u"2026-03-05"_s), (QList<std::int64_t>{3, 4}));
    EXPECT_EQ(numbers(u"2026-03-04"_s, {}, HistoryOrder::NewestFirst), (QList<std::int64_t>{5, 4, 3}));
    EXPECT_EQ(numbers({}, {}), (QList<std::int64_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(historyRows(connection->engine(), QDate(2026, 3, 4), QDate(2026, 3, 5)), 2);
    HistoryRange range(connection->engine(), QDate(2026, 3, 4), {});
    EXPECT_EQ(range.next()->moment.toString(Qt::ISODate), "2026-03-04T01:00:00+02:00");
}

TEST_F(RangeTest, AClockFarBehindOrAheadMovesTheDayAlone) {
    for (int i = 2; i <= 5; ++i)
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    place().unlockHistory(path);
    outside(u"UPDATE History SET hst_Zone = -720, hst_When = '2026-03-0' || HistoryID || ' "
            "11:59:59.999'"_s);  // the last moment of the day before
    EXPECT_EQ(numbers(u"2026-03-03"_s, u"2026-03-03"_s), QList<std::int64_t>{4});
    EXPECT_EQ(historyRows(connection->engine(), QDate(2026, 3, 3), QDate(2026, 3, 4)), 2);
    outside(u"UPDATE History SET hst_Zone = 840, hst_When = '2026-03-0' || HistoryID || ' 10:00:00.000'"_s);
    EXPECT_EQ(numbers(u"2026-03-04"_s, u"2026-03-04"_s), QList<std::int64_t>{3}) << "its first moment";
}

TEST_F(RangeTest, AFileWithoutHistoryHasNone) {
    const auto plain = platform::sqlite::inMemory("CREATE TABLE Chemical (ChemicalID INTEGER PRIMARY KEY)");
    EXPECT_EQ(historyRows(*plain, {}, {}), 0);
    EXPECT_FALSE(HistoryRange(*plain, {}, {}).next());
}

TEST_F(RangeTest, ALongHistoryComesWholeAndHoldsNoLock) {
    platform::Transaction whole(connection->engine());
    for (int i = 0; i < 1200; ++i)
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    whole.commit();
    HistoryRange range(connection->engine(), {}, {});
    std::int64_t next = 0;
    for (auto entry = range.next(); entry; entry = range.next()) {
        ASSERT_EQ(entry->number, ++next);
        if (next == 700)
            outside(u"DELETE FROM Chemical WHERE ChemicalID = 1"_s);
    }
    EXPECT_EQ(next, 1202) << "with what came meanwhile";
    EXPECT_EQ(numbers({}, {}, HistoryOrder::NewestFirst).size(), 1202);
}

}  // namespace
