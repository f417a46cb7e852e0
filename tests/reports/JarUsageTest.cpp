// How often each jar was used, over all batches of a range.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "reports/rptJarUsage.h"
#include "shared/basMain.h"

using namespace platform;
using namespace sorvanto;

namespace {

class JarUsageTest : public DateRangeTest {};

}  // namespace

TEST_F(JarUsageTest, PageWithEveryTextAtItsPlace) {
    const RunPtr run = finished(jarUsage(begin, end));
    kept(*run, "small-jar-usage");
    support::expectGolden("reports/jar_usage.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(JarUsageTest, StatementByteForByte) {
    finished(jarUsage(begin, end));
    ASSERT_EQ(statements.size(), 1);
    EXPECT_EQ(
        str(statements[0]),
        "SELECT LT.log_JarSize AS JarSize , count(LT.log_JarSize) as Used FROM [SELECT FLT.log_JarSize from "
        "Log FLT WHERE FLT.log_date >=#01-01-2026#  and FLT.Log_Date<=#03-07-2026#]. AS LT group by "
        "LT.log_JarSize");
}

TEST_F(JarUsageTest, CountsTheJarsThatWereUsed) {
    auto report = jarUsage(begin, end);
    EXPECT_EQ(str(report->caption), "Jar Usage Report");
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(str(texts(*run, "txtJarSize").join('|')), "20 ml|30 ml");
    EXPECT_EQ(str(texts(*run, "txtUsed").join('|')), "2|1");
    EXPECT_EQ(str(text(*run, "lblReportTitle")), "Jar Usage Report - Sorvanto");
    EXPECT_EQ(str(text(*run, "lblDate")), "3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(text(*run, "txtReportDate")), "Report Dates: 1/1/2026 2:05:09 PM -- 3/7/2026 2:05:09 PM");
}

TEST_F(JarUsageTest, CancelledShowsNothing) {
    basMain::reportCancelled = false;
    rptJarUsage report(context);
    asker.expectModal("frmReportDate",
                      [](QWidget& form) { form.findChild<QAbstractButton*>("cmdCancel")->click(); });
    report.JarID(1);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
    EXPECT_TRUE(statements.isEmpty());
}

TEST_F(JarUsageTest, NothingInTheRangeSaysNoRecords) {
    rptJarUsage report(context);
    expectDates(end, begin);
    asker.expectMsgBox("No records");
    report.JarID(1);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
}

TEST_F(JarUsageTest, UnknownJarEndsTheReport) {
    sql("UPDATE Log SET log_JarSize = 44 WHERE LogID = 3;");
    ReportRun run(jarUsage(begin, end));
    EXPECT_THROW(run.makeAll(), RuntimeError);
    EXPECT_TRUE(run.isOver());
}

TEST_F(JarUsageTest, BrokenTableRisesToTheCaller) {
    sql("DROP TABLE LogChem; ALTER TABLE Log RENAME TO Gone;");
    rptJarUsage report(context);
    expectDates(begin, end);
    EXPECT_THROW(report.JarID(1), RuntimeError);
}
