// A finished mix survives whatever happens to the line: wherever it breaks while the batch is logged, the journal has the
// batch, and the log has it once in the end, whole.
#include "ServerRecords.h"
#include "records/BatchBook.h"

using namespace sorvanto;
using Fault = support::ServerProxy::Fault;
using Kind = BatchStanding::Kind;

namespace {

/// What the mixer's journal does of it.
struct Journal : BatchJournal {
    void takeDown(const BatchRows& signedRows) override { rows = signedRows; }
    void noteDeletion(const BatchRows&) override {}
    void undoDeletion() override {}
    void noteRestored(const BatchRows&) override {}
    BatchRows rows;
};

class LoggedOnceTest : public ServerRecords, public ::testing::WithParamInterface<Fault> {
protected:
    void SetUp() override {
        ServerRecords::SetUp();
        makeRecords(0);
        connect();
        signing.formula = scaled(2, 25);
        lines = signing.formula->Chemical->recordCount();
        batchJournal = &journal;
    }
    void TearDown() override {
        batchJournal = nullptr;
        ServerRecords::TearDown();
    }
    /// The panel offers the mix until it stands in the log; what is there already is looked up first.
    void signUntilLogged() {
        if (!journal.rows.empty() && BatchBook(context).settle(journal.rows).kind != Kind::Absent)
            return;
        journal.rows = {};
        ASSERT_TRUE(addLog());
    }
    static std::string logged() {
        return str(support::rowsText(support::runOnServer(
            "SELECT count(DISTINCT \"Log\".\"LogID\"), count(*) FROM \"Log\" JOIN \"LogChem\" USING (\"LogID\") "
            "WHERE \"log_Lot\" = 'AB0012'")));
    }

    std::string reported() const {
        std::string all;
        for (const support::ReportCall& call : reporter->calls)
            all += "\n" + str(call.tag + ": " + call.description);
        return all;
    }

    Journal journal;
    std::int64_t lines = 0;
};

TEST_P(LoggedOnceTest, WhereverTheLineBreaks) {
    ASSERT_GT(lines, 1);
    int broken = 0;
    for (bool reached = true; reached; ++broken) {
        journal.rows = {};
        proxy->arm({}, GetParam(), broken);
        addLog();
        reached = !proxy->isArmed();
        proxy->disarm();
        signUntilLogged();
        EXPECT_EQ(logged(), "1|" + std::to_string(lines)) << "broken at message " << broken << reported();
        support::runOnServer("DELETE FROM \"Log\" WHERE \"log_Lot\" = 'AB0012'");
    }
    EXPECT_GT(broken, 5);
    dropReports();
}

INSTANTIATE_TEST_SUITE_P(Lines, LoggedOnceTest, ::testing::Values(Fault::LoseReply, Fault::Cut));

}  // namespace
