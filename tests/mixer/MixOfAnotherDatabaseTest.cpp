// Databases may be changed while a mix runs or waits: a mix goes into the log of its own database only, and a lot that
// another batch bears closes nothing.
#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/Hindrances.h"
#include "support/TempProgramFolder.h"

#include "platform/basic/RuntimeError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using test::waitFor;

namespace {

/// The log of whichever database is said to be open.
class ChangingLog : public LogBook {
public:
    QString identity() override { return open; }
    bool hasLot(const QString& lot) override { return lots.contains(lot); }
    BatchStanding settle(const BatchRows&) override { return {}; }
    int batchCount() override { return static_cast<int>(lots.size()); }
    QHash<Batch, int> linesSince(const QString&) override {
        if (unreadable)
            throw platform::RuntimeError(platform::error::general, u"disk I/O error"_s);
        return {};
    }
    bool isArchived(const Batch&) override { return false; }

    QString open = u"3f2a9c01"_s;
    QStringList lots;
    bool unreadable = false;
};

BatchRows someRows() {
    BatchRows rows;
    rows.row = {{"log_Lot", "SV04260012"}, {"log_Date", "2026-03-07 14:05:09"}};
    return rows;
}

class MixOfAnotherDatabaseTest : public testing::Test {
protected:
    MixOfAnotherDatabaseTest() { restart(); }

    void restart() {
        session.reset();
        session = std::make_unique<MixSession>(line.environment());
        session->setPort(1, false);
        session->setLogBook(&log);
        QObject::connect(session.get(), &MixSession::mixDone, session.get(), [this] {
            ++handed;
            if (onDone)
                onDone();
        });
    }
    RunState state() const { return session->run().state(); }
    void startMix() {
        session->open();
        session->loadFormula(test::shortFormula());
        ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
        session->start();
        ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
    }
    void endMix() { line.run(20'000); }
    void finishMix() {
        ASSERT_NO_FATAL_FAILURE(startMix());
        endMix();
        ASSERT_TRUE(waitFor([&] { return handed == 1 && state() == RunState::Ready; }));
    }
    bool isForeignOffer() const {
        const auto offers = session->offers();
        return offers.size() == 1 && offers[0].state == JournalState::Finished && offers[0].otherDatabase;
    }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    test::MemoryLine line;
    ChangingLog log;
    std::unique_ptr<MixSession> session;
    std::function<void()> onDone;
    int handed = 0;
};

}  // namespace

TEST_F(MixOfAnotherDatabaseTest, ChangedWhileMixingItIsOffered) {
    ASSERT_NO_FATAL_FAILURE(startMix());
    log.open = u"77aa0012"_s;
    endMix();
    ASSERT_TRUE(waitFor([&] { return handed > 0 || isForeignOffer(); }));
    EXPECT_EQ(handed, 0);
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Ready; })) << "the mixer is free for the next";
    EXPECT_EQ(session->notice().text, PanelText::OfferOtherDatabase);
    EXPECT_EQ(session->notice().parts, QStringList{"Hydrocortisone 1% Cream"});
    EXPECT_TRUE(session->canLog());
}

// The mixer goes on by itself; the next start finds its end, with the other database open.
TEST_F(MixOfAnotherDatabaseTest, ChangedBeforeARestartInTheMidstItIsOffered) {
    ASSERT_NO_FATAL_FAILURE(startMix());
    log.open = u"77aa0012"_s;
    restart();
    session->open();
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
    endMix();
    ASSERT_TRUE(waitFor([&] { return handed > 0 || isForeignOffer(); }));
    EXPECT_EQ(handed, 0);
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    EXPECT_TRUE(isForeignOffer());
    log.open = u"3f2a9c01"_s;
    session->databaseOpened();
    ASSERT_TRUE(waitFor([&] { return !isForeignOffer(); }));
    EXPECT_TRUE(session->notice().empty());
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    EXPECT_TRUE(waitFor([&] { return handed == 1; })) << "its own one is open again";
}

TEST_F(MixOfAnotherDatabaseTest, AnOfferIsHeldAgainstTheDatabaseOfNow) {
    ASSERT_NO_FATAL_FAILURE(finishMix());
    log.open.clear();
    restart();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    log.open = u"77aa0012"_s;  // chosen later, and nobody said so
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    EXPECT_TRUE(isForeignOffer());
}

TEST_F(MixOfAnotherDatabaseTest, ADatabaseThatIsOpenedLaterIsShownAtOnce) {
    ASSERT_NO_FATAL_FAILURE(finishMix());
    log.open.clear();
    restart();
    session->open();
    EXPECT_FALSE(isForeignOffer()) << "not known";
    log.open = u"77aa0012"_s;
    session->databaseOpened();
    EXPECT_TRUE(waitFor([&] { return isForeignOffer(); }));
}

// Asked for at the signing, since none was open.
TEST_F(MixOfAnotherDatabaseTest, ChangedWhileSigningNothingIsWritten) {
    bool refused = false;
    onDone = [&] {
        log.open = u"77aa0012"_s;
        try {
            session->takeDown(someRows());
        } catch (const platform::RuntimeError& error) {
            refused = error.number() == platform::error::permissionDenied;
        }
    };
    ASSERT_NO_FATAL_FAILURE(finishMix());
    EXPECT_TRUE(refused);
    EXPECT_TRUE(isForeignOffer());
}

// Lots can repeat, and a batch is never written without its rows in the journal.
TEST_F(MixOfAnotherDatabaseTest, AnUnsignedMixIsNotClosedByAnothersLot) {
    ASSERT_NO_FATAL_FAILURE(finishMix());
    log.lots << "SV04260012";
    restart();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    session->logOffer(protocol::MixId(session->offers().at(0).mix));
    EXPECT_TRUE(waitFor([&] { return handed == 2; }));
}

TEST_F(MixOfAnotherDatabaseTest, AMixOfVersionOneIsClosedByItsLot) {
    log.open.clear();
    ASSERT_NO_FATAL_FAILURE(finishMix());
    log.open = u"3f2a9c01"_s;
    log.lots << "SV04260012";
    restart();
    session->open();
    EXPECT_TRUE(session->offers().empty());
}

// ---- failures of the journal ----------------------------------------------------------------------

TEST_F(MixOfAnotherDatabaseTest, ALogThatCanNotBeReadIsTold) {
    onDone = [&] {
        session->takeDown(someRows());
        session->logged();
    };
    ASSERT_NO_FATAL_FAILURE(finishMix());
    log.unreadable = true;
    restart();
    session->open();
    const PanelMessage told{PanelText::LogNotCompared, {u"disk I/O error"_s}};
    ASSERT_EQ(session->findings().size(), 1U);
    EXPECT_TRUE(session->findings()[0] == told);
}

TEST_F(MixOfAnotherDatabaseTest, AnEndThatCanNotBeWrittenDownIsTold) {
    ASSERT_NO_FATAL_FAILURE(startMix());
    {
        const support::FullDisk full;
        line.mixer.pressEmergencyStop();
        ASSERT_TRUE(waitFor([&] { return state() == RunState::Fault; }));
        ASSERT_TRUE(waitFor([&] { return !session->notice().empty(); }));
    }
    EXPECT_EQ(session->notice().text, PanelText::JournalAborted);
    EXPECT_EQ(session->notice().parts.size(), 1);
}
