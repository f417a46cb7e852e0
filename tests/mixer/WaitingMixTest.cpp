// A finished mix waits for the desk: who is asked what, what waits, and what a crash leaves.
#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/TempProgramFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using test::waitFor;

namespace {

class SampleDesk : public Desk {
public:
    bool isFree() const override {
        ++looks;
        return free;
    }
    bool canOpenDialog() const override { return !blocked; }
    void keepTypedText() override { calls << u"keep"_s; }
    void callAttention() override { calls << u"attention"_s; }

    bool free = false, blocked = false;
    mutable int looks = 0;
    QStringList calls;
};

class WaitingMixTest : public testing::Test {
protected:
    WaitingMixTest() { make(); }
    void make() {
        session.reset();
        session = std::make_unique<MixSession>(line.environment());
        session->setPort(1, false);
        session->setDesk(&desk);
        QObject::connect(session.get(), &MixSession::mixDone, session.get(),
                         [this](const platform::XmlDocumentPtr&, const platform::XmlDocumentPtr&) {
                             desk.calls << u"mixDone"_s;
                             if (log)
                                 session->logged();
                             session->initialsClosed();
                         });
    }
    void finishMix() {
        session->open();
        session->loadFormula(test::shortFormula());
        ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
        session->start();
        ASSERT_TRUE(waitFor([&] { return session->run().state() == RunState::Mixing; }));
        line.run(20'000);
        ASSERT_TRUE(waitFor([&] { return session->run().state() != RunState::Mixing; }));
    }
    void finishAndWait() {
        ASSERT_NO_FATAL_FAILURE(finishMix());
        ASSERT_TRUE(waitFor([&] { return session->isWaiting(); }));
    }
    int handed() const { return static_cast<int>(desk.calls.count(u"mixDone"_s)); }
    std::string calls() const { return desk.calls.join(u' ').toStdString(); }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    test::MemoryLine line;
    SampleDesk desk;
    std::unique_ptr<MixSession> session;
    bool log = true;
};

TEST_F(WaitingMixTest, IsHandedOverOnceTheDeskIsFree) {
    finishAndWait();
    const int looks = desk.looks;
    ASSERT_TRUE(waitFor([&] { return desk.looks > looks + 2; }));
    EXPECT_EQ(calls(), "attention") << "called once";
    EXPECT_TRUE(session->offers().empty()) << "the card shows it";
    desk.free = true;
    ASSERT_TRUE(waitFor([&] { return handed() == 1; }));
    EXPECT_EQ(calls(), "attention mixDone");
    EXPECT_FALSE(session->isWaiting());
}

TEST_F(WaitingMixTest, NeedsNoCardOnAFreeDesk) {
    desk.free = true;
    finishMix();
    ASSERT_TRUE(waitFor([&] { return handed() == 1; }));
    EXPECT_EQ(calls(), "mixDone");
}

TEST_F(WaitingMixTest, SignNowKeepsTypedTextFirst) {
    finishAndWait();
    session->signNow();
    ASSERT_TRUE(waitFor([&] { return handed() == 1; }));
    EXPECT_EQ(calls(), "attention keep mixDone");
}

TEST_F(WaitingMixTest, SignNowDoesNothingBehindADialogNorWithoutAMix) {
    session->signNow();
    finishAndWait();
    desk.blocked = true;
    session->signNow();
    desk.blocked = false;
    const int looks = desk.looks;
    ASSERT_TRUE(waitFor([&] { return desk.looks > looks + 1; }));
    EXPECT_EQ(handed(), 0);
}

TEST_F(WaitingMixTest, AfterACancelledSigningOnlyTheUserRaisesIt) {
    desk.free = true;
    log = false;
    finishMix();
    ASSERT_TRUE(waitFor([&] { return handed() == 1 && session->offers().size() == 1; }));
    EXPECT_FALSE(session->isWaiting());
    desk.free = false;
    log = true;
    session->logOffer(session->offers().front().mix);
    ASSERT_TRUE(waitFor([&] { return handed() == 2; }));
    EXPECT_EQ(calls(), "mixDone keep mixDone");
    EXPECT_TRUE(session->offers().empty());
}

TEST_F(WaitingMixTest, TwoOfThemAreSignedOneAfterTheOther) {
    desk.free = true;
    log = false;
    for (int mix = 1; mix <= 2; ++mix) {
        ASSERT_NO_FATAL_FAILURE(finishMix());
        ASSERT_TRUE(waitFor([&] { return handed() == mix && session->canLog(); }));
    }
    ASSERT_EQ(session->offers().size(), 2U);
    int inside = 0, deepest = 0;
    QObject::connect(session.get(), &MixSession::mixDone, session.get(), [&] {
        deepest = std::max(deepest, ++inside);
        const int looks = desk.looks;
        QCoreApplication::processEvents();
        EXPECT_EQ(desk.looks, looks);
        --inside;
    });
    for (const Offer& offer : session->offers())
        session->logOffer(offer.mix);
    ASSERT_TRUE(waitFor([&] { return handed() == 4; }));
    EXPECT_EQ(deepest, 1);
}

TEST_F(WaitingMixTest, ACrashLeavesItOnOffer) {
    finishAndWait();
    make();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    EXPECT_EQ(session->offers().front().state, JournalState::Finished);
    EXPECT_FALSE(session->isWaiting()) << "offered, not raised";
}

TEST_F(WaitingMixTest, NoOtherMixIsStartedMeanwhile) {
    finishAndWait();
    session->loadFormula(test::shortFormula());
    EXPECT_EQ(session->notice().text, PanelText::BusySigning);
    EXPECT_FALSE(session->canStart());
}

TEST_F(WaitingMixTest, ALostLinkChangesNothingAboutIt) {
    finishAndWait();
    line.cut();
    ASSERT_TRUE(waitFor([&] { return session->link().state() != MixerLink::State::Connected; }));
    EXPECT_TRUE(session->isWaiting());
    desk.free = true;
    ASSERT_TRUE(waitFor([&] { return handed() == 1; }));
}

}  // namespace
