// The changes of a range of days on paper and as spreadsheet.
#include "ReportTest.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/report/Tools.h"
#include "reports/HistoryCaptions.h"
#include "reports/rptHistory.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class HistoryReportTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        useNewFile();
        place().unlockHistory(databasePath());
        sql("INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Urea', 2.5);"
            "UPDATE Chemical SET chm_Lot = 'A', chm_Cost = 3;"
            "INSERT INTO Patient (pat_LName) VALUES ('Stone'); DELETE FROM Patient;"
            "UPDATE History SET hst_Zone = 0, hst_When = '2026-03-0' || HistoryID || ' 10:00:00.000'");
    }
    static std::unique_ptr<rptHistory> report(int first, int last) {
        return std::make_unique<rptHistory>(context, openDB(), QDate(2026, 3, first), QDate(2026, 3, last));
    }
};

TEST_F(HistoryReportTest, ListsEachChangeOfTheDaysOldestFirst) {
    const RunPtr run = finished(report(2, 5));
    EXPECT_EQ(str(texts(*run, "txtChangeRecord").join('|')),
              "Chemical: Urea||Chemical: Urea||Patient: Stone|Patient: Stone");
    EXPECT_EQ(str(texts(*run, "txtChangeField").join('|')),
              "Chemical Name|Cost per Unit|Lot Number|Cost per Unit|Last Name|Last Name");
    EXPECT_EQ(str(texts(*run, "txtChangeBefore").join('|')), "|||2.5||Stone");
    EXPECT_EQ(str(texts(*run, "txtChangeAfter").join('|')), "Urea|2.5|A|3|Stone|");
    EXPECT_EQ(str(texts(*run, "txtChangeWhat").join('|')), "made||changed||made|deleted");
    EXPECT_EQ(str(texts(*run, "txtCount").join('|')), "4 changes");
    EXPECT_EQ(texts(*finished(report(3, 3)), "txtChangeField").size(), 2);
}

TEST_F(HistoryReportTest, IsExportedWithAllColumns) {
    const QString path = folder.path(u"history.xls"_s);
    ASSERT_TRUE(exportReport(report(2, 5), path, [](double) { return true; }));
    const QString cells = tools::output("/usr/bin/python3", {"-c", R"(
import sys, xlrd
for sheet in xlrd.open_workbook(sys.argv[1]).sheets():
    for row in range(sheet.nrows):
        print('|'.join(str(c.value) for c in sheet.row(row)))
)",
                                                             path});
    EXPECT_TRUE(cells.contains("Lot Number")) << str(cells);
    EXPECT_TRUE(cells.contains("Stone")) << str(cells);
}

TEST_F(HistoryReportTest, NamesWhatAChangeWasToTheUser) {
    const auto said = [](const QString& what, const QString& deed, const QString& note) {
        HistoryEntry entry;
        entry.what = what;
        entry.deed = deed;
        entry.note = note;
        return str(historyDeed(entry));
    };
    EXPECT_EQ(said(u"made"_s, u"signed"_s, {}), "signed");
    EXPECT_EQ(said(u"changed"_s, u"imported"_s, {}), "imported");
    EXPECT_EQ(said(u"changed"_s, u"imported"_s, u"prices.csv"_s), "imported from prices.csv");
    EXPECT_EQ(said(u"made"_s, u"restored"_s, {}), "restored");
    EXPECT_EQ(said(u"made"_s, u"new lot"_s, u"50% Urea %1"_s), "new lot of 50% Urea %1");
    EXPECT_EQ(said(u"restored"_s, {}, {}), "restored");
    EXPECT_EQ(said(u"begun"_s, {}, {}), "begun");
    EXPECT_EQ(said(u"archived"_s, {}, {}), "archived");
    EXPECT_EQ(said(u"forgotten"_s, {}, {}), "blanked");
    EXPECT_EQ(said(u"changed"_s, u"of a later version"_s, {}), "changed");
}

}  // namespace
