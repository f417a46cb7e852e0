// Mixes that ran while the program was away, that are not its own, or that end while the user signs.
#include "MixSessionTest.h"

#include "support/Hindrances.h"

using namespace sorvanto;
using test::shortFormula;
using test::waitFor;

namespace {

/// A mix of ten seconds that another program has begun.
void mixPastTheProgram(test::MemoryLine& line) {
    using namespace protocol;
    const Programme programme{"ABCDEF01", 3, 1, 10, 0, 1, {{1200, 1200, 10, 0}}};
    std::uint8_t sequence = 0;
    for (Frame command : {helloCommand("X"), loadCommand(programme), stepCommand(1, programme.steps[0]),
                          startCommand(programme.id)}) {
        command.sequence = ++sequence;
        line.mixer.receive(command);
    }
}

}  // namespace

TEST_F(MixSessionTest, MixThatEndedWhileTheProgramWasAwayIsRecovered) {
    startShort();
    make();
    line.run(shortTotal);
    session->open();
    ASSERT_TRUE(waitFor([&] {
        return session->offers().size() == 1 && session->offers()[0].state == JournalState::Finished;
    }));
    EXPECT_EQ(done, 0) << "offered, not sprung upon the user";
    EXPECT_TRUE(reaches(RunState::Ready));
    session->logOffer(session->offers()[0].mix);
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_TRUE(lastResults.contains("PreparationNumber Value=\"0012\""));
}

TEST_F(MixSessionTest, MixThatStillRunsAtTheNextStartIsFollowedToItsEnd) {
    startShort();
    make();
    session->open();
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_FALSE(session->run().isForeign());
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_EQ(lastFormula, shortFormula()->xml());
}

TEST_F(MixSessionTest, MixThatTheMixerForgotIsShownAsEndedWithoutResults) {
    startShort();
    make();
    line.mixer.restart();
    session->open();
    ASSERT_TRUE(waitFor([&] {
        return session->offers().size() == 1 && session->offers()[0].state == JournalState::Aborted;
    }));
    EXPECT_EQ(state(), RunState::Ready);
    session->logOffer(session->offers()[0].mix);
    exchangeWords();
    EXPECT_EQ(done, 0);
    session->putAside(protocol::MixId(session->offers()[0].mix));
    EXPECT_TRUE(session->offers().empty());
}

TEST_F(MixSessionTest, AnotherMixerIsNotAskedForIt) {
    startShort();
    make();
    line.mixer = mixersim::SimulatedMixer({protocol::version, "2.1", "SV0999"}, 3);
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    exchangeWords();
    ASSERT_EQ(session->offers().size(), 1U);
    EXPECT_EQ(session->offers()[0].state, JournalState::Started);
    EXPECT_EQ(session->offers()[0].serial, "SV0426");
}

TEST_F(MixSessionTest, MixOfAnotherProgramIsShownAndLeftAlone) {
    mixPastTheProgram(line);
    session->open();
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_TRUE(session->run().isForeign());
    EXPECT_EQ(message(), PanelText::ForeignMix);
    session->loadFormula(shortFormula());
    EXPECT_EQ(notice(), PanelText::BusyMixing);
    line.run(10'000);
    EXPECT_TRUE(reaches(RunState::Ready));
    EXPECT_EQ(done, 0);
}

// ---- what became of each preparation --------------------------------------------------------------

TEST_F(MixSessionTest, AMixThatTheMixerMadeWithoutThisProgramIsNotAccountedFor) {
    mixPastTheProgram(line);
    session->setLogBook(&log);
    session->open();
    EXPECT_TRUE(session->reconciliation().complete());
    ASSERT_TRUE(reaches(RunState::Mixing));
    line.run(10'000);
    ASSERT_TRUE(waitFor([&] { return !session->reconciliation().missing.isEmpty(); }));
    EXPECT_EQ(session->reconciliation().missing, QStringList{"SV04260012"});
    EXPECT_EQ(session->reconciliation().preparations, 1);
    EXPECT_FALSE(session->reconciliation().complete());
}

TEST_F(MixSessionTest, AMixThatWasPutAsideIsAccountedFor) {
    session->setLogBook(&log);
    finishShort();
    EXPECT_EQ(session->reconciliation().onOffer, 1);
    session->putAside(protocol::MixId(session->offers()[0].mix));
    EXPECT_EQ(session->reconciliation().closed, 1);
    make();
    session->setLogBook(&log);
    session->open();
    ASSERT_TRUE(reaches(RunState::Ready));
    ASSERT_NO_FATAL_FAILURE(exchangeWords());  // the mixer is asked for the results that it remembers
    EXPECT_TRUE(session->reconciliation().complete());
    EXPECT_EQ(session->reconciliation().preparations, 1);
}

TEST_F(MixSessionTest, ResultsThatTheJournalLacksAreNotAccountedFor) {
    session->setLogBook(&log);
    finishShort();
    session->putAside(protocol::MixId(session->offers()[0].mix));
    const QString path = "mixes/closed/" + closedFiles().first();
    QByteArray journal = folder.read(path);
    const qsizetype results = journal.indexOf("<Results");
    folder.write(path, journal.remove(results, journal.indexOf("</Mix>") - results));
    make();
    session->setLogBook(&log);
    session->open();
    ASSERT_TRUE(waitFor([&] { return !session->reconciliation().missing.isEmpty(); }));
    EXPECT_EQ(session->reconciliation().missing, QStringList{"SV04260012"});
}

TEST_F(MixSessionTest, TheLinkGoesOnWhileTheUserSigns) {
    onDone = [&] {
        exchangeWords();
        EXPECT_TRUE(session->isSigning());
        session->initialsClosed();
        EXPECT_FALSE(session->isSigning());
        EXPECT_EQ(state(), RunState::Done);
        session->loadFormula(shortFormula());
        EXPECT_EQ(notice(), PanelText::BusySigning);
        session->start();
        exchangeWords();
        EXPECT_EQ(state(), RunState::Done);
    };
    finishShort();
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(session->notice().empty()) << "the mixer is free again";
    EXPECT_EQ(startsExecuted(), 1);
}

TEST_F(MixSessionTest, ClosedWhileTheUserSigns) {
    onDone = [&] {
        exchangeWords();
        session->close();
        support::settle();
    };
    startShort();
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1 && state() == RunState::Disconnected; }));
    EXPECT_EQ(session->offers().size(), 1U);
    session->open();
    EXPECT_TRUE(reaches(RunState::Ready));
    EXPECT_EQ(done, 1);
}

TEST_F(MixSessionTest, DestroyedWhileTheUserSigns) {
    onDone = [&] {
        exchangeWords();
        session.reset();
        support::settle();
    };
    startShort();
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1 && !session; }));
    make();
    session->open();
    EXPECT_EQ(session->offers().size(), 1U);
}

TEST_F(MixSessionTest, ClosedInTheMidstOfAMixItIsFoundAgain) {
    startShort();
    session->close();
    EXPECT_EQ(state(), RunState::Disconnected);
    line.run(shortTotal);
    session->open();
    EXPECT_TRUE(waitFor([&] { return done == 1; }));
}
