// How often what the records do waits for a server. Over a line that takes 20 milliseconds there and back the next record is
// to be there in 80, a search of the log in 160, a batch of 30 lines in the log in 700.
#include "ServerRecords.h"
#include "platform/data/Query.h"
#include "platform/data/ReadAhead.h"
#include "trace/RecallList.h"

#include <QElapsedTimer>

using namespace sorvanto;
using namespace Qt::StringLiterals;

namespace {

class TripsTest : public ServerRecords {
protected:
    void SetUp() override {
        ServerRecords::SetUp();
        makeRecords(300);
    }
    /// A table of them goes to the standard output, for docs/performance.md.
    template <class Action>
    int trips(const char* name, Action action) {
        proxy->takeTrips();
        proxy->delay(20);
        QElapsedTimer time;
        time.start();
        action();
        const qint64 milliseconds = time.elapsed();
        proxy->delay(0);
        const int count = proxy->takeTrips();
        std::printf("| %s | %d | %lld ms |\n", name, count, milliseconds);
        return count;
    }
};

TEST_F(TripsTest, TheConnection) {
    EXPECT_LE(trips("connection", [&] { connect(); }), 5);
    EXPECT_EQ(trips("nothing but one way there and back",
                    [] { platform::number(basMain::gConnection->engine(), u"SELECT 1"_s); }),
              1);
}

TEST_F(TripsTest, TheNextRecord) {
    connect();
    EXPECT_LE(trips("next chemical", [] { clsChemical().openChemical(2, {}); }), 1);
    EXPECT_LE(trips("next formula", [] { clsFormula().openFormula(2, QString()); }), 1);
    EXPECT_LE(trips("next batch", [] { clsLog().openLog(2, {}); }), 1);
    EXPECT_LE(trips("next patient", [] { clsPatient().openPatient(2, {}); }), 1);
}

TEST_F(TripsTest, ASearch) {
    connect();
    const auto list = [] {
        const platform::ReadAhead rows(basMain::gConnection, {});
        const auto found = platform::Recordset::create();
        found->open(u"SELECT [LogID],[log_Lot],[log_Date],[log_Name] FROM [Log] WHERE ([log_Name] Like '%') "
                    "ORDER BY [log_Date] DESC"_s,
                    basMain::gConnection);
        ASSERT_GT(found->recordCount(), 100);
        for (int row = 0; row < 40; ++row)  // as many as are seen at once
            found->valueAt(row, 3);
    };
    EXPECT_LE(trips("search of the log, with the rows that are seen", list), 1);
}

TEST_F(TripsTest, AReportReadsItsRowsInEverLargerPieces) {
    connect();
    const auto all = [] {
        const auto found = platform::Recordset::create();
        found->open(u"SELECT [log_Lot],[log_Name] FROM [Log]"_s, basMain::gConnection);
        ASSERT_GT(found->recordCount(), 250);
        for (; !found->eof(); found->moveNext())
            EXPECT_TRUE(found->value(0).isValid());
    };
    EXPECT_LE(trips("all rows of a list of 300", all), 8);
}

TEST_F(TripsTest, ASave) {
    connect();
    const auto formula = clsFormula().openFormula(2, QString());
    formula->frm_Name = "Other";
    EXPECT_LE(trips("formula saved", [&] { EXPECT_TRUE(clsFormula().saveFormula(formula)); }), 3);
}

TEST_F(TripsTest, ABatchOfThirtyLines) {
    support::runOnServer(
        u"INSERT INTO \"FormChem\" (\"FormulaID\", \"ChemicalID\", \"fch_Qty\", \"fch_QS\", "
        "\"fch_Active\") SELECT 2, \"ChemicalID\", 1, 0, 1 FROM \"Chemical\" ORDER BY 2 LIMIT 30 - "
        "(SELECT count(*) FROM \"FormChem\" WHERE \"FormulaID\" = 2)"_s);
    connect();
    signing.formula = scaled(2, 25);
    clsLogPtr log;
    EXPECT_LE(trips("batch of 30 lines", [&] { log = addLog(); }), 7);
    ASSERT_TRUE(log);
    EXPECT_EQ(log->Chemical->recordCount(), 30);
}

TEST_F(TripsTest, ATrace) {
    connect();
    const Tracer tracer(basMain::gConnection, {});
    const auto trace = [&](const QString& text) {
        const TraceHits hits = tracer.find(text);
        return recallList(tracer, text, hits, {}).ingredients.size();
    };
    std::size_t found = 0;
    EXPECT_LE(trips("a lot traced", [&] { found = trace(u"HC24118"_s); }), 13);
    EXPECT_EQ(found, 1U);
    EXPECT_LE(trips("a part of many names traced", [&] { found = trace(u"a"_s); }), 19);
    EXPECT_GT(found, 100U);
    EXPECT_LE(trips("batches that lack lines", [&] { tracer.lookForLackingLines(); }), 2);
    EXPECT_LE(trips("what is in a batch", [&] { found = tracer.contents({0, 1}).size(); }), 2);
    EXPECT_GT(found, 0U);
}

}  // namespace
