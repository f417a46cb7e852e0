// sorvanto-db: what it makes, finds, copies and puts back, its refusals and its exit codes.
#include "CommandTest.h"
#include "OtherProcess.h"
#include "TestDatabase.h"
#include "db/DatabaseCheck.h"
#include "db/DatabaseFile.h"
#include "platform/basic/ProcessLock.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace sorvanto {
namespace {

/// Another program in the midst of a change of the file.
class FileUser {
public:
    explicit FileUser(const QString& path) {
        m_shell.start("sqlite3", {path});
        m_shell.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
        EXPECT_TRUE(m_shell.waitForReadyRead()) << qPrintable(m_shell.errorString());
    }
    ~FileUser() {
        m_shell.closeWriteChannel();
        m_shell.waitForFinished();
    }
    FileUser(const FileUser&) = delete;
    FileUser& operator=(const FileUser&) = delete;

private:
    QProcess m_shell;
};

class DatabaseTool : public CommandTest {
protected:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString stored(const QString& file, const QString& statement) const {
        return support::rowsText(support::runSql(path(file), statement));
    }
    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files); }
    QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(DatabaseTool, CreatesAnEmptyDatabaseForItsOwnerAlone) {
    ASSERT_EQ(run({"create", path("a.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(QFile::permissions(path("a.mdb")) & 0x0077, 0);
    EXPECT_EQ(
        stored(
            "a.mdb",
            "SELECT (SELECT count(*) FROM Formula), (SELECT count(*) FROM Options), opt_Version FROM Options"),
        "0|1|1.2");
    EXPECT_EQ(run({"check", path("a.mdb")}), 0);
    EXPECT_EQ(files(), QStringList{"a.mdb"});
}

TEST_F(DatabaseTool, NeverWritesOverAFile) {
    write("a.mdb", "mine");
    for (const QStringList& command :
         {QStringList{"create", path("a.mdb")}, QStringList{"sample", path("a.mdb")}}) {
        EXPECT_EQ(run(command), 1);
        EXPECT_FALSE(err.isEmpty());
    }
    ASSERT_EQ(run({"sample", path("b.mdb")}), 0);
    EXPECT_EQ(run({"backup", path("b.mdb"), path("a.mdb")}), 1);
    EXPECT_EQ(content("a.mdb"), "mine");
    EXPECT_EQ(run({"create", path("missing/c.mdb")}), 1);
}

TEST_F(DatabaseTool, AWrongCommandLineShowsTheUsage) {
    for (const QStringList& command :
         {QStringList{}, QStringList{"create"}, QStringList{"create", "a", "b"}, QStringList{"destroy", "a"},
          QStringList{"sample", "a", "--rows"}, QStringList{"sample", "a", "--rows", "0"},
          QStringList{"sample", "a", "--rows", "32768"}, QStringList{"sample", "a", "--rows", "many"},
          QStringList{"backup", "a"}}) {
        EXPECT_EQ(run(command), 2) << qPrintable(command.join(' '));
        EXPECT_TRUE(err.contains("sorvanto-db create FILE"));
        EXPECT_TRUE(out.isEmpty());
    }
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_TRUE(out.contains("sorvanto-db create FILE"));
}

TEST_F(DatabaseTool, TheSampleIsABelievablePharmacy) {
    ASSERT_EQ(run({"sample", path("s.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(run({"check", path("s.mdb")}), 0) << qPrintable(out);
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT (SELECT count(*) FROM Chemical), (SELECT count(*) FROM Formula), (SELECT count(*) FROM Log), "
            "(SELECT count(*) FROM Patient), (SELECT count(*) FROM RXs)"),
        "46|22|12|6|8");
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT frm_Name FROM Formula WHERE abs(frm_Quantity - (SELECT total(fch_Qty) FROM FormChem WHERE "
            "FormChem.FormulaID = Formula.FormulaID)) > 0.0001"),
        "Teething Gel (in development)");
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT count(*) FROM Formula WHERE abs(frm_AWP - (SELECT total(chm_AWP * fch_Qty) FROM FormChem JOIN Chemical "
            "USING (ChemicalID) WHERE FormChem.FormulaID = Formula.FormulaID)) > 0.00005"),
        "0");
    EXPECT_EQ(stored("s.mdb", "SELECT count(DISTINCT chm_GUID) FROM Chemical WHERE chm_GUID LIKE "
                              "'________-____-4___-8___-____________' AND chm_GUID NOT GLOB '*[^-0-9A-F]*'"),
              "46");
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT count(*) FROM Chemical WHERE chm_AWP <= chm_Cost OR chm_Units NOT IN "
            "('AMP','CAPS','CC','DROP','EACH','GMS','GR','GTTS','IU','LIT','LITR','MCG','MEQ','MGS','MLS','TABS','VIAL') OR chm_Form "
            "NOT IN ('BOTTLE','CAP','CRM','CRYS','CUBE','FLAKE','GEL','GRAM','INJ','LIQU','PWD','SOLID','SOLN','SUSP','TAB','UNG')"),
        "0");
    EXPECT_EQ(stored("s.mdb", "SELECT count(*) FROM Log WHERE log_Lot <> 'SV26' || printf('%04d', LogID)"),
              "0");
}

/// Whether a programme could have been entered by hand for a jar of that size.
void expectLegalProgramme(const QString& xml, int jar, const QString& name) {
    static const int fastest[] = {2496, 2496, 2496, 2292, 2292, 2292, 2100, 2100, 1992};
    static const QRegularExpression whole(
        "^<CustomMix PreGrind=\"(\\d+)\" FreeSpin=\"(\\d+)\"(/>|>(<Mix [^>]*/>)+</CustomMix>)$");
    const QRegularExpressionMatch root = whole.match(xml);
    ASSERT_TRUE(root.hasMatch()) << qPrintable(name + ": " + xml);
    EXPECT_LE(root.captured(1).toInt(), 15);
    EXPECT_TRUE(root.captured(2).toInt() >= 1 && root.captured(2).toInt() <= 16);
    static const QRegularExpression step(
        "<Mix LiftRPM=\"(\\d+)\" MixRPM=\"(\\d+)\" MixTime=\"00:(\\d\\d):(\\d\\d)\" Cycles=\"(\\d+)\"/>");
    int steps = 0;
    for (auto match = step.globalMatch(xml); match.hasNext(); ++steps) {
        const QRegularExpressionMatch one = match.next();
        const int seconds = one.captured(3).toInt() * 60 + one.captured(4).toInt();
        const int grid = seconds <= 20 ? 1 : seconds <= 120 ? 2 : seconds <= 600 ? 5 : 30;
        EXPECT_EQ(one.captured(1).toInt() % 24, 0) << qPrintable(name);
        EXPECT_EQ(one.captured(2).toInt() % 12, 0) << qPrintable(name);
        EXPECT_LE(one.captured(2).toInt(), fastest[jar - 1]) << qPrintable(name);
        EXPECT_EQ(seconds % grid, 0) << qPrintable(name);
        EXPECT_NE(seconds > 0, one.captured(5).toInt() > 0) << qPrintable(name);
    }
    EXPECT_EQ(steps, xml.count("<Mix "));
    EXPECT_LE(steps, 16);
}

TEST_F(DatabaseTool, TheSamplesProgrammesAreLegal) {
    createSample(path("s.mdb"));
    for (const QStringList& row :
         support::runSql(path("s.mdb"), "SELECT frm_Mix, frm_JarSize, frm_Name FROM Formula "
                                        "UNION ALL SELECT log_Mix, log_JarSize, log_Name FROM Log"))
        expectLegalProgramme(row.at(0), row.at(1).toInt(), row.at(2));
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT (length(frm_Mix) - length(replace(frm_Mix, '<Mix ', ''))) / 5 FROM Formula WHERE frm_Name LIKE '%Sixteen%'"),
        "16");
    EXPECT_EQ(
        stored(
            "s.mdb",
            "SELECT count(*) FROM Formula WHERE frm_JarSize <> CASE WHEN frm_Quantity <= 15 THEN 1 WHEN frm_Quantity <= 20 THEN 2 "
            "WHEN frm_Quantity <= 30 THEN 3 WHEN frm_Quantity <= 50 THEN 4 WHEN frm_Quantity <= 100 THEN 5 WHEN frm_Quantity <= 200 "
            "THEN 6 WHEN frm_Quantity <= 300 THEN 7 WHEN frm_Quantity <= 500 THEN 8 ELSE 9 END"),
        "0");
}

TEST_F(DatabaseTool, RowsFillEveryTable) {
    const QString counts =
        "SELECT (SELECT count(*) FROM Chemical), (SELECT count(*) FROM Formula), (SELECT count(*) FROM FormChem), "
        "(SELECT count(*) FROM Log), (SELECT count(*) FROM LogChem), (SELECT count(*) FROM Patient), (SELECT count(*) FROM RXs)";
    ASSERT_EQ(run({"sample", path("a.mdb"), "--rows", "500"}), 0) << qPrintable(err);
    EXPECT_EQ(stored("a.mdb", counts), "500|500|500|500|500|500|500");
    EXPECT_EQ(run({"check", path("a.mdb")}), 0) << qPrintable(out);
    createSample(path("b.mdb"), 500);
    for (const char* file : {"a.mdb", "b.mdb"})  // no two files have one identity
        support::runSql(path(file), "UPDATE FileIdentity SET fid_Identity = 'the same';"
                                    "UPDATE History SET hst_When = '', hst_Salt = x'00'");
    EXPECT_EQ(content("a.mdb"), content("b.mdb"));
    ASSERT_EQ(run({"sample", path("few.mdb"), "--rows", "10"}), 0) << qPrintable(err);
    EXPECT_EQ(stored("few.mdb", counts), "46|22|73|12|41|10|10");
    EXPECT_EQ(run({"check", path("few.mdb")}), 0) << qPrintable(out);
    for (int rows : {1, 13, 23, 47, 74, 80}) {
        createSample(path("n.mdb"), rows);
        EXPECT_TRUE(checkDatabase(path("n.mdb")).isEmpty()) << rows;
        QFile::remove(path("n.mdb"));
    }
}

TEST_F(DatabaseTool, CheckTellsEachProblem) {
    createSample(path("a.mdb"));
    for (const char* table : {"Log", "Patient"})  // whose columns the triggers would miss
        support::runSql(path("a.mdb"),
                        QString("DROP TRIGGER History_%1_Made; DROP TRIGGER History_%1_Changed;"
                                "DROP TRIGGER History_%1_Deleted")
                            .arg(QLatin1String(table)));
    support::runSql(
        path("a.mdb"),
        "PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON; DELETE FROM Chemical WHERE ChemicalID = 1;"
        "UPDATE Formula SET frm_Quantity = 'lots' WHERE FormulaID = 2; INSERT INTO Options VALUES (2);"
        "ALTER TABLE Patient DROP COLUMN pat_Fax; ALTER TABLE Log DROP COLUMN log_Version;"
        "ALTER TABLE Log ADD COLUMN log_Version LONGTEXT; ALTER TABLE Log ADD COLUMN log_More TEXT(5)");
    EXPECT_EQ(run({"check", path("a.mdb")}), 1);
    for (const char* line :
         {"Row 1 of FormChem refers to a row of Chemical that is not there",
          "CHECK constraint failed in Formula", "Column Patient.pat_Fax is missing",
          "Column Log.log_Version is LONGTEXT, not TEXT(40)", "Table Options has 2 rows, not one"})
        EXPECT_TRUE(out.contains(line)) << line << "\n" << qPrintable(out);
    EXPECT_FALSE(out.contains("log_More"));
}

TEST_F(DatabaseTool, CheckMissesRelationsAndTables) {
    QByteArray schema = schemaStatements();
    schema.replace("REFERENCES Log (LogID) ON DELETE CASCADE", "REFERENCES Log (LogID)");
    createDatabase(path("a.mdb"));
    support::runSql(path("a.mdb"), "DROP TABLE RXs; DROP TABLE LogChem; " +
                                       schema.mid(schema.indexOf("CREATE TABLE LogChem"),
                                                  schema.indexOf("-- One row for each patient") -
                                                      schema.indexOf("CREATE TABLE LogChem")));
    EXPECT_EQ(
        checkDatabase(path("a.mdb")),
        (QStringList{"Table RXs is missing", "The relation LogChem.LogID to Log with its rows is missing",
                     "The relation RXs.LogID to Log is missing",
                     "The relation RXs.PatientID to Patient is missing"}));
}

TEST_F(DatabaseTool, CheckOfWhatIsNoDatabaseFails) {
    write("a.mdb", QByteArray("garbage ").repeated(600));
    EXPECT_EQ(run({"check", path("a.mdb")}), 1);
    EXPECT_TRUE(err.contains("a.mdb"));
    EXPECT_EQ(run({"check", path("missing.mdb")}), 1);
}

TEST_F(DatabaseTool, BacksUpAFileInUse) {
    createSample(path("a.mdb"));
    platform::Connection connection;
    connection.open("Data Source=" + path("a.mdb"));
    connection.execute("UPDATE Chemical SET [chm_Lot] = 'NEW' WHERE [ChemicalID] = 1");
    ASSERT_EQ(run({"backup", path("a.mdb"), path("copy.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(stored("copy.mdb", "SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1"), "NEW");
    EXPECT_EQ(QFile::permissions(path("copy.mdb")) & 0x0077, 0);
    EXPECT_EQ(files(), (QStringList{"a.mdb", "copy.mdb"}));
    EXPECT_EQ(run({"backup", path("missing.mdb"), path("x.mdb")}), 1);
    EXPECT_EQ(files().size(), 2);
}

TEST_F(DatabaseTool, AFileThatStaysLockedIsNotTakenForCopied) {
    createSample(path("a.mdb"));
    const FileUser user(path("a.mdb"));
    EXPECT_EQ(run({"backup", path("a.mdb"), path("copy.mdb")}), 1);
    EXPECT_FALSE(err.isEmpty());
    EXPECT_EQ(run({"restore", path("a.mdb"), path("b.mdb")}), 1);
    EXPECT_FALSE(files().contains("copy.mdb"));
    EXPECT_FALSE(files().contains("b.mdb"));
}

TEST_F(DatabaseTool, ARestoreThatFailsLeavesTheFileWhereItWas) {
    createSample(path("copy.mdb"));
    createSample(path("a.mdb"));
    const QByteArray before = content("a.mdb");
    ASSERT_TRUE(QDir(path("")).mkdir("a.mdb.restored.part"));
    EXPECT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 1);
    EXPECT_EQ(content("a.mdb"), before);
    EXPECT_FALSE(files().contains("a.mdb.before-restore"));
}

TEST_F(DatabaseTool, APathMayHoldSeparators) {
    ASSERT_EQ(run({"sample", path("a;b=c.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(run({"check", path("a;b=c.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(run({"backup", path("a;b=c.mdb"), path("copy;.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(files(), (QStringList{"a;b=c.mdb", "copy;.mdb"}));
}

TEST_F(DatabaseTool, ACopyIsNeverWrittenThroughALink) {
    createSample(path("a.mdb"));
    write("mine", "my own");
    ASSERT_TRUE(QFile::link(path("mine"), path("copy.mdb.part")));
    ASSERT_EQ(run({"backup", path("a.mdb"), path("copy.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(content("mine"), "my own");
    EXPECT_FALSE(QFileInfo(path("copy.mdb")).isSymLink());
}

TEST_F(DatabaseTool, CheckTellsAMissingIdentity) {
    createDatabase(path("a.mdb"));
    support::runSql(path("a.mdb"),
                    "INSERT INTO FileIdentity (fid_Identity) SELECT fid_Identity FROM FileIdentity");
    EXPECT_EQ(checkDatabase(path("a.mdb")), QStringList{"Table FileIdentity has 2 identities, not one"});
    support::runSql(path("a.mdb"), "DROP TABLE FileIdentity");
    EXPECT_EQ(checkDatabase(path("a.mdb")), QStringList{"Table FileIdentity is missing"});
    support::runSql(path("a.mdb"), "UPDATE Options SET opt_Version = 1");
    EXPECT_EQ(checkDatabase(path("a.mdb")), QStringList{}) << "as the first version left it";
}

TEST_F(DatabaseTool, AnUnsoundCopyIsNotKept) {
    createSample(path("a.mdb"));
    support::runSql(path("a.mdb"), "PRAGMA foreign_keys = OFF; DELETE FROM Chemical WHERE ChemicalID = 1");
    EXPECT_EQ(run({"backup", path("a.mdb"), path("copy.mdb")}), 1);
    EXPECT_TRUE(err.contains("not sound"));
    EXPECT_EQ(files(), QStringList{"a.mdb"});
}

TEST_F(DatabaseTool, RestoresAndKeepsWhatWasThere) {
    createSample(path("copy.mdb"));
    ASSERT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 0) << qPrintable(err);
    EXPECT_FALSE(out.contains("kept"));
    write("a.mdb", "damaged");
    write("a.mdb-journal", "left over");
    ASSERT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 0) << qPrintable(err);
    EXPECT_EQ(run({"check", path("a.mdb")}), 0);
    EXPECT_EQ(content("a.mdb.before-restore"), "damaged");
    EXPECT_EQ(content("a.mdb.before-restore-journal"), "left over");
    for (const char* kept : {"a.mdb.before-restore", "a.mdb.before-restore-journal"})
        EXPECT_EQ(QFile::permissions(path(kept)) & QFile::Permissions(0x0077), QFile::Permissions()) << kept;
    {
        const FileUser user(path("a.mdb"));
        EXPECT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 1) << "while a change is under way";
        EXPECT_TRUE(err.contains("in use")) << qPrintable(err);
    }
    {
        const support::OtherProcess program([&] {
            static platform::ProcessLock lock(platform::lockPathOf(path("a.mdb")));
            return lock.take() == platform::ProcessLock::Outcome::Taken;
        });
        EXPECT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 1) << "while the program has it open";
        EXPECT_TRUE(err.contains("in use")) << qPrintable(err);
    }
    ASSERT_EQ(run({"restore", path("copy.mdb"), path("a.mdb")}), 0);
    EXPECT_TRUE(QFile::exists(path("a.mdb.before-restore-2")));
    write("bad.mdb", "damaged");
    EXPECT_EQ(run({"restore", path("bad.mdb"), path("a.mdb")}), 1);
    EXPECT_EQ(run({"check", path("a.mdb")}), 0);
}

}  // namespace
}  // namespace sorvanto
