// All batches of a formula between two dates: statements byte for byte, the two ways of writing dates, totals.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/SystemLocale.h"
#include "reports/rptLogReport.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class LogReportTest : public DateRangeTest {};

}  // namespace

TEST_F(LogReportTest, PageWithEveryTextAtItsPlace) {
    const RunPtr run = finished(logReport(1, begin, end));
    kept(*run, "small-log-report");
    support::expectGolden("reports/log_report.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(LogReportTest, StatementsByteForByte) {
    finished(logReport(1, begin, end));
    ASSERT_EQ(statements.size(), 2);
    EXPECT_EQ(
        str(statements[0]),
        "SELECT Log.log_Date, Log.log_Lot, Log.log_JarSize, Log.log_Quantity, Log.log_Cost, "
        "Log.log_Initials, Log.log_Verified, Log.log_Name, Log.log_FormType, Log.log_Desc, "
        "Log.log_Strength, Log.log_NDC FROM Log WHERE Log.FormulaID=1 AND Log.log_Date >= #01-01-2026# AND "
        "Log.log_Date <= #03-07-2026#;");
    EXPECT_EQ(
        str(statements[1]),
        "SELECT Count(*) as TotalLogs, Sum(Log.log_Quantity) as TotalQTY ,Sum(Log.log_Cost) as TotalCost "
        "FROM Log WHERE Log.FormulaID=1 AND Log.log_Date >= #1/1/2026 2:05:09 PM# AND Log.log_Date <= "
        "#3/7/2026 2:05:09 PM#;");
}

TEST_F(LogReportTest, TextsAndTotals) {
    auto report = logReport(1, begin, end);
    EXPECT_EQ(str(report->caption), "Log Report");
    EXPECT_FALSE(basMain::reportCancelled);
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(str(text(*run, "lblReportTitle")), "Log Report - Sorvanto");
    EXPECT_EQ(str(text(*run, "lblDate")), "3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(text(*run, "txtReportDate")), "Report Dates: 1/1/2026 2:05:09 PM -- 3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(text(*run, "txtName")), "Cooling Gel 2 %\tCustom\t777-01");
    EXPECT_EQ(str(text(*run, "txtDesc")), "For the skin");
    EXPECT_EQ(str(texts(*run, "txtlog_Date").join('|')), "1/5/2026 9:30:00 AM|3/1/2026 4:00:00 PM|2/11/2026");
    EXPECT_EQ(str(texts(*run, "txtlog_JarSize").join('|')), "20 ml|30 ml|20 ml");
    EXPECT_EQ(str(texts(*run, "txtlog_Cost").join('|')), "$20.10|$1,225.20|$10.10") << "no blank";
    EXPECT_EQ(str(text(*run, "txtPage")), "Page 1");
    EXPECT_EQ(str(text(*run, "txtTotalLogs")), "3 Logs");
    EXPECT_EQ(str(text(*run, "txtTotalQTY")), "55 ml") << "whatever the units of the batches";
    EXPECT_EQ(str(text(*run, "txtTotalCost")), "$1255.40") << "no thousands mark";
    EXPECT_TRUE(run->document().notes.isEmpty());
}

TEST_F(LogReportTest, BatchOfTheEndDateIsOutOfTheListAndInTheTotals) {
    sql("UPDATE Log SET log_Date = '2026-03-07 10:00:00' WHERE LogID = 2;");
    const RunPtr run = finished(logReport(1, begin, end));
    EXPECT_EQ(texts(*run, "txtlog_Lot").size(), 2);
    EXPECT_EQ(str(text(*run, "txtTotalLogs")), "3 Logs");
    EXPECT_EQ(str(run->document().notes.join('|')),
              "The list shows 2 batches, the totals count 3: the list is bounded by 0:00 of both dates, the "
              "totals by their time of day.");
    const RunPtr earlier = finished(logReport(1, begin, day(2026, 3, 7, {9, 0})));
    EXPECT_EQ(str(text(*earlier, "txtTotalLogs")), "2 Logs");
    sql("UPDATE Log SET log_Date = '2026-03-07 00:00:00' WHERE LogID = 2;");
    EXPECT_EQ(texts(*finished(logReport(1, begin, end)), "txtlog_Lot").size(), 3);
    // The begin date's batch before the time is listed and not counted.
    sql("UPDATE Log SET log_Date = '2026-01-01 08:00:00' WHERE LogID = 1;");
    const RunPtr first = finished(logReport(1, begin, end));
    EXPECT_EQ(texts(*first, "txtlog_Lot").size(), 3);
    EXPECT_EQ(str(text(*first, "txtTotalLogs")), "2 Logs");
}

TEST_F(LogReportTest, TotalsThatReadTheDatesMonthFirstAreExplained) {
    sql("DELETE FROM LogChem; DELETE FROM RXs; DELETE FROM Log WHERE LogID <> 3;");
    platform::setSystemLocale(QLocale("fr_FR"));
    const RunPtr run = finished(logReport(1, day(2026, 2, 5, {8, 0}), day(2026, 3, 4, {8, 0})));
    platform::setSystemLocale(std::nullopt);
    EXPECT_EQ(str(run->document().notes.join('|')), "The list shows 1 batch, the totals count " +
                                                        str(text(*run, "txtTotalLogs").section(' ', 0, 0)) +
                                                        ": the totals read the two dates month first.");
}

TEST_F(LogReportTest, CancelledShowsNothing) {
    rptLogReport report(context);
    asker.expectModal("frmReportDate",
                      [](QWidget& form) { form.findChild<QAbstractButton*>("cmdCancel")->click(); });
    report.FormulaID(1);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
    EXPECT_TRUE(statements.isEmpty());
}

TEST_F(LogReportTest, ReversedDatesOrOutsideTheRangeSayNoRecords) {
    for (const auto& [from, to] : {std::pair{end, begin}, {day(2020, 1, 1), day(2020, 2, 1)}}) {
        basMain::reportCancelled = false;
        rptLogReport report(context);
        expectDates(from, to);
        asker.expectMsgBox("No records");
        report.FormulaID(1);
        EXPECT_TRUE(basMain::reportCancelled);
        EXPECT_TRUE(report.isUnloaded());
    }
}

TEST_F(LogReportTest, AnswerAfterACancelledOneCountsAnew) {
    basMain::reportCancelled = true;
    logReport(1, begin, end);
    EXPECT_FALSE(basMain::reportCancelled);
}

TEST_F(LogReportTest, WithoutAnyCostTheTotalKeepsItsZeroWithoutCurrency) {
    sql("UPDATE Log SET log_Cost = NULL;");
    const RunPtr run = finished(logReport(1, begin, end));
    EXPECT_EQ(str(text(*run, "txtTotalCost")), "0.00");
    EXPECT_EQ(str(texts(*run, "txtlog_Cost").join('|')), "||");
    platform::setSystemLocale(QLocale("de_DE"));
    EXPECT_EQ(str(text(*finished(logReport(1, begin, end)), "txtTotalCost")), "0,00");
    platform::setSystemLocale(std::nullopt);
}

TEST_F(LogReportTest, EveryPageHasTheHeadOfItsFirstRow) {
    QString more;
    for (int i = 0; i < 60; ++i)
        more += u"INSERT INTO Log (FormulaID, log_Name, log_Strength, log_NDC, log_FormType, log_JarSize, "
                u"log_Quantity, log_Date, log_Lot) VALUES (1, 'Later %1', '', 'N', 1, 1, 5, '2026-03-02 "
                u"00:00:00', 'X%1');"_s.arg(i);
    sql(more);
    const RunPtr run = finished(logReport(1, begin, end));
    const QStringList heads = texts(*run, "txtName");
    ASSERT_EQ(static_cast<std::size_t>(heads.size()), run->document().pages.size());
    EXPECT_GT(heads.size(), 2);
    EXPECT_EQ(str(heads[0]), "Cooling Gel 2 %\tCustom\t777-01");
    EXPECT_TRUE(heads[1].startsWith("Later ")) << str(heads[1]);
    EXPECT_EQ(texts(*run, "lblReportTitle").size(), 1);
    for (int page = 0; page < heads.size(); ++page)
        EXPECT_EQ(str(texts(*run, "txtPage")[page]), str(u"Page %1"_s.arg(page + 1)));
}

TEST_F(LogReportTest, UnknownJarIsReportedAndTheReportGoesOn) {
    sql("UPDATE Log SET log_JarSize = 44 WHERE LogID = 3;");
    const RunPtr run = finished(logReport(1, begin, end));
    expectReport("rptLogReport:Detail_Format");
    EXPECT_EQ(texts(*run, "txtlog_Lot").size(), 3);
    EXPECT_EQ(str(texts(*run, "txtlog_JarSize").join('|')), "20 ml|30 ml|44");
}

TEST_F(LogReportTest, UnknownTypeIsReportedOnceAPage) {
    sql("UPDATE Log SET log_FormType = 44;");
    finished(logReport(1, begin, end));
    expectReport("rptLogReport:PageHeader_Format");
}

TEST_F(LogReportTest, BrokenTableIsReportedByTheEntryPoint) {
    sql("DROP TABLE LogChem; ALTER TABLE Log RENAME TO Gone;");
    rptLogReport report(context);
    expectDates(begin, end);
    report.FormulaID(1);
    expectReport("rptLogReport:FormulaID");
}
