// Trying a server: a real one, made by its one command, and places where there is none.
#include "platform/data/postgres/Trial.h"

#include "SilentPort.h"
#include "platform/data/postgres/AddressParts.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace platform::postgres {
namespace {

constexpr int patience = 60000;  // milliseconds

TrialEnd endOf(const QString& address, int milliseconds = patience) {
    const Trial trial(address, milliseconds);
    while (!trial.ended())
        QThread::yieldCurrentThread();
    return trial.end();
}

QString addressOf(const support::SilentPort& port) {
    return u"postgresql://bench@127.0.0.1:%1/sorvanto"_s.arg(port.number());
}

TEST(Trial, WhereNothingListens) {
    support::SilentPort silence;
    silence.close();
    EXPECT_EQ(endOf(addressOf(silence)), TrialEnd::NoAnswer);
    EXPECT_EQ(endOf(u"postgresql://bench@/sorvanto?host=/nowhere/at/all"_s), TrialEnd::NoAnswer);
}

TEST(Trial, ANameThatNobodyKnows) {
    EXPECT_EQ(endOf(u"postgresql://bench@nowhere.invalid/sorvanto"_s), TrialEnd::UnknownName);
}

TEST(Trial, ASilentOneEndsWithItsTime) {
    const support::SilentPort silence;
    EXPECT_EQ(endOf(addressOf(silence), 200), TrialEnd::TookTooLong);
}

TEST(Trial, IsStoppedAtOnce) {
    const support::SilentPort silence;
    Trial trial(addressOf(silence), patience);
    EXPECT_FALSE(trial.ended());
    trial.stop();
    EXPECT_TRUE(trial.ended());
    EXPECT_EQ(trial.end(), TrialEnd::Stopped);
}

class TrialOfAServer : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        scratch = std::make_unique<QTemporaryDir>(u"/tmp/trial-XXXXXX"_s);
        QFile::setPermissions(scratch->path(),
                              QFile::permissions(scratch->path()) | QFile::ExeOther | QFile::ReadOther);
        port = support::SilentPort().number();
        command({u"--host"_s, u"localhost"_s, u"--port"_s, QString::number(port)});
        for (const char* name : {"bench.pgpass", "owner.pgpass", "tls/ca.crt"}) {
            const QString copy = scratch->filePath(QString::fromLatin1(name).section(u'/', -1));
            QFile::copy(scratch->filePath(u"s/"_s + QString::fromLatin1(name)), copy);
            QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
        }
    }
    static void TearDownTestSuite() {
        command({u"--stop"_s});
        scratch.reset();
    }
    void SetUp() override { qputenv("PGPASSFILE", scratch->filePath(u"bench.pgpass"_s).toUtf8()); }
    void TearDown() override { qunsetenv("PGPASSFILE"); }

    static void command(const QStringList& words) {
        QProcess start;
        start.setProcessChannelMode(QProcess::MergedChannels);
        start.start(QStringLiteral(SORVANTO_SOURCE_DIR) + u"/scripts/start-server.sh"_s,
                    QStringList(scratch->filePath(u"s"_s)) + words);
        ASSERT_TRUE(start.waitForFinished(patience)) << words.join(u' ').toStdString();
        ASSERT_EQ(start.exitCode(), 0) << start.readAll().toStdString();
    }
    static void asOwner(const QString& statement) {
        qputenv("PGPASSFILE", scratch->filePath(u"owner.pgpass"_s).toUtf8());
        EXPECT_EQ(QProcess::execute(u"psql"_s, {u"-X"_s, u"-q"_s, u"-h"_s, scratch->filePath(u"s/run"_s),
                                                u"-p"_s, QString::number(port), u"-U"_s, u"sorvanto_owner"_s,
                                                u"sorvanto"_s, u"-c"_s, statement}),
                  0);
        qputenv("PGPASSFILE", scratch->filePath(u"bench.pgpass"_s).toUtf8());
    }
    static AddressParts parts() {
        return {u"localhost"_s, QString::number(port),          u"sorvanto"_s,
                u"bench"_s,     scratch->filePath(u"ca.crt"_s), {}};
    }
    static TrialEnd endWith(QString AddressParts::*part, const QString& value) {
        AddressParts changed = parts();
        changed.*part = value;
        return endOf(addressOf(changed));
    }

    static inline std::unique_ptr<QTemporaryDir> scratch;
    static inline int port = 0;
};

TEST_F(TrialOfAServer, TheRecordsAreThere) {
    EXPECT_EQ(endOf(addressOf(parts())), TrialEnd::Works);
    EXPECT_EQ(endWith(&AddressParts::computer, scratch->filePath(u"s/run"_s)), TrialEnd::Works)
        << "by the socket";
}

TEST_F(TrialOfAServer, ItMustProveItsName) {
    EXPECT_EQ(endWith(&AddressParts::computer, u"127.0.0.1"_s), TrialEnd::NotProven);
    EXPECT_EQ(endWith(&AddressParts::certificate, u"/etc/ssl/certs/ca-certificates.crt"_s),
              TrialEnd::NotProven);
    EXPECT_EQ(endWith(&AddressParts::others, u"sslmode=disable"_s), TrialEnd::Works)
        << "is not what the address says";
}

TEST_F(TrialOfAServer, WhoIsNotLetIn) {
    EXPECT_EQ(endWith(&AddressParts::account, u"nobody"_s), TrialEnd::Refused);
    EXPECT_EQ(endWith(&AddressParts::database, u"postgres"_s), TrialEnd::Refused);
    const QString wrong = scratch->filePath(u"wrong.pgpass"_s);
    QFile passwords(wrong);
    ASSERT_TRUE(passwords.open(QIODevice::WriteOnly));
    passwords.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    passwords.write("*:*:*:*:wrong\n");
    passwords.close();
    qputenv("PGPASSFILE", wrong.toUtf8());
    EXPECT_EQ(endOf(addressOf(parts())), TrialEnd::Refused) << "as one that was typed wrong";
    qputenv("PGPASSFILE", "/nowhere/at/all");
    EXPECT_EQ(endOf(addressOf(parts())), TrialEnd::NoPassword);
    qputenv("PGPASSWORD", "wrong");
    EXPECT_EQ(endOf(addressOf(parts())), TrialEnd::Refused);
    qunsetenv("PGPASSWORD");
}

TEST_F(TrialOfAServer, RecordsThatMayNotBeRead) {
    asOwner(u"REVOKE SELECT ON sorvanto.\"Options\" FROM sorvanto_bench"_s);
    EXPECT_EQ(endOf(addressOf(parts())), TrialEnd::NoRecords);
    asOwner(u"GRANT SELECT ON sorvanto.\"Options\" TO sorvanto_bench"_s);
}

}  // namespace
}  // namespace platform::postgres
