// Real programs that keep their records on a real server: one from its start to a signed batch, two at once, and one whose
// server is away.
#include "Bench.h"
#include "Display.h"
#include "support/ServerProxy.h"
#include "support/TestServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <array>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int mixerSpeed = 200;
constexpr int longestDesk = 600'000;
constexpr int batchesOfTheSample = 12, linesOfABatch = 3;

/// Whether a program can be given the name of another computer.
bool canNameComputers() {
    static const bool can =
        QProcess::execute(u"unshare"_s, {u"--map-root-user"_s, u"--uts"_s, u"true"_s}) == 0;
    return can;
}

/// A bench with a screen of its own: two windows on one would take the keys from each other.
class ServerBench : public Bench {
public:
    /// name: of its computer, as far as one can be given.
    bool layOut(const QString& serial, const QString& name = {}, int speed = mixerSpeed,
                const QString& server = support::serverAddress()) {
        m_name = name;
        QFile options(path(u"options.xml"_s));
        return m_display.start() && Bench::layOut(speed, serial) && options.open(QIODevice::WriteOnly) &&
               options.write(this->options(server).toUtf8()) > 0;
    }

    /// Where its pictures lie: SORVANTO_PICTURES keeps them.
    QString pictures() const {
        const QString kept = qEnvironmentVariable("SORVANTO_PICTURES");
        return kept.isEmpty() ? path(u"tour"_s) : QDir(kept).filePath(m_name.isEmpty() ? u"bench"_s : m_name);
    }

    void start(const QStringList& arguments) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.insert(u"DISPLAY"_s, m_display.name());
        environment.remove(u"WAYLAND_DISPLAY"_s);
        m_tour.setProcessEnvironment(environment);
        QStringList command{executable(u"sorvanto-tour"_s), folder(), u"--pictures"_s, pictures()};
        if (!m_name.isEmpty() && canNameComputers())
            command = QStringList{u"unshare"_s, u"--map-root-user"_s,
                                  u"--uts"_s,   u"sh"_s,
                                  u"-c"_s,      u"hostname \"$0\"; exec \"$@\""_s,
                                  m_name} +
                      command;
        m_tour.start(command.first(), command.mid(1) + arguments);
    }

    /// Until it has written that line.
    bool waitFor(const QString& line) {
        QElapsedTimer waited;
        for (waited.start(); !waited.hasExpired(longestDesk) && m_tour.state() != QProcess::NotRunning;) {
            m_said += QString::fromUtf8(m_tour.readAllStandardOutput());
            if (m_said.split('\n'_L1).contains(line))
                return true;
            m_tour.waitForReadyRead(1000);
        }
        return false;
    }

    /// The lots of the batches that it made.
    QStringList end() {
        const bool ended = m_tour.waitForFinished(longestDesk);
        if (!ended) {
            m_tour.kill();
            m_tour.waitForFinished();
        }
        m_said += QString::fromUtf8(m_tour.readAllStandardOutput());
        const std::string complaints = m_tour.readAllStandardError().toStdString();
        EXPECT_TRUE(ended) << "The tour hangs.\n" << m_said.toStdString() << complaints;
        EXPECT_EQ(m_tour.exitCode(), 0) << complaints;
        QStringList lots = m_said.split('\n'_L1, Qt::SkipEmptyParts);
        lots.removeAll(u"watching"_s);
        return lots;
    }

private:
    Display m_display;
    QProcess m_tour;
    QString m_name, m_said;
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
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
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
    ASSERT_TRUE(benches[0].layOut(u"SV0001"_s, u"bench1"_s));
    ASSERT_TRUE(benches[1].layOut(u"SV0002"_s, u"bench2"_s));
    const QString all = QString::number(batchesOfTheSample + 2 * batches);
    for (ServerBench& bench : benches)
        bench.start({u"--bench"_s, QString::number(batches), u"--description"_s, bench.folder(),
                     u"--batches-of-all"_s, all});
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
    for (const ServerBench& bench : benches)
        EXPECT_EQ(QDir(bench.pictures()).entryList({u"*-log.png"_s}).size(), 1) << "the list of all ten";
}

TEST_F(ServerTest, ABenchSeesWhatAnotherOneChangesAndMixes) {
    constexpr int slowMixer = 20;
    ServerBench watching, mixing;
    ASSERT_TRUE(watching.layOut(u"SV0001"_s, u"bench3"_s));
    ASSERT_TRUE(mixing.layOut(u"SV0002"_s, u"bench4"_s, slowMixer));
    watching.start({u"--bench"_s, u"0"_s, u"--description"_s, u"Of the first bench"_s, u"--watch"_s});
    ASSERT_TRUE(watching.waitFor(u"watching"_s));
    sql(u"SET sorvanto.person = 'jt@bench2'; SET sorvanto.program = '1.6'; UPDATE \"Formula\" SET \"frm_Desc\" = "
        "'Of the second bench' WHERE \"frm_Name\" = 'Hydrocortisone 1% Cream'"_s);
    mixing.start({u"--bench"_s, u"1"_s, u"--description"_s, u"Of the third bench"_s});
    watching.end();
    EXPECT_EQ(mixing.end().size(), 1);
    for (const char* picture : {"*-changed.png", "*-difference.png", "*-health.png"})
        EXPECT_EQ(QDir(watching.pictures()).entryList({QString::fromUtf8(picture)}).size(), 1) << picture;
}

TEST_F(ServerTest, ABatchMadeOnTheCopyIsInTheLogOnceWhenTheServerIsBack) {
    support::ServerProxy server(support::serverAddress());
    ServerBench bench;
    ASSERT_TRUE(bench.layOut(u"SV0426"_s, {}, mixerSpeed, server.address()));
    ASSERT_TRUE(QDir(bench.folder()).mkpath(u"backups"_s));
    const QString identity =
        QString::fromStdString(sql(u"SELECT left(\"fid_Identity\", 8) FROM \"FileIdentity\""_s));
    const QString copy = bench.path(u"backups/sorvanto-%1-0001-2026-03-07-140509.mdb"_s.arg(identity));
    ASSERT_EQ(
        QProcess::execute(Bench::executable(u"sorvanto-db"_s), {u"backup"_s, support::serverAddress(), copy}),
        0);
    const QByteArray before = contentOf(copy);

    server.refuse(true);
    bench.start({u"--bench-on-copy"_s});
    bench.end();
    EXPECT_EQ(count(u"\"Log\""_s), batchesOfTheSample);
    EXPECT_FALSE(hasLoggedAll(bench)) << "it waits in the journal";

    server.refuse(false);
    bench.start({u"--bench-offer"_s});
    const QStringList lots = bench.end();
    ASSERT_EQ(lots.size(), 1);
    EXPECT_EQ(count(u"\"Log\""_s), batchesOfTheSample + 1);
    EXPECT_EQ(count(u"\"Log\" WHERE \"log_Lot\" = '%1'"_s.arg(lots[0])), 1);
    EXPECT_EQ(count(u"\"LogChem\" WHERE \"LogID\" = (SELECT max(\"LogID\") FROM \"Log\")"_s), linesOfABatch);
    EXPECT_TRUE(hasLoggedAll(bench));
    EXPECT_EQ(contentOf(copy), before) << "nothing was written into the copy";
}

}  // namespace
}  // namespace e2e
