// The health page: what each line says, and when it is something to look at.
#include "core/Health.h"
#include "Child.h"
#include "Hindrances.h"
#include "TestProgram.h"
#include "config/clsOptions.h"
#include "core/CopySettings.h"
#include "core/CopyShelf.h"
#include "core/HealthPage.h"
#include "core/KeysLeft.h"
#include "db/DatabaseFile.h"
#include "platform/basic/Dates.h"
#include "platform/data/Backup.h"
#include "platform/data/Connection.h"
#include "shared/basMain.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <atomic>
#include <future>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using support::child;

class HealthTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        sorvanto::createSample(databasePath());
        openDB();
        identity = sqlText("SELECT fid_Identity FROM FileIdentity");
        window.mixer = "COM1 SIM-2.1";
    }
    HealthLine line(const QString& name) {
        for (const HealthLine& each : healthLines(context, window)) {
            if (each.name.startsWith(name))
                return each;
        }
        ADD_FAILURE() << "No line " << name.toStdString();
        return {};
    }
    void copyNow() {
        platform::backupDatabase(databasePath(),
                                 CopyShelf(folder.path("backups"), identity).pathFor(platform::now()));
    }
    void useKeys(const char* table, int last) {
        sql(u"UPDATE sqlite_sequence SET seq = %1 WHERE name = '%2'"_s.arg(last).arg(QLatin1String(table)));
    }

    QString identity;
    WindowHealth window;
};

TEST_F(HealthTest, TheDatabaseWithItsRowsAndIdentity) {
    const HealthLine database = line("Database");
    EXPECT_TRUE(database.good);
    EXPECT_EQ(database.name, "Database sorvanto.mdb");
    EXPECT_TRUE(database.state.startsWith("Open, writable, ")) << database.state.toStdString();
    EXPECT_TRUE(database.detail.contains("Identity " + identity.left(8)));
    window.readingOnly = "The medium can not be written.";
    EXPECT_FALSE(line("Database").good);
    EXPECT_TRUE(line("Database").state.startsWith("Open for reading, "));
    EXPECT_EQ(line("Database").detail, window.readingOnly);
    EXPECT_EQ(line("Lock of the program").state, "Not held");
    EXPECT_FALSE(line("Lock of the program").good);
    basMain::gConnection->close();
    EXPECT_EQ(line("Database").state, "Not open");
    EXPECT_EQ(line("Keys left").state, "Not open");
}

TEST_F(HealthTest, TheRowsAreThoseOfAllSevenTablesOfRecords) {
    const QString rows = sqlText("SELECT (SELECT count(*) FROM Chemical) + (SELECT count(*) FROM Formula) + "
                                 "(SELECT count(*) FROM FormChem) + (SELECT count(*) FROM Log) + "
                                 "(SELECT count(*) FROM LogChem) + (SELECT count(*) FROM Patient) + "
                                 "(SELECT count(*) FROM RXs)");
    EXPECT_EQ(line("Database").state, "Open, writable, " + rows + " rows");
}

TEST_F(HealthTest, TheLockThatIsHeldSaysWhatItKeepsOut) {
    EXPECT_TRUE(line("Lock of the program").good);
    EXPECT_EQ(line("Lock of the program").state, "Held");
    EXPECT_EQ(line("Lock of the program").note, "No other Control Panel can change these records");
    window.readingOnly = "The medium can not be written.";
    EXPECT_EQ(line("Lock of the program").note, "");
}

TEST_F(HealthTest, KeysAreAmberFromThirtyThousandOnWithTheWayOut) {
    useKeys("Log", 29'999);
    EXPECT_TRUE(line("Keys left").good);
    EXPECT_EQ(line("Keys left").state, "Logs 2,768");
    EXPECT_TRUE(line("Keys left").detail.contains(u"Formulas\u00A032,745 · "_s))
        << line("Keys left").detail.toStdString();
    useKeys("Log", 30'000);
    EXPECT_FALSE(line("Keys left").good);
    EXPECT_TRUE(line("Keys left").detail.contains("sorvanto-db archive"));
    useKeys("Patient", 32'767);
    EXPECT_EQ(line("Keys left").state, "Patients 0");
}

TEST_F(HealthTest, TheTimeThatIsLeftComesFromTheLastThirtyDays) {
    sql("DELETE FROM RXs; DELETE FROM Log; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 210) "
        "INSERT INTO Log (log_Date) SELECT '2026-03-01 10:00:00' FROM n");
    useKeys("Log", 30'411);
    EXPECT_EQ(line("Keys left").note, "About 11 months at 7 batches a day");
    useKeys("Log", 32'600);
    EXPECT_EQ(line("Keys left").note, "Less than a month at 7 batches a day");
    sql("DELETE FROM Log WHERE LogID > (SELECT min(LogID) FROM Log) + 19");
    useKeys("Log", 32'740);
    EXPECT_EQ(line("Keys left").note, "About 1 month at 1 batch a day");
    useKeys("Patient", 32'760);
    EXPECT_EQ(line("Keys left").note, "") << "nothing is known of how fast patients come";
}

TEST_F(HealthTest, OneRowIsNotCalledRows) {
    sql("DELETE FROM RXs; DELETE FROM LogChem; DELETE FROM Log; DELETE FROM FormChem; DELETE FROM Formula;"
        "DELETE FROM Chemical; DELETE FROM Patient WHERE PatientID > (SELECT min(PatientID) FROM Patient)");
    EXPECT_EQ(line("Database").state, "Open, writable, 1 row");
}

TEST_F(HealthTest, TheNewestCopyIsOfToday) {
    EXPECT_EQ(line("Newest copy").state, "None yet");
    EXPECT_FALSE(line("Newest copy").good);
    copyNow();
    EXPECT_EQ(line("Newest copy").state, "2:05 PM, checked");
    EXPECT_EQ(line("Newest copy").note, "Copies in backups: 1");
    EXPECT_TRUE(line("Newest copy").good);
    clock.set(QDateTime(QDate(2026, 3, 8), QTime(9, 0), Qt::UTC));
    EXPECT_EQ(line("Newest copy").state, "3/7/2026 2:05 PM, checked");
    EXPECT_FALSE(line("Newest copy").good);
}

TEST_F(HealthTest, ReportsAndALogThatCannotBeWritten) {
    EXPECT_TRUE(line("Error log").good);
    reporter->ReportError("Overflow", "6", "test", 0, "x:y", {}, true, false, true, true);
    dropReports();
    EXPECT_EQ(line("Error log").state, "Problems in this run: 1");
    reporter->ReportPath(folder.path("missing"));
    reporter->ReportError("Another", "6", "test", 0, "x:y", {}, true, false, true, true);
    dropReports();
    EXPECT_EQ(line("Error log").state, "Can not be written");
    EXPECT_FALSE(line("Error log").note.isEmpty());
}

TEST_F(HealthTest, ALanguageFileThatIsBrokenMeanwhile) {
    EXPECT_TRUE(line("Options and language files").good);
    folder.write("EnglishTranslation.xml", "<Transl");
    EXPECT_EQ(line("Options and language files").state, "Language file not read");
}

TEST_F(HealthTest, SettingsOfTheCopiesThatCanNotBeRead) {
    ASSERT_EQ(::mkfifo(folder.path("copies.ini").toLocal8Bit().constData(), 0600), 0);
    const HealthLine place = line("Second place for copies");
    EXPECT_FALSE(place.good);
    EXPECT_EQ(place.state, "Can not be read");
    EXPECT_EQ(place.detail, folder.path("copies.ini") + ": it is no regular file");
}

TEST_F(HealthTest, ThePageSetsTheSecondPlaceAndChecksTheFile) {
    copyNow();
    HealthPage page(context, [this] { return window; });
    page.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    EXPECT_EQ(page.lines().front().note, "Checked 2:05 PM");
    EXPECT_EQ(child<QLabel>(page, "lblSummary")->text(), "All is well");
    auto* place = child<QLineEdit>(page, "txtSecondPlace");
    QDir(folder.path()).mkdir("stick");
    place->setText(folder.path("stick"));
    QTest::keyClick(place, Qt::Key_Return);
    EXPECT_EQ(CopySettings::read().secondPlace, folder.path("stick"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    place->setText(folder.path("nowhere"));
    QTest::keyClick(place, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    EXPECT_EQ(child<QLabel>(page, "lblSummary")->text(), "Things to look at: 1");
}

// A large file on a slow disk is not looked through in a moment, and is not left in one either.
TEST_F(HealthTest, ThePageClosesWithoutWaitingForItsCheck) {
    std::promise<void> disk;
    std::atomic<bool> cancelled = false, ended = false;
    const auto held = [&, answer = disk.get_future().share()](const QString&,
                                                              const platform::Cancelled& isCancelled) {
        answer.wait_for(std::chrono::seconds(20));
        cancelled = isCancelled();
        ended = true;
        return QStringList();
    };
    auto page = std::make_unique<HealthPage>(
        context, [this] { return window; }, nullptr, held);
    ASSERT_TRUE(page->isChecking());
    page.reset();
    EXPECT_FALSE(ended) << "it was waited for";
    disk.set_value();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended.load(); }, 20000));
    EXPECT_TRUE(cancelled);
}

TEST_F(HealthTest, WhatTheWindowKnowsIsShownAsItIs) {
    window.mixer = "no mixer";
    window.mixerGood = false;
    EXPECT_EQ(line("Mixer").state, "no mixer");
    EXPECT_FALSE(line("Mixer").good);
    EXPECT_EQ(healthLines(context, window).back().name, "Mixer")
        << "nothing is known of the preparations yet";
    window.preparations = "All 451";
    EXPECT_EQ(line("Preparations").state, "All 451");
}

TEST_F(HealthTest, ASecondPlaceIsThereOrNot) {
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    EXPECT_EQ(line("Second place for copies").state, "Not there now");
    QDir(folder.path()).mkdir("stick");
    EXPECT_EQ(line("Second place for copies").state, "Ready");
    EXPECT_TRUE(line("Second place for copies").good);
}

TEST_F(HealthTest, ASecondPlaceThatMayNotBeWrittenIsSaid) {
    CopySettings settings;
    settings.secondPlace = folder.path("stick");
    settings.write();
    QDir(folder.path()).mkdir("stick");
    ASSERT_EQ(::chmod(folder.path("stick").toLocal8Bit().constData(), 0555), 0);
    ASSERT_EQ(::chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
    ASSERT_EQ(::chmod(folder.path("copies.ini").toLocal8Bit().constData(), 0644), 0);
    const support::OrdinaryUser user;
    EXPECT_EQ(line("Second place for copies").state, "Can not be written");
    EXPECT_FALSE(line("Second place for copies").good);
}

TEST_F(HealthTest, ALineThatCanNotBeMadeSaysSoItself) {
    sql("PRAGMA foreign_keys = OFF; DROP TABLE Patient");
    EXPECT_EQ(line("Keys left").state, "Can not be read");
    EXPECT_FALSE(line("Keys left").good);
    EXPECT_FALSE(line("Keys left").detail.isEmpty());
}

TEST_F(HealthTest, OptionsThatWereNotReadAreSaid) {
    basMain::Options.reset();
    folder.write("options.xml", "<Configuration><Opt");
    basMain::Options = std::make_shared<clsOptions>(context);
    expectReport("clsOptions:Class_Initialize");
    EXPECT_EQ(line("Options and language files").state, "Options not read");
    EXPECT_FALSE(line("Options and language files").good);
}

TEST_F(HealthTest, ThePageSaysWhatTheLookThroughFound) {
    sql("PRAGMA foreign_keys = OFF; INSERT INTO RXs (LogID, PatientID) VALUES (12345, 54321)");
    HealthPage page(context, [this] { return window; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    EXPECT_EQ(page.lines().front().state, "Damaged");
    EXPECT_FALSE(page.lines().front().good);
    QFile::remove(databasePath());
    child<QPushButton>(page, "cmdAgain")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    EXPECT_EQ(page.lines().front().state, "Damaged");
    EXPECT_TRUE(page.lines().front().detail.contains("no such file"))
        << page.lines().front().detail.toStdString();
}

TEST_F(HealthTest, ThePageShowsItsWholeWidthOnASmallScreen) {
    window.mixer = "COM1 at 9600 baud, firmware SIM-2.1, the line is good";
    window.mixerNote = "simulated";
    copyNow();
    HealthPage page(context, [this] { return window; });
    page.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !page.isChecking(); }, 20000));
    const auto* card = child<QFrame>(page, "fraHealth");
    const auto* scroll = page.findChild<QScrollArea*>();
    EXPECT_LE(page.width(), page.screen()->availableSize().width());
    EXPECT_LE(card->mapTo(scroll->viewport(), QPoint(card->width(), 0)).x(), scroll->viewport()->width());
}

TEST_F(HealthTest, DamageThatTheEngineFindsIsSaid) {
    EXPECT_FALSE(checkedDatabase(context, {"row 3 missing from index"}, window).good);
    EXPECT_EQ(checkedDatabase(context, {"row 3 missing from index"}, window).detail,
              "row 3 missing from index");
}

}  // namespace
