// Only a copy of the log is open, since its server is away: a mix waits in the journal, and nothing is held against what the
// copy says.
#include "MixSessionTest.h"

#include "platform/basic/RuntimeError.h"

using namespace Qt::StringLiterals;
using namespace sorvanto;
using test::waitFor;

namespace {

class CopiedLog : public EmptyLog {
public:
    bool isCopy() override { return copy; }
    bool hasLot(const QString&) override { return copy; }
    BatchStanding settle(const BatchRows&) override {
        ++settled;
        return {copy ? BatchStanding::Kind::Whole : BatchStanding::Kind::Absent};
    }

    bool copy = true;
    int settled = 0;
};

class MixOnACopyTest : public MixSessionTest {
protected:
    MixOnACopyTest() { begin(); }

    void begin() {
        make();
        session->setLogBook(&book);
    }
    void finish() {
        startShort();
        line.run(shortTotal);
        ASSERT_TRUE(waitFor([&] { return state() == RunState::Ready && !session->offers().empty(); }));
    }
    bool waits() const {
        const auto offers = session->offers();
        return offers.size() == 1 && offers[0].state == JournalState::Finished && offers[0].waitsForServer &&
               !offers[0].otherDatabase;
    }

    CopiedLog book;
};

}  // namespace

TEST_F(MixOnACopyTest, AFinishedMixIsKeptAndSaidToBe) {
    ASSERT_NO_FATAL_FAILURE(finish());
    EXPECT_TRUE(waits());
    EXPECT_EQ(done, 0);
    EXPECT_EQ(notice(), PanelText::KeptForServer);
    EXPECT_EQ(session->notice().parts, QStringList{"Hydrocortisone 1% Cream"});
    EXPECT_EQ(openFiles().size(), 1);
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    exchangeWords();
    EXPECT_EQ(done, 0);
    EXPECT_TRUE(waits());
}

TEST_F(MixOnACopyTest, TheNextIsMixedAllTheSame) {
    ASSERT_NO_FATAL_FAILURE(finish());
    ASSERT_NO_FATAL_FAILURE(startShort());
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return session->offers().size() == 2; }));
    EXPECT_EQ(openFiles().size(), 2);
}

TEST_F(MixOnACopyTest, WithTheLogItselfItIsHandedOver) {
    ASSERT_NO_FATAL_FAILURE(finish());
    book.copy = false;
    begin();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    EXPECT_FALSE(session->offers()[0].waitsForServer);
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    EXPECT_TRUE(waitFor([&] { return done == 1; }));
}

TEST_F(MixOnACopyTest, ASignedMixIsNotHeldAgainstTheCopy) {
    book.copy = false;
    onDone = [&] {
        BatchRows rows;
        rows.row = {{"log_Lot", "SV04260012"}, {"log_Date", "2026-03-07 14:05:09"}};
        session->takeDown(rows);
    };
    ASSERT_NO_FATAL_FAILURE(finish());
    book.copy = true;
    book.settled = 0;
    begin();
    session->open();
    EXPECT_EQ(book.settled, 0);
    EXPECT_TRUE(waits());
    EXPECT_FALSE(session->reconciliation().done);
}

TEST_F(MixOnACopyTest, NothingIsTakenDownForACopy) {
    book.copy = false;
    bool refused = false;
    onDone = [&] {
        book.copy = true;
        try {
            session->takeDown({});
        } catch (const platform::RuntimeError& failure) {
            refused = failure.number() == platform::error::permissionDenied;
        }
    };
    ASSERT_NO_FATAL_FAILURE(finish());
    EXPECT_TRUE(refused);
}
