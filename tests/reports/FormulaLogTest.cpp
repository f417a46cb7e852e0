// The record of a made batch: all from the log but the instructions, money in the currency of the options.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/Tools.h"
#include "reports/rptLogFormula.h"
#include "shared/basMain.h"

using namespace platform;
using namespace sorvanto;

namespace {

class FormulaLogTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
        speak("English");
    }
};

}  // namespace

TEST_F(FormulaLogTest, PageWithEveryTextAtItsPlace) {
    const RunPtr run = finished(formulaLog(2));
    kept(*run, "small-formula-log");
    support::expectGolden("reports/formula_log.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(FormulaLogTest, PdfMeasuresAsTold) {
    const auto words = tools::words(pdf(*finished(formulaLog(2)), "log"));
    const auto left = [&](const char* word) { return tools::wordOf(words, word).left; };
    constexpr double near = 0.15;
    EXPECT_NEAR(left("3/1/2026"), 162, near);
    EXPECT_NEAR(left("RK"), 355.5, near);
    EXPECT_NEAR(left("LM"), 481.5, near);
    EXPECT_NEAR(tools::wordOf(words, "25.00").right, 211.5, near);
    EXPECT_NEAR(left("$1,225.20"), 360, near);
    EXPECT_NEAR(left("$41.50"), 481.5, near);
    EXPECT_NEAR(left("Form"), 162, near);
    EXPECT_NEAR(left("Supplier"), 342, near);
    EXPECT_NEAR(left("Camphor"), 27, near);
    EXPECT_NEAR(left("L300"), 279, near);
    EXPECT_NEAR(left("Harbor"), 342, near);
    EXPECT_NEAR(left("$6.17"), 400.5, near);
    EXPECT_NEAR(left("AB0012"), 67.5, near);
    EXPECT_NEAR(tools::wordOf(words, "Borax").top - tools::wordOf(words, "Camphor").top, 14.25, near);
}

TEST_F(FormulaLogTest, HeadComesFromTheLog) {
    const RunPtr run = finished(formulaLog(2));
    EXPECT_EQ(str(text(*run, "txtTitle")), "Formula Log -- Sorvanto");
    EXPECT_EQ(str(text(*run, "txtDate")), "03-07-26");
    EXPECT_EQ(str(text(*run, "txtFormulaName")), "Formula Name: Cooling Gel 2 %");
    EXPECT_EQ(str(text(*run, "txtFormulaType")), "Formula Type: Custom");
    EXPECT_EQ(str(text(*run, "lblMakeQTY")), "Quantity Made");
    EXPECT_EQ(str(text(*run, "txtlog_Units")), "GMS");
    EXPECT_EQ(str(text(*run, "txtlog_Lot")), "AB0012");
    EXPECT_EQ(str(texts(*run, "txtchm_QTY").join('|')), "3.086|12.500");
    EXPECT_EQ(str(texts(*run, "txtchm_Cost").join('|')), "$6.17|$1,213.75");
}

TEST_F(FormulaLogTest, DateMadeHasATimeOnlyWhereTheValueHasOne) {
    EXPECT_EQ(str(text(*finished(formulaLog(2)), "txtDateMade")), "3/1/2026 4:00:00 PM");
    EXPECT_EQ(str(text(*finished(formulaLog(3)), "txtDateMade")), "2/11/2026");
}

TEST_F(FormulaLogTest, NotesOfLogAndChemicalPrintNowhere) {
    const QString first = dumped(finished(formulaLog(1))->document());
    EXPECT_FALSE(first.contains("secret note"));
    const RunPtr second = finished(formulaLog(2));
    EXPECT_FALSE(dumped(second->document()).contains("keep dry"));
    EXPECT_EQ(str(texts(*second, "txtchm_Notes").join('|')), "|");
}

TEST_F(FormulaLogTest, WithoutLinesThereAreTheHeads) {
    const RunPtr run = finished(formulaLog(1));
    EXPECT_TRUE(texts(*run, "txtchm_Name").isEmpty());
    EXPECT_EQ(texts(*run, "lblchm_Name").size(), 1);
    EXPECT_EQ(str(text(*run, "txtfrm_Desc")), "For the skin");
}

TEST_F(FormulaLogTest, InstructionsAreTheFormulasOfToday) {
    sql("UPDATE Formula SET frm_Instructions = 'Mix warm now.', frm_Desc = 'changed' WHERE FormulaID = 1;");
    const RunPtr run = finished(formulaLog(2));
    EXPECT_EQ(str(text(*run, "txtfrm_Instructions")), "Mix warm now.");
    EXPECT_EQ(str(text(*run, "txtfrm_Desc")), "For the skin");
}

TEST_F(FormulaLogTest, DeletedFormulaGivesNoInstructions) {
    sql("DELETE FROM FormChem WHERE FormulaID = 1; DELETE FROM Formula WHERE FormulaID = 1;");
    const RunPtr run = finished(formulaLog(2));
    EXPECT_EQ(str(text(*run, "txtfrm_Instructions")), "");
    EXPECT_EQ(str(text(*run, "txtFormulaName")), "Formula Name: Cooling Gel 2 %");
}

TEST_F(FormulaLogTest, NoBoxesToFillInAndOneForTheExpiry) {
    const rptLogFormula report(context);
    for (const char* gone : {"Box1", "Box2", "Line5", "Line6"})
        EXPECT_ANY_THROW(report.control(gone)) << gone;
    EXPECT_EQ(report.control("Shape1").left, 4770);
}

TEST_F(FormulaLogTest, UnknownTypeIsAnErrorOfTheTable) {
    sql("UPDATE Log SET log_FormType = 77 WHERE LogID = 2;");
    ReportRun run(formulaLog(2));
    EXPECT_THROW(run.makeAll(), RuntimeError);
    EXPECT_TRUE(run.isOver());
    EXPECT_TRUE(run.document().pages.empty());
}

TEST_F(FormulaLogTest, SecondPageKeepsTitleAndDateAndRepeatsTheStore) {
    for (int i = 0; i < 60; ++i)
        sql("INSERT INTO LogChem (LogID, ChemicalID, lch_Name, lch_QTY) VALUES (1, 1, 'Aspirin', 1.0);");
    ReportRun run(formulaLog(1));
    ASSERT_TRUE(run.makePage());
    clock.advance(86400);  // the date of the first page stays
    run.makeAll();
    const auto pages = static_cast<qsizetype>(run.document().pages.size());
    EXPECT_GT(pages, 1);
    EXPECT_EQ(texts(run, "txtDate").count("03-07-26"), pages);
    EXPECT_EQ(texts(run, "txtTitle").count("Formula Log -- Sorvanto"), pages);
    EXPECT_EQ(texts(run, "txtlog_Lot").count("AB0010"), pages);
    EXPECT_EQ(texts(run, "txtStore").count("Kelmar Systems"), pages);
    EXPECT_EQ(texts(run, "lblchm_Name").size(), 1) << "the group header stands once";
}

TEST_F(FormulaLogTest, LogIsReleasedAtTheEnd) {
    const clsLogPtr log = batch(2);
    auto report = std::make_unique<rptLogFormula>(context);
    report->setLog(log);
    report->setFormula(clsFormula().openFormula(1, QString()));
    EXPECT_EQ(log.use_count(), 2);
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(log.use_count(), 1);
    EXPECT_TRUE(run->report().isUnloaded());
}
