// What the start does with records on a server: opened, no file around them, and refused where the versions do not fit.
#include "Child.h"
#include "TestProgram.h"
#include "TestServer.h"
#include "config/clsOptions.h"
#include "core/DatabaseRescue.h"
#include "core/DatabaseUpdater.h"
#include "core/Health.h"
#include "core/Parts.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Query.h"
#include "shared/basMain.h"
#include "shared/databaseInUse.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>

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

TEST_F(ServerStartTest, TheHealthPageNeedsNoLock) {
    openDB();
    for (const HealthLine& line : healthLines(context, {})) {
        EXPECT_NE(line.state, "Can not be read") << line.name.toStdString() << line.detail.toStdString();
        if (line.name == "Lock of the program"_L1) {
            EXPECT_EQ(line.note, "Several benches work on these records");
        }
    }
}

TEST_F(ServerStartTest, AProgramThatIsTooOldIsToldWhichOneItNeeds) {
    runOnServer(u"UPDATE \"Options\" SET \"opt_Version\" = 1.3; CREATE OR REPLACE FUNCTION needs_program() RETURNS text "
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

}  // namespace
}  // namespace sorvanto
