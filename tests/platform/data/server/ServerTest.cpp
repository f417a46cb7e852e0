// What a server alone can do to its client: refuse it, be in use, go away.
#include "../DataTest.h"
#include "TestServer.h"
#include "platform/data/Overtaken.h"
#include "platform/data/Query.h"
#include "platform/data/Transaction.h"
#include "platform/data/postgres/Session.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// How many of the next waits a signal ends.
std::atomic<int> signalsToCome = 0;

}  // namespace

/// In the place of the system's own.
extern "C" int poll(pollfd* sockets, nfds_t count, int timeout) {
    if (timeout > 0 && signalsToCome.exchange(std::max(0, signalsToCome - 1)) > 0) {
        errno = EINTR;
        return -1;
    }
    return static_cast<int>(syscall(SYS_poll, sockets, count, timeout));
}

namespace platform {
namespace {

class ServerTest : public DataTest {
protected:
    RuntimeError openFailure(const QString& address) const {
        return failureOf([&] { Connection().open(source(address)); });
    }
    void setLot(const char* lot) const {
        connection->execute(
            u"UPDATE Chemical SET chm_Lot = '%1' WHERE ChemicalID = 1"_s.arg(QLatin1String(lot)));
    }
    QString lot() const { return stored(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s); }
    /// As when the server is started anew.
    void throwOut() const {
        support::runOnWholeServer(
            u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE usename = 'bench'"_s);
    }
};

TEST_F(ServerTest, ADatabaseAccountOrServerThatIsNotThereIsNotOpened) {
    EXPECT_EQ(openFailure(location().replace(u"/sorvanto?"_s, u"/other?"_s)).number(), error::cannotOpen);
    EXPECT_EQ(openFailure(location().replace(u"bench@"_s, u"nobody@"_s)).number(), error::cannotOpen);
    EXPECT_EQ(openFailure(location().replace(u"port=5432"_s, u"port=5433"_s)).number(), error::cannotOpen);
    EXPECT_EQ(openFailure(location().replace(u"bench@"_s, u"bench:secret@"_s)).number(), error::cannotOpen);
}

TEST_F(ServerTest, ARefusedOpeningTellsItsStateAndNoName) {
    const QString said = openFailure(location().replace(u"bench@"_s, u"nobody@"_s)).description();
    EXPECT_TRUE(said.contains("(28"_L1) || said.contains(": 28"_L1) || said.contains("  28"_L1))
        << said.toStdString();
    EXPECT_FALSE(said.contains("nobody"_L1)) << said.toStdString();
}

TEST_F(ServerTest, AServerWithoutTheTablesIsNotReady) {
    elsewhere(u"ALTER SCHEMA sorvanto RENAME TO moved"_s);
    EXPECT_EQ(openFailure(location()).number(), error::general);
}

TEST_F(ServerTest, TheConnectionIsSetWhateverTheAccountWouldHaveIt) {
    support::runOnWholeServer(u"ALTER ROLE bench SET DateStyle = 'German'"_s);
    support::runOnWholeServer(u"ALTER ROLE bench SET search_path = 'public'"_s);
    connection->close();
    open();
    EXPECT_EQ(rows(u"SELECT log_Date FROM Log"_s)->value(0),
              QVariant(QDateTime(QDate(2026, 8, 31), QTime(9, 12, 40), Qt::UTC)));
    support::runOnWholeServer(u"ALTER ROLE bench RESET ALL"_s);
}

TEST_F(ServerTest, NoStatementIsCompiled) {
    postgres::Session session(support::serverAddress());
    EXPECT_EQ(session.runOne({"SHOW jit"}, postgres::Access::Reads, {}).bytes(0, 0), "off");
}

TEST_F(ServerTest, ASignalDuringAWaitBreaksNoLine) {
    postgres::Session session(support::serverAddress());
    const int before = session.connectionNumber();
    signalsToCome = 3;
    EXPECT_EQ(session.runOne({"SELECT 7"}, postgres::Access::Changes, {}).integer(0, 0), 7);
    EXPECT_EQ(signalsToCome, 0) << "they came";
    EXPECT_EQ(session.connectionNumber(), before);
}

TEST_F(ServerTest, TheEndOfASpanInWhichAStatementFailedIsNoSuccess) {
    postgres::Session session(support::serverAddress());
    session.control("BEGIN READ WRITE", {});
    EXPECT_THROW(session.control("SELECT 1/0", {}), RuntimeError);
    const RuntimeError failure = failureOf([&] { session.control("COMMIT", u"the save"_s); });
    EXPECT_EQ(failure.number(), error::statement);
    EXPECT_EQ(failure.statement(), "the save");
}

TEST_F(ServerTest, ACommittedSpanIsKeptAndALeftOneTakenBack) {
    const QString before = lot();
    {
        const Transaction left(connection->engine());
        setLot("LEFT");
    }
    EXPECT_EQ(lot(), before);
    {
        Transaction outer(connection->engine());
        setLot("OUTER");
        {
            const Transaction left(connection->engine());
            setLot("LEFT");
        }
        EXPECT_EQ(numberOf(u"UPDATE Chemical SET nothing = 1"_s), error::statement);
        EXPECT_EQ(rows(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s)->value(0).toString(), "OUTER");
        EXPECT_EQ(lot(), before) << "not yet for others";
        outer.commit();
    }
    EXPECT_EQ(lot(), "OUTER");
}

TEST_F(ServerTest, ARowThatAnotherHoldsIsNotWaitedForLong) {
    const ConnectionPtr other = std::make_shared<Connection>();
    other->open(source(location()));
    const Transaction held(other->engine());
    other->execute(u"UPDATE Chemical SET chm_Lot = 'HELD' WHERE ChemicalID = 1"_s);
    EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID = 1"_s), error::permissionDenied);
}

TEST_F(ServerTest, ASpanOfOneMomentSeesNothingLaterAndOverwritesNothing) {
    const auto read = [&] {
        return rows(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"_s)->value(0).toString();
    };
    const QString before = lot();
    connection->engine().tellWriter({u"rkent@bench2"_s, u"1.0"_s, {}});  // one chain of history a bench
    {
        Transaction whole(connection->engine(), {}, Sees::OneMoment);
        connection->execute(u"UPDATE Chemical SET chm_Lot = 'OTHERS' WHERE ChemicalID = 2"_s);
        elsewhere(u"UPDATE \"Chemical\" SET \"chm_Lot\" = 'LATER' WHERE \"ChemicalID\" = 1"_s);
        EXPECT_EQ(read(), before);
        bool overtaken = false;
        try {
            setLot("MINE");
        } catch (const Overtaken& failure) {
            overtaken = true;
            EXPECT_EQ(failure.number(), error::permissionDenied);
            EXPECT_TRUE(
                failure.description().startsWith("Another bench has changed the records meanwhile"_L1));
        }
        EXPECT_TRUE(overtaken);
        EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID = 1"_s),
                  error::permissionDenied)
            << "nor by trying again";
    }
    EXPECT_EQ(lot(), "LATER");
    EXPECT_NE(stored(u"SELECT chm_Lot FROM Chemical WHERE ChemicalID = 2"_s), "OTHERS") << "all or nothing";
    Transaction again(connection->engine(), {}, Sees::OneMoment);
    EXPECT_EQ(read(), "LATER");
    setLot("MINE");
    again.commit();
    EXPECT_EQ(lot(), "MINE");
}

TEST_F(ServerTest, ASpanOfTheLatestFollowsWhatOthersKeep) {
    Transaction span(connection->engine());
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
    elsewhere(u"UPDATE \"Chemical\" SET \"chm_Lot\" = 'LATER' WHERE \"ChemicalID\" = 1"_s);
    EXPECT_EQ(connection->execute(u"UPDATE Chemical SET chm_Lot = 'MINE' & [chm_Lot] WHERE ChemicalID = 1"_s),
              1);
    span.commit();
    EXPECT_EQ(lot(), "MINELATER");
}

TEST_F(ServerTest, AHeldRowIsChangedByNobodyElseUntilTheSpanEnds) {
    const ConnectionPtr other = std::make_shared<Connection>();
    other->open(source(location()));
    {
        const Transaction held(other->engine());
        other->engine().holdRow(u"Chemical"_s, 1);
        EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID = 1"_s),
                  error::permissionDenied);
        EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID = 2"_s), 0);
    }
    EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x' WHERE ChemicalID = 1"_s), 0);
}

TEST_F(ServerTest, WhatReadsIsTriedOnceMoreOverANewConnection) {
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
    throwOut();
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
}

TEST_F(ServerTest, AChangeAfterTheServerWasStartedAnewIsMade) {
    throwOut();
    setLot("LATER");
    EXPECT_EQ(lot(), "LATER");
}

TEST_F(ServerTest, ASpanWhoseLineIsLostIsTakenBackAndNothingStaysOpen) {
    const QString before = lot();
    const RuntimeError failure = failureOf([&] {
        Transaction span(connection->engine(), u"the statement"_s);
        setLot("LOST");
        throwOut();
        span.commit();
    });
    EXPECT_EQ(failure.number(), error::deviceIo);
    EXPECT_TRUE(failure.description().endsWith("the change was not saved"_L1))
        << failure.description().toStdString();
    EXPECT_EQ(lot(), before);
    setLot("LATER");
    EXPECT_EQ(lot(), "LATER");
}

TEST_F(ServerTest, RefusedChangesAreThoseOfAFileThatIsReadOnly) {
    connection->engine().refuseChanges();
    EXPECT_TRUE(connection->isReadOnly());
    EXPECT_EQ(numberOf(u"UPDATE Chemical SET chm_Lot = 'x'"_s), error::permissionDenied);
    EXPECT_EQ(failureOf([&] { const Transaction span(connection->engine()); }).number(),
              error::permissionDenied);
    EXPECT_EQ(rows(u"SELECT LogID FROM Log"_s)->recordCount(), 12);
}

TEST_F(ServerTest, ASearchTextReachesNoTableOfTheServer) {
    for (const char* text :
         {"x') UNION SELECT 1, rolname FROM pg_authid WHERE (rolname Like '",
          "x') UNION SELECT 1, relname FROM [pg_class] WHERE (relname Like '",
          "x') UNION SELECT 1, table_name FROM information_schema.tables WHERE (table_name Like '",
          "x') OR EXISTS (SELECT 1 FROM pg_catalog.pg_roles) OR ([frm_Name] Like '",
          "x') OR ([pg_sleep](9) IS NULL) OR ([frm_Name] Like '",
          "x') OR (current_user = 'bench') OR ([frm_Name] Like '",
          "x') OR EXISTS (SELECT 1 FROM generate_series(1, 9)) OR ([frm_Name] Like '",
          "x'); COMMIT; DELETE FROM Log; --"}) {
        const QString statement =
            u"SELECT [FormulaID],[frm_Name] FROM [Formula] WHERE ([frm_Name] Like '%1%')"_s.arg(
                QString::fromLatin1(text));
        for (const CursorLocation location : {CursorLocation::Default, CursorLocation::Client})
            EXPECT_EQ(failureOf([&] { rows(statement, location); }).number(), error::statement) << text;
    }
}

TEST_F(ServerTest, ALongAliasIsRestored) {
    const QString name =
        u"Bezeichnung der Rezeptur, wie sie auf dem Etikett und im Bericht erscheint (Kurzfassung é)"_s;
    const RecordsetPtr set = rows(u"SELECT FormulaID, frm_Name AS [%1] FROM Formula"_s.arg(name));
    EXPECT_EQ(set->fieldInfo(1).name, name);
    EXPECT_EQ(set->fieldInfo(1).baseColumn, "frm_Name");
}

TEST_F(ServerTest, TheChangesOfOthersAreSeen) {
    const std::int64_t before = connection->changeState();
    EXPECT_EQ(connection->changeState(), before);
    elsewhere(u"UPDATE Chemical SET chm_Notes = 'seen' WHERE ChemicalID = 1"_s);
    EXPECT_NE(connection->changeState(), before);
}

TEST_F(ServerTest, ABenchCanNotMigrate) {
    EXPECT_EQ(connection->engine().version(), 0);
    EXPECT_EQ(failureOf([&] {
                  connection->engine().migrate({u"CREATE TABLE x (y integer)"_s}, 7, u"x"_s);
              }).number(),
              error::permissionDenied);
    EXPECT_EQ(connection->engine().version(), 0);
}

}  // namespace
}  // namespace platform
