// Making room on a server: what goes into the archive, what stays at the benches, and that neither is ever half done.
#include "FixedClock.h"
#include "Hindrances.h"
#include "ServerCommandTest.h"
#include "ServerProxy.h"
#include "db/Archive.h"
#include "db/DatabaseFile.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/postgres/WholeServer.h"

#include <QFile>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;
using Fault = support::ServerProxy::Fault;

class ServerArchiveTest : public ServerCommandTest {
protected:
    void SetUp() override {
        qputenv("XDG_DATA_HOME", path("data").toLocal8Bit());
        fill();
        expectDone({"copy", path("s.mdb"), owner()});
        const QString touch = u"UPDATE Log SET log_Notes = 'seen' WHERE log_Lot = 'SV%1'"_s;
        work(bench(), {touch.arg(55), touch.arg(2)});
        work(bench(), {touch.arg(56)}, u"mlopez@bench2"_s);
        expectDone({"copy", bench(), path("before.mdb")});
        before = content("before.mdb");
    }
    void TearDown() override { qunsetenv("XDG_DATA_HOME"); }

    /// Sixty batches, one a month up to January 2026, each with two lines; every third has a prescription. Gaps in the
    /// keys, as deletions leave them.
    void fill() {
        createSample(path("s.mdb"));
        inFile(
            "s.mdb",
            "DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM Log;"
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60)"
            "INSERT INTO Log (LogID, FormulaID, log_Name, log_Lot, log_Date, log_Quantity) SELECT 100 + 7 * i, 3, "
            "'Gel ' || i, 'SV' || i, datetime('2021-01-15 10:00:00', i || ' months'), i FROM n;"
            "INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_QTY) SELECT LogID, 5, 'a' || LogID, 1.25 FROM Log;"
            "INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_QTY) SELECT LogID, 6, 'b' || LogID, 2.5 FROM Log;"
            "INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY) SELECT LogID, 1, '2026-03-01 00:00:00', 30.0 "
            "FROM Log WHERE LogID % 3 = 0;");
    }
    /// Batches that stay, with their lines and prescriptions, without keys.
    QString content(const QString& file) const {
        const QString since = "log_Date >= '2025-03-07 00:00:00'";
        const QString of = " JOIN Log USING (LogID) WHERE " + since + " ORDER BY log_Date, 2";
        return support::rowsText(inFile(
                   file,
                   "SELECT log_Name, log_Lot, log_Date, log_Quantity, FormulaID, log_Notes FROM Log WHERE " +
                       since + " ORDER BY log_Date")) +
               support::rowsText(
                   inFile(file, "SELECT log_Lot, lch_Name, ChemicalID, lch_QTY FROM LogChem" + of)) +
               support::rowsText(inFile(file, "SELECT log_Lot, PatientID, rxs_QTY FROM RXs" + of));
    }
    QString counts() const {
        return told("SELECT (SELECT count(*) FROM \"Log\"), (SELECT count(*) FROM \"LogChem\"), "
                    "(SELECT count(*) FROM \"RXs\")");
    }
    QString inArchive(const QString& statement) const {
        return support::rowsText(inFile("old.mdb", statement));
    }
    QStringList archive() const { return {"archive", owner(), path("old.mdb")}; }
    static constexpr const char* all = "60|120|20";
    static constexpr const char* rest = "11|22|4";
    /// The server as it was, or what stays there and the archive of everything. Whether it is the second.
    bool expectWhole(const QString& when) {
        const QString now = counts();
        EXPECT_TRUE(now == QLatin1String(all) || now == QLatin1String(rest)) << qPrintable(when + now);
        QFile::remove(path("now.mdb"));
        expectDone({"check", bench()});
        expectDone({"copy", bench(), path("now.mdb")});
        EXPECT_EQ(content("now.mdb"), before) << qPrintable(when);
        const bool changed = now == QLatin1String(rest);
        if (changed || files().contains("old.mdb")) {
            expectDone({"check", path("old.mdb")});
            EXPECT_EQ(content("old.mdb"), before) << qPrintable(when);
            EXPECT_EQ(inArchive("SELECT count(*) FROM Log"), "60") << qPrintable(when);
        }
        return changed;
    }

    QString before;
    support::FixedClock clock;  // 7 March 2026
};

TEST_F(ServerArchiveTest, TheArchiveHoldsEverythingAndTheServerTheLastTwelveMonths) {
    ASSERT_EQ(counts(), all);
    expectDone(archive());
    EXPECT_TRUE(out.contains("11 batches since 2025-03-07 stay, 49 older ones and 16 prescriptions"))
        << qPrintable(out);
    EXPECT_TRUE(expectWhole({}));
    EXPECT_EQ(told("SELECT min(\"LogID\"), max(\"LogID\") FROM \"Log\""), "1|11");
    EXPECT_EQ(inArchive("SELECT fid_Parent FROM FileIdentity"),
              told("SELECT \"fid_Identity\" FROM \"FileIdentity\""));
    EXPECT_EQ(told("SELECT DISTINCT \"kmp_Archive\" FROM \"KeyMap\""),
              inArchive("SELECT fid_Identity FROM FileIdentity"));
    EXPECT_EQ(told("SELECT count(*) FROM \"ArchivedBatch\" WHERE \"abt_Archive\" <> ''"), "49");
    EXPECT_EQ(QFile::permissions(path("old.mdb")) & 0x0077, 0);
    EXPECT_EQ(files(), (QStringList{"before.mdb", "now.mdb", "old.mdb", "s.mdb"}));
}

// Whatever an archive run makes of a file, it makes of the same records on a server.
TEST_F(ServerArchiveTest, WhatStaysIsWhatStaysOfAFile) {
    expectDone(archive());
    expectDone({"copy", bench(), path("server.mdb")});
    expectDone({"archive", path("before.mdb"), path("other.mdb")});
    for (const char* table : {"Chemical", "Formula", "Patient", "FormChem", "Log", "LogChem", "RXs"}) {
        const QString rows = u"SELECT * FROM %1 ORDER BY 1"_s.arg(QLatin1String(table));
        EXPECT_EQ(support::rowsText(inFile("server.mdb", rows)),
                  support::rowsText(inFile("before.mdb", rows)))
            << table;
    }
    const QString rows = "SELECT kmp_Table, kmp_Old, kmp_New FROM KeyMap ORDER BY 1, 2";
    EXPECT_EQ(support::rowsText(inFile("server.mdb", rows)), support::rowsText(inFile("before.mdb", rows)));
}

TEST_F(ServerArchiveTest, TheBenchesGoOnAndWhatHappenedIsProvenAcrossTheArchive) {
    expectDone(archive());
    work(bench(), {u"INSERT INTO Log (log_Name, log_Lot, log_Date) VALUES ('New', 'SV99', #3/7/2026#)"_s});
    EXPECT_EQ(told("SELECT max(\"LogID\") FROM \"Log\""), "12");
    work(bench(), {u"UPDATE Log SET log_Notes = 'x' WHERE LogID = 1"_s}, u"mlopez@bench2"_s);
    expectDone({"check", bench(), path("old.mdb")});
    expectDone({"archive", owner(), path("older.mdb"), "--keep", "6"});
    EXPECT_EQ(told("SELECT count(*), min(\"LogID\"), max(\"LogID\") FROM \"Log\""), "6|1|6");
    expectDone({"check", bench(), path("older.mdb")});
    expectDone({"check", path("older.mdb"), path("old.mdb")});
}

TEST_F(ServerArchiveTest, CheckHoldsTheServerAgainstItsArchive) {
    expectDone(archive());
    EXPECT_EQ(run({"check", bench(), path("before.mdb")}), 1);
    EXPECT_TRUE(out.contains("does not go on from " + path("before.mdb"))) << qPrintable(out);
    const QString last = inArchive("SELECT max(HistoryID) FROM History");
    inFile("old.mdb",
           "DROP TRIGGER History_Sealed; UPDATE History SET hst_Seal = randomblob(32) WHERE HistoryID = " +
               last);
    EXPECT_EQ(run({"check", bench(), path("old.mdb")}), 1);
    EXPECT_TRUE(out.contains("goes on from row " + last + " of the archive")) << qPrintable(out);
    EXPECT_TRUE(out.contains(path("old.mdb") + ": History_Sealed is missing")) << qPrintable(out);
    EXPECT_EQ(run({"check", bench(), path("none.mdb")}), 1);
    EXPECT_EQ(run({"check", path("s.mdb"), path("old.mdb")}), 1) << "nothing was archived of this one";
}

/// The bench that made it has a note of its own of a deletion; the others ask the history, which has gone.
TEST_F(ServerArchiveTest, ABatchThatWasDeletedStaysKnownAsGone) {
    work(bench(), {u"DELETE FROM LogChem WHERE LogID = (SELECT LogID FROM Log WHERE log_Lot = 'SV58')"_s,
                   u"DELETE FROM RXs WHERE LogID = (SELECT LogID FROM Log WHERE log_Lot = 'SV58')"_s,
                   u"DELETE FROM Log WHERE log_Lot = 'SV58'"_s});
    expectDone(archive());
    const QString known =
        "SELECT \"abt_Lot\", \"abt_Date\" FROM \"ArchivedBatch\" WHERE \"abt_Archive\" = '' AND \"abt_Lot\" = 'SV58'";
    EXPECT_EQ(told(known), "SV58|2025-11-15 10:00:00");
    expectDone({"archive", owner(), path("older.mdb"), "--keep", "6"});
    EXPECT_EQ(told(known), "SV58|2025-11-15 10:00:00") << "also in the next one";
}

TEST_F(ServerArchiveTest, RefusalsChangeNothing) {
    const auto refused = [&](const QStringList& arguments, const QString& why) {
        EXPECT_EQ(run(arguments), 1);
        EXPECT_TRUE(err.contains(why)) << qPrintable(err);
        EXPECT_EQ(counts(), all);
        EXPECT_FALSE(files().contains("old.mdb")) << qPrintable(why);
    };
    refused({"archive", bench(), path("old.mdb")}, "sorvanto_owner@");
    refused(archive() + QStringList{"--keep", "100"}, "nothing to archive");
    refused({"archive", owner(), path("s.mdb")}, "exists already");
    {
        platform::Connection atWork;
        atWork.open(u"Data Source="_s + bench());
        keepHistory(atWork, {u"rkent@bench7"_s, u"1.9"_s});
        refused(archive(), "(rkent@bench7 1.9): close the program there first");
    }
    {
        const auto reading = platform::postgres::readWholeServer(bench());
        refused(archive(), "lock");
    }
    QDir(path({})).mkpath("data/sorvanto/mixes");
    QFile mix(path("data/sorvanto/mixes/0000000A.xml"));
    ASSERT_TRUE(mix.open(QIODevice::WriteOnly));
    mix.write("<Mix ID=\"0000000A\" State=\"finished\"/>");
    mix.close();
    refused(archive(), "not in the log yet: 1");
}

TEST_F(ServerArchiveTest, ALostAnswerToTheLastStepIsLookedUp) {
    support::ServerProxy proxy(owner());
    proxy.arm("COMMIT", Fault::Cut);
    EXPECT_EQ(run({"archive", proxy.address(), path("old.mdb")}), 1);
    EXPECT_TRUE(err.contains("the change was not saved")) << qPrintable(err);
    EXPECT_FALSE(expectWhole("never sent "));
    EXPECT_FALSE(files().contains("old.mdb")) << "the server still has everything";
    proxy.arm("COMMIT", Fault::LoseReply);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(run({"archive", proxy.address(), path("old.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "what the server remarks is nobody's business";
    EXPECT_TRUE(expectWhole("answer lost "));
}

/// A look-up that lasts ten seconds.
TEST_F(ServerArchiveTest, WhereNobodyCanBeAskedTheArchiveStaysAndIsNamed) {
    support::ServerProxy proxy(owner());
    proxy.arm("COMMIT", Fault::LoseServer);
    EXPECT_EQ(run({"archive", proxy.address(), path("old.mdb")}), 1);
    EXPECT_TRUE(err.contains("Whether the batches have left the records can't be found out") &&
                err.contains(path("old.mdb")))
        << qPrintable(err);
    EXPECT_TRUE(expectWhole("nobody to ask "));
}

TEST_F(ServerArchiveTest, AServerThatDiesInTheMidstHasEverything) {
    for (const char* moment : {"SELECT pg_try_advisory_xact_lock", "TRUNCATE", "\"LogChem\" (", "ANALYZE"}) {
        support::ServerProxy proxy(owner());
        proxy.arm(moment, Fault::Cut);
        EXPECT_EQ(run({"archive", proxy.address(), path("old.mdb")}), 1) << moment;
        EXPECT_FALSE(proxy.isArmed()) << moment;
        EXPECT_FALSE(expectWhole(QLatin1String(moment)));
        EXPECT_FALSE(files().contains("old.mdb")) << moment;
    }
}

TEST_F(ServerArchiveTest, AFullDiskLeavesEverythingOnTheServer) {
    int failed = 0;
    for (const int kilobytes : {8, 64, 128, 200, 256}) {
        int code = 0;
        {
            const support::FullDisk full(1024 * kilobytes);
            code = run(archive());
        }
        const bool changed = expectWhole(QString::number(kilobytes));
        EXPECT_EQ(code, 1) << kilobytes;
        EXPECT_FALSE(changed) << kilobytes;
        ++failed;
        EXPECT_FALSE(files().contains("old.mdb")) << kilobytes;
    }
    EXPECT_GT(failed, 3);
    expectDone(archive());
    EXPECT_TRUE(expectWhole("with room "));
}

/// While the records are read, in the midst, and at the last question before nothing can be taken back.
TEST_F(ServerArchiveTest, WhatIsStoppedLeavesEverythingAndNothingBeside) {
    const QByteArray folderBefore = qgetenv("TMPDIR");
    qputenv("TMPDIR", path(u"."_s).toUtf8());
    const auto beside = [this] { return QDir(path(u"."_s)).entryList({u"sorvanto-*"_s, u"old*"_s}); };
    const QString records = told(u"SELECT count(*), max(\"LogID\") FROM \"Log\""_s);
    int questions = 0;
    for (int allowed = 0, end = 1; end == 1; allowed = 2 * allowed + 1) {
        questions = 0;
        end = run(archive(), [&] { return ++questions > allowed; });
        if (end == 0)
            break;
        EXPECT_TRUE(err.contains("stopped; nothing was changed")) << qPrintable(err);
        EXPECT_EQ(told(u"SELECT count(*), max(\"LogID\") FROM \"Log\""_s), records) << allowed;
        EXPECT_EQ(beside(), QStringList()) << allowed;
    }
    EXPECT_GT(questions, 15);
    EXPECT_EQ(beside(), QStringList{u"old.mdb"_s});
    folderBefore.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folderBefore);
    EXPECT_TRUE(expectWhole("after all "));
}

TEST_F(ServerArchiveTest, KilledAtAnyMomentOneOfTheTwoIsThere) {
    support::runOnWholeServer("DROP DATABASE IF EXISTS filled");
    support::runOnWholeServer("CREATE DATABASE filled TEMPLATE sorvanto");
    int killed = 0, changed = 0;
    for (int microseconds = 40'000; changed < 2; microseconds += microseconds / 2) {
        support::runOnWholeServer("DROP DATABASE sorvanto WITH (FORCE)");
        support::runOnWholeServer("CREATE DATABASE sorvanto TEMPLATE filled");
        QFile::remove(path("old.mdb"));
        const pid_t child = ::fork();
        if (child == 0) {
            try {
                archiveDatabase(owner(), path("old.mdb"), QDate(2025, 3, 7));
            } catch (const platform::RuntimeError&) {
                ::_exit(1);
            }
            ::_exit(0);
        }
        ::usleep(static_cast<useconds_t>(microseconds));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        killed += WIFSIGNALED(status) ? 1 : 0;
        changed += expectWhole(u"%1 microseconds "_s.arg(microseconds)) ? 1 : 0;
    }
    std::printf("killed in the midst: %d, with the archive: %d\n", killed, changed);
    EXPECT_GT(killed, 2);
    support::runOnWholeServer("DROP DATABASE filled");
}

}  // namespace
}  // namespace sorvanto
