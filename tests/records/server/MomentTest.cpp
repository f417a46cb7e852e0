// Two benches at the same rows: what one has read and decides by is what it replaces, or it replaces nothing.
#include "../RecordsTest.h"
#include "history/HistoryBook.h"
#include "history/HistorySeal.h"
#include "platform/data/Overtaken.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "prices/PriceTaking.h"
#include "records/BatchBook.h"
#include "records/BatchRecord.h"
#include "records/NewLot.h"
#include "records/Repricing.h"

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class MomentTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
        keepHistory(*basMain::gConnection, {u"rkent@bench2"_s, u"9.9"_s});
        other->open(u"Data Source="_s + basMain::gConnection->location());
        keepHistory(*other, {u"mlopez@bench7"_s, u"9.9"_s});
    }
    /// The other bench does that just before this one runs a statement with that part.
    void before(const QString& part, const QString& change) {
        basMain::gConnection->setTrace([this, part, change, done = false](const QString& statement) mutable {
            if (done || !statement.contains(part))
                return;
            done = true;
            other->execute(change);
        });
    }

    platform::ConnectionPtr other = std::make_shared<platform::Connection>();
};

TEST_F(MomentTest, APriceThatAnotherBenchSetsWhileTheListIsWrittenStays) {
    PriceTable table;
    table.rows = {{{u"333-3"_s}, {u"120"_s}, {u""_s}, {u"100"_s}, {u"g"_s}},
                  {{u"333-4"_s}, {u"130"_s}, {u""_s}, {u"100"_s}, {u"g"_s}}};
    PriceColumns columns;
    columns.column = {PriceColumns::none, 0, PriceColumns::none, 1, 2, 3, 4};
    columns.mark.fill(DecimalMark::point);
    const PriceStock stock(stockedChemicals(basMain::gConnection));
    PriceProposals proposals(table, columns, stock);
    for (std::size_t row = 0; row < 2; ++row)
        proposals.tick(row, true);
    ASSERT_EQ(proposals.ticked(), 2);
    const Taken taken = takePrices(basMain::gConnection, proposals, stock, u"list.csv"_s, [&](double done) {
        if (done > 0)  // the first price is written
            other->execute(u"UPDATE Chemical SET chm_Cost = '1.35' WHERE ChemicalID = 4"_s);
        return true;
    });
    EXPECT_EQ(taken, Taken::ChangedMeanwhile);
    EXPECT_EQ(str(sqlText("SELECT chm_Cost FROM Chemical WHERE ChemicalID IN (3, 4) ORDER BY ChemicalID")),
              str(stock.chemicals()[2].cost.toText() + u"\n1.35"_s))
        << "theirs is kept, and nothing of ours";
    EXPECT_EQ(str(lastChanger(basMain::gConnection->engine(), {{u"Chemical"_s, 4}})), "mlopez@bench7");
}

TEST_F(MomentTest, AFormulaThatAnotherBenchSavesWhilePricesAreStoredStays) {
    sql("UPDATE Formula SET frm_AWP = 9 WHERE FormulaID = 2");
    const std::vector<RepricedFormula> shown = formulaPrices();
    before(u"UPDATE Formula SET [frm_AWP]"_s, u"UPDATE Formula SET frm_AWP = '5.5' WHERE FormulaID = 2"_s);
    EXPECT_EQ(storePrices(shown), PricesStored::ChangedMeanwhile);
    EXPECT_EQ(str(sqlText("SELECT frm_AWP FROM Formula ORDER BY FormulaID")), "7\n5.5");
    const ChangedMeanwhile changed = firstChanged(shown);
    EXPECT_EQ(str(changed.name), "Plain Base");
    EXPECT_EQ(str(changed.changer), "mlopez@bench7");
    EXPECT_EQ(storePrices(formulaPrices()), PricesStored::All) << "as they are shown anew";
}

TEST_F(MomentTest, ALineThatAnotherBenchChangesWhileALotIsAddedStays) {
    const clsChemicalPtr shown = clsChemical().openChemical(3, {});
    before(u"AND FormulaID = 1"_s, u"UPDATE FormChem SET fch_Qty = 9 WHERE ChemicalID = 3"_s);
    const AddedLot lot = addNewLot(*shown, {u"new"_s, {}, {}, {}}, {1});
    EXPECT_FALSE(lot.chemical);
    EXPECT_TRUE(lot.changed);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical WHERE chm_Lot = 'new'")), "0");
    EXPECT_EQ(str(sqlText("SELECT fch_Qty FROM FormChem WHERE ChemicalID = 3")), "9.0");
}

TEST_F(MomentTest, OfTwoBenchesThatAddOneLotOneDoes) {
    const clsChemicalPtr shown = clsChemical().openChemical(3, {});
    before(u"INSERT INTO"_s, u"INSERT INTO Chemical (chm_Name, chm_Lot) VALUES ('Camphor', 'new')"_s);
    EXPECT_FALSE(addNewLot(*shown, {u"new"_s, {}, {}, {}}, {}).chemical);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical WHERE chm_Lot = 'new'")), "1");
    dropReports();
}

TEST_F(MomentTest, ALotThatAnotherBenchHasAddedIsNotAddedAgain) {
    const clsChemicalPtr shown = clsChemical().openChemical(3, {});
    other->execute(u"UPDATE Chemical SET chm_Supplier = 'x' WHERE ChemicalID = 3"_s);
    const AddedLot lot = addNewLot(*shown, {u"new"_s, {}, {}, {}}, {1});
    ASSERT_TRUE(lot.changed);
    EXPECT_EQ(
        str(changedText(*lot.changed)),
        "Camphor was changed by mlopez@bench7 meanwhile, so nothing was stored. It is now shown as it is: look at "
        "it again.");
}

TEST_F(MomentTest, ABatchThatAnotherBenchCompletesGetsNoLineTwice) {
    useSigning();
    signing.formula = scaled(1, 25);
    ASSERT_TRUE(clsLog().addLog(document(u"<Formula><ID>1</ID></Formula>"_s), results()));
    const BatchRows batch = storedBatch(*basMain::gConnection, 1);
    ASSERT_EQ(batch.lines.size(), 3);
    sql("DELETE FROM LogChem WHERE lch_Name <> 'Camphor'");
    BatchBook book(context);
    {
        platform::Transaction theirs(other->engine());
        addLines(*other, 1, QJsonArray{batch.lines[1], batch.lines[2]});
        EXPECT_THROW(book.settle(batch), platform::RuntimeError) << "it waits, and tells that it is in use";
        theirs.commit();
    }
    book.settle(batch);
    EXPECT_EQ(str(sqlText("SELECT lch_Name FROM LogChem ORDER BY LogChemID")), "Camphor\nMenthol\nBorax");
}

TEST_F(MomentTest, TwoBenchesThatLogAtOnceAreBothWritten) {
    sql("INSERT INTO Log (log_Name) VALUES ('theirs')");
    useSigning();
    signing.formula = scaled(1, 25);
    before(u"SELECT LogChemID"_s, u"INSERT INTO LogChem (LogID, lch_Name) VALUES (1, 'theirs')"_s);
    ASSERT_TRUE(clsLog().addLog(document(u"<Formula><ID>1</ID></Formula>"_s), results()));
    EXPECT_EQ(str(sqlText("SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM LogChem)")), "2|4");
}

TEST_F(MomentTest, WhatFailsWithinABatchLeavesWhatAFileWouldKeep) {
    for (const char* state :
         {"query_canceled", "check_violation", "lock_not_available", "numeric_value_out_of_range"}) {
        sql("DELETE FROM Log");
        sql(QStringLiteral(
                "CREATE OR REPLACE FUNCTION fails() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE %1; END'")
                .arg(QLatin1String(state)));
        sql("CREATE OR REPLACE TRIGGER fails BEFORE INSERT ON LogChem FOR EACH ROW WHEN (NEW.lch_Name = 'Menthol') "
            "EXECUTE FUNCTION fails()");
        useSigning();
        signing.formula = scaled(1, 25);
        EXPECT_FALSE(clsLog().addLog(document(u"<Formula><ID>1</ID></Formula>"_s), results())) << state;
        expectReport("clsLog:addLog");
        EXPECT_EQ(str(sqlText("SELECT (SELECT count(*) FROM Log), (SELECT max(lch_Name) FROM LogChem)")),
                  "1|Camphor")
            << state;
        EXPECT_EQ(other->execute(u"UPDATE Log SET log_Notes = 'x'"_s), 1) << "and nothing is held any more";
    }
}

}  // namespace
