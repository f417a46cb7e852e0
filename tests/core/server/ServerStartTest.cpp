// What the start does with records on a server: opened, no file around them, and refused where the versions do not fit.
#include "ServerStartTest.h"
#include "core/DatabaseUpdater.h"
#include "core/Parts.h"
#include "db/ServerUpdate.h"
#include "history/HistorySeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"
#include "shared/databaseInUse.h"
#include "support/Waiting.h"

#include <QDir>
#include <QTest>

namespace sorvanto {
namespace {

using support::runOnServer;

TEST_F(ServerStartTest, OpensTheServerOfTheOptions) {
    const auto connection = openDB();
    ASSERT_EQ(connection->state(), 1);
    EXPECT_TRUE(connection->isServer());
    EXPECT_EQ(connection->file(), "");
    EXPECT_EQ(databaseOpen(context), support::serverAddress());
    EXPECT_EQ(databaseIdentity(context).size(), 32);
    EXPECT_EQ(basMain::Options->DBVersion(), "1.2");
    connection->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Doe')"_s);
    const auto history = runOnServer(
        u"SELECT \"hst_Program\" FROM \"History\" WHERE \"hst_Table\" = 'Patient' AND \"hst_Name\" = 'Doe'"_s);
    ASSERT_EQ(history.size(), 1U);
    EXPECT_EQ(history[0][0], programVersion());
}

TEST_F(ServerStartTest, NothingIsDoneToFilesAroundIt) {
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    Parts parts = realParts(context);
    openDB();
    const InstanceState state = parts.previousInstance();
    EXPECT_FALSE(state.runs);
    EXPECT_EQ(state.readingOnly, "");
    folder.write(u"dbupdate.xml"_s,
                 "<DatabaseUpdates><Step From='1.2' To='1.3'><Statement>DROP TABLE Log</Statement></Step>"
                 "</DatabaseUpdates>");
    QString version = u"1.2"_s;
    bool applied = true;
    DatabaseUpdater().ApplyUpdates(openDB(), folder.path(u"dbupdate.xml"_s), version, applied);
    EXPECT_FALSE(applied);
    EXPECT_FALSE(folder.has(u"backups"_s));
    QStringList after = QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString& own : {u"dbupdate.xml"_s, u"running.lock"_s, u"sorvanto.lock"_s})
        after.removeAll(own);
    EXPECT_EQ(after, before);
}

TEST_F(ServerStartTest, TwoProgramsMayWorkAtOnce) {
    Parts one = realParts(context);
    openDB();
    EXPECT_FALSE(one.previousInstance().runs);
    const support::TempProgramFolder elsewhere;
    Parts other = realParts(context);
    const InstanceState second = other.previousInstance();
    EXPECT_FALSE(second.runs);
    EXPECT_EQ(second.readingOnly, "");
}

TEST_F(ServerStartTest, AProgramThatIsTooOldIsToldWhichOneItNeeds) {
    runOnServer(
        u"UPDATE \"Options\" SET \"opt_Version\" = 1.3; CREATE OR REPLACE FUNCTION needs_program() RETURNS text "
        "LANGUAGE sql IMMUTABLE AS 'SELECT ''2.7.1'''"_s);
    declineServer();
    EXPECT_EQ(openDB()->state(), 0);
    EXPECT_EQ(expectReport("frmMain:openDB").number, QString::number(platform::error::general));
    EXPECT_TRUE(said.contains(
        "The records on the server belong to a newer program. This computer needs version 2.7.1 of it."))
        << said.join('\n').toStdString();
}

TEST_F(ServerStartTest, RecordsThatAreTooOldAreToldWithWhatToRun) {
    runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 1.1"_s);
    declineServer();
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    EXPECT_TRUE(said.join('\n').contains("sorvanto-db update")) << said.join('\n').toStdString();
}

TEST_F(ServerStartTest, RecordsThatAreBeingUpdatedAreNotOpened) {
    platform::Connection updater;
    updater.open(u"Data Source="_s + support::serverAddress());
    ASSERT_EQ(platform::number(updater.engine(), u"SELECT CAST(pg_try_advisory_lock(2, 0) AS int)"_s), 1);
    declineServer();
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    updater.close();
    context.serverWait.end();
    EXPECT_EQ(openDB()->state(), 1);
}

TEST_F(ServerStartTest, AServerIsWaitedForUntilItsRecordsAreForThisProgram) {
    const auto isBack = [] {
        ServerWait wait;
        wait.begin(support::serverAddress());
        const bool asked = QTest::qWaitFor([&] { return wait.hasAsked(); }, 60'000);
        EXPECT_TRUE(asked);
        return wait.isOver(support::serverAddress());
    };
    EXPECT_TRUE(isBack());
    runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 1.3"_s);
    EXPECT_FALSE(isBack());
    runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 1.2"_s);
    platform::Connection updater;
    updater.open(u"Data Source="_s + support::serverAddress());
    ASSERT_EQ(platform::number(updater.engine(), u"SELECT CAST(pg_try_advisory_lock(2, 0) AS int)"_s), 1);
    EXPECT_FALSE(isBack()) << "they are being brought up to date";
    updater.close();
    EXPECT_TRUE(QTest::qWaitFor(isBack, 60'000));
}

class ServerUpdateTest : public ServerStartTest {
protected:
    void SetUp() override {
        ServerStartTest::SetUp();
        folder.write(u"steps.xml"_s,
                     "<DatabaseUpdates>"
                     "<Step From='1.2' To='1.3'><Statement>DROP TABLE Log</Statement></Step>"
                     "<Step From='1.2' To='1.3' Engine='server'>"
                     "<Statement>CREATE TABLE \"Shelf\" (\"shl_Name\" text)</Statement>"
                     "<Statement>CREATE OR REPLACE FUNCTION needs_program() RETURNS text LANGUAGE sql AS "
                     "$$SELECT '2.0'; SELECT '2.1'$$</Statement></Step></DatabaseUpdates>");
    }
    /// As when the server is started anew.
    static void throwOut() {
        support::runOnWholeServer(
            u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE usename = 'bench'"_s);
    }
    ServerUpdate update(const QString& account) {
        return updateServer(support::serverAddress().replace(u"bench@"_s, account + u'@'),
                            folder.path(u"steps.xml"_s));
    }
    /// Empty where it was not refused.
    QString refusal(const QString& account) {
        try {
            update(account);
        } catch (const platform::RuntimeError& failure) {
            EXPECT_EQ(failure.number(), platform::error::permissionDenied);
            return failure.description();
        }
        return {};
    }
};

TEST_F(ServerUpdateTest, WaitsForNobodyAndNamesTheBenchThatIsAtWork) {
    openDB();
    EXPECT_TRUE(refusal(u"sorvanto_admin"_s).contains(currentWriter().person));
    context.connection->close();
    const ServerUpdate done = update(u"sorvanto_admin"_s);
    EXPECT_EQ(done.from + u' ' + done.to, "1.2 1.3");
    EXPECT_EQ(runOnServer(u"SELECT count(*) FROM \"Shelf\""_s)[0][0], "0");
    EXPECT_EQ(update(u"sorvanto_admin"_s).to, "1.3") << "nothing is left to be done";
    declineServer();
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    EXPECT_TRUE(said.join(u'\n').contains(u"needs version 2.1 of it"_s)) << said.join(u'\n').toStdString();
}

TEST_F(ServerUpdateTest, AProgramWhoseLineBrokeMeanwhileIsToldWhichOneItNeeds) {
    openDB();
    throwOut();
    ASSERT_EQ(update(u"sorvanto_admin"_s).to, "1.3");
    for (int time = 0; time < 2; ++time) {
        try {
            context.connection->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Late')"_s);
            FAIL() << "it went on";
        } catch (const platform::RuntimeError& failure) {
            EXPECT_EQ(failure.number(), platform::error::general);
            EXPECT_EQ(failure.description(),
                      "The records on the server belong to a newer program; version 2.1 of it is needed");
        }
    }
    EXPECT_EQ(runOnServer(u"SELECT count(*) FROM \"Patient\" WHERE \"pat_LName\" = 'Late'"_s)[0][0], "0");
    declineServer();
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    EXPECT_TRUE(said.join(u'\n').contains(u"needs version 2.1 of it"_s)) << said.join(u'\n').toStdString();
}

TEST_F(ServerUpdateTest, AProgramWhoseLineBrokeWorksOnNothingThatIsBeingUpdated) {
    const auto change = [] { openDB()->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Late')"_s); };
    openDB();
    throwOut();
    platform::Connection updater;
    updater.open(u"Data Source="_s + support::serverAddress());
    ASSERT_EQ(platform::number(updater.engine(), u"SELECT CAST(pg_try_advisory_lock(2, 0) AS int)"_s), 1);
    EXPECT_THROW(change(), platform::RuntimeError);
    EXPECT_TRUE(context.connection->engine().isRefused());
    updater.close();
    EXPECT_TRUE(support::waitFor([&] {
        return runOnServer(u"SELECT count(*) FROM pg_locks WHERE locktype = 'advisory'"_s)[0][0] == "0"_L1;
    }));
    change();
    EXPECT_EQ(runOnServer(u"SELECT count(*) FROM \"Patient\" WHERE \"pat_LName\" = 'Late'"_s)[0][0], "1");
}

TEST_F(ServerUpdateTest, IsForTheOwnerAlone) {
    EXPECT_TRUE(refusal(u"bench"_s).contains(u"sorvanto_owner"_s));
    EXPECT_EQ(runOnServer(u"SELECT \"opt_Version\" FROM \"Options\""_s)[0][0], "1.2");
}

TEST_F(ServerUpdateTest, AStepThatFailsLeavesAllAsItWas) {
    folder.write(u"steps.xml"_s, "<DatabaseUpdates><Step From='1.2' To='1.3' Engine='server'>"
                                 "<Statement>CREATE TABLE \"Shelf\" (\"shl_Name\" text)</Statement>"
                                 "<Statement>CREATE TABLE nonsense</Statement></Step></DatabaseUpdates>");
    EXPECT_THROW(update(u"sorvanto_admin"_s), platform::RuntimeError);
    EXPECT_EQ(runOnServer(u"SELECT count(*) FROM pg_class WHERE relname = 'Shelf'"_s)[0][0], "0");
    EXPECT_EQ(runOnServer(u"SELECT \"opt_Version\" FROM \"Options\""_s)[0][0], "1.2");
}

}  // namespace
}  // namespace sorvanto
