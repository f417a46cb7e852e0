// Real programs that keep their records on a real server: one from its start to a signed batch, and two at once.
#include "Bench.h"
#include "Display.h"
#include "support/TestServer.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <array>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int mixerSpeed = 200;
constexpr int longestDesk = 300'000;
constexpr int batchesOfTheSample = 12, linesOfABatch = 3;

/// A bench with a screen of its own: two windows on one would take the keys from each other.
class ServerBench : public Bench {
public:
    bool layOut(const QString& serial) {
        QFile options(path(u"options.xml"_s));
        return m_display.start() && Bench::layOut(mixerSpeed, serial) && options.open(QIODevice::WriteOnly) &&
               options.write(this->options(support::serverAddress()).toUtf8()) > 0;
    }

    void start(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.insert(u"DISPLAY"_s, m_display.name());
        environment.remove(u"WAYLAND_DISPLAY"_s);
        m_tour.setProcessEnvironment(environment);
        m_tour.start(executable(u"sorvanto-tour"_s), QStringList{folder()} + arguments);
    }

    /// The lots of the batches that it made.
    QStringList end() {
        const bool ended = m_tour.waitForFinished(longestDesk);
        EXPECT_TRUE(ended) << "The tour hangs.";
        if (!ended) {
            m_tour.kill();
            m_tour.waitForFinished();
        }
        EXPECT_EQ(m_tour.exitCode(), 0) << m_tour.readAllStandardError().toStdString();
        return QString::fromUtf8(m_tour.readAllStandardOutput()).split('\n'_L1, Qt::SkipEmptyParts);
    }

private:
    Display m_display;
    QProcess m_tour;
};

class ServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        const QTemporaryDir folder;
        const QString sample = folder.filePath(u"sample.mdb"_s);
        ASSERT_EQ(QProcess::execute(Bench::executable(u"sorvanto-db"_s), {u"sample"_s, sample}), 0);
        support::makeServerRecords(sample);
    }

    static std::string sql(const QString& statement) {
        return support::rowsText(support::runOnServer(statement)).trimmed().toStdString();
    }
    static int count(const QString& what) {
        return QString::fromStdString(sql(u"SELECT count(*) FROM "_s + what)).toInt();
    }
    /// Whether nothing is left that a bench would still offer for the log.
    static bool hasLoggedAll(const ServerBench& bench) {
        return QDir(bench.path(u"mixes"_s)).entryList(QDir::Files).isEmpty();
    }
};

TEST_F(ServerTest, TheProgramWorksFromItsStartToASignedBatch) {
    ServerBench bench;
    ASSERT_TRUE(bench.layOut(u"SV0426"_s));
    bench.start({u"--bench"_s, u"1"_s, u"--description"_s, u"Changed at the bench"_s});
    const QStringList lots = bench.end();
    ASSERT_EQ(lots.size(), 1);
    EXPECT_EQ(sql(u"SELECT \"frm_Desc\" FROM \"Formula\" WHERE \"FormulaID\" = 1"_s), "Changed at the bench");
    EXPECT_EQ(
        sql(u"SELECT \"log_Name\", \"log_Quantity\", \"log_Lot\", \"log_Initials\", \"log_Verified\" FROM \"Log\" "
            "ORDER BY \"LogID\" DESC LIMIT 1"_s),
        "Hydrocortisone 1% Cream|35|" + lots[0].toStdString() + "|MR|JT");
    EXPECT_EQ(count(u"\"LogChem\" WHERE \"LogID\" = (SELECT max(\"LogID\") FROM \"Log\")"_s), linesOfABatch);
    EXPECT_TRUE(hasLoggedAll(bench));
    // The trigger has written down who it was, and sealed it.
    EXPECT_EQ(count(u"\"History\" WHERE \"hst_Deed\" = 'signed' AND \"hst_Person\" LIKE '%@%' AND "
                    "\"hst_Program\" <> 'outside' AND \"hst_Seal\" IS NOT NULL"_s),
              1 + linesOfABatch);
    EXPECT_EQ(count(u"\"History\" WHERE \"hst_Table\" = 'Formula' AND \"hst_What\" = 'changed' AND "
                    "\"hst_Program\" <> 'outside' AND \"hst_Fields\" LIKE '%Changed at the bench%'"_s),
              1);
    EXPECT_FALSE(QFile::exists(bench.path(u"sorvanto.mdb"_s))) << "no file was made";
}

TEST_F(ServerTest, TwoBenchesMakeTenBatchesAtOnceAndNoneIsLostOrDoubled) {
    constexpr int batches = 5;
    std::array<ServerBench, 2> benches;
    ASSERT_TRUE(benches[0].layOut(u"SV0001"_s));
    ASSERT_TRUE(benches[1].layOut(u"SV0002"_s));
    for (ServerBench& bench : benches)
        bench.start({u"--bench"_s, QString::number(batches), u"--description"_s, bench.folder()});
    const QStringList lots = benches[0].end() + benches[1].end();
    EXPECT_EQ(lots.size(), 2 * batches);
    EXPECT_EQ(QSet<QString>(lots.begin(), lots.end()).size(), 2 * batches) << lots.join(' ').toStdString();
    EXPECT_EQ(count(u"\"Log\""_s), batchesOfTheSample + 2 * batches);
    for (const QString& lot : lots) {
        EXPECT_EQ(count(u"\"Log\" WHERE \"log_Lot\" = '%1'"_s.arg(lot)), 1) << lot.toStdString();
        EXPECT_EQ(count(u"\"LogChem\" JOIN \"Log\" USING (\"LogID\") WHERE \"log_Lot\" = '%1'"_s.arg(lot)),
                  linesOfABatch)
            << lot.toStdString();
    }
    for (const ServerBench& bench : benches)
        EXPECT_TRUE(hasLoggedAll(bench));
    EXPECT_EQ(count(u"\"History\" WHERE \"hst_Deed\" = 'signed' AND \"hst_Seal\" IS NULL"_s), 0);
    EXPECT_EQ(count(u"\"History\" WHERE \"hst_Deed\" = 'signed'"_s), 2 * batches * (1 + linesOfABatch));
}

}  // namespace
}  // namespace e2e
