// The windows before the questions about a database or options that are lost: what they say and what they do.
#include "core/DatabaseRescue.h"
#include "Child.h"
#include "SilentPort.h"
#include "TestProgram.h"
#include "config/clsOptions.h"
#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "core/OptionsRescue.h"
#include "db/DatabaseFile.h"
#include "history/HistoryPause.h"
#include "platform/basic/Dates.h"
#include "platform/basic/ProcessLock.h"
#include "platform/data/Backup.h"
#include "shared/basMain.h"

#include <QDir>
#include <QLabel>
#include <QProcess>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using platform::Answer;
using platform::Buttons;
using support::child;

const QString question = u"StartQuestion"_s;
const QString invalid = u"Database location invalid, please select new location."_s;

QString textsOf(const QWidget& window) {
    QStringList texts;
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (!label->text().isEmpty())
            texts << label->text();
    }
    return texts.join('\n');
}

class DatabaseRescueTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        start(false);
    }
    void start(bool firstStart) {
        basMain::rescueDatabase = [rescue = std::make_shared<DatabaseRescue>(context, firstStart)](
                                      const QString& path) { return rescue->offer(path); };
    }
    /// A database with an identity that was open before, and one batch.
    void haveDatabase() {
        sorvanto::createDatabase(databasePath());
        sql("INSERT INTO Log (log_Name, log_Lot) VALUES ('Gel', 'SV04260001')");
        identity = sqlText("SELECT fid_Identity FROM FileIdentity");
        CopySettings::remember(databasePath(), identity);
    }
    void copyNow() {
        const QString copy = CopyShelf(folder.path("backups"), identity).pathFor(platform::now());
        platform::backupDatabase(databasePath(), copy);
    }
    void damage() { folder.write("sorvanto.mdb", QByteArray(9000, 'x')); }
    /// The next window: its texts, then the button of that name.
    void answer(const QString& button) {
        asker.expectModal(question, [this, button](QWidget& window) {
            said = textsOf(window);
            fileTip = child<QLabel>(window, "lblFile")->toolTip();
            buttons.clear();
            for (const auto* each : window.findChildren<QPushButton*>())
                buttons << each->objectName() + (each->isDefault() ? "*"_L1 : ""_L1);
            buttons.sort();
            child<QPushButton>(window, button)->click();
        });
    }
    void answerThenEnd() {
        answer("cmdNone");
        asker.expectMsgBox(invalid, {Buttons::YesNoCancel}, Answer::No);
    }
    /// The closed journal of a batch that was logged at that hour of the day.
    void logMix(const QString& id, const QString& lot, int hour, const QString& state = u"logged"_s,
                const QString& more = {}) {
        const QString name = u"mixes/closed/20260307-000000-%1.xml"_s.arg(id);
        QDir(folder.path()).mkpath("mixes/closed");
        folder.write(name, u"<Mix ID=\"%1\" State=\"%4\" %5><Formula/><Results Value=\"%2\">"
                           "<PreparationNumber Value=\"%3\"/></Results></Mix>"_s
                               .arg(id, lot.chopped(4), lot.right(4), state, more)
                               .toUtf8());
        QFile file(folder.path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime(QDate(2026, 3, 7), QTime(hour, 0)), QFileDevice::FileModificationTime);
    }

    QString identity, said, fileTip;
    QStringList buttons;
};

TEST_F(DatabaseRescueTest, AServerThatIsNotThereIsToldAsSuchAndAskedAboutOnce) {
    support::SilentPort port;
    port.close();
    basMain::Options->DBLocation(u"postgresql://bench@127.0.0.1:%1/sorvanto"_s.arg(port.number()));
    answer("cmdAgain");
    answer("cmdNone");
    EXPECT_EQ(openDB()->state(), 0);
    expectReport("frmMain:openDB");
    EXPECT_TRUE(said.contains("The server does not give the records.")) << said.toStdString();
    EXPECT_TRUE(said.contains("Nothing answers there.")) << said.toStdString();
    EXPECT_EQ(buttons, QStringList({"cmdAgain*", "cmdNone"}));
    EXPECT_FALSE(basMain::rescueDatabase(basMain::Options->DBLocation()));
    EXPECT_EQ(programEnds, 0);
}

TEST_F(DatabaseRescueTest, ADamagedFileGetsItsNewestGoodCopyAndIsKept) {
    haveDatabase();
    copyNow();
    sql("INSERT INTO Log (log_Name, log_Lot) VALUES ('Cream', 'SV04260002')");
    damage();
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("The database is damaged.")) << said.toStdString();
    EXPECT_TRUE(said.contains("Copy of today 2:05 PM, checked."));
    EXPECT_TRUE(said.contains("Batches in the copy: 1."));
    EXPECT_TRUE(said.contains("Changes of records since the copy are not in it."));
    EXPECT_TRUE(said.contains("The damaged file is kept beside it."));
    EXPECT_EQ(buttons, (QStringList{"cmdAgain", "cmdNone", "cmdPutBack*"})) << "Return takes the way out";
    EXPECT_EQ(fileTip, databasePath());
    EXPECT_EQ(sqlText("SELECT log_Lot FROM Log"), "SV04260001");
    EXPECT_EQ(folder.read("sorvanto.mdb.before-restore"), QByteArray(9000, 'x'));
}

TEST_F(DatabaseRescueTest, BatchesLoggedSinceTheCopyAreOfferedAgain) {
    haveDatabase();
    copyNow();
    logMix("00000001", "SV04260001", 15);
    logMix("00000002", "SV04260002", 15);
    logMix("00000003", "SV04260003", 9);
    logMix("00000004", "SV04260004", 15, "put aside");
    logMix("00000005", "SV04260005", 15, "logged", "Database=\"another\"");
    logMix("00000006", "SV04260006", 15, "logged", "Signed=\"2026-03-07 09:00:00\"");
    damage();
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("Batches logged since then: 1.")) << said.toStdString();
    EXPECT_TRUE(folder.read("mixes/00000002.xml").contains("State=\"finished\""));
    EXPECT_EQ(QDir(folder.path("mixes")).entryList(QDir::Files).size(), 1);
    EXPECT_EQ(QDir(folder.path("mixes/closed")).entryList(QDir::Files).size(), 5);
}

// The database is back then: it is not put back once more.
TEST_F(DatabaseRescueTest, ABatchThatCanNotBeOfferedAgainIsSaidOnce) {
    haveDatabase();
    copyNow();
    logMix("00000002", "SV04260002", 15);
    logMix("00000003", "SV04260003", 15);
    damage();
    QDir(folder.path()).mkpath("mixes/00000002.xml");
    answer("cmdPutBack");
    asker.expectModal(question, [&](QWidget& window) {
        const QString told = textsOf(window);
        EXPECT_TRUE(told.contains("The database is back.")) << told.toStdString();
        EXPECT_TRUE(told.contains("could not be opened again: SV04260002: ")) << told.toStdString();
        EXPECT_FALSE(told.contains("SV04260003"));
        child<QPushButton>(window, "cmdNone")->click();
    });
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(folder.has("mixes/00000003.xml")) << "the others are";
    EXPECT_FALSE(folder.has("sorvanto.mdb.before-restore-2"));
}

TEST_F(DatabaseRescueTest, ADatabaseThatAnotherComputerHasLockedIsNotReplaced) {
    haveDatabase();
    copyNow();
    damage();
    {
        platform::ProcessLock own(platform::lockPathOf(databasePath()));
        ASSERT_EQ(own.take(), platform::ProcessLock::Outcome::Taken);
        QList<QByteArray> lines = folder.read("sorvanto.mdb.lock").split('\n');
        lines[2] = "bench-2";
        lines[3] = QByteArray(32, '0');
        own.release();
        folder.write("sorvanto.mdb.lock", lines.join('\n'));
    }
    answer("cmdPutBack");
    asker.expectModal(question, [&](QWidget& window) {
        EXPECT_TRUE(
            textsOf(window).contains("was locked on the computer bench-2. If the program does not run "
                                     "there, delete the file " +
                                     folder.path("sorvanto.mdb.lock") + "."))
            << textsOf(window).toStdString();
        EXPECT_EQ(folder.read("sorvanto.mdb"), QByteArray(9000, 'x'));
        QFile::remove(folder.path("sorvanto.mdb.lock"));
        child<QPushButton>(window, "cmdPutBack")->click();
    });
    EXPECT_EQ(openDB()->state(), 1);
}

TEST_F(DatabaseRescueTest, ThatItWasPutBackIsInItsHistoryFromTheBeginning) {
    haveDatabase();
    copyNow();
    platform::restoreDatabase(
        CopyShelf(folder.path("backups"), identity).copies().at(0).path, databasePath(),
        [&](const QString& restored) {
            EXPECT_NE(restored, databasePath());
            noteRestored(restored, "copy.mdb");
            EXPECT_EQ(sqlText("SELECT count(*) FROM History WHERE hst_What = 'restored'"), "0");
        });
    EXPECT_EQ(sqlText("SELECT hst_Fields FROM History WHERE hst_What = 'restored'"), "copy='copy.mdb'");
}

TEST_F(DatabaseRescueTest, ACopyThatIsDamagedItselfIsPassedOver) {
    haveDatabase();
    copyNow();
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(8, 12), Qt::UTC));
    const QString newest = CopyShelf(folder.path("backups"), identity).pathFor(platform::now());
    folder.write("backups/" + QFileInfo(newest).fileName(), QByteArray(9000, 'y'));
    damage();
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("Copy of 3/7/2026 2:05 PM, checked.")) << said.toStdString();
}

TEST_F(DatabaseRescueTest, ACopyThatOpensAndIsNotSoundOrNotItsOwnIsPassedOver) {
    haveDatabase();
    copyNow();
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(8, 12), Qt::UTC));
    const CopyShelf shelf(folder.path("backups"), identity);
    const QString unsound = shelf.pathFor(platform::now());
    ASSERT_TRUE(QFile::copy(databasePath(), unsound));
    support::runSql(unsound,
                    "PRAGMA foreign_keys = OFF; INSERT INTO RXs (LogID, PatientID) VALUES (12345, 54321)");
    sorvanto::createDatabase(shelf.pathFor(platform::now()));
    damage();
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("Copy of 3/7/2026 2:05 PM, checked.")) << said.toStdString();
}

TEST_F(DatabaseRescueTest, ADamagedFileIsNoFirstStart) {
    haveDatabase();
    copyNow();
    start(true);
    damage();
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("The database is damaged."));
}

TEST_F(DatabaseRescueTest, TheNewestOfBothPlacesIsOffered) {
    haveDatabase();
    copyNow();
    sql("INSERT INTO Log (log_Name, log_Lot) VALUES ('Cream', 'SV04260002')");
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(8, 12), Qt::UTC));
    copyNow();
    sql("INSERT INTO Log (log_Name, log_Lot) VALUES ('Paste', 'SV04260003')");
    clock.set(QDateTime(QDate(2026, 3, 9), QTime(8, 12), Qt::UTC));
    const QString newest =
        QFileInfo(CopyShelf(folder.path("backups"), identity).pathFor(platform::now())).fileName();
    QDir(folder.path()).mkdir("stick");
    platform::backupDatabase(databasePath(), folder.path("stick/" + newest));
    damage();
    answer("cmdPutBack");
    openDB();
    EXPECT_TRUE(said.contains("Copy of 3/8/2026 8:12 AM, checked.")) << said.toStdString();
    basMain::gConnection->close();

    CopySettings settings = CopySettings::read();
    settings.secondPlace = folder.path("stick");
    settings.write();
    damage();
    answer("cmdPutBack");
    openDB();
    EXPECT_TRUE(said.contains("Copy of today 8:12 AM, checked.")) << said.toStdString();
    EXPECT_EQ(sqlText("SELECT count(*) FROM Log"), "3");
}

TEST_F(DatabaseRescueTest, WhereTheIdentityIsNotKnownCopiesOfTwoDatabasesAreNotGuessedAmong) {
    haveDatabase();
    copyNow();
    QFile::remove(folder.path("copies.ini"));
    sorvanto::createDatabase(folder.path("other.mdb"));
    const auto other = support::runSql(folder.path("other.mdb"), "SELECT fid_Identity FROM FileIdentity");
    const QString theirs =
        CopyShelf(folder.path("backups"), support::rowsText(other)).pathFor(platform::now());
    platform::backupDatabase(folder.path("other.mdb"), theirs);
    damage();
    answerThenEnd();
    openDB();
    EXPECT_TRUE(said.contains("No good copy of it was found in backups."));
    EXPECT_TRUE(QFile::remove(theirs));
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1) << "those of one database are its own";
}

TEST_F(DatabaseRescueTest, ACopyOfAnotherDatabaseIsNeverOffered) {
    haveDatabase();
    copyNow();
    CopySettings::remember(databasePath(), QString(32, 'f'));
    damage();
    answerThenEnd();
    openDB();
    EXPECT_TRUE(said.contains("No good copy of it was found in backups."));
    EXPECT_EQ(buttons, (QStringList{"cmdAgain*", "cmdNone"}));
    EXPECT_EQ(programEnds, 1);
}

TEST_F(DatabaseRescueTest, AFileThatIsGoneComesBackWithoutTheJournalThatItLeft) {
    haveDatabase();
    copyNow();
    QFile::remove(databasePath());
    folder.write("sorvanto.mdb-journal", "left over");
    answer("cmdPutBack");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("The database is gone."));
    EXPECT_FALSE(folder.has("sorvanto.mdb-journal"));
    EXPECT_EQ(folder.read("sorvanto.mdb.before-restore-journal"), "left over");
}

TEST_F(DatabaseRescueTest, AnAbsentFolderGetsTryAgainAlone) {
    haveDatabase();
    copyNow();
    const QString path = folder.path("share/sorvanto.mdb");
    CopySettings::remember(path, identity);
    basMain::Options->DBLocation(path);
    asker.expectModal(question, [&](QWidget& window) {
        said = textsOf(window);
        EXPECT_EQ(window.findChild<QPushButton*>("cmdPutBack"), nullptr);
        QDir(folder.path()).mkdir("share");
        QFile::rename(databasePath(), path);
        child<QPushButton>(window, "cmdAgain")->click();
    });
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("The folder of the database is not there."));
}

TEST_F(DatabaseRescueTest, ALockedFileGetsTryAgainAlone) {
    haveDatabase();
    copyNow();
    QProcess shell;
    shell.start("sqlite3", {databasePath()});
    shell.write("BEGIN EXCLUSIVE;\nSELECT 'held';\n");
    ASSERT_TRUE(shell.waitForReadyRead());
    asker.expectModal(question, [&](QWidget& window) {
        said = textsOf(window);
        EXPECT_EQ(window.findChild<QPushButton*>("cmdPutBack"), nullptr);
        shell.closeWriteChannel();
        shell.waitForFinished();
        child<QPushButton>(window, "cmdAgain")->click();
    });
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(said.contains("Another program keeps the database locked."));
}

TEST_F(DatabaseRescueTest, AMissingFileIsAskedAboutOnceAndThenToldAsEver) {
    const auto told = [this] {
        asker.expectMsgBox("Database file not found. Please set in options",
                           {Buttons::Ok, platform::Icon::Information}, "DATABASE NOT FOUND");
    };
    answer("cmdNone");
    told();
    EXPECT_EQ(openDB()->state(), 0);
    told();
    EXPECT_EQ(openDB()->state(), 0);
    EXPECT_FALSE(folder.has("sorvanto.mdb"));
}

TEST_F(DatabaseRescueTest, APlaceThatCannotBeWrittenIsSaidInTheSameWindow) {
    haveDatabase();
    copyNow();
    damage();
    QDir(folder.path()).mkdir("sorvanto.mdb.restored.part");
    answer("cmdPutBack");
    asker.expectModal(question, [&](QWidget& window) {
        EXPECT_TRUE(textsOf(window).contains("restored.part")) << textsOf(window).toStdString();
        QDir(folder.path()).rmdir("sorvanto.mdb.restored.part");
        child<QPushButton>(window, "cmdPutBack")->click();
    });
    EXPECT_EQ(openDB()->state(), 1);
}

TEST_F(DatabaseRescueTest, AFirstStartMakesTheDatabaseThatIsWished) {
    start(true);
    answer("cmdEmpty");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_EQ(buttons, (QStringList{"cmdChoose", "cmdEmpty*", "cmdNone", "cmdSample"}));
    EXPECT_EQ(sqlText("SELECT count(*) FROM Formula"), "0");
    basMain::gConnection->close();
    QFile::remove(databasePath());
    answer("cmdSample");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_EQ(sqlText("SELECT count(*) FROM Formula"), "22");
}

TEST_F(DatabaseRescueTest, AFirstStartTakesAnotherFileAndRemembersIt) {
    start(true);
    sorvanto::createDatabase(folder.path("mine.mdb"));
    asker.expectModal(question, [&](QWidget& window) { child<QPushButton>(window, "cmdChoose")->click(); });
    asker.expectFile(QString(), folder.path("mine.mdb"), "Choose a file...");
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_TRUE(folder.read("options.xml").contains("mine.mdb"));
}

TEST_F(DatabaseRescueTest, TheWindowSpeaksTheLanguageOfTheOptions) {
    folder.write("GermanTranslation.xml",
                 "<Translations Language=\"German\"><Translate English=\"The database is damaged.\" "
                 "Translated=\"Die Datenbank ist beschädigt.\"/></Translations>");
    basMain::Options->Language(2);
    basMain::Language.reset();
    damage();
    answerThenEnd();
    openDB();
    EXPECT_TRUE(said.contains(u"Die Datenbank ist beschädigt."_s)) << said.toStdString();
    EXPECT_FALSE(basMain::Language);
}

class OptionsRescueTest : public DatabaseRescueTest {
protected:
    void breakOptions() {
        folder.write("options.xml", "<Configuration><Opt");
        basMain::Options.reset();
        folder.write("options.xml", "<Configuration><Opt");
        basMain::Options = std::make_shared<clsOptions>(context);
        expectReport("clsOptions:Class_Initialize");
    }
};

TEST_F(OptionsRescueTest, TheLastGoodOptionsAreOffered) {
    breakOptions();
    answer("cmdLastGood");
    offerOptions(context, *basMain::Options);
    EXPECT_TRUE(said.contains("The options could not be read.")) << said.toStdString();
    EXPECT_TRUE(said.contains("The file is damaged, or it is another file."));
    EXPECT_TRUE(said.contains("line 1: ")) << "the system's own word, for a helper";
    EXPECT_EQ(basMain::Options->StoreName(), "Kelmar Systems");
}

TEST_F(OptionsRescueTest, TheWindowSpeaksTheLanguageOfTheLastGoodOptions) {
    folder.write("GermanTranslation.xml",
                 "<Translations Language=\"German\"><Translate English=\"The options could not be read.\" "
                 "Translated=\"Die Optionen konnten nicht gelesen werden.\"/></Translations>");
    basMain::Options->Language(2);
    basMain::Options->saveOptions();
    breakOptions();
    basMain::Language.reset();
    answer("cmdNone");
    offerOptions(context, *basMain::Options);
    EXPECT_TRUE(said.contains("Die Optionen konnten nicht gelesen werden.")) << said.toStdString();
}

TEST_F(OptionsRescueTest, WithoutAChoiceTheFileStaysAsItIs) {
    breakOptions();
    answer("cmdNone");
    offerOptions(context, *basMain::Options);
    basMain::Options->saveOptions();
    EXPECT_EQ(folder.read("options.xml"), "<Configuration><Opt");
}

TEST_F(OptionsRescueTest, NewOptionsAskTheLanguageAsAtAFirstStart) {
    breakOptions();
    QFile::remove(folder.path("options.last-good.xml"));
    answer("cmdNew");
    asker.expectModal("frmWizard", [](QWidget& wizard) { wizard.close(); });
    offerOptions(context, *basMain::Options);
    EXPECT_EQ(buttons, (QStringList{"cmdNew*", "cmdNone"}));
    EXPECT_EQ(basMain::Options->StoreName(), "Kelmar Systems");
    EXPECT_EQ(folder.read("options.broken.xml"), "<Configuration><Opt");
}

TEST_F(OptionsRescueTest, OptionsThatAreGoneComeBackBeforeNewOnesAreMade) {
    const QByteArray good = folder.read("options.xml");
    QFile::remove(folder.path("options.xml"));
    basMain::Language.reset();
    answer("cmdLastGood");
    bringOptionsBack(context);
    EXPECT_TRUE(said.contains("The options are gone.")) << said.toStdString();
    EXPECT_EQ(buttons, (QStringList{"cmdLastGood*", "cmdNone"}));
    EXPECT_EQ(folder.read("options.xml"), good);
    bringOptionsBack(context);  // asks nothing
    QFile::remove(folder.path("options.xml"));
    answer("cmdNone");
    bringOptionsBack(context);
    EXPECT_FALSE(folder.has("options.xml")) << "the start makes new ones";
    QFile::remove(folder.path("options.last-good.xml"));
    bringOptionsBack(context);  // a first start
}

TEST_F(OptionsRescueTest, OptionsThatWereReadAskNothing) { offerOptions(context, *basMain::Options); }

}  // namespace
