// Prices taken from a list stand in the records, all of them or none, and the history says where they came from.
#include "prices/PriceTaking.h"

#include "history/HistoryBook.h"
#include "history/HistoryTest.h"

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class PriceTakingTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        run("INSERT INTO Chemical (chm_Name, chm_NDC, chm_Units, chm_Cost, chm_AWP) VALUES "
            "(' Zinc''s', '1', 'GMS', '1', '2'), ('Talc', '2', 'GMS', '1', '2'), ('Urea', '3', 'GMS', '1', '2')");
        columns.column = {PriceColumns::none, 0, PriceColumns::none, 1, 2, 3, 4};
        columns.mark.fill(DecimalMark::point);
        for (const auto& [ndc, price, awp] : {std::tuple{u"1"_s, u"28.50"_s, u""_s},
                                              {u"2"_s, u"150"_s, u"390.125"_s},
                                              {u"3"_s, u"120"_s, u""_s}})
            table.rows.push_back({{ndc}, {price}, {awp}, {u"100"_s}, {u"g"_s}});
        stock.emplace(stockedChemicals(connection));
        proposals.emplace(table, columns, *stock);
        for (std::size_t row = 0; row < 2; ++row)
            proposals->tick(row, true);
        proposals->tick(2, false);
    }
    Taken take(const PriceProgress& goesOn = {}) {
        return takePrices(connection, *proposals, *stock, u"list.csv"_s, goesOn);
    }
    QString stored() const {
        return outside(u"SELECT chm_Name, chm_Cost, chm_AWP FROM Chemical ORDER BY ChemicalID"_s);
    }

    PriceTable table;
    PriceColumns columns;
    std::optional<PriceStock> stock;
    std::optional<PriceProposals> proposals;
};

TEST_F(PriceTakingTest, WhatIsTickedIsWrittenAndNothingElse) {
    EXPECT_EQ(take(), Taken::All);
    EXPECT_EQ(stored(), " Zinc's|0.285|2\nTalc|1.5|3.9013\nUrea|1|2");
    const auto entries = historyOf(connection->engine(), u"Chemical"_s, 2);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries.front().deed, u"imported"_s);
    EXPECT_EQ(entries.front().note, u"list.csv"_s);
    EXPECT_EQ(historyOf(connection->engine(), u"Chemical"_s, 3).size(), 1U) << "only that it was made";
}

TEST_F(PriceTakingTest, AStopAtAnyTurnLeavesAllAsItWas) {
    const QString before = stored();
    const QString history = outside(u"SELECT max(HistoryID) FROM History"_s);
    int turns = 0;
    for (Taken taken = Taken::Stopped; taken == Taken::Stopped; ++turns) {
        EXPECT_EQ(stored(), before) << turns;
        EXPECT_EQ(outside(u"SELECT max(HistoryID) FROM History"_s), history) << turns;
        int left = turns;
        std::vector<double> done;
        taken = take([&](double part) {
            done.push_back(part);
            return left-- > 0;
        });
        if (taken == Taken::All) {
            EXPECT_EQ(done, (std::vector<double>{-1, 0, 0.5})) << "the look at the stock, then each price";
        }
    }
    EXPECT_EQ(turns, 4);
    EXPECT_NE(stored(), before);
}

TEST_F(PriceTakingTest, NobodyElseSeesAPriceBeforeTheLast) {
    const QString before = stored();
    take([&](double) {
        EXPECT_EQ(stored(), before);
        return true;
    });
}

TEST_F(PriceTakingTest, WhatWasReadMeanwhileIsKnownToBeNoMore) {
    std::int64_t meanwhile = 0;
    take([&](double done) {
        meanwhile = connection->changeState();
        return done < 0.5;
    });
    EXPECT_NE(connection->changeState(), meanwhile);
}

TEST_F(PriceTakingTest, OverAChangeMadeMeanwhileNothingIsWritten) {
    outside(u"UPDATE Chemical SET chm_Units = 'MLS' WHERE chm_Name = 'Talc'"_s);
    const QString before = stored();
    EXPECT_EQ(take(), Taken::ChangedMeanwhile);
    EXPECT_EQ(stored(), before);
}

TEST_F(PriceTakingTest, AFailureHalfwayLeavesAllAsItWas) {
    place().refuse(path, {u"UPDATE"_s, u"Chemical"_s, u"chm_Name"_s, u"Talc"_s});
    const QString before = stored();
    EXPECT_THROW(take(), platform::RuntimeError);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(historyOf(connection->engine(), u"Chemical"_s, 1).size(), 1U)
        << "nor does the history tell of it";
}

TEST_F(PriceTakingTest, TheStockIsReadWithItsEmptyFields) {
    outside(u"INSERT INTO Chemical (ChemicalID) VALUES (9)"_s);
    const StockedChemical last = stockedChemicals(connection).back();
    EXPECT_EQ(last.key, 9);
    EXPECT_EQ(last.name, QString());
    EXPECT_EQ(last.cost, platform::Currency());
}

}  // namespace
