// That each finished mix is handed out exactly once: its results, its journal, and what stays on offer.
#include "MixSessionTest.h"

#include "support/Hindrances.h"

using namespace sorvanto;
using test::shortFormula;
using test::waitFor;

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
