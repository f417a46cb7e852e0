// What the start does with records on a server: opened, no file around them, and refused where the versions do not fit.
#include "Child.h"
#include "TestProgram.h"
#include "TestServer.h"
#include "config/clsOptions.h"
#include "core/BenchWatch.h"
#include "core/DatabaseRescue.h"
#include "core/DatabaseUpdater.h"
#include "core/Health.h"
#include "core/Parts.h"
#include "core/RecordListPane.h"
#include "db/ServerUpdate.h"
#include "history/HistorySeal.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/TimeOfDay.h"
#include "platform/data/Query.h"
#include "platform/widgets/RecordList.h"
#include "records/BatchBook.h"
#include "screens/ListedTables.h"
#include "shared/basMain.h"
#include "shared/databaseInUse.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using support::runOnServer;

class ServerStartTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        const QString empty = folder.path(u"empty.mdb"_s);
        support::createDatabaseFile(empty);
        support::makeServerRecords(empty);
        basMain::Options->DBLocation(support::serverAddress());
        basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, false)](
                                      const QString& place) { return rescue->offer(place); };
    }
    /// The next window that says why there are no records.
    void declineServer() {
        asker.expectModal(u"StartQuestion"_s, [this](QWidget& window) {
            for (const auto* label : window.findChildren<QLabel*>())
                said << label->text();
            support::child<QPushButton>(window, "cmdNone")->click();
        });
    }

    QStringList said;
};

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

/// Another bench of the same server.
struct OtherBench {
    OtherBench() {
        context.connection = std::make_shared<platform::Connection>();
        context.databaseLocation = [] { return support::serverAddress(); };
    }
    Context context;
    BatchBook log{context};
};

TEST_F(ServerStartTest, TheHealthPageNamesTheBenchesInPlaceOfALock) {
    OtherBench other;
    openDB();
    openDB(other.context);
    const QString bench = currentWriter().person + u' ' + programVersion();
    QStringList names;
    for (const HealthLine& line : healthLines(context, {})) {
        names << line.name;
        EXPECT_NE(line.state, "Can not be read") << line.name.toStdString() << line.detail.toStdString();
        if (line.name == "Benches at work"_L1) {
            EXPECT_EQ(line.state, "2");
            EXPECT_EQ(line.detail, bench + u" · no mix under way\n"_s + bench + u" · no mix under way"_s);
        }
    }
    EXPECT_TRUE(names.contains(u"Benches at work"_s)) << names.join(u' ').toStdString();
    EXPECT_FALSE(names.contains(u"Lock of the program"_s));
}

TEST_F(ServerStartTest, TheHealthPageTellsWhatEachBenchMixes) {
    OtherBench other;
    openDB();
    openDB(other.context)->execute(u"INSERT INTO Formula (frm_Name) VALUES ('Cooling Gel')"_s);
    const auto key = platform::number(context.connection->engine(), u"SELECT max(FormulaID) FROM Formula"_s);
    std::optional<BenchMix> mix = BenchMix{static_cast<int>(key), platform::now()};
    BenchWatch there(other.context, [&] { return mix; });
    const QString bench = currentWriter().person + u' ' + programVersion();
    const auto told = [this] {
        for (const HealthLine& line : healthLines(context, {})) {
            if (line.name == "Benches at work"_L1)
                return line.detail;
        }
        return QString();
    };
    const QString nothing = bench + u" · no mix under way\n"_s + bench;
    const QString since = platform::timeOfDay(platform::now().time());
    there.look();
    there.look();
    EXPECT_EQ(told(), nothing + u" · mixing Cooling Gel since "_s + since);
    mix = BenchMix{0, platform::now()};
    there.look();
    EXPECT_EQ(told(), nothing + u" · mixing since "_s + since) << "a formula that is not stored";
    mix.reset();
    there.look();
    EXPECT_EQ(told(), nothing + u" · no mix under way"_s);
}

TEST_F(ServerStartTest, AMixIsToldOverALineThatWasLostMeanwhile) {
    OtherBench other;
    openDB();
    openDB(other.context);
    BenchWatch there(other.context, [] { return BenchMix{0, platform::now()}; });
    there.look();
    support::runOnWholeServer(
        u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE application_name LIKE '%@%'"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        there.look();
        const auto benches = benchesAtWork(context.connection->engine());
        return benches.size() == 2 &&
               std::count_if(benches.begin(), benches.end(),
                             [](const BenchAtWork& bench) { return bench.mix.has_value(); }) == 1;
    }));
}

TEST_F(ServerStartTest, AMixerOfTheSameNumberAtAnotherBenchIsTold) {
    BatchBook mine(context);
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "") << "no records are open, and none are opened";
    EXPECT_EQ(context.connection->state(), 0);
    openDB();
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "");
    EXPECT_EQ(mine.otherBenchWith(u"SV0426"_s), "") << "asked once more";
    OtherBench second;
    openDB(second.context);
    EXPECT_EQ(second.log.otherBenchWith(u"SV0426"_s), currentWriter().person);
    EXPECT_EQ(second.log.otherBenchWith(u"SV0427"_s), "");
    EXPECT_EQ(mine.otherBenchWith(u"SV0427"_s), currentWriter().person);
    context.connection->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.log.otherBenchWith(u"SV0426"_s).isEmpty(); }))
        << "the program there has ended";
}

TEST_F(ServerStartTest, ANameIsGivenUpAndKeptByAnother) {
    OtherBench second;
    platform::Engine &mine = openDB()->engine(), &theirs = openDB(second.context)->engine();
    EXPECT_TRUE(mine.keepName(u"x"_s));
    EXPECT_FALSE(theirs.keepName(u"x"_s));
    theirs.giveUpName(u"x"_s);
    EXPECT_FALSE(theirs.keepName(u"x"_s)) << "not theirs to give up";
    EXPECT_EQ(theirs.nameKeeper(u"x"_s), currentWriter().person + u' ' + programVersion());
    mine.giveUpName(u"x"_s);
    EXPECT_EQ(theirs.nameKeeper(u"x"_s), "");
    EXPECT_TRUE(theirs.keepName(u"x"_s));
    EXPECT_FALSE(mine.keepName(u"x"_s));
}

TEST_F(ServerStartTest, ABatchThatAnotherBenchHasDeletedIsNotOfferedAgain) {
    OtherBench other;
    const auto theirs = openDB(other.context);
    const LogBook::Batch batch{u"SV0426'0012"_s, u"2026-03-07 14:05:09"_s};
    theirs->execute(u"INSERT INTO Log (log_Name, log_Date, log_Lot) VALUES ('Gel', '3/7/2026 2:05:09 PM', "
                    "'SV0426''0012')"_s);
    BatchBook mine(context);
    EXPECT_FALSE(mine.isArchived(batch));
    theirs->execute(u"DELETE FROM Log WHERE log_Name = 'Gel'"_s);
    EXPECT_TRUE(mine.isArchived(batch));
    EXPECT_FALSE(mine.isArchived({u"SV0426'0013"_s, batch.second}));
}

struct PatientScreen : ListedScreen {
    ListedTable listedTable() const override { return listedPatients(); }
    std::int16_t shownKey() const override { return 0; }
    SetPlace setPlace() const override { return {}; }
    bool canLeaveRecord() const override { return true; }
    void showRecord(std::int16_t) override {}
};

TEST_F(ServerStartTest, TheRecordListShowsWhatAnotherBenchAdds) {
    openDB();
    OtherBench other;
    PatientScreen screen;
    platform::RecordList list;
    RecordListPane pane(context, list);
    BenchWatch others(context, [] { return std::nullopt; });
    QObject::connect(&others, &BenchWatch::looked, &pane, &RecordListPane::follow);
    pane.setScreen(&screen);
    pane.setShown(true);
    const auto rows = [&] { return list.model().rowCount(); };
    const auto stored = [] { return runOnServer(u"SELECT count(*) FROM \"Patient\""_s)[0][0].toInt(); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == stored(); }));
    const int before = rows();
    openDB(other.context)->execute(u"INSERT INTO Patient (pat_LName) VALUES ('Doe')"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == before + 1; })) << rows();
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
