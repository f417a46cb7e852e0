// A report shows the records as they were at one moment, whatever others change while it is made.
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "reports/DatedReport.h"
#include "reports/ReportRows.h"
#include "reports/rptChemicals.h"
#include "reports/rptLogFormula.h"
#include "reports/rptLogReport.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QProgressDialog>
#include <QThread>
#include <QTimer>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

/// Another program's changes, each of which shows on paper.
const QString lateChanges =
    u"UPDATE Chemical SET chm_Name = 'Late', chm_Lot = 'LATE', chm_Cost = 9;"
    "UPDATE Formula SET frm_Name = 'Late', frm_Instructions = 'Late', frm_AWP = 99;"
    "UPDATE FormChem SET fch_Qty = 7; DELETE FROM FormChem WHERE FormChemID = 12;"
    "UPDATE Log SET log_Name = 'Late', log_Lot = 'LATE', log_Cost = 1, log_JarSize = 4, log_Quantity = 9;"
    "UPDATE LogChem SET lch_Name = 'Late', lch_QTY = 9;"
    "UPDATE Patient SET pat_LName = 'Late', pat_City = 'Late';"
    "UPDATE RXs SET rxs_Price = 1, rxs_Doctor = 'Late'; DELETE FROM RXs WHERE RXsID = 32"_s;

class OneMomentTest : public DateRangeTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        DateRangeTest::SetUp();
        m_formula = clsFormula().openFormula(1, QString());
    }
    std::unique_ptr<Report> made() {
        const QString name = QString::fromLatin1(GetParam());
        if (name == "worksheet"_L1)
            return worksheet(1, 25);
        if (name == "formulaLog"_L1)
            return sheetOf(batch(2));
        if (name == "batchLabels"_L1)
            return batchLabels(2, u"3"_s, 6);
        if (name == "rxLabels"_L1)
            return prescriptionLabels(31, u"3"_s, 6);
        if (name == "logReport"_L1)
            return logReport(1, begin, end);
        if (name == "jarUsage"_L1)
            return jarUsage(begin, end);
        if (name == "patient"_L1)
            return patient(1, begin, end);
        auto list = std::make_unique<rptChemicals>(context);
        list->setChemicals(chemicalRows(context));
        return list;
    }
    /// Of the formula as it was before: it has only the instructions.
    std::unique_ptr<Report> sheetOf(const clsLogPtr& log) const {
        auto sheet = std::make_unique<rptLogFormula>(context);
        sheet->setLog(log);
        sheet->setFormula(m_formula);
        return sheet;
    }
    static QString paper(std::unique_ptr<Report> report) {
        return dumped(finished(std::move(report))->document());
    }

private:
    clsFormulaPtr m_formula;
};
const auto nameOfReport = [](const auto& info) { return std::string(info.param); };

class OneMomentPagesTest : public OneMomentTest {};
INSTANTIATE_TEST_SUITE_P(Reports, OneMomentPagesTest,
                         testing::Values("worksheet", "formulaLog", "batchLabels", "rxLabels", "logReport",
                                         "jarUsage", "patient", "chemicals"),
                         nameOfReport);

TEST_P(OneMomentPagesTest, ChangesWhileItsPagesAreMadeShowInNone) {
    const QString before = paper(made());
    std::unique_ptr<Report> report = made();
    sql(lateChanges);
    EXPECT_EQ(str(paper(std::move(report))), str(before));
    EXPECT_NE(str(paper(made())), str(before)) << "they show on the next one";
}

/// Those that ask several statements about the same records.
class OneMomentStatementsTest : public OneMomentTest {};
INSTANTIATE_TEST_SUITE_P(Reports, OneMomentStatementsTest,
                         testing::Values("worksheet", "formulaLog", "logReport", "patient"), nameOfReport);

TEST_P(OneMomentStatementsTest, ChangesBetweenItsStatementsShowInNone) {
    const QString before = paper(made());
    int asked = 0;
    basMain::gConnection->setTrace([&](const QString&) {
        if (++asked > 1)
            place().runAtOnce(databasePath(), lateChanges);
    });
    std::unique_ptr<Report> report = made();
    basMain::gConnection->setTrace({});
    EXPECT_GT(asked, 1);
    EXPECT_EQ(str(paper(std::move(report))), str(before));
}

/// While the user reads it, nobody is kept from writing.
TEST_P(OneMomentPagesTest, HoldsNothingOnceItIsRead) {
    const std::unique_ptr<Report> report = made();
    place().runAtOnce(databasePath(), u"UPDATE Patient SET pat_LName = 'Late'"_s);
    EXPECT_EQ(str(sqlText(u"SELECT DISTINCT pat_LName FROM Patient"_s)), "Late");
    openDB()->execute(u"UPDATE Patient SET pat_LName = 'Own'"_s);
    EXPECT_EQ(str(sqlText(u"SELECT DISTINCT pat_LName FROM Patient"_s)), "Own");
}

class UnreadReportTest : public DateRangeTest {};

TEST_F(UnreadReportTest, ALogReportThatCanNotBeReadIsNotShown) {
    sql(u"ALTER TABLE Log RENAME COLUMN log_Strength TO log_Gone"_s);
    rptLogReport report(context);
    expectDates(begin, end);
    report.FormulaID(1);
    expectReport(u"rptLogReport:FormulaID"_s);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
}

TEST_F(UnreadReportTest, TotalsThatCanNotBeReadAreToldAtTheFoot) {
    basMain::gConnection->setTrace([](const QString& statement) {
        if (statement.contains(u"Count(*) as Total"_s))
            throw RuntimeError(error::deviceIo, u"The disk is gone"_s);
    });
    const RunPtr run = finished(logReport(1, begin, end));
    expectReport(u"rptLogReport:ReportFooter_Format"_s);
    EXPECT_EQ(texts(*run, u"txtlog_Lot"_s).size(), 3);
    RunPtr broken = std::make_unique<ReportRun>(patient(1, begin, end));
    EXPECT_THROW(broken->makeAll(), RuntimeError);
}

class AllRowsTest : public DateRangeTest {};

/// Many rows, on a machine that is busy with something else at the first turn.
TEST_F(AllRowsTest, WindowsHaveTheirTurnMeanwhileAndItCanBeStopped) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name) WITH RECURSIVE n(i) AS (SELECT 1000 UNION ALL SELECT i + 1 FROM n "
        "WHERE i < 1699) SELECT i, 'Chemical' FROM n"_s);
    QTimer look;
    QTimer::singleShot(0, &look, [] { QThread::msleep(400); });
    look.callOnTimeout([] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* progress = qobject_cast<QProgressDialog*>(window); progress && progress->isVisible())
                progress->cancel();
        }
    });
    look.start(0);
    EXPECT_EQ(allRows(context,
                      u"SELECT a.chm_Name FROM Chemical AS a INNER JOIN Chemical AS b ON a.ChemicalID <> "
                      "b.ChemicalID"_s),
              nullptr);
    EXPECT_GT(allRows(context, u"SELECT chm_Name FROM Chemical"_s)->recordCount(), 700);
}

TEST_F(AllRowsTest, AReportWhoseReadingWasStoppedIsNotShown) {
    class Stopped : public DatedReport {
    public:
        explicit Stopped(Context& context) : DatedReport(context, {}) { setRowsOrNone(nullptr); }
    } const report(context);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
}

}  // namespace
