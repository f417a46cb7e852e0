// What a network can do to a line, and what the program knows of its records afterwards.
#include "../DataTest.h"
#include "ServerProxy.h"
#include "TestServer.h"
#include "Waiting.h"
#include "platform/data/Transaction.h"
#include "platform/data/Waiter.h"
#include "platform/data/postgres/Session.h"

#include <QDeadlineTimer>
#include <QThread>
#include <functional>

namespace platform {
namespace {

using postgres::Access;
using postgres::Session;
using Fault = support::ServerProxy::Fault;

/// Writes down what it hears, and does what the test wants in its turns.
struct Listener : Waiter {
    bool goesOn(int waited) override {
        ++turns;
        lastWaited = waited;
        return !turn || turn();
    }
    bool isPatient() const override { return patient; }
    void ended() override { ++ends; }
    void foundSaved() override { ++saved; }

    std::function<bool()> turn;
    int turns = 0, lastWaited = 0, ends = 0, saved = 0;
    bool patient = true;
};

class FaultTest : public DataTest {
protected:
    void SetUp() override {
        DataTest::SetUp();
        proxy = std::make_unique<support::ServerProxy>(location());
    }
    /// By the proxy.
    Session& session(const postgres::Limits& limits = {}) {
        if (!m_session)
            m_session = std::make_unique<Session>(proxy->address(), listener, limits);
        return *m_session;
    }
    static postgres::Command lengthened() {
        return {
            "UPDATE \"Chemical\" SET \"chm_Lot\" = 'x' || \"chm_Lot\" WHERE \"ChemicalID\" = 1 RETURNING 7"};
    }
    RuntimeError changeFailure() {
        return failureOf([&] { session().runOne(lengthened(), Access::Changes, u"the change"_s); });
    }
    QString lot() const { return stored(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s); }
    std::int64_t seven() { return session().runOne({"SELECT 7"}, Access::Reads, {}).integer(0, 0); }
    /// Through the whole data layer.
    ConnectionPtr byProxy() const {
        const ConnectionPtr other = std::make_shared<Connection>();
        other->setWaiter(listener);
        other->open(source(proxy->address()));
        return other;
    }
    static void expectEnd(const RuntimeError& failure, QLatin1StringView end) {
        EXPECT_EQ(failure.number(), error::deviceIo);
        EXPECT_TRUE(failure.description().endsWith(end)) << failure.description().toStdString();
    }

    std::unique_ptr<support::ServerProxy> proxy;
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();

private:
    std::unique_ptr<Session> m_session;
};

// A change outside a span.

TEST_F(FaultTest, AChangeWhoseConfirmationIsLostIsLookedUpAndWasSaved) {
    const QString before = lot();
    session();
    proxy->arm("COMMIT", Fault::LoseReply);
    EXPECT_EQ(session().runOne(lengthened(), Access::Changes, {}).integer(0, 0), 7) << "with all its results";
    EXPECT_EQ(lot(), u"x"_s + before) << "once";
    EXPECT_EQ(listener->saved, 1);
    EXPECT_EQ(proxy->lines(), 2);
}

TEST_F(FaultTest, AChangeWhoseEndNeverArrivesIsToldAsNotSavedAndNotRepeated) {
    const QString before = lot();
    session();
    proxy->arm("COMMIT", Fault::Cut);
    const RuntimeError failure = changeFailure();
    expectEnd(failure, "; the change was not saved"_L1);
    EXPECT_EQ(failure.statement(), "the change");
    EXPECT_EQ(lot(), before);
    EXPECT_EQ(listener->saved, 0);
    EXPECT_EQ(session().runOne(lengthened(), Access::Changes, {}).integer(0, 0), 7);
    EXPECT_EQ(lot(), u"x"_s + before);
}

TEST_F(FaultTest, AChangeThatNobodyCanBeAskedAboutIsNotKnown) {
    const QString before = lot();
    postgres::Limits limits;
    limits.lookUpMs = 0;
    session(limits);
    proxy->arm("COMMIT", Fault::LoseReply);
    proxy->refuse(true);
    expectEnd(changeFailure(), "; it is not known whether the change was saved"_L1);
    EXPECT_EQ(lot(), u"x"_s + before);
    proxy->refuse(false);
    EXPECT_EQ(seven(), 7);
}

TEST_F(FaultTest, AChangeThatIsCutBeforeItsEndIsNotSaved) {
    for (const Fault fault : {Fault::LoseReply, Fault::Cut}) {
        const QString before = lot();
        session();
        proxy->arm("UPDATE", fault);
        expectEnd(changeFailure(), "; the change was not saved"_L1);
        EXPECT_EQ(lot(), before) << "neither kept nor repeated";
    }
}

TEST_F(FaultTest, AChangeOfNothingNeedsNoLook) {
    session();
    proxy->arm("COMMIT", Fault::LoseReply);
    EXPECT_EQ(session()
                  .runOne({"UPDATE \"Chemical\" SET \"chm_Lot\" = 'x' WHERE \"ChemicalID\" = 9999"},
                          Access::Changes, {})
                  .changedRows(),
              0);
    EXPECT_EQ(listener->saved, 0);
}

// A span.

TEST_F(FaultTest, ASpanWhoseConfirmationIsLostIsLookedUp) {
    const QString before = lot();
    const ConnectionPtr other = byProxy();
    for (const Fault fault : {Fault::LoseReply, Fault::Cut}) {
        Transaction span(other->engine());
        other->execute(u"UPDATE Chemical SET chm_Lot = 'SPAN' WHERE ChemicalID = 1"_s);
        other->execute(u"UPDATE Chemical SET chm_Lot = 'L' & [chm_Lot] WHERE ChemicalID = 1"_s);
        proxy->arm("COMMIT", fault);
        const RuntimeError failure = failureOf([&] { span.commit(); });
        if (fault == Fault::LoseReply)
            EXPECT_EQ(failure.number(), 0) << failure.description().toStdString();
        else
            expectEnd(failure, "; the change was not saved"_L1);
        EXPECT_EQ(lot(), "LSPAN");
    }
    EXPECT_EQ(listener->saved, 1);
    EXPECT_NE(before, "LSPAN");
}

TEST_F(FaultTest, ASpanOfRowsOfWhichOneWasRefusedIsLookedUp) {
    const QString addedLines = u"SELECT count(*) FROM LogChem WHERE lch_Name = 'added'"_s;
    const ConnectionPtr other = byProxy();
    int kept = 0;
    for (const Fault fault : {Fault::LoseReply, Fault::Cut}) {
        Transaction span(other->engine());
        const auto add = [&] {
            other->engine().insertInTurn(u"LogChem"_s, {u"LogID"_s, u"lch_Name"_s},
                                         {{12, u"added"_s}, {12, u"added"_s}, {999, u"added"_s}}, {},
                                         [](std::int64_t) {});
        };
        EXPECT_EQ(failureOf(add).number(), error::general);
        proxy->arm("COMMIT", fault);
        const RuntimeError failure = failureOf([&] { span.commit(); });
        if (fault == Fault::LoseReply)
            kept += 2;
        else
            expectEnd(failure, "; the change was not saved"_L1);
        EXPECT_EQ(stored(addedLines), QString::number(kept));
    }
    EXPECT_EQ(listener->saved, 1);
}

TEST_F(FaultTest, ASpanThatIsCutInTheMiddleTakesNothingMore) {
    const QString before = lot();
    const ConnectionPtr other = byProxy();
    {
        Transaction span(other->engine());
        other->execute(u"UPDATE Chemical SET chm_Lot = 'FIRST' WHERE ChemicalID = 1"_s);
        proxy->cut();
        for (int time = 0; time < 2; ++time)
            expectEnd(failureOf([&] {
                          other->execute(u"UPDATE Chemical SET chm_Lot = 'SECOND' WHERE ChemicalID = 1"_s);
                      }),
                      "; the change was not saved"_L1);
        expectEnd(failureOf([&] { span.commit(); }), "; the change was not saved"_L1);
    }
    EXPECT_EQ(lot(), before);
    EXPECT_EQ(other->execute(u"UPDATE Chemical SET chm_Lot = 'LATER' WHERE ChemicalID = 1"_s), 1);
    EXPECT_EQ(lot(), "LATER");
}

TEST_F(FaultTest, TheBeginningOfASpanIsTriedOnceMore) {
    const ConnectionPtr other = byProxy();
    proxy->arm("BEGIN", Fault::Cut);
    Transaction span(other->engine());
    EXPECT_EQ(other->execute(u"UPDATE Chemical SET chm_Lot = 'SPAN' WHERE ChemicalID = 1"_s), 1);
    span.commit();
    EXPECT_EQ(lot(), "SPAN");
}

// What reads, and servers that say nothing.

TEST_F(FaultTest, WhatReadsIsTriedOnceMoreAndNotTwice) {
    postgres::Limits limits;
    limits.againMs = 0;
    session(limits);
    proxy->arm("SELECT 7", Fault::Cut);
    EXPECT_EQ(seven(), 7);
    EXPECT_EQ(proxy->lines(), 2);
    proxy->arm("SELECT 7", Fault::Cut);
    proxy->refuse(true);
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::deviceIo);
    proxy->refuse(false);
    EXPECT_EQ(seven(), 7);
}

TEST_F(FaultTest, ASilentServerIsWaitedForUntilItsTime) {
    postgres::Limits limits;
    limits.answerMs = 300;
    session(limits);
    proxy->arm("SELECT 7", Fault::FallSilent);
    EXPECT_EQ(seven(), 7) << "over a new line";
    EXPECT_GT(listener->turns, 0);
    const QString before = lot();
    proxy->arm("UPDATE", Fault::FallSilent);
    expectEnd(changeFailure(), "; the change was not saved"_L1);
    proxy->arm("COMMIT", Fault::FallSilent);
    expectEnd(changeFailure(), "; the change was not saved"_L1);
    EXPECT_EQ(lot(), before);
}

// What is tried behind the first silence would last for an hour if it had the time of a first try.
TEST_F(FaultTest, ANetworkThatSwallowsEverythingIsToldOnceTheWholeTimeIsOver) {
    const QString before = lot();
    postgres::Limits limits;
    limits.answerMs = limits.wholeMs = limits.leastMs = 1000;
    limits.openMs = 3'600'000;
    session(limits);
    EXPECT_EQ(session().awayFor(), 0);
    proxy->silence(true);
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::deviceIo);
    EXPECT_GT(session().awayFor(), 0) << "since it was last heard, without a look after it";
    EXPECT_EQ(changeFailure().number(), error::deviceIo);
    proxy->silence(false);
    EXPECT_EQ(seven(), 7);
    EXPECT_EQ(session().awayFor(), 0);
    EXPECT_EQ(lot(), before);
}

TEST_F(FaultTest, AServerThatIsAwayAndComesBackIsFoundAgain) {
    postgres::Limits limits;
    limits.againMs = 0;
    session(limits);
    proxy->refuse(true);
    proxy->cut();
    const RuntimeError failure = failureOf([&] { seven(); });
    EXPECT_EQ(failure.number(), error::deviceIo);
    EXPECT_TRUE(failure.description().startsWith("The server can't be reached"_L1));
    proxy->refuse(false);
    EXPECT_EQ(seven(), 7);
}

TEST_F(FaultTest, AServerThatIsJustStartingIsTriedAgain) {
    postgres::Limits limits;
    limits.againMs = 60000;
    session(limits);
    proxy->refuse(true);
    proxy->cut();
    listener->turn = [this] { return proxy->refuse(false), true; };
    EXPECT_EQ(seven(), 7);
}

TEST_F(FaultTest, ALineThatWasCutWhileNobodyWorkedIsOpenAgainBeforeItIsNeeded) {
    session();
    session().lookAfter();
    EXPECT_EQ(proxy->lines(), 1) << "nothing to do";
    proxy->cut();
    const QDeadlineTimer until(support::patience);
    while (proxy->lines() < 2 && !until.hasExpired()) {
        session().lookAfter();
        QThread::yieldCurrentThread();
    }
    EXPECT_EQ(seven(), 7);
    EXPECT_EQ(proxy->lines(), 2) << "the one that was opened";
}

TEST_F(FaultTest, ALineThatFellSilentWhileNobodyWorkedIsOpenAgainBeforeItIsNeeded) {
    postgres::Limits limits;
    limits.quietMs = 0;
    limits.knockMs = 20;
    session(limits);
    proxy->fallSilent();
    const QDeadlineTimer until(support::patience);
    while (proxy->lines() < 2 && !until.hasExpired()) {
        session().lookAfter();
        QThread::yieldCurrentThread();
    }
    ASSERT_EQ(proxy->lines(), 2) << "nobody has waited for the silent one";
    EXPECT_EQ(seven(), 7);
}

TEST_F(FaultTest, AClickThatComesBeforeThatAsksFirstAndLosesNothing) {
    const QString before = lot();
    postgres::Limits limits;
    limits.quietMs = 0;
    limits.knockMs = 20;
    session(limits);
    for (const char* expected : {"x", "xx"}) {
        proxy->fallSilent();
        EXPECT_EQ(session().runOne(lengthened(), Access::Changes, {}).integer(0, 0), 7);
        EXPECT_EQ(lot(), QLatin1String(expected) + before) << "once, over a new line";
    }
    EXPECT_EQ(proxy->lines(), 3);
    proxy->fallSilent();
    session().control("BEGIN READ WRITE", {});
    session().control("ROLLBACK", {});
    EXPECT_EQ(proxy->lines(), 4) << "nor does a span begin on it";
}

TEST_F(FaultTest, ALineThatAnswersStaysTheSame) {
    postgres::Limits limits;
    limits.quietMs = 0;
    session(limits);
    proxy->takeTrips();
    for (int time = 0; time < 3; ++time) {
        session().lookAfter();
        EXPECT_EQ(seven(), 7) << "behind an answer that is still due";
    }
    session().lookAfter();
    session().lookAfter();
    EXPECT_EQ(proxy->lines(), 1);
    EXPECT_GT(proxy->takeTrips(), 3) << "it was asked";
}

TEST_F(FaultTest, NothingGoesByALineThatTakesTheNextOnesPlaceUnfit) {
    QString why;
    std::size_t answers = 0;
    session().setAdmission({{"SELECT 1"}, {"SELECT 2"}}, [&](const std::vector<postgres::Result>& given) {
        answers = given.size();
        EXPECT_EQ(given.back().integer(0, 0), 2);
        return why;
    });
    EXPECT_EQ(seven(), 7) << "the line that is open is not asked";
    EXPECT_EQ(answers, 0U);
    why = u"not this one"_s;
    const QString before = lot();
    proxy->cut();
    for (int time = 0; time < 2; ++time) {
        const RuntimeError failure = changeFailure();
        EXPECT_EQ(failure.number(), error::general);
        EXPECT_EQ(failure.description(), "not this one");
        EXPECT_TRUE(session().isRefused());
    }
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::general);
    EXPECT_EQ(lot(), before);
    const int lines = proxy->lines();
    session().lookAfter();
    EXPECT_EQ(proxy->lines(), lines) << "nor is another one opened in the background";
    why.clear();
    EXPECT_EQ(seven(), 7);
    EXPECT_FALSE(session().isRefused());
    EXPECT_EQ(answers, 2U);
    session().setAdmission({{"SELECT nothing"}}, [](const auto&) { return QString(); });
    proxy->cut();
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::general) << "nor where it can't be asked";
}

// Waiting.

TEST_F(FaultTest, WhoIsNotPatientOpensNoLineAndTakesOneThatIsThere) {
    session();
    listener->patient = false;
    EXPECT_EQ(seven(), 7) << "a line that stands needs no patience";
    proxy->cut();
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::deviceIo);
    EXPECT_EQ(proxy->lines(), 1);
    std::int64_t found = 0;
    const QDeadlineTimer until(support::patience);
    while (found == 0 && !until.hasExpired()) {
        session().lookAfter();
        try {
            found = seven();
        } catch (const RuntimeError&) {
            QThread::msleep(10);
        }
    }
    EXPECT_EQ(found, 7);
    EXPECT_EQ(proxy->lines(), 2);
}

TEST_F(FaultTest, WhoIsNotPatientDoesNotWaitForTheEndOfWhatIsStopped) {
    const int forEver = 3'600'000;
    postgres::Limits limits;
    limits.stopMs = limits.answerMs = forEver;
    limits.quietStopMs = 1;
    session(limits);
    proxy->arm("SELECT 7", Fault::FallSilent);
    listener->patient = false;
    listener->turn = [] { return false; };
    EXPECT_EQ(failureOf([&] { seven(); }).number(), error::permissionDenied);
    EXPECT_LT(listener->lastWaited, forEver);
}

TEST_F(FaultTest, WhoeverKeepsTheWindowsAliveHasTurns) {
    session();
    listener->turns = listener->ends = 0;
    proxy->delay(150);
    EXPECT_EQ(seven(), 7);
    EXPECT_GT(listener->turns, 1);
    EXPECT_GT(listener->lastWaited, 0);
    EXPECT_EQ(listener->ends, 1);
}

TEST_F(FaultTest, NothingRunsWhileAStatementIsUnderWay) {
    const QString before = lot();
    session();
    std::vector<std::int32_t> numbers;
    listener->turn = [&] {
        listener->turn = {};
        numbers.push_back(changeFailure().number());
        numbers.push_back(failureOf([&] { seven(); }).number());
        numbers.push_back(failureOf([&] { session().control("BEGIN READ WRITE", {}); }).number());
        session().lookAfter();
        return true;
    };
    proxy->delay(150);
    EXPECT_EQ(session().runOne({"SELECT 8"}, Access::Reads, {}).integer(0, 0), 8);
    EXPECT_EQ(numbers, std::vector<std::int32_t>(3, error::permissionDenied));
    EXPECT_EQ(lot(), before);
    EXPECT_EQ(seven(), 7) << "and the line is as it was";
    EXPECT_EQ(proxy->lines(), 1);
}

TEST_F(FaultTest, TheUserEndsAWaitAndTheLineStays) {
    postgres::Limits limits;
    limits.stopMs = limits.answerMs = 120000;
    session(limits);
    const auto process = [this] {
        return session().runOne({"SELECT pg_backend_pid()"}, Access::Reads, {}).integer(0, 0);
    };
    const std::int64_t before = process();
    // A request to end what the server has not begun yet ends nothing.
    int sightings = 0;
    listener->turn = [&] {
        sightings +=
            stored(u"SELECT count(*) FROM pg_stat_activity WHERE state = 'active' AND query LIKE 'SELECT "
                   "count(*) FROM generate%'"_s) == "1"_L1
                ? 1
                : 0;
        return sightings < 3;
    };
    const RuntimeError failure = failureOf([&] {
        session().runOne({"SELECT count(*) FROM generate_series(1, 99999) a, generate_series(1, 99999) b"},
                         Access::Reads, {});
    });
    EXPECT_EQ(failure.number(), error::permissionDenied);
    EXPECT_TRUE(failure.description().startsWith("The wait for the server was ended"_L1))
        << failure.description().toStdString();
    listener->turn = {};
    EXPECT_EQ(process(), before);
    EXPECT_EQ(proxy->lines(), 2) << "the second one brought the request to end it";
}

TEST_F(FaultTest, AChangeThatTheUserDoesNotWaitForIsNotSaved) {
    const QString before = lot();
    session();
    Transaction held(connection->engine());
    connection->execute(u"UPDATE Chemical SET chm_Notes = 'held' WHERE ChemicalID = 1"_s);
    listener->turn = [] { return false; };
    EXPECT_EQ(changeFailure().number(), error::permissionDenied);
    listener->turn = {};
    held.commit();
    EXPECT_EQ(lot(), before);
    EXPECT_EQ(seven(), 7);
}

}  // namespace
}  // namespace platform
