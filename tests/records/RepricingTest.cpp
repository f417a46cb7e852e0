// What formulas store of their chemicals' prices, what they come to now, and writing that.
#include "RecordsTest.h"

#include "records/FormulaLines.h"
#include "records/Repricing.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Recordset;

namespace {

class RepricingTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
    }
    static QString prices() {
        QStringList all;
        for (const RepricedFormula& one : formulaPrices())
            all << u"%1 %2: %3, %4 -> %5"_s.arg(QString::number(one.key), one.name, one.cost.toText(),
                                                one.storedAWP.toText(), one.awp.toText());
        return all.join(u'\n');
    }
    /// As they are shown before.
    static PricesStored store(const std::vector<std::int16_t>& keys) {
        std::vector<RepricedFormula> shown = formulaPrices();
        std::erase_if(shown, [&](const RepricedFormula& one) {
            return std::find(keys.begin(), keys.end(), one.key) == keys.end();
        });
        return storePrices(shown);
    }
    static QString stored() {
        const auto found = Recordset::create();
        found->open(u"SELECT * FROM Formula ORDER BY FormulaID"_s, openDB());
        QStringList all;
        for (; !found->eof(); found->moveNext())
            for (int column = 0; column < found->fieldCount(); ++column)
                all << found->value(column).toString();
        return all.join(u'|');
    }
};

TEST_F(RepricingTest, StoredAndPresentPricesStandSideBySide) {
    // 1.2345 * 2 + 5 * 0.1 + 0.5 * 1.005 and 1.2345 * 3.5 + 5 * 0.2 + 0.5 * 2.675, exactly, then to the even neighbour
    EXPECT_EQ(str(prices()), "1 Cooling Gel: 3.4715, 7 -> 6.6582\n2 Plain Base: 0, 0 -> 0");
}

TEST_F(RepricingTest, TotalsOfAllAtOnceAreThoseOfEach) {
    QStringList lines;
    for (int i = 1; i <= 60; ++i)
        lines << u"(%1, %2, %3, 0, 1)"_s.arg(1 + i % 2).arg(2 + i % 3).arg(i * 0.1375);
    sql(u"INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES "_s +
        lines.join(u", "_s));
    const auto formulas = formulaPrices();
    ASSERT_EQ(formulas.size(), 2U);
    for (const RepricedFormula& one : formulas) {
        const FormulaTotals own = readTotals(one.key);
        EXPECT_NE(one.cost, platform::Currency()) << one.key;
        EXPECT_EQ(one.cost, own.cost) << one.key;
        EXPECT_EQ(one.awp, own.awp) << one.key;
    }
}

TEST_F(RepricingTest, TellsHowFarItIsAndCanBeStopped) {
    std::vector<double> told;
    const auto all = formulaPrices([&](double done) {
        told.push_back(done);
        return true;
    });
    EXPECT_EQ(all.size(), 2U);
    ASSERT_GT(told.size(), 4U);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()) && told.front() >= 0 && told.back() <= 1);
    std::size_t calls = 0;
    EXPECT_TRUE(formulaPrices([&](double) { return ++calls < told.size(); }).empty());
    EXPECT_EQ(calls, told.size());
}

TEST_F(RepricingTest, WhatIsStoredIsWhatSavingTheFormulaStores) {
    ASSERT_EQ(store({1}), PricesStored::All);
    const QString repriced = stored();
    sql("UPDATE Formula SET frm_AWP = 7 WHERE FormulaID = 1");
    const clsFormulaPtr formula = clsFormula().openFormula(1, QString());
    ASSERT_TRUE(clsFormula().saveFormula(formula));
    EXPECT_EQ(str(repriced), str(stored()));
    EXPECT_EQ(str(prices().section(u'\n', 0, 0)), "1 Cooling Gel: 3.4715, 6.6582 -> 6.6582");
}

TEST_F(RepricingTest, OnlyTheTickedOnesAreWritten) {
    sql("UPDATE Formula SET frm_AWP = 9 WHERE FormulaID = 2");
    ASSERT_EQ(store({2}), PricesStored::All);
    EXPECT_EQ(str(prices()), "1 Cooling Gel: 3.4715, 7 -> 6.6582\n2 Plain Base: 0, 0 -> 0");
}

TEST_F(RepricingTest, AFailureOnTheWayLeavesAllAsTheyWere) {
    sql("UPDATE Formula SET frm_AWP = 9 WHERE FormulaID = 2");
    const QString before = stored();
    failStatement(u"WHERE [FormulaID] = 2"_s);
    EXPECT_EQ(store({1, 2}), PricesStored::Failed);
    failStatement(u"no statement has this"_s);
    EXPECT_EQ(str(stored()), str(before));
    dropReports();
}

TEST_F(RepricingTest, WhatIsNotAsShownAnyMoreIsNotOverwritten) {
    sql("UPDATE Formula SET frm_AWP = 9 WHERE FormulaID = 2");
    for (const char* change : {"UPDATE Formula SET frm_AWP = 5 WHERE FormulaID = 2",
                               "UPDATE Chemical SET chm_Cost = 77 WHERE ChemicalID = 3",
                               "UPDATE Chemical SET chm_AWP = 78 WHERE ChemicalID = 3",
                               "DELETE FROM Formula WHERE FormulaID = 2"}) {
        const std::vector<RepricedFormula> shown = formulaPrices();
        sql(change);
        const QString before = stored();
        EXPECT_EQ(storePrices(shown), PricesStored::ChangedMeanwhile) << change;
        EXPECT_EQ(str(stored()), str(before)) << change << ": not those before it either";
        EXPECT_EQ(str(firstChanged(shown).name),
                  QByteArray(change).contains("Chemical") ? "Cooling Gel" : "Plain Base");
    }
    EXPECT_EQ(store({1}), PricesStored::All) << "as it is shown anew";
}

}  // namespace
