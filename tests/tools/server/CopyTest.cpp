// Records on their way between a file and a server: what comes back is what has gone, and what fails leaves nothing.
#include "Hindrances.h"
#include "KilledChild.h"
#include "ServerCommandTest.h"
#include "ServerProxy.h"
#include "db/DatabaseFile.h"
#include "db/RecordsCopy.h"
#include "platform/data/Connection.h"
#include "platform/data/Query.h"

#include <csignal>

namespace sorvanto {
namespace {

using namespace Qt::StringLiterals;

const QStringList keyed{u"Chemical"_s, u"Formula"_s, u"FormChem"_s, u"Log"_s,
                        u"LogChem"_s,  u"Patient"_s, u"RXs"_s};

class CopyTest : public ServerCommandTest {
protected:
    /// Every value of every table, with its kind, and the counters.
    QStringList dump(const QString& name) const;
    void expectSame(const QString& one, const QString& other) const {
        const QStringList ours = dump(one), theirs = dump(other);
        ASSERT_EQ(ours.size(), theirs.size());
        for (qsizetype i = 0; i < ours.size(); ++i)
            ASSERT_EQ(ours.at(i), theirs.at(i));
    }
    /// From the file to the server, and from there to another file.
    void thereAndBack(const QString& name) {
        expectDone({"copy", path(name), owner()});
        expectDone({"copy", bench(), path("back.mdb")});
        expectSame(name, "back.mdb");
        expectDone({"check", path("back.mdb")});
        expectDone({"check", bench()});
    }
};

QStringList CopyTest::dump(const QString& name) const {
    QStringList all;
    for (
        const QStringList& table : inFile(
            name,
            u"SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%' ORDER BY 1"_s)) {
        QStringList values;
        for (const QStringList& column :
             inFile(name, u"SELECT name FROM pragma_table_info('%1')"_s.arg(table.first())))
            values << u"'%1=' || typeof(\"%1\") || quote(\"%1\")"_s.arg(column.first());
        for (const QStringList& row :
             inFile(name, u"SELECT %1 FROM \"%2\""_s.arg(values.join(u" || ' ' || "_s), table.first())))
            all << table.first() + u": "_s + row.first();
    }
    for (const QStringList& key : inFile(name, u"SELECT name, seq FROM sqlite_sequence ORDER BY 1"_s))
        all << key.join(u" up to "_s);
    for (const QStringList& rest :
         inFile(name,
                u"SELECT name, sql FROM sqlite_master WHERE sql NOT NULL ORDER BY 1; PRAGMA user_version"_s))
        all << rest.join(u": "_s);
    return all;
}

/// Values at the limits of what a column of that type can hold, one after the other.
class OddValues {
public:
    QString next(const QString& type) {
        static const QHash<QString, QStringList> values{
            {u"SMALLINT"_s, {u"-32768"_s, u"32767"_s, u"0"_s, u"NULL"_s}},
            {u"INTEGER"_s, {u"2147483647"_s, u"-1"_s, u"0"_s, u"NULL"_s}},
            {u"YESNO"_s, {u"0"_s, u"1"_s}},
            {u"DOUBLE"_s,
             {u"0.1"_s, u"1e300"_s, u"-5e-324"_s, u"123456789.123456789"_s, u"1.0/3"_s, u"0.0"_s, u"100"_s,
              u"2.2250738585072014e-308"_s, u"9007199254740993"_s, u"1e15"_s, u"NULL"_s}},
            {u"CURRENCY"_s,
             {u"0.0001"_s, u"-2.85"_s, u"12.34"_s, u"5"_s, u"922337203685.4775"_s, u"-0.5"_s, u"1e15"_s,
              u"0"_s, u"9007199254740993"_s, u"0.7"_s, u"NULL"_s}},
            {u"DATETIME"_s,
             {u"'0001-01-01 00:00:00'"_s, u"'9999-12-31 23:59:59'"_s, u"'2024-02-29 12:00:00'"_s,
              u"'0000-01-01 00:00:00'"_s, u"'-4713-11-24 12:00:00'"_s, u"'-0001-12-31 23:59:59'"_s,
              u"'1899-12-30 00:00:00'"_s, u"NULL"_s}},
            {u"TEXT"_s,
             {u"''"_s, u"' '"_s, u"'it''s \"quoted\"'"_s, u"'Größe µ № ﬁ'"_s, u"'trailing   '"_s,
              u"'\\back\\slash\\'"_s, u"'NULL'"_s, u"'{a,\"b\"}'"_s,
              u"'two' || char(13,10) || 'lines' || char(9)"_s, u"char(1,2,27,31,127,128,65279,65534)"_s,
              u"'5'"_s, u"'5.0'"_s, u"'2026-01-01 00:00:00'"_s, u"'😀 𝔘'"_s, u"'e' || char(769)"_s,
              u"'\\x00ff'"_s, u"hex(zeroblob(20000))"_s, u"NULL"_s}}};
        const QString kind = type.contains("TEXT"_L1) ? u"TEXT"_s : type;
        const QStringList& odd = *values.constFind(kind);
        return odd.at(m_place[kind]++ % odd.size());
    }

private:
    QHash<QString, int> m_place;
};

/// Rows of odd values under keys up to the last that there is.
QString oddRows(const QString& file) {
    OddValues values;
    QString all = u"PRAGMA foreign_keys = ON;"_s;
    for (const QString& table :
         {u"Chemical"_s, u"Formula"_s, u"Log"_s, u"Patient"_s, u"FormChem"_s, u"LogChem"_s, u"RXs"_s}) {
        for (const int key : {1, 2, 3, 5, 8, 13, 21, 34, 55, 89, 144, 32766, 32767}) {
            QStringList row;
            for (const QStringList& column :
                 support::runSql(file, u"SELECT name, type FROM pragma_table_info('%1')"_s.arg(table))) {
                const bool isOwn = row.isEmpty(), isRelated = column.first().endsWith("ID"_L1) &&
                                                              !column.first().contains(u'_') &&
                                                              table != "Log"_L1;
                row << (isOwn || isRelated ? QString::number(key) : values.next(column.last()));
            }
            all += u"INSERT INTO %1 VALUES (%2);"_s.arg(table, row.join(u", "_s));
        }
    }
    return all;
}

TEST_F(CopyTest, TheSamplePharmacyComesBackAsItWent) {
    createSample(path("a.mdb"));
    thereAndBack("a.mdb");
}

TEST_F(CopyTest, WhatWasSealedComesBackSealed) {
    createSample(path("a.mdb"));
    work(path("a.mdb"),
         {u"UPDATE Patient SET pat_Phone = '440' WHERE PatientID = 2"_s, u"DELETE FROM RXs WHERE RXsID = 1"_s,
          u"INSERT INTO Chemical (chm_Name) VALUES ('Größe')"_s});
    inFile(
        "a.mdb",
        "UPDATE Chemical SET chm_Notes = 'from outside' WHERE ChemicalID = 3; DELETE FROM RXs WHERE RXsID = 8");
    thereAndBack("a.mdb");
}

TEST_F(CopyTest, OddValuesComeBackAsTheyWent) {
    createDatabase(path("a.mdb"));
    inFile("a.mdb", oddRows(path("a.mdb")));
    thereAndBack("a.mdb");
}

TEST_F(CopyTest, WhatAnArchiveHasLeftGoesAlong) {
    createSample(path("a.mdb"));
    expectDone({"archive", path("a.mdb"), path("old.mdb"), "--keep", "1"});
    thereAndBack("a.mdb");
}

TEST_F(CopyTest, KeysGoOnBehindTheLastThatWasEverGiven) {
    createSample(path("a.mdb"));
    const QString add = u"INSERT INTO Patient (pat_LName) VALUES ('new')"_s;
    work(path("a.mdb"), {add, u"DELETE FROM Patient WHERE pat_LName = 'new'"_s});
    expectDone({"copy", path("a.mdb"), owner()});
    work(bench(), {add});
    EXPECT_EQ(support::rowsText(support::runOnServer("SELECT max(\"PatientID\") FROM \"Patient\"")), "8");
    EXPECT_EQ(support::rowsText(inFile("a.mdb", "SELECT max(PatientID) FROM Patient")), "6");
}

/// The one chain of a file, one a bench on the server, one in the file again, and so on.
TEST_F(CopyTest, WhatHappenedIsProvenOnEitherSideAndGoesOn) {
    const auto dial = [](const char* digit) {
        return QStringList{u"UPDATE Patient SET pat_Phone = pat_Phone & '%1' WHERE PatientID = 2"_s.arg(
            QLatin1String(digit))};
    };
    createSample(path("a.mdb"));
    inFile("a.mdb", "UPDATE Chemical SET chm_Notes = 'not sealed yet' WHERE ChemicalID = 3");
    QString file = "a.mdb";
    for (const char* next : {"b.mdb", "c.mdb"}) {
        expectDone({"copy", path(file), owner()});
        expectDone({"check", bench()});
        for (const char* who : {"rkent@bench1", "mlopez@bench2", "rkent@bench1"})
            work(bench(), dial("1"), QString::fromLatin1(who));
        support::runOnServer(
            "UPDATE \"Chemical\" SET \"chm_Lot\" = \"chm_Lot\" || 'x' WHERE \"ChemicalID\" = 4");
        expectDone({"check", bench()});
        expectDone({"copy", bench(), path(next)});
        expectDone({"check", path(next)});
        support::makeEmptyServer();
        expectDone({"copy", path(next), owner()});
        expectDone({"check", bench()});
        work(bench(), dial("9"));
        expectDone({"check", bench()});
        support::makeEmptyServer();
        file = QString::fromLatin1(next);
        inFile(file, "UPDATE Chemical SET chm_Notes = chm_Notes || 'x' WHERE ChemicalID = 3");
        expectDone({"copy", path(file), owner()});
        expectDone({"check", bench()});
        work(bench(), dial("8"));
        work(bench(), dial("7"), u"mlopez@bench2"_s);
        expectDone({"check", bench()});
        support::makeEmptyServer();
        work(path(file), dial("2"), u"rkent@bench1"_s);
        inFile(file, "UPDATE Chemical SET chm_Notes = chm_Notes || 'outside' WHERE ChemicalID = 3");
        work(path(file), dial("3"), u"mlopez@bench2"_s);
        expectDone({"check", path(file)});
    }
    EXPECT_EQ(
        support::rowsText(inFile(
            file, "SELECT group_concat(coalesce(hst_Note, '-')) FROM History WHERE hst_What = 'begun'")),
        "-,one chain a bench,-,one chain a bench,-");
}

TEST_F(CopyTest, CheckFindsWhatIsWrongOnAServer) {
    createSample(path("a.mdb"));
    expectDone({"copy", path("a.mdb"), owner()});
    work(bench(), {u"UPDATE Patient SET pat_Phone = '1' WHERE PatientID = 2"_s});
    const auto finds = [&](const char* deed, const char* problem, const char* back) {
        support::runOnServer(QString::fromLatin1(deed));
        EXPECT_EQ(run({"check", bench()}), 1) << deed;
        EXPECT_TRUE(out.contains(QLatin1String(problem))) << qPrintable(out);
        support::runOnServer(QString::fromLatin1(back));
        expectDone({"check", bench()});
    };
    finds("UPDATE \"KeyCounter\" SET \"key_Last\" = 3 WHERE \"key_Table\" = 'Log'",
          "Keys of Log that are in use",
          "UPDATE \"KeyCounter\" SET \"key_Last\" = 12 WHERE \"key_Table\" = 'Log'");
    finds("ALTER TABLE \"RXs\" DISABLE TRIGGER write_history", "write_history of RXs is turned off",
          "ALTER TABLE \"RXs\" ENABLE TRIGGER write_history");
    finds(
        "DROP TRIGGER write_history_deleted ON \"RXs\"", "Triggers of RXs are missing",
        "CREATE TRIGGER write_history_deleted AFTER DELETE ON \"RXs\" FOR EACH ROW EXECUTE FUNCTION history_of_rxs()");
    finds(
        "ALTER TABLE \"Patient\" DISABLE TRIGGER USER; UPDATE \"Patient\" SET \"pat_Phone\" = '2' WHERE \"PatientID\" = 2; "
        "ALTER TABLE \"Patient\" ENABLE TRIGGER USER",
        "Patient 2 differs in pat_Phone",
        "ALTER TABLE \"Patient\" DISABLE TRIGGER USER; UPDATE \"Patient\" SET \"pat_Phone\" = '1' WHERE \"PatientID\" = 2; "
        "ALTER TABLE \"Patient\" ENABLE TRIGGER USER");
    finds(
        "UPDATE \"HistoryChain\" SET \"chn_Last\" = 99 WHERE \"chn_Bench\" = 'bench1'",
        "of bench1 ends with row",
        "UPDATE \"HistoryChain\" SET \"chn_Last\" = (SELECT max(\"HistoryID\") FROM \"History\") WHERE \"chn_Bench\" = 'bench1'");
}

TEST_F(CopyTest, APatientIsForgottenOnAServer) {
    createSample(path("a.mdb"));
    expectDone({"copy", path("a.mdb"), owner()});
    work(bench(), {u"UPDATE Patient SET pat_Phone = '440-555' WHERE PatientID = 2"_s});
    EXPECT_EQ(run({"forget", bench(), "--patient", "2"}), 1) << "the owner alone";
    EXPECT_TRUE(err.contains("sorvanto_owner@")) << qPrintable(err);
    expectDone({"forget", owner(), "--patient", "2"});
    EXPECT_TRUE(out.contains("1 changes of patient 2 blanked")) << qPrintable(out);
    EXPECT_EQ(support::rowsText(support::runOnServer(
                  "SELECT count(*) FROM \"History\" WHERE \"hst_Fields\" LIKE '%440-555%'")),
              "0");
    expectDone({"check", bench()});
    work(bench(), {u"UPDATE Patient SET pat_Phone = '1' WHERE PatientID = 2"_s});
    expectDone({"check", bench()});
}

TEST_F(CopyTest, ABenchAtWorkKeepsTheServerFromBeingFilled) {
    createSample(path("a.mdb"));
    platform::Connection atWork;
    atWork.open(u"Data Source="_s + bench());
    keepHistory(atWork, {u"rkent@bench7"_s, u"1.9"_s});
    EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("(rkent@bench7 1.9): close the program there first")) << qPrintable(err);
}

TEST_F(CopyTest, AServerThatHoldsRecordsIsLeftAlone) {
    createSample(path("a.mdb"));
    work(bench(), {u"INSERT INTO Chemical (chm_Name) VALUES ('Zinc')"_s, u"DELETE FROM Chemical"_s});
    EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("holds records already") && err.contains("start-server.sh")) << qPrintable(err);
    EXPECT_EQ(support::rowsText(support::runOnServer("SELECT count(*) FROM \"Formula\"")), "0");
}

TEST_F(CopyTest, AFileIsNeverWrittenOver) {
    createSample(path("a.mdb"));
    EXPECT_EQ(run({"copy", bench(), path("a.mdb")}), 1);
    EXPECT_EQ(run({"backup", bench(), path("a.mdb")}), 1);
    EXPECT_TRUE(err.contains("exists already")) << qPrintable(err);
    expectDone({"backup", bench(), path("b.mdb")});
    expectDone({"check", path("b.mdb")});
}

TEST_F(CopyTest, ABenchFillsNoServer) {
    createSample(path("a.mdb"));
    EXPECT_EQ(run({"copy", path("a.mdb"), bench()}), 1);
    EXPECT_TRUE(err.contains("sorvanto_owner@")) << qPrintable(err);
}

TEST_F(CopyTest, WhatIsNotSoundIsNotCopied) {
    createSample(path("a.mdb"));
    inFile("a.mdb", "PRAGMA foreign_keys = OFF; DELETE FROM Patient WHERE PatientID = 1");
    EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("not sound")) << qPrintable(err);
    EXPECT_EQ(support::rowsText(support::runOnServer("SELECT count(*) FROM \"Formula\"")), "0");
}

TEST_F(CopyTest, AValueThatAServerCantHoldIsNamedAndNothingIsKept) {
    createSample(path("a.mdb"));
    inFile("a.mdb", "UPDATE Patient SET pat_Notes = 'a' || char(0) || 'b' WHERE PatientID = 4");
    EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("Row 4 of Patient: pat_Notes holds a null character")) << qPrintable(err);
    inFile("a.mdb", "UPDATE Patient SET pat_Notes = CAST(x'c3' AS TEXT) WHERE PatientID = 4");
    EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("pat_Notes holds broken characters")) << qPrintable(err);
    EXPECT_EQ(support::rowsText(support::runOnServer(
                  "SELECT count(*), (SELECT count(*) FROM \"Chemical\") FROM \"History\"")),
              "1|0");
}

TEST_F(CopyTest, WhatLeavesScratchFilesIsEndedByASignalOnlyWhereItClearsThem) {
    EXPECT_TRUE(canBeStopped({"copy", "a.mdb", owner()}));
    EXPECT_TRUE(canBeStopped({"archive", owner(), "old.mdb"}));
    EXPECT_FALSE(canBeStopped({"check", owner()})) << "it would not hear of it";
    EXPECT_FALSE(canBeStopped({}));
}

TEST_F(CopyTest, ACheckThatWasKilledIsClearedAwayByTheNext) {
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", path(u"."_s).toUtf8());
    QDir(path(u"."_s)).mkpath(u"sorvanto-records-left/in"_s);
    expectDone({"check", bench()});
    EXPECT_EQ(QDir(path(u"."_s)).entryList({u"sorvanto-*"_s}), QStringList());
    before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}

/// In the midst of writing, of comparing, and at the last question before it is whole.
TEST_F(CopyTest, ACopyThatIsStoppedLeavesNothing) {
    createSample(path("a.mdb"));
    int questions = 0;
    ASSERT_EQ(run({"copy", path("a.mdb"), owner()}, [&] { return ++questions, false; }), 0)
        << qPrintable(err);
    const int all = questions;
    EXPECT_GT(all, 15);
    support::makeEmptyServer();
    for (const int allowed : {0, all / 4, all / 2 + 1, all - 1}) {
        questions = 0;
        EXPECT_EQ(run({"copy", path("a.mdb"), owner()}, [&] { return ++questions > allowed; }), 1);
        EXPECT_TRUE(err.contains("nothing was changed")) << qPrintable(err);
        EXPECT_EQ(support::rowsText(support::runOnServer("SELECT count(*) FROM \"Chemical\"")), "0");
    }
    for (const int allowed : {0, 2}) {
        questions = 0;
        EXPECT_EQ(run({"copy", bench(), path("b.mdb")}, [&] { return ++questions > allowed; }), 1);
        EXPECT_EQ(files(), QStringList{"a.mdb"});
    }
}

TEST_F(CopyTest, ACopyToAFileIsReadOnceMoreAndToldToItsEnd) {
    expectDone({"sample", owner()});
    std::int64_t most = 0, all = 0;
    EXPECT_TRUE(copyRecords(bench(), path("b.mdb"), [&](std::int64_t done, std::int64_t whole) {
                    most = std::max(most, done);
                    all = whole;
                    return true;
                }).whole);
    EXPECT_EQ(most, all);
    int questions = 0;
    EXPECT_EQ(run({"copy", bench(), path("c.mdb")}, [&] { return ++questions, false; }), 0);
    const int last = questions - 1;
    questions = 0;
    EXPECT_EQ(run({"copy", bench(), path("d.mdb")}, [&] { return ++questions > last; }), 1)
        << "also while it is compared";
    EXPECT_EQ(files(), (QStringList{"b.mdb", "c.mdb"}));
}

TEST_F(CopyTest, AFullDiskLeavesNothingOnEitherSide) {
    createSample(path("a.mdb"), 300);
    for (const int kilobytes : {4, 100, 300, 500}) {
        const support::FullDisk full(1024 * kilobytes);
        EXPECT_EQ(run({"copy", path("a.mdb"), owner()}), 1) << kilobytes;
        EXPECT_TRUE(err.contains("disk")) << qPrintable(err);
    }
    EXPECT_EQ(told("SELECT count(*) FROM \"Chemical\""), "0");
    expectDone({"copy", path("a.mdb"), owner()});
    for (const int kilobytes : {4, 100, 300, 500}) {
        const support::FullDisk full(1024 * kilobytes);
        EXPECT_EQ(run({"copy", bench(), path("b.mdb")}), 1) << kilobytes;
        EXPECT_TRUE(err.contains("disk")) << qPrintable(err);
        EXPECT_EQ(run({"backup", bench(), path("b.mdb")}), 1) << kilobytes;
        EXPECT_EQ(files(), QStringList{"a.mdb"}) << kilobytes;
    }
    expectDone({"copy", bench(), path("b.mdb")});
    expectSame("a.mdb", "b.mdb");
}

TEST_F(CopyTest, AServerThatDiesInTheMidstLeavesNothingOnEitherSide) {
    createSample(path("a.mdb"), 300);
    for (const char* moment : {"TRUNCATE", "INTO \"LogChem\"", "FROM \"RXs\"", "ANALYZE", "COMMIT"}) {
        support::ServerProxy proxy(owner());
        proxy.arm(moment, support::ServerProxy::Fault::Cut);
        EXPECT_EQ(run({"copy", path("a.mdb"), proxy.address()}), 1) << moment;
        EXPECT_TRUE(err.contains("can't be reached")) << qPrintable(err);
        EXPECT_FALSE(proxy.isArmed()) << moment;
        EXPECT_EQ(told("SELECT count(*) FROM \"Chemical\""), "0") << moment;
    }
    expectDone({"copy", path("a.mdb"), owner()});
    for (const char* moment : {"LOCK TABLE", "FROM \"Log\" WHERE", "FROM \"History\""}) {
        support::ServerProxy proxy(bench());
        proxy.arm(moment, support::ServerProxy::Fault::Cut);
        EXPECT_EQ(run({"copy", proxy.address(), path("b.mdb")}), 1) << moment;
        EXPECT_FALSE(proxy.isArmed()) << moment;
        EXPECT_EQ(files(), QStringList{"a.mdb"}) << moment;
    }
    expectDone({"check", bench()});
}

TEST_F(CopyTest, ASampleIsMadeOnAServer) {
    expectDone({"sample", owner(), "--rows", "600"});
    expectDone({"check", bench()});
    EXPECT_EQ(support::rowsText(support::runOnServer("SELECT count(*) FROM \"LogChem\"")), "600");
    EXPECT_EQ(run({"sample", owner()}), 1);
}

TEST_F(CopyTest, TablesOfOthersAreNamedAndLeftOut) {
    createSample(path("a.mdb"));
    inFile("a.mdb", "CREATE TABLE Shelf (place TEXT); INSERT INTO Shelf VALUES ('A')");
    expectDone({"copy", path("a.mdb"), owner()});
    EXPECT_TRUE(out.contains("Table Shelf is no table of the records, and was not copied."))
        << qPrintable(out);
}

TEST_F(CopyTest, WhatAServerIsNotMadeByIsRefused) {
    createSample(path("a.mdb"));
    EXPECT_EQ(run({"create", owner()}), 1);
    EXPECT_EQ(run({"backup", path("a.mdb"), owner()}), 1);
    EXPECT_EQ(run({"restore", path("a.mdb"), owner()}), 1);
    EXPECT_TRUE(err.contains("sorvanto-db copy")) << qPrintable(err);
    EXPECT_EQ(run({"update", path("a.mdb"), SORVANTO_SOURCE_DIR "/data/dbupdate.xml"}), 1);
    EXPECT_TRUE(err.contains("starting the program on it")) << qPrintable(err);
    EXPECT_EQ(run({"check", bench(), owner()}), 1);
    EXPECT_TRUE(err.contains("An archive is a file")) << qPrintable(err);
}

/// Not a test of its own: a copy that is killed while it is at work, the way it goes by its number.
TEST_F(CopyTest, KilledHalfway) {
    const QString folder = support::folderOfChild();
    if (folder.isEmpty())
        return;
    const QString file = folder + u"/from.mdb"_s;
    createSample(file, 50);
    const auto killed = [] { return std::raise(SIGKILL) == 0; };
    if (support::numberOfChild() == 0)
        run({"copy", file, owner()}, killed);
    expectDone({"copy", file, owner()});
    run({"copy", bench(), folder + u"/to.mdb"_s}, killed);
}

TEST_F(CopyTest, AKilledCopyLeavesNothingThatLooksWholeAndGoesWithTheNext) {
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", path(u"."_s).toUtf8());
    const auto left = [&] {
        return QDir(path(u"."_s)).entryList({u"sorvanto-records-*"_s}, QDir::Dirs).size();
    };
    ASSERT_TRUE(support::childIsKilled(u"CopyTest.KilledHalfway"_s, path(u"."_s), 0));
    EXPECT_EQ(left(), 1) << "it was at work";
    expectDone({"copy", path("from.mdb"), owner()});
    EXPECT_EQ(left(), 0);
    QFile::remove(path("from.mdb"));
    ASSERT_TRUE(support::childIsKilled(u"CopyTest.KilledHalfway"_s, path(u"."_s), 1));
    EXPECT_FALSE(files().contains(u"to.mdb"_s));
    EXPECT_TRUE(files().contains(u"to.mdb.part"_s)) << "it was at work";
    expectDone({"copy", bench(), path("to.mdb")});
    EXPECT_FALSE(files().contains(u"to.mdb.part"_s));
    expectDone({"check", path("to.mdb")});
    before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
}

}  // namespace
}  // namespace sorvanto
