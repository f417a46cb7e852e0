// The log beside the program and the list of reports of this run.
#include "shared/ErrorReporter.h"

#include "support/FixedClock.h"
#include "support/Hindrances.h"
#include "support/TempProgramFolder.h"
#include "support/WarningTrap.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

using sorvanto::ErrorReport;
using sorvanto::ErrorReporter;

namespace {

class ErrorReporterTest : public ::testing::Test {
protected:
    void SetUp() override {
        reporter.ReportPath(folder.path());
        reporter.ReportProduct("Sorvanto Control Panel");
        reporter.ReportVersion("1.0.0");
        reporter.ReportNote("");
        reporter.ReportStore("Kelmar Systems");
        reporter.ReportPhone("(555)010-0188");
        reporter.onReport([this](const ErrorReport& report) { announced.push_back(report); });
    }

    void report(const QString& description, const QString& tag = "frmLog:saveForm",
                const QString& number = "91") {
        reporter.ReportError(description, number, "Engine", 0, tag, "", true, false, true, true);
    }
    QString log() const { return QString::fromUtf8(folder.read("errors.log")); }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    support::WarningTrap warnings;
    ErrorReporter reporter;
    std::vector<ErrorReport> announced;
};

TEST_F(ErrorReporterTest, WritesTheWholeReport) {
    reporter.setFailedStatement("SELECT * FROM Log");
    report("No such table");
    EXPECT_EQ(log().toStdString(), "2026-03-07 14:05:09  frmLog:saveForm  error 91\n"
                                   "  Description: No such table\n"
                                   "  Source:      Engine\n"
                                   "  Statement:   SELECT * FROM Log\n"
                                   "  Product:     Sorvanto Control Panel\n"
                                   "  Version:     1.0.0\n"
                                   "  Store:       Kelmar Systems\n"
                                   "  Phone:       (555)010-0188\n");
    ASSERT_EQ(announced.size(), 1U);
    EXPECT_EQ(announced[0].tag, "frmLog:saveForm");
    EXPECT_EQ(announced[0].number, "91");
    EXPECT_EQ(announced[0].source, "Engine");
    EXPECT_EQ(announced[0].description, "No such table");
    EXPECT_EQ(announced[0].statement, "SELECT * FROM Log");
    EXPECT_EQ(announced[0].time, clock.now());
}

TEST_F(ErrorReporterTest, ANoteIsALineThatNobodyIsToldOf) {
    reporter.note("stood still for 180 ms: cmdExport (QAction)");
    EXPECT_EQ(log().toStdString(), "2026-03-07 14:05:09  stood still for 180 ms: cmdExport (QAction)\n");
    EXPECT_TRUE(announced.empty());
    EXPECT_TRUE(reporter.reports().empty());
}

TEST_F(ErrorReporterTest, BelongsToItsOwnerAlone) {
    report("one");
    EXPECT_EQ(QFile::permissions(folder.path("errors.log")) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(ErrorReporterTest, LinesOfATextStayInsideTheReport) {
    report("first\r\nsecond\rthird");
    EXPECT_TRUE(log().contains("  Description: first\n               second\n               third\n"));
}

TEST_F(ErrorReporterTest, TakesTheStatementOnce) {
    reporter.setFailedStatement("SELECT 1");
    report("one");
    report("two");
    ASSERT_EQ(reporter.reports().size(), 2U);
    EXPECT_EQ(reporter.reports()[0].statement, "SELECT 1");
    EXPECT_EQ(reporter.reports()[1].statement, "");
}

TEST_F(ErrorReporterTest, CountsRepeatsAndAnnouncesThemWithTheirCount) {
    report("No object", "frmMain:Form_Activate");
    clock.advance(60);
    report("No object", "frmMain:Form_Activate");
    report("No object", "frmMain:Form_Activate");
    ASSERT_EQ(announced.size(), 3U);
    EXPECT_EQ(announced[0].count, 1);
    EXPECT_EQ(announced[2].count, 3);
    ASSERT_EQ(reporter.reports().size(), 1U);
    EXPECT_EQ(reporter.reports()[0].count, 3);
    EXPECT_TRUE(log().endsWith(
        "2026-03-07 14:06:09  frmMain:Form_Activate  error 91, for the 2. time in this run\n"
        "2026-03-07 14:06:09  frmMain:Form_Activate  error 91, for the 3. time in this run\n"));
}

TEST_F(ErrorReporterTest, EveryDifferenceMakesANewReport) {
    report("a");
    report("b");
    report("a", "frmLog:openForm");
    report("a", "frmLog:saveForm", "13");
    reporter.setFailedStatement("SELECT 1");
    report("a");
    EXPECT_EQ(announced.size(), 5U);
}

TEST_F(ErrorReporterTest, PutsAFullLogAsideAndKeepsThree) {
    const QString filler(19'000, 'x');
    for (int i = 0; i < 300; ++i)
        report(QString::number(i) + filler);
    for (const char* name : {"errors.log", "errors.1.log", "errors.2.log", "errors.3.log"}) {
        EXPECT_TRUE(folder.has(name)) << name;
        EXPECT_LE(QFileInfo(folder.path(name)).size(), ErrorReporter::logLimit) << name;
    }
    EXPECT_FALSE(folder.has("errors.4.log"));
    EXPECT_TRUE(log().contains("Description: 299xxx"));
}

TEST_F(ErrorReporterTest, CutsAnEndlessText) {
    report(QString(5'000'000, 'x'));
    EXPECT_LT(folder.read("errors.log").size(), 25'000);
    EXPECT_TRUE(log().contains("xxx...\n"));
}

TEST_F(ErrorReporterTest, ABoundedNumberStaysInMemory) {
    for (std::size_t i = 0; i < ErrorReporter::keptReports + 10; ++i)
        report(QString::number(i));
    EXPECT_EQ(reporter.reports().size(), ErrorReporter::keptReports);
    EXPECT_EQ(reporter.reports().front().description, "10");
}

TEST_F(ErrorReporterTest, AnUnwritableFolderStopsNothing) {
    reporter.ReportPath(folder.path("no such folder"));
    report("one");
    EXPECT_EQ(announced.size(), 1U);
    EXPECT_FALSE(reporter.logFailure().isEmpty());
    reporter.ReportPath(folder.path());
    report("two");
    EXPECT_TRUE(reporter.logFailure().isEmpty());
    EXPECT_TRUE(log().contains("two"));
}

TEST_F(ErrorReporterTest, APipeInTheLogsPlaceKeepsNobodyWaiting) {
    ASSERT_EQ(::mkfifo(folder.path("errors.log").toLocal8Bit().constData(), 0600), 0);
    report("one");
    EXPECT_EQ(announced.size(), 1U);
    EXPECT_TRUE(reporter.logFailure().contains("no regular file")) << reporter.logFailure().toStdString();
}

TEST_F(ErrorReporterTest, AFullDiskStopsNothing) {
    const support::FullDisk full;
    report("one");
    EXPECT_EQ(announced.size(), 1U);
    EXPECT_FALSE(reporter.logFailure().isEmpty());
}

TEST_F(ErrorReporterTest, WithoutAPathTheProgramFolderServes) {
    ErrorReporter early;
    early.ReportError("early", "5", "", 0, "clsOptions:CreateConfig", "", true, false, true, true);
    EXPECT_EQ(log().toStdString(),
              "2026-03-07 14:05:09  clsOptions:CreateConfig  error 5\n  Description: early\n");
}

TEST_F(ErrorReporterTest, AListenerMayFailOrReportItself) {
    reporter.onReport([](const ErrorReport&) { throw 1; });
    reporter.onReport([this](const ErrorReport& seen) {
        if (seen.description == "one") {
            reporter.onReport([](const ErrorReport&) {});
            report("two");
        }
    });
    testing::internal::CaptureStderr();
    report("one");
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(announced.size(), 2U);
    EXPECT_EQ(announced[1].description, "two");
}

}  // namespace
