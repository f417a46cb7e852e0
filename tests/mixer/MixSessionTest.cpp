// The course of a mix: loading, start, pause and stop, and words that get lost on the way.
#include "MixSessionTest.h"

using namespace sorvanto;
using test::shortFormula;
using test::waitFor;

TEST_F(MixSessionTest, NoMixIsStartedWhileAnotherBenchHasAMixerOfTheSameNumber) {
    session->setLogBook(&log);
    log.otherBench = "rkent@bench2";
    loadShort();
    session->start();
    EXPECT_EQ(session->notice(), (PanelMessage{PanelText::MixerTwice, {"rkent@bench2", "SV0426"}}));
    EXPECT_TRUE(session->canStart());
    EXPECT_FALSE(session->run().isBusy());
    log.otherBench.clear();
    session->start();
    EXPECT_TRUE(session->notice().empty());
    EXPECT_TRUE(reaches(RunState::Mixing)) << text();
}

TEST_F(MixSessionTest, WholeMix) {
    EXPECT_EQ(state(), RunState::Disconnected);
    onDone = [&] {
        EXPECT_EQ(state(), RunState::Done);
        EXPECT_TRUE(session->run().isBusy());
        EXPECT_FALSE(session->canStart());
        session->logged();
        session->initialsClosed();
    };
    finishShort();
    EXPECT_EQ(lastFormula, shortFormula()->xml());
    EXPECT_EQ(lastResults,
              "<Results Value=\"SV0426\"><Size Value=\"300 ml\"/><Type Value=\"Custom\"/><LiftingCycles "
              "Value=\"3\"/>"
              "<Interuption Value=\"A\"/><PreGrind Value=\"2\"/><PreparationNumber Value=\"0012\"/>"
              "<TotalMixingRevolutions Value=\"532\"/><HardwareVersion Value=\"SIM-2.1\"/></Results>");
    EXPECT_EQ(enabled, 1);
    EXPECT_TRUE(session->offers().empty());
    EXPECT_FALSE(session->formula());
    EXPECT_EQ(openFiles(), QStringList());
    exchangeWords();
    EXPECT_EQ(done, 1) << "once only";
}

TEST_F(MixSessionTest, StartIsOnlyOfferedForAComparedProgramme) {
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    EXPECT_FALSE(session->canStart());
    session->start();
    session->loadFormula(shortFormula());
    bool offeredEarly = false;
    ASSERT_TRUE(waitFor([&] {
        const bool readBack = line.transcript.join('\n').contains("READ 2");
        offeredEarly = offeredEarly || (session->canStart() && !readBack);
        return session->canStart();
    }));
    EXPECT_FALSE(offeredEarly);
    EXPECT_EQ(startsExecuted(), 0);
}

TEST_F(MixSessionTest, AnotherProgrammeInTheMixerIsNotOffered) {
    line.mixer.misstoreNextStep();
    session->open();
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::Misstored; }));
    EXPECT_FALSE(session->canStart());
    ASSERT_TRUE(waitFor([&] { return session->canLoadAgain(); }));
    session->loadAgain();
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
}

// The word of the refusal is gone with the mixer, the formula is not.
TEST_F(MixSessionTest, AProgrammeThatWasRefusedCanBeLoadedAgainAlsoAfterTheMixerWasGone) {
    line.mixer.misstoreNextStep();
    session->open();
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] { return message() == PanelText::Misstored; }));
    line.cut();
    ASSERT_EQ(state(), RunState::Disconnected);
    line.present = true;
    ASSERT_TRUE(reaches(RunState::Ready));
    ASSERT_TRUE(waitFor([&] { return session->canLoadAgain(); }));
    session->loadAgain();
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
}

TEST_F(MixSessionTest, FormulaBeforeTheMixerIsThere) {
    line.present = false;
    session->open();
    session->loadFormula(shortFormula());
    EXPECT_EQ(state(), RunState::Disconnected);
    line.present = true;
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
}

TEST_F(MixSessionTest, LoadingOpensAClosedControl) {
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    session->close();
    EXPECT_EQ(state(), RunState::Disconnected);
    session->loadFormula(shortFormula());
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
}

TEST_F(MixSessionTest, ANewFormulaReplacesTheOneNotStarted) {
    loadShort();
    session->loadFormula(test::formulaDocument("", 3));
    EXPECT_FALSE(session->canStart()) << "the old programme may not be started any more";
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_EQ(session->run().status().steps, 3);
}

TEST_F(MixSessionTest, FormulaWhileMixingIsRefusedAndTheMixGoesOn) {
    startShort();
    const auto running = session->run().running();
    session->loadFormula(test::formulaDocument("", 3));
    EXPECT_EQ(notice(), PanelText::BusyMixing);
    EXPECT_EQ(session->formula()->programme.id, running);
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_EQ(lastFormula, shortFormula()->xml());
}

TEST_F(MixSessionTest, FormulaThatCanNotRunTakesTheLoadedOneAway) {
    loadShort();
    session->loadFormula(test::formulaDocument("", 0));
    EXPECT_EQ(notice(), PanelText::Combination);
    EXPECT_FALSE(session->canStart()) << "the user believes the other formula to be loaded";
    EXPECT_FALSE(session->formula());
    ASSERT_TRUE(waitFor([&] { return line.mixer.state() == protocol::MixerState::Idle; }));
    session->start();
    exchangeWords();
    EXPECT_EQ(startsExecuted(), 0);
    session->loadFormula(nullptr);
    EXPECT_EQ(notice(), PanelText::NoFormula);
    session->loadFormula(shortFormula());
    EXPECT_TRUE(session->notice().empty());
    EXPECT_TRUE(waitFor([&] { return session->canStart(); }));
}

TEST_F(MixSessionTest, PauseResumeStop) {
    startShort();
    line.run(3000);
    session->run().pause();
    ASSERT_TRUE(reaches(RunState::Paused));
    line.run(60'000);
    exchangeWords();
    EXPECT_EQ(done, 0);
    session->run().resume();
    ASSERT_TRUE(reaches(RunState::Mixing));
    session->run().stop();
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_TRUE(lastResults.contains("<Interuption Value=\"U\"/>")) << lastResults.toStdString();
}

TEST_F(MixSessionTest, LostRepliesAreAskedForAgainAndNothingIsDoneTwice) {
    loadShort();
    for (int lost = 1; lost <= 3; ++lost) {
        SCOPED_TRACE(lost);
        line.loseReplies = lost;
        session->start();
        ASSERT_TRUE(reaches(RunState::Mixing));
        EXPECT_EQ(startsExecuted(), lost);
        line.loseReplies = lost;
        line.run(shortTotal);
        ASSERT_TRUE(waitFor([&] { return done == lost && state() == RunState::Ready; }));
        session->loadFormula(shortFormula());
        ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    }
}

TEST_F(MixSessionTest, StartWhoseReplyNeverComesIsRecognisedAfterwards) {
    loadShort();
    line.answers = false;
    session->start();
    ASSERT_TRUE(reaches(RunState::Disconnected));
    EXPECT_EQ(message(), PanelText::LostMixing);
    line.answers = true;
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_EQ(startsExecuted(), 1);
    line.run(shortTotal);
    EXPECT_TRUE(waitFor([&] { return done == 1; }));
}

TEST_F(MixSessionTest, StartThatNeverArrivesLeavesItLoaded) {
    loadShort();
    line.arrives = false;
    session->start();
    ASSERT_TRUE(reaches(RunState::Disconnected));
    line.arrives = true;
    ASSERT_TRUE(waitFor([&] { return session->canStart(); })) << text();
    EXPECT_EQ(startsExecuted(), 0);
    EXPECT_EQ(done, 0);
}
