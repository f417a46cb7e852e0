// The copy of the day of records on a server.
#include "TestProgram.h"
#include "TestServer.h"
#include "core/CopyJob.h"
#include "core/CopySettings.h"
#include "core/DailyBackup.h"
#include "core/GoodCopy.h"
#include "db/DatabaseFile.h"
#include "platform/basic/Dates.h"
#include "platform/data/Connection.h"

#include <QDir>
#include <QTest>
#include <atomic>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
constexpr int longestCopy = 60'000;  // milliseconds

class ServerCopyTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        createSample(folder.path("sample.mdb"));
        support::makeServerRecords(folder.path("sample.mdb"));
        context.connection = std::make_shared<platform::Connection>();
        context.connection->open(u"Data Source="_s + support::serverAddress());
        identity =
            support::rowsText(support::runOnServer(u"SELECT \"fid_Identity\" FROM \"FileIdentity\""_s));
    }
    QStringList copies() { return QDir(folder.path("backups")).entryList(QDir::Files, QDir::Name); }
    QString inCopy(const QString& statement) {
        return support::rowsText(support::runSql(folder.path("backups/" + copies().value(0)), statement));
    }

    QString identity;
};

TEST_F(ServerCopyTest, IsMadeWhileTheBenchWorksOn) {
    DailyBackup backup(context, 0);
    backup.startSoon();
    int done = 0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            done += static_cast<int>(
                context.connection->execute(u"UPDATE Chemical SET chm_Lot = 'W' WHERE ChemicalID = 1"_s));
            return !backup.running();
        },
        longestCopy));
    EXPECT_GT(done, 1);
    ASSERT_EQ(copies(), QStringList{"sorvanto-" + identity.left(8) + "-0001-2026-03-07-140509.mdb"});
    EXPECT_EQ(inCopy("SELECT fid_Identity FROM FileIdentity"), identity);
    EXPECT_EQ(
        inCopy(
            "SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM RXs), (SELECT seq FROM sqlite_sequence WHERE name = 'Log')"),
        "12|8|12");
    EXPECT_EQ(QFile::permissions(folder.path("backups/" + copies().first())) &
                  (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(ServerCopyTest, IsOfOneMoment) {
    std::atomic<int> questions = 0;
    const CopyJob job{.location = support::serverAddress(), .identity = identity, .moment = platform::now()};
    const auto others = [&] {
        if (++questions == 3)
            support::runOnServer(
                u"DELETE FROM \"RXs\"; DELETE FROM \"Log\"; UPDATE \"Patient\" SET \"pat_Notes\" = 'later'"_s);
        return false;
    };
    EXPECT_TRUE(makeCopy(job, others).copied);
    EXPECT_GT(questions, 3);
    EXPECT_EQ(
        inCopy(
            "SELECT (SELECT count(*) FROM Log), (SELECT count(*) FROM RXs), (SELECT count(*) FROM Patient WHERE pat_Notes = 'later')"),
        "12|8|0");
}

TEST_F(ServerCopyTest, LeavesNothingWhenItIsStopped) {
    const CopyJob job{.location = support::serverAddress(), .identity = identity, .moment = platform::now()};
    for (const int allowed : {0, 4, 8}) {
        int questions = 0;
        EXPECT_FALSE(makeCopy(job, [&] { return ++questions > allowed; }).copied);
        EXPECT_EQ(copies(), QStringList());
    }
}

TEST_F(ServerCopyTest, IsFoundByTheAddressOfTheServer) {
    CopySettings::remember(support::serverAddress(), identity);
    EXPECT_FALSE(newestGoodCopy(support::serverAddress()));
    makeCopy({.location = support::serverAddress(), .identity = identity, .moment = platform::now()}, {});
    const auto copy = newestGoodCopy(support::serverAddress());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->batches, 12);
}

}  // namespace
