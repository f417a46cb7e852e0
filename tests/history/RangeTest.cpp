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

// Far inside of the range the clocks are not asked: a wrong answer there would be a wrong one at the bounds as well.
TEST_F(RangeTest, DaysInsideOfARangeAreCountedAsThoseAtItsBounds) {
    for (int i = 2; i <= 9; ++i)
        run("INSERT INTO Chemical (chm_Name) VALUES ('Urea')");
    place().unlockHistory(path);
    for (const char* zone : {"-840", "0", "840"}) {
        for (const char* time : {"00:00:00.000", "11:59:59.999", "23:59:59.999"}) {
            outside(u"UPDATE History SET hst_Zone = %1, hst_When = '2026-03-0' || HistoryID || ' %2'"_s.arg(
                QLatin1String(zone), QLatin1String(time)));
            QList<std::int64_t> expected;
            HistoryRange all(connection->engine(), {}, {});
            for (auto entry = all.next(); entry; entry = all.next()) {
                if (entry->moment.date() >= QDate(2026, 3, 3) && entry->moment.date() <= QDate(2026, 3, 7))
                    expected << entry->number;
            }
            EXPECT_EQ(numbers(u"2026-03-03"_s, u"2026-03-07"_s), expected) << zone << time;
            EXPECT_EQ(historyRows(connection->engine(), QDate(2026, 3, 3), QDate(2026, 3, 7)),
                      expected.size())
                << zone << time;
        }
    }
}

// One stretch of the keys after the other: nothing is left out at their ends, nothing comes twice.
TEST_F(RangeTest, FewRowsOfALongHistoryAreFoundWhereverTheyStand) {
    outside(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 9000) "
            "INSERT INTO Chemical (chm_Name) SELECT 'Urea' FROM n"_s);
    place().unlockHistory(path);
    const QList<std::int64_t> wanted{1, 2, 1001, 1002, 4000, 4001, 4002, 5001, 5002, 8000, 8001, 9001};
    QStringList keys;
    for (const std::int64_t key : wanted)
        keys << QString::number(key);
    outside(u"UPDATE History SET hst_Zone = 0, hst_When = '2026-05-01 10:00:00.000'; "
            "UPDATE History SET hst_When = '2026-03-04 10:00:00.000' WHERE HistoryID IN (%1)"_s.arg(
                keys.join(u", "_s)));
    EXPECT_EQ(numbers(u"2026-03-04"_s, u"2026-03-04"_s), wanted);
    EXPECT_EQ(numbers(u"2026-03-04"_s, u"2026-03-04"_s, HistoryOrder::NewestFirst),
              QList<std::int64_t>(wanted.rbegin(), wanted.rend()));
    EXPECT_EQ(historyRows(connection->engine(), QDate(2026, 3, 4), QDate(2026, 3, 4)), wanted.size());
    EXPECT_EQ(historyRows(connection->engine(), QDate(2026, 5, 1), {}), 9001 - wanted.size());
    HistoryCount count(connection->engine(), {}, {});
    while (!count.isComplete())
        count.countOn();
    EXPECT_EQ(count.rows(), 9001);
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
    EXPECT_EQ(next, 1201) << "without what came meanwhile";
    EXPECT_EQ(numbers({}, {}, HistoryOrder::NewestFirst).size(), 1202);
}

}  // namespace
