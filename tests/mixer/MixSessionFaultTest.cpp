// What ends or holds up a mix: an unplugged or restarted mixer, its faults and refusals, and silence.
#include "MixSessionTest.h"

using namespace sorvanto;
using test::waitFor;

TEST_F(MixSessionTest, UnpluggedInTheMidstTheResultsAreFetched) {
    startShort();
    line.cut();
    ASSERT_TRUE(reaches(RunState::Disconnected));
    EXPECT_EQ(message(), PanelText::LostMixing);
    line.run(shortTotal);
    line.present = true;
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_TRUE(lastResults.contains("Value=\"A\""));
    exchangeWords();
    EXPECT_EQ(done, 1);
}

TEST_F(MixSessionTest, RestartOfTheMixerEndsTheMixWithoutResults) {
    startShort();
    line.mixer.restart();
    ASSERT_TRUE(reaches(RunState::Fault));
    EXPECT_EQ(message(), PanelText::MixLost);
    EXPECT_EQ(done, 0);
    EXPECT_FALSE(session->canStart());
    session->acknowledge();
    ASSERT_TRUE(reaches(RunState::Ready));
    EXPECT_TRUE(session->offers().empty());
    ASSERT_TRUE(session->canLoadAgain());
    session->loadAgain();
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
    EXPECT_EQ(done, 0);
}

TEST_F(MixSessionTest, EmergencyStopHoldsUntilReleasedAndSeen) {
    startShort();
    line.mixer.pressEmergencyStop();
    ASSERT_TRUE(reaches(RunState::Fault));
    EXPECT_EQ(message(), PanelText::EmergencyStop);
    session->acknowledge();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::EmergencyHeld; }));
    EXPECT_EQ(state(), RunState::Fault);
    line.mixer.releaseEmergencyStop();
    session->acknowledge();
    EXPECT_TRUE(reaches(RunState::Ready));
    EXPECT_EQ(done, 0);
}

TEST_F(MixSessionTest, OverloadEndsTheMix) {
    startShort();
    line.mixer.overload();
    ASSERT_TRUE(reaches(RunState::Fault));
    EXPECT_EQ(message(), PanelText::Overload);
}

TEST_F(MixSessionTest, AFaultIsShownUntilItIsSeenAlsoWhenTheMixerIsGone) {
    startShort();
    line.mixer.overload();
    ASSERT_TRUE(reaches(RunState::Fault));
    line.cut();
    ASSERT_NE(session->link().state(), MixerLink::State::Connected);
    EXPECT_EQ(state(), RunState::Fault);
    EXPECT_EQ(message(), PanelText::Overload);
    session->acknowledge();
    EXPECT_EQ(state(), RunState::Disconnected);
    line.present = true;
    line.mixer.restart();
    EXPECT_TRUE(reaches(RunState::Ready));
}

TEST_F(MixSessionTest, ResultsAreHeldAlsoWhenTheMixerIsGone) {
    onDone = [&] {
        line.cut();
        ASSERT_NE(session->link().state(), MixerLink::State::Connected);
        EXPECT_EQ(state(), RunState::Done);
        session->logged();
    };
    startShort();
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_EQ(state(), RunState::Disconnected);
    EXPECT_EQ(closedFiles().size(), 1);
    line.present = true;
    EXPECT_TRUE(reaches(RunState::Ready));
}

TEST_F(MixSessionTest, OpenLidHoldsTheMix) {
    startShort();
    line.mixer.openLid();
    ASSERT_TRUE(reaches(RunState::Paused));
    EXPECT_EQ(message(), PanelText::LidOpened);
    session->run().resume();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::ResumeLid; }));
    line.mixer.closeLid();
    session->run().resume();
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_TRUE(session->run().message().empty());
}

TEST_F(MixSessionTest, StartRefusedByTheMixer) {
    loadShort();
    line.mixer.openLid();
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartLid; }));
    EXPECT_EQ(startsExecuted(), 0);
    line.mixer.closeLid();
    line.mixer.pressEmergencyStop();
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    session->start();
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::StartEmergency; }));
    line.mixer.releaseEmergencyStop();
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    session->start();
    EXPECT_TRUE(reaches(RunState::Mixing));
}

// A start that reached the mixer by a way that this program did not see.
TEST_F(MixSessionTest, ARefusalAsUsedMeansThatTheMixRuns) {
    loadShort();
    line.mixer.receive(protocol::startCommand(session->formula()->programme.id));
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing)) << text();
    EXPECT_TRUE(line.transcript.join('\n').contains("USED"));
    EXPECT_FALSE(session->run().isForeign());
    EXPECT_EQ(startsExecuted(), 1);
    line.run(shortTotal);
    EXPECT_TRUE(waitFor([&] { return done == 1; }));
}

TEST_F(MixSessionTest, NoAnswerFromTheStart) {
    line.answers = false;
    session->open();
    ASSERT_TRUE(waitFor([&] { return session->link().hasFailed(); }));
    EXPECT_EQ(state(), RunState::Disconnected);
    line.answers = true;
    EXPECT_TRUE(reaches(RunState::Ready));
}

TEST_F(MixSessionTest, SilenceIsStaleFirstAndLostThen) {
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    line.answers = false;
    ASSERT_TRUE(waitFor([&] { return session->link().isStale(); }));
    EXPECT_EQ(state(), RunState::Ready);
    EXPECT_TRUE(session->link().lastWord().isValid());
    EXPECT_TRUE(reaches(RunState::Disconnected));
}

TEST_F(MixSessionTest, TheFirstWordAfterASilenceIsTold) {
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    line.answers = false;
    ASSERT_TRUE(waitFor([&] { return session->link().isStale(); }));
    int told = 0;
    QObject::connect(&session->link(), &MixerLink::changed, &session->link(), [&] { ++told; });
    line.answers = true;
    ASSERT_TRUE(waitFor([&] { return !session->link().isStale(); }));
    EXPECT_GT(told, 0);
}

TEST_F(MixSessionTest, AfterALossAsManyWordsMayStayOutAsBefore) {
    int openings = 0;
    MixerEnvironment environment = line.environment();
    environment.portPath = [&, path = environment.portPath](int port) {
        ++openings;
        return path(port);
    };
    session = std::make_unique<MixSession>(environment);
    session->setPort(1, false);
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    line.answers = false;
    ASSERT_TRUE(reaches(RunState::Disconnected));
    line.answers = true;
    line.loseReplies = 1;
    const int before = openings;
    ASSERT_TRUE(reaches(RunState::Ready));
    EXPECT_EQ(openings, before + 1) << "the port stays open when the first word is missed";
}

TEST_F(MixSessionTest, NoStartWhileTheMixerIsSilent) {
    loadShort();
    line.answers = false;
    ASSERT_TRUE(waitFor([&] { return session->link().isStale(); }));
    EXPECT_EQ(state(), RunState::Loaded);
    EXPECT_FALSE(session->canStart());
    session->start();
    EXPECT_EQ(session->run().running(), protocol::MixId());
    line.answers = true;
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    EXPECT_EQ(startsExecuted(), 0);
}
