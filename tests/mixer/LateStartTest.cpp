// A start whose answer stays out, or is a refusal, may still be on its way: whatever comes late, no mix runs that
// the journal does not know, and the next start is one of its own.
#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/TempProgramFolder.h"

#include <QDir>
#include <gtest/gtest.h>

using namespace sorvanto;
using test::MemoryLine;
using test::shortFormula;
using test::waitFor;

namespace {

constexpr int preparationsBeforeLate = 11;
constexpr std::int64_t lateMixTotal = 20'000;

class LateStartTest : public testing::Test {
protected:
    LateStartTest() { make(); }

    /// The program is started, anew where it ran.
    void make() {
        session.reset();
        session = std::make_unique<MixSession>(line.environment());
        session->setPort(1, false);
        QObject::connect(session.get(), &MixSession::mixDone, session.get(), [this] {
            ++done;
            session->logged();
        });
    }
    RunState state() const { return session->run().state(); }
    PanelText message() const { return session->run().message().text; }
    bool canStart() {
        return waitFor([&] { return session->canStart(); });
    }
    void loadShort() {
        session->open();
        session->loadFormula(shortFormula());
        ASSERT_TRUE(canStart());
        first = session->formula()->programme.id;
    }
    /// The start goes out, and nothing of it arrives.
    void startInVain() {
        loadShort();
        line.arrives = false;
        session->start();
        ASSERT_TRUE(waitFor([&] { return state() == RunState::Disconnected; }));
    }
    /// A frame of before comes out of the line now.
    void arrivesLate(protocol::Frame command) {
        command.sequence = 0;
        line.mixer.receive(command);
    }
    void mixGoesWell() {
        session->start();
        ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
        line.run(lateMixTotal);
        ASSERT_TRUE(waitFor([&] { return done == 1 && state() == RunState::Ready; }));
        EXPECT_EQ(mixesRun(), 1);
        EXPECT_EQ(openFiles(), QStringList());
    }
    int mixesRun() const { return line.mixer.preparations() - preparationsBeforeLate; }
    QStringList openFiles() const { return QDir(folder.path("mixes")).entryList(QDir::Files); }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    MemoryLine line;
    std::unique_ptr<MixSession> session;
    protocol::MixId first;  ///< of the programme whose start comes late
    int done = 0;
};

}  // namespace

TEST_F(LateStartTest, OfAStartThatNobodyAnsweredStartsNothing) {
    startInVain();
    line.arrives = true;
    ASSERT_TRUE(canStart());
    arrivesLate(protocol::startCommand(first));
    EXPECT_EQ(mixesRun(), 0);
    mixGoesWell();
}

TEST_F(LateStartTest, OfAStartThatNobodyAnsweredIsSaidAsNotDone) {
    startInVain();
    line.arrives = true;
    ASSERT_TRUE(canStart());
    EXPECT_EQ(message(), PanelText::CommandUnanswered);
    session->start();
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
    EXPECT_EQ(message(), PanelText::Count);
}

TEST_F(LateStartTest, OfARefusedStartStartsNothingAndTheReasonStaysSaid) {
    loadShort();
    line.mixer.openLid();
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartLid; }));
    line.mixer.closeLid();
    ASSERT_TRUE(canStart());
    EXPECT_EQ(message(), PanelText::StartLid);
    arrivesLate(protocol::startCommand(first));
    EXPECT_EQ(mixesRun(), 0);
    mixGoesWell();
}

TEST_F(LateStartTest, IsRefusedAlsoWhileTheEmergencyStopIsHeld) {
    loadShort();
    line.mixer.pressEmergencyStop();
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartEmergency; }));
    ASSERT_TRUE(canStart());
    EXPECT_EQ(message(), PanelText::StartEmergency);
    line.mixer.releaseEmergencyStop();
    arrivesLate(protocol::startCommand(first));
    EXPECT_EQ(mixesRun(), 0);
    mixGoesWell();
}

// It comes while the program believes the mixer to stand loaded, and takes the programme out of it.
TEST_F(LateStartTest, ThatComesBeforeItsProgrammeIsTakenBackIsOurMix) {
    startInVain();
    bool came = false;
    line.alter = [&](protocol::Frame& reply) {
        const auto status = protocol::readStatus(reply);
        if (status && status->state == protocol::MixerState::Loaded && !std::exchange(came, true))
            arrivesLate(protocol::startCommand(first));
    };
    line.arrives = true;
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
    EXPECT_FALSE(session->run().isForeign());
    line.run(lateMixTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1 && state() == RunState::Ready; }));
    EXPECT_EQ(openFiles(), QStringList());
    EXPECT_FALSE(session->formula());
}

// The mix that the late start begins is over before the programme can be taken back.
TEST_F(LateStartTest, WhoseMixIsOverAtOnceIsOurMix) {
    startInVain();
    bool came = false;
    line.alter = [&](protocol::Frame& reply) {
        const auto status = protocol::readStatus(reply);
        if (status && status->state == protocol::MixerState::Loaded && !std::exchange(came, true)) {
            arrivesLate(protocol::startCommand(first));
            line.run(lateMixTotal);
            arrivesLate(protocol::clearCommand());
        }
    };
    line.arrives = true;
    ASSERT_TRUE(waitFor([&] { return done == 1 && state() == RunState::Ready; }));
    EXPECT_EQ(mixesRun(), 1);
    EXPECT_EQ(openFiles(), QStringList());
}

TEST_F(LateStartTest, OfAProgramThatDiedStartsNothing) {
    startInVain();
    make();
    line.arrives = true;
    session->open();
    ASSERT_TRUE(waitFor([&] { return openFiles().isEmpty(); }));
    EXPECT_TRUE(session->offers().empty());
    arrivesLate(protocol::startCommand(first));
    EXPECT_EQ(mixesRun(), 0);
}

// A formula was loaded before the mixer answered: the start of before leaves nothing behind.
TEST_F(LateStartTest, OfAProgramThatDiedLeavesNoJournalBesideTheNextFormula) {
    startInVain();
    make();
    session->open();
    session->loadFormula(shortFormula());
    line.arrives = true;
    ASSERT_TRUE(canStart());
    EXPECT_EQ(openFiles().size(), 1);
    mixGoesWell();
}

// It would run without a journal that a formula knows, beside one that was never started.
TEST_F(LateStartTest, AProgrammeWhoseStartIsUnderWayIsNotLoadedAgain) {
    loadShort();
    arrivesLate(protocol::loadCommand(session->formula()->programme));
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartRefused; }));
    EXPECT_FALSE(session->canLoadAgain());
    ASSERT_TRUE(canStart());
    EXPECT_TRUE(session->canLoadAgain());
    session->start();
    EXPECT_FALSE(session->canLoadAgain());
    EXPECT_EQ(message(), PanelText::Count);
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
}

// A late copy of LOAD empties a mixer that stood loaded.
TEST_F(LateStartTest, AProgrammeThatALateLoadHasEmptiedIsSentAgain) {
    loadShort();
    arrivesLate(protocol::loadCommand(session->formula()->programme));
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartRefused; }));
    ASSERT_TRUE(canStart());
    mixGoesWell();
}

// Behind a greeting nobody knows whether the mixer was without power: a late LOAD hides no mix that it ran.
TEST_F(LateStartTest, ALateLoadHidesNoMixThatThePowerEnded) {
    loadShort();
    session->start();
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Mixing; }));
    const auto programme = session->formula()->programme;
    line.alter = [&](protocol::Frame& reply) {
        if (protocol::readIdentity(reply))
            arrivesLate(protocol::loadCommand(programme));
    };
    line.mixer.restart();
    ASSERT_TRUE(waitFor([&] { return session->canStart() || state() == RunState::Fault; }));
    EXPECT_EQ(state(), RunState::Fault);
    EXPECT_EQ(message(), PanelText::MixLost);
}
