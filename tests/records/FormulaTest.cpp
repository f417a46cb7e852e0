// The formula record: opening, adding, saving, deleting.
#include "FormulaRecordTest.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Answer;
using platform::Currency;

namespace {

class FormulaTest : public FormulaRecordTest {};

TEST_F(FormulaTest, ANewObjectHasItsDefaults) {
    const clsFormula formula;
    EXPECT_EQ(formula.FormulaID, 0);
    EXPECT_EQ(formula.frm_Quantity, 0);
    EXPECT_EQ(formula.frm_JarSize, 3);
    EXPECT_EQ(formula.frm_FormType, 3);
    EXPECT_EQ(formula.makeQuantity(), 0);
    ASSERT_TRUE(formula.frm_Mix);
    EXPECT_EQ(str(formula.frm_Mix->xml()), "");
}

TEST_F(FormulaTest, OpensByKeyWithSumsAndTheFullList) {
    clsFormula opener;
    const auto formula = opener.openFormula(1, QString());
    expectStatements("formula_open_key.txt");
    ASSERT_TRUE(formula);
    EXPECT_EQ(opener.FormulaID, 0);
    EXPECT_EQ(formula->FormulaID, 1);
    EXPECT_EQ(str(formula->frm_Name), "Cooling Gel");
    EXPECT_EQ(str(formula->frm_Desc), "Topical");
    EXPECT_EQ(str(formula->frm_Strength), "2 %");
    EXPECT_EQ(str(formula->frm_Units), "GMS");
    EXPECT_EQ(str(formula->frm_Instructions), "Stir.");
    EXPECT_EQ(formula->frm_Quantity, 10);
    EXPECT_EQ(formula->frm_JarSize, 4);
    EXPECT_EQ(formula->frm_FormType, 2);
    EXPECT_EQ(str(formula->frm_NDC), "900-1");
    EXPECT_EQ(str(formula->frm_GUID), "F1");
    EXPECT_EQ(str(formula->frm_Mix->root().attribute("PreGrind")), "2");
    // 2 * 1.2345 + 0.1 * 5 + 1.005 * 0.5 and 3.5 * 1.2345 + 0.2 * 5 + 2.675 * 0.5, not the stored 7
    EXPECT_EQ(str(formula->frm_Cost.toText()), "3.4715");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "6.6582");
    EXPECT_EQ(formula->Chemical->recordCount(), 3);
    EXPECT_EQ(columns(*formula).join(',').toStdString(),
              "chm_Name,chm_Units,fch_Qty,fch_Active,fch_QS,FormChemID,chm_Form,chm_Supplier,chm_Notes,"
              "chm_Cost,chm_AWP,chm_NDC,chm_Lot,chm_GUID,ChemicalID");
}

TEST_F(FormulaTest, EachSearchKindHasItsStatement) {
    for (const char* text : {"#777", "#9#0#0-1", "9#00", "?x", "Cool", "a'b"})
        clsFormula().openFormula(7, QString(text));
    expectReport("clsFormula:openFormula");
    statements.removeIf([](const QString& text) { return !text.contains("[Formula] "); });
    expectStatements("formula_open_search.txt");
}

TEST_F(FormulaTest, OnlyTheFirstCharacterMarksTheNdcAndIsTakenOutOfTheCallersText) {
    QString text = "#900#-2";
    EXPECT_EQ(clsFormula().openFormula(0, text)->FormulaID, 2);
    EXPECT_EQ(str(text), "900-2");
    text = "Cool#ing";
    EXPECT_EQ(clsFormula().openFormula(0, text)->FormulaID, 0);
    EXPECT_EQ(str(text), "Cool#ing");
}

TEST_F(FormulaTest, NothingFoundGivesABlankObjectWithAnEmptyListAndNoMessage) {
    const auto formula = clsFormula().openFormula(1, u"zzz"_s);
    ASSERT_TRUE(formula);
    EXPECT_EQ(formula->FormulaID, 0);
    EXPECT_EQ(formula->Chemical->recordCount(), 0);
    EXPECT_TRUE(asker.asked().isEmpty());
    EXPECT_EQ(statements.size(), 3);
}

TEST_F(FormulaTest, AFormulaWithoutLinesCostsNothing) {
    const auto formula = open(2);
    EXPECT_EQ(formula->frm_Cost, Currency());
    EXPECT_EQ(formula->frm_AWP, Currency());
    ASSERT_TRUE(clsFormula().saveFormula(formula));
    EXPECT_EQ(str(sqlText("SELECT frm_AWP FROM Formula WHERE FormulaID = 2")), "0");
}

TEST_F(FormulaTest, ANullMixProgrammeIsAFailureAndOtherNullsAreNot) {
    sql("INSERT INTO Formula (FormulaID, frm_Mix) VALUES (20, ''); INSERT INTO Formula (FormulaID) VALUES (21)");
    const auto formula = open(20);
    ASSERT_TRUE(formula);
    EXPECT_EQ(formula->frm_Quantity, 0);
    EXPECT_EQ(formula->frm_JarSize, 0);
    EXPECT_FALSE(open(21));
    EXPECT_EQ(str(expectReport("clsFormula:openFormula").number), "94");
}

TEST_F(FormulaTest, AStoredNegativeCodeReadsAsZero) {
    sql("UPDATE Formula SET frm_FormType = -1 WHERE FormulaID = 2");
    EXPECT_EQ(open(2)->frm_FormType, 0);
}

TEST_F(FormulaTest, AddsARowAndOpensIt) {
    const auto formula = clsFormula().addFormula();
    expectStatements("formula_add.txt");
    ASSERT_TRUE(formula);
    EXPECT_EQ(formula->FormulaID, 3);
    EXPECT_EQ(str(formula->frm_Units), "MLS");
    EXPECT_EQ(formula->frm_JarSize, 3);
    EXPECT_EQ(str(formula->frm_GUID), "1234ABCD-00EF-4001-1122-334455667788");
    EXPECT_EQ(columns(*formula).size(), 15);
    EXPECT_EQ(str(sqlText("SELECT frm_Name, frm_Quantity, frm_JarSize, frm_FormType, frm_AWP, frm_Mix FROM "
                          "Formula WHERE FormulaID = 3")),
              "|0|3|3|0|");
}

TEST_F(FormulaTest, AFailureAfterTheInsertLeavesABlankRow) {
    failStatement("FROM Chemical INNER JOIN");
    EXPECT_FALSE(clsFormula().addFormula());
    expectReport("clsFormula:addFormula");
    EXPECT_EQ(str(sqlText("SELECT frm_Units FROM Formula WHERE FormulaID = 3")), "MLS");
}

TEST_F(FormulaTest, AFailingIdentityTextStillGoesIn) {
    GUIDFactory::setSource([](Guid&) { return 1; });
    EXPECT_EQ(str(clsFormula().addFormula()->frm_GUID), "        -    -    -    -    00000000");
}

TEST_F(FormulaTest, SavesFreshSumsAndDoubledTrimmedTexts) {
    const auto formula = open(1);
    formula->frm_Name = " Nurse's Gel ";
    formula->frm_Desc = "''";
    formula->frm_Strength = "5 %";
    formula->frm_Units = "it's";
    formula->frm_Instructions = "  Don't boil.\n";
    formula->frm_NDC = "9'0";
    formula->frm_FormType = -1;
    formula->frm_AWP = Currency::fromText("999");
    formula->frm_GUID = "changed";
    clearStatements();
    EXPECT_EQ(clsFormula().saveFormula(formula), formula);
    expectStatements("formula_save.txt");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "6.6582");
    EXPECT_EQ(
        str(sqlText("SELECT frm_Name, frm_Desc, frm_Units, frm_NDC, frm_FormType, frm_AWP, frm_GUID FROM "
                    "Formula WHERE FormulaID = 1")),
        "Nurse's Gel|''|it's|9'0|-1|6.6582|F1");
}

TEST_F(FormulaTest, AMixProgrammeWithAnApostropheCannotBeSaved) {
    const auto formula = open(1);
    formula->frm_Mix = document("<CustomMix PreGrind=\"it's\" FreeSpin=\"1\"/>");
    EXPECT_FALSE(clsFormula().saveFormula(formula));
    expectReport("clsFormula:saveFormula");
}

TEST_F(FormulaTest, SavingARowThatIsGoneGivesNothing) {
    const auto formula = open(2);
    sql("DELETE FROM Formula WHERE FormulaID = 2");
    EXPECT_FALSE(clsFormula().saveFormula(formula));
}

TEST_F(FormulaTest, SavingAScaledObjectStoresTheJarPickedByQuantity) {
    ASSERT_TRUE(clsFormula().saveFormula(scaled(1, 1000)));
    EXPECT_EQ(str(sqlText("SELECT frm_JarSize FROM Formula WHERE FormulaID = 1")), "9");
}

TEST_F(FormulaTest, DeletingAsksThenTakesLinesFirst) {
    const auto formula = open(1);
    clearStatements();
    asker.expectMsgBox("Delete Cooling Gel?", platform::deletionStyle, Answer::No);
    EXPECT_FALSE(clsFormula().deleteFormula(formula, false));
    EXPECT_TRUE(statements.isEmpty());
    asker.expectMsgBox("Delete Cooling Gel?", platform::deletionStyle, Answer::Yes);
    EXPECT_TRUE(clsFormula().deleteFormula(formula, false));
    expectStatements("formula_delete.txt");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM FormChem")), "0");
    EXPECT_TRUE(clsFormula().deleteFormula(formula, true));
}

TEST_F(FormulaTest, AFailureAtTheSecondDeletionLeavesAFormulaWithoutLines) {
    const auto formula = open(1);
    failStatement("[Formula] WHERE (");
    EXPECT_FALSE(clsFormula().deleteFormula(formula, true));
    expectReport("clsFormula:deleteFormula");
    EXPECT_EQ(str(sqlText("SELECT (SELECT COUNT(*) FROM FormChem), (SELECT COUNT(*) FROM Formula)")), "0|2");
}

TEST_F(FormulaTest, ABatchOutlivesItsFormula) {
    sql("INSERT INTO Log (LogID, FormulaID, log_Name, log_Date) VALUES (1, 1, 'B', '2026-01-01 00:00:00')");
    EXPECT_TRUE(clsFormula().deleteFormula(open(1), true));
    EXPECT_EQ(str(sqlText("SELECT FormulaID FROM Log")), "1");
}

TEST_F(FormulaTest, NoObjectIsAReportAndNoCrash) {
    EXPECT_FALSE(clsFormula().deleteFormula(nullptr, true));
    expectReport("clsFormula:deleteFormula");
    EXPECT_FALSE(clsFormula().saveFormula(nullptr));
    expectReport("clsFormula:saveFormula");
    EXPECT_FALSE(clsFormula().copyFormula(nullptr));
    expectReport("clsFormula:copyFormula");
}

}  // namespace
