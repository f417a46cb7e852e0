// The course of mixes on a device in memory: every state, every way a word can get lost, and that each
// finished mix is handed out exactly once.
#include "MemoryLine.h"
#include "support/FixedClock.h"
#include "support/Golden.h"
#include "support/Hindrances.h"
#include "support/Settle.h"
#include "support/TempProgramFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using test::MemoryLine;
using test::shortFormula;
using test::waitFor;

namespace {

constexpr std::int64_t shortTotal = 20'000;  // ten seconds, and two cycles of five

/// A log that can be read and holds no batch.
class EmptyLog : public LogBook {
public:
    QString identity() override { return "3f2a9c01"; }
    bool hasLot(const QString&) override { return false; }
    BatchStanding settle(const BatchRows&) override { return {}; }
    int batchCount() override { return 0; }
    QHash<Batch, int> linesSince(const QString&) override { return {}; }
    bool isArchived(const Batch&) override { return false; }
};

class MixSessionTest : public testing::Test {
protected:
    MixSessionTest() { make(); }

    void make() {
        session.reset();
        session = std::make_unique<MixSession>(line.environment());
        session->setPort(1, false);
        session->setLoggedTest([this](const QString& lot) { return logged.contains(lot); });
        QObject::connect(
            session.get(), &MixSession::mixDone, session.get(),
            [this](const platform::XmlDocumentPtr& formula, const platform::XmlDocumentPtr& results) {
                ++done;
                lastFormula = formula->xml();
                lastResults = results->xml();
                if (onDone)
                    onDone();
            });
        QObject::connect(session.get(), &MixSession::enableForm, session.get(), [this] { ++enabled; });
    }
    RunState state() const { return session->run().state(); }
    bool reaches(RunState wanted) {
        return waitFor([&] { return state() == wanted; });
    }
    void loadShort() {
        session->open();
        session->loadFormula(shortFormula());
        ASSERT_TRUE(waitFor([&] { return session->canStart(); })) << text();
    }
    void startShort() {
        loadShort();
        session->start();
        ASSERT_TRUE(reaches(RunState::Mixing)) << text();
    }
    void finishShort() {
        startShort();
        line.run(shortTotal);
        ASSERT_TRUE(waitFor([&] { return done == 1 && state() == RunState::Ready; }));
    }
    /// Waits until the mixer has been asked some more questions and has answered them: what was on its way
    /// before has happened then.
    void exchangeWords() {
        constexpr qsizetype frames = 8;
        const qsizetype enough = line.transcript.size() + frames;
        ASSERT_TRUE(waitFor([&] { return line.transcript.size() >= enough; }));
    }
    QStringList openFiles() const { return QDir(folder.path("mixes")).entryList(QDir::Files); }
    QStringList closedFiles() const { return QDir(folder.path("mixes/closed")).entryList(QDir::Files); }
    std::string text() const { return PanelTexts()(session->run().message()).toStdString(); }
    PanelText message() const { return session->run().message().text; }
    PanelText notice() const { return session->notice().text; }
    /// Replies that mean a start, among all frames so far.
    int startsExecuted() const { return line.mixer.preparations() - 11; }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    MemoryLine line;
    QStringList logged;
    EmptyLog log;
    std::unique_ptr<MixSession> session;
    std::function<void()> onDone;
    int done = 0, enabled = 0;
    QString lastFormula, lastResults;
};

}  // namespace

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

TEST_F(MixSessionTest, ResultsOfAnotherMixAreNotTaken) {
    startShort();
    int altered = 0;
    line.alter = [&](protocol::Frame& reply) {
        if (auto results = protocol::readResults(reply)) {
            results->mix = "FFFFFFFF";
            results->preparation = 99;
            reply = protocol::resultsReply(reply, *results);
            ++altered;
        }
    };
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return altered == 2; })) << "asked once more";
    EXPECT_EQ(done, 0);
    EXPECT_EQ(state(), RunState::Mixing);
    line.alter = nullptr;
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_TRUE(lastResults.contains("<PreparationNumber Value=\"0012\"/>")) << lastResults.toStdString();
}

// So often that the question is given up, and not so often that the mixer counts as gone.
TEST_F(MixSessionTest, ResultsThatStayOutAreAskedForAgain) {
    startShort();
    int lost = 0;
    line.alter = [&](protocol::Frame& reply) {
        if (protocol::readResults(reply) && lost < 4) {
            ++lost;
            line.loseReplies = 1;
        }
    };
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1; }));
    EXPECT_EQ(lost, 4);
    EXPECT_TRUE(lastResults.contains("<PreparationNumber Value=\"0012\"/>")) << lastResults.toStdString();
}

TEST_F(MixSessionTest, ResultsOfAMixPutAsideMeanwhileAreDropped) {
    startShort();
    make();
    line.run(shortTotal);
    line.alter = [&](protocol::Frame& reply) {
        if (protocol::readResults(reply))
            session->putAside("00000001");
    };
    session->open();
    ASSERT_TRUE(waitFor([&] { return closedFiles().size() == 1; }));
    exchangeWords();
    EXPECT_TRUE(session->offers().empty());
    EXPECT_TRUE(session->notice().empty());
    EXPECT_EQ(openFiles(), QStringList());
}

TEST_F(MixSessionTest, NoStartWithoutAJournal) {
    loadShort();
    {
        const support::FullDisk full;
        session->start();
        EXPECT_EQ(notice(), PanelText::JournalStart);
        exchangeWords();
        EXPECT_EQ(startsExecuted(), 0);
        EXPECT_EQ(state(), RunState::Loaded);
    }
    session->start();
    EXPECT_TRUE(reaches(RunState::Mixing));
}

TEST_F(MixSessionTest, ResultsOnAFullDiskAreHandedOutAllTheSame) {
    startShort();
    {
        const support::FullDisk full;
        line.run(shortTotal);
        ASSERT_TRUE(waitFor([&] { return done == 1; }));
        EXPECT_EQ(notice(), PanelText::JournalResults);
    }
    ASSERT_TRUE(waitFor([&] { return state() == RunState::Ready; }));
    EXPECT_EQ(session->offers().size(), 1U);
    make();  // the file says "started", the mixer still knows the results
    session->open();
    ASSERT_TRUE(waitFor([&] {
        return session->offers().size() == 1 && session->offers()[0].state == JournalState::Finished;
    }));
    EXPECT_EQ(session->offers()[0].lot, "SV04260012");
}

TEST_F(MixSessionTest, NotLoggedStaysOnOffer) {
    finishShort();
    EXPECT_FALSE(session->isSigning());
    ASSERT_EQ(session->offers().size(), 1U);
    EXPECT_EQ(session->offers()[0].name, "Hydrocortisone 1% Cream");
    EXPECT_EQ(session->offers()[0].lot, "SV04260012");
    make();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    const QString firstFormula = lastFormula, firstResults = lastResults;
    onDone = [&] { session->logged(); };
    session->logOffer(session->offers()[0].mix);
    ASSERT_TRUE(waitFor([&] { return done == 2; }));
    EXPECT_EQ(lastFormula, firstFormula);
    EXPECT_EQ(lastResults, firstResults);
    EXPECT_TRUE(session->offers().empty());
    make();
    session->open();
    EXPECT_TRUE(session->offers().empty());
}

// The program may die before the handler is done: the file itself has to tell.
TEST_F(MixSessionTest, TheJournalIsClosedWithinTheHandlerThatLogs) {
    onDone = [&] {
        EXPECT_EQ(openFiles().size(), 1);
        session->logged();
        EXPECT_EQ(openFiles(), QStringList());
        EXPECT_EQ(closedFiles().size(), 1);
    };
    finishShort();
    EXPECT_EQ(closedFiles().size(), 1);
}

// The lot was logged by another window meanwhile.
TEST_F(MixSessionTest, AnOfferThatIsInTheLogIsNotHandedOverAgain) {
    finishShort();
    ASSERT_EQ(session->offers().size(), 1U);
    logged << "SV04260012";
    session->logOffer(protocol::MixId(session->offers()[0].mix));
    EXPECT_TRUE(session->offers().empty());
    EXPECT_EQ(closedFiles().size(), 1);
    exchangeWords();
    EXPECT_EQ(done, 1);
}

TEST_F(MixSessionTest, AnOfferWaitsUntilTheMixerIsFree) {
    finishShort();
    const auto offered = protocol::MixId(session->offers().at(0).mix);
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    EXPECT_TRUE(session->canLog());
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing));
    EXPECT_FALSE(session->canLog());
    session->logOffer(offered);
    session->putAside(session->run().running());
    exchangeWords();
    EXPECT_EQ(done, 1);
    ASSERT_EQ(session->offers().size(), 1U) << "the running one is none";
    EXPECT_EQ(session->offers()[0].mix, offered);
    EXPECT_EQ(openFiles().size(), 2);
}

TEST_F(MixSessionTest, TwoOffersAreHandedOverOneAfterTheOther) {
    finishShort();
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] { return session->canStart(); }));
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing));
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 2 && state() == RunState::Ready; }));
    int signing = 0;
    onDone = [&] {
        EXPECT_EQ(++signing, 1) << "one dialog at a time";
        exchangeWords();
        session->logged();
        --signing;
    };
    const auto offers = session->offers();
    ASSERT_EQ(offers.size(), 2U);
    session->logOffer(offers[0].mix);
    session->logOffer(offers[1].mix);
    EXPECT_TRUE(session->offers().empty()) << "neither is offered any more";
    ASSERT_TRUE(waitFor([&] { return done == 4; }));
    ASSERT_TRUE(waitFor([&] { return closedFiles().size() == 2; }));
    EXPECT_TRUE(session->offers().empty());
}

TEST_F(MixSessionTest, OpenedAnewWhileTheUserSignsItIsStillTheHandlersToClose) {
    onDone = [&] {
        logged << "SV04260012";
        session->close();
        session->open();
        EXPECT_EQ(openFiles().size(), 1);
        session->logged();
        EXPECT_EQ(closedFiles().size(), 1);
    };
    finishShort();
}

TEST_F(MixSessionTest, WhatIsBeingSignedCanNotBePutAside) {
    onDone = [&] {
        const QString name = openFiles().value(0).section('.', 0, 0);
        session->putAside(name.toLatin1());
        EXPECT_EQ(openFiles().size(), 1);
        EXPECT_TRUE(session->offers().empty()) << "shown elsewhere";
        EXPECT_FALSE(session->canLog());
        EXPECT_FALSE(session->canLoadAgain());
    };
    finishShort();
    EXPECT_EQ(session->offers().size(), 1U);
}

TEST_F(MixSessionTest, ANumberOfTheJournalIsNotGivenOutAgain) {
    finishShort();
    ASSERT_EQ(session->offers()[0].mix, "00000001");
    line.mixIds = 0;
    session->loadFormula(shortFormula());
    EXPECT_EQ(session->formula()->programme.id, "00000002");
    EXPECT_EQ(openFiles().size(), 2);
}

TEST_F(MixSessionTest, AJournalThatIsNoneIsTold) {
    QDir(folder.path()).mkdir("mixes");
    folder.write("mixes/one.xml", "garbage");
    folder.write("mixes/two.xml", "");
    session->open();
    EXPECT_EQ(notice(), PanelText::JournalUnreadable);
    EXPECT_EQ(session->notice().parts, QStringList{"one.xml, two.xml"});
}

TEST_F(MixSessionTest, PutAsideIsGoneForGood) {
    finishShort();
    session->putAside(protocol::MixId(session->offers()[0].mix));
    EXPECT_TRUE(session->offers().empty());
    make();
    session->open();
    EXPECT_TRUE(session->offers().empty());
    EXPECT_EQ(closedFiles().size(), 1);
}

TEST_F(MixSessionTest, PutAsideThatTheDiskDoesNotTakeIsToldAndTheMixStaysOnOffer) {
    finishShort();
    {
        const support::FullDisk full;
        session->putAside(protocol::MixId(session->offers()[0].mix));
        EXPECT_EQ(notice(), PanelText::JournalPutAside);
    }
    ASSERT_EQ(session->offers().size(), 1U);
    EXPECT_EQ(openFiles().size(), 1);
    session->putAside(protocol::MixId(session->offers()[0].mix));
    EXPECT_TRUE(session->offers().empty());
}

// Of a journal that names no database, as version 1.0 wrote them: it took no rows down, so its lot has to tell.
TEST_F(MixSessionTest, LotInTheLogClosesTheJournal) {
    finishShort();
    logged << "SV04260012";
    make();
    session->open();
    EXPECT_TRUE(session->offers().empty());
}

TEST_F(MixSessionTest, LotOfAnotherMixDoesNotCloseTheJournal) {
    logged << "SV04260012";  // the counter of the mixer was reset: the lot is taken before this mix ends
    finishShort();
    make();
    session->open();
    ASSERT_EQ(session->offers().size(), 1U);
    session->logOffer(session->offers()[0].mix);
    EXPECT_TRUE(waitFor([&] { return done == 2; }));
}

TEST_F(MixSessionTest, LoggedTestThatFailsOffersAgain) {
    finishShort();
    make();
    session->setLoggedTest([](const QString&) -> bool { throw std::runtime_error("no database"); });
    session->open();
    EXPECT_EQ(session->offers().size(), 1U);
}

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
    using namespace protocol;
    Programme programme{"ABCDEF01", 3, 1, 10, 0, 1, {{1200, 1200, 10, 0}}};
    std::uint8_t sequence = 0;
    for (Frame command : {helloCommand("X"), loadCommand(programme), stepCommand(1, programme.steps[0]),
                          startCommand(programme.id)}) {
        command.sequence = ++sequence;
        line.mixer.receive(command);
    }
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
    using namespace protocol;
    Programme programme{"ABCDEF01", 3, 1, 10, 0, 1, {{1200, 1200, 10, 0}}};
    std::uint8_t sequence = 0;
    for (Frame command : {helloCommand("X"), loadCommand(programme), stepCommand(1, programme.steps[0]),
                          startCommand(programme.id)}) {
        command.sequence = ++sequence;
        line.mixer.receive(command);
    }
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

// What goes over the line. The questions for the state between, and their number, depend on the time and
// are left out, as are the sequence numbers with the checks.
class MixTranscriptTest : public MixSessionTest {
protected:
    void expectTranscript(const char* name) const {
        QString text;
        for (const QString& frame : std::as_const(line.transcript)) {
            QString shown = frame.section('*', 0, 0);
            shown.replace(1, 2, u".."_s);
            if (shown.contains(u"HELLO 1"_s))
                shown = shown.section(' ', 0, 2) + u" ........"_s;
            if (frame.endsWith(u"(lost)"_s))
                shown += u"   (lost)"_s;
            if (!shown.contains(u"STAT"_s))
                text += shown + '\n';
        }
        support::expectGolden(u"mixer/"_s + name + ".txt", text);
    }
};

TEST_F(MixTranscriptTest, WholeMix) {
    finishShort();
    ASSERT_TRUE(waitFor([&] { return line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("whole_mix");
}

TEST_F(MixTranscriptTest, PausedAndStopped) {
    startShort();
    session->run().pause();
    ASSERT_TRUE(reaches(RunState::Paused));
    session->run().resume();
    ASSERT_TRUE(reaches(RunState::Mixing));
    session->run().stop();
    ASSERT_TRUE(waitFor([&] { return done == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("paused_and_stopped");
}

TEST_F(MixTranscriptTest, LostReplies) {
    loadShort();
    ASSERT_TRUE(waitFor([&] { return line.transcript.last().contains("LOADED"); }));
    line.loseReplies = 2;
    session->start();
    ASSERT_TRUE(reaches(RunState::Mixing));
    line.run(shortTotal);
    ASSERT_TRUE(waitFor([&] { return done == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("lost_replies");
}

TEST_F(MixTranscriptTest, OtherProgrammeReadBack) {
    line.mixer.misstoreNextStep();
    session->open();
    session->loadFormula(shortFormula());
    ASSERT_TRUE(waitFor([&] {
        return message() == PanelText::Misstored && line.mixer.state() == protocol::MixerState::Idle;
    }));
    expectTranscript("other_programme_read_back");
}

TEST_F(MixTranscriptTest, FinishedWhileTheProgramWasAway) {
    startShort();
    make();
    line.transcript.clear();
    line.run(shortTotal);
    session->open();
    ASSERT_TRUE(waitFor(
        [&] { return session->offers().size() == 1 && line.mixer.state() == protocol::MixerState::Idle; }));
    expectTranscript("finished_while_away");
}
