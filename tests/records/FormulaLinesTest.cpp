// A formula's ingredient lines: adding, removing, editing, copying.
#include "FormulaRecordTest.h"

#include "platform/basic/SystemLocale.h"
#include "platform/basic/Values.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

const platform::BoxStyle okBox{};

class FormulaLinesTest : public FormulaRecordTest {
protected:
    static bool add(clsFormula& formula, QString search) { return formula.addChemical(search); }
};

TEST_F(FormulaLinesTest, RemovingALineRecomputesThisObjectAndGivesTheShortList) {
    const auto formula = open(1);
    clearStatements();
    EXPECT_TRUE(formula->deleteChemical(1));
    expectStatements("formula_remove_line.txt");
    EXPECT_EQ(str(formula->frm_Cost.toText()), "1.0025");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "2.3375");
    EXPECT_EQ(formula->Chemical->recordCount(), 2);
    EXPECT_EQ(columns(*formula).size(), 10);
    EXPECT_FALSE(formula->deleteChemical(1));
}

TEST_F(FormulaLinesTest, ALineThatCannotBeRemovedIsReportedAndTheListStays) {
    const auto formula = open(1);
    const auto lines = formula->Chemical;
    failStatement("DELETE FROM [FormChem]");
    EXPECT_FALSE(formula->deleteChemical(1));
    expectReport("clsFormula:deleteChemical");
    EXPECT_EQ(formula->Chemical, lines);
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM FormChem WHERE FormulaID = 1")), "3");
}

TEST_F(FormulaLinesTest, AddingALineAsksTheQuantityWithoutTitleAndPreset) {
    const auto formula = open(2);
    clearStatements();
    asker.expectInputBox("Input desired quantity for chemical", "2.5", u""_s);
    EXPECT_TRUE(add(*formula, "Asp"));
    expectStatements("formula_add_line.txt");
    EXPECT_EQ(str(sqlText("SELECT FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active FROM FormChem "
                          "WHERE FormulaID = 2")),
              "2|1|2.5|0|1");
    EXPECT_EQ(str(formula->frm_Cost.toText()), "0.625");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "1.25");
    EXPECT_EQ(formula->Chemical->recordCount(), 1);
    EXPECT_EQ(columns(*formula).size(), 10);
}

TEST_F(FormulaLinesTest, EachKindOfLineSearchHasItsStatementWithPlainAliases) {
    startConfiguration(2);
    const auto formula = open(2);
    clearStatements();
    asker.alwaysAnswer("No Records");
    for (const char* text : {"", "#99#", "?L?9", "$L4", "9#9", "x?", "a'b"})
        EXPECT_FALSE(add(*formula, text));
    expectReport("clsFormula:addChemical");
    expectStatements("formula_add_line_search.txt");
}

TEST_F(FormulaLinesTest, TheMarkerIsTakenOutOfTheCallersText) {
    const auto formula = open(2);
    asker.expectMsgBox("No Records", okBox);
    QString text = "?Z?9";
    EXPECT_FALSE(formula->addChemical(text));
    EXPECT_EQ(str(text), "Z9");
}

TEST_F(FormulaLinesTest, ALotOrCodeFindsTheChemicalOfALine) {
    const auto formula = open(2);
    asker.expectInputBox("Input desired quantity for chemical", "1", u""_s);
    EXPECT_TRUE(add(*formula, "?L2"));
    asker.expectInputBox("Input desired quantity for chemical", "3", u""_s);
    EXPECT_TRUE(add(*formula, "#333-4"));
    EXPECT_EQ(str(sqlText("SELECT ChemicalID, fch_Qty FROM FormChem WHERE FormulaID = 2")), "2|1.0\n4|3.0");
}

TEST_F(FormulaLinesTest, ACancelledOrWordyQuantityBreaksTheStatement) {
    const auto formula = open(2);
    const auto list = formula->Chemical;
    for (const char* answer : {"", "1,5", "two"}) {
        asker.expectInputBox("Input desired quantity for chemical", answer, u""_s);
        EXPECT_FALSE(add(*formula, "Asp"));
        expectReport("clsFormula:addChemical");
    }
    EXPECT_EQ(formula->Chemical, list);
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM FormChem WHERE FormulaID = 2")), "0");
}

TEST_F(FormulaLinesTest, AnEditInTheListGoesToTheTableAndChangesNoTotals) {
    const auto formula = open(1);
    clearStatements();
    formula->Chemical->setValue("fch_Qty", 4.5);
    formula->Chemical->update();
    EXPECT_TRUE(statements.isEmpty());
    EXPECT_EQ(str(sqlText("SELECT fch_Qty FROM FormChem WHERE FormChemID = 1")), "4.5");
    EXPECT_EQ(str(formula->frm_Cost.toText()), "3.4715");
}

TEST_F(FormulaLinesTest, CopyingWritesARowAndAllLinesFromTheFirst) {
    const auto original = open(1);
    original->Chemical->moveLast();
    clearStatements();
    const auto copy = clsFormula().copyFormula(original);
    expectStatements("formula_copy.txt");
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->FormulaID, 3);
    EXPECT_EQ(str(copy->frm_Name), "Copy of Cooling Gel");
    EXPECT_EQ(str(copy->frm_GUID), "1234ABCD-00EF-4001-1122-334455667788");
    EXPECT_EQ(str(copy->frm_AWP.toText()), "6.6582");
    EXPECT_EQ(str(copy->frm_Mix->xml()), str(original->frm_Mix->xml()));
    EXPECT_EQ(str(sqlText("SELECT frm_AWP, frm_Quantity, frm_JarSize FROM Formula WHERE FormulaID = 3")),
              "0|10|4");
    EXPECT_EQ(
        str(sqlText("SELECT ChemicalID, fch_Qty, fch_QS, fch_Active FROM FormChem WHERE FormulaID = 3")),
        "3|1.2345|0|1\n4|5.0|1|1\n2|0.5|0|0");
}

TEST_F(FormulaLinesTest, ACopyOfACopyBearsThePrefixTwiceAndIsNotTranslated) {
    startConfiguration(3);
    const auto copy = clsFormula().copyFormula(clsFormula().copyFormula(open(2)));
    ASSERT_TRUE(copy);
    EXPECT_EQ(str(copy->frm_Name), "Copy of Copy of Plain Base");
}

TEST_F(FormulaLinesTest, AFailureInTheMiddleOfTheCopiedLinesLeavesThoseWritten) {
    const auto original = open(1);
    failStatement("VALUES ( 3, 4, ");
    EXPECT_FALSE(clsFormula().copyFormula(original));
    expectReport("clsFormula:copyFormula");
    EXPECT_EQ(str(sqlText("SELECT frm_Name FROM Formula WHERE FormulaID = 3")), "Copy of Cooling Gel");
    EXPECT_EQ(str(sqlText("SELECT ChemicalID FROM FormChem WHERE FormulaID = 3")), "3");
}

TEST_F(FormulaLinesTest, ANullQuantityBreaksTheCopiedLine) {
    sql("UPDATE FormChem SET fch_Qty = NULL WHERE FormChemID = 1");
    EXPECT_FALSE(clsFormula().copyFormula(open(1)));
    const auto report = expectReport("clsFormula:copyFormula");
    EXPECT_TRUE(report.statement.contains("VALUES ( 3, 3, , False, True) ")) << qPrintable(report.statement);
}

TEST_F(FormulaLinesTest, WithTheShortListNothingCanBeCopiedOrMade) {
    const auto formula = open(1);
    formula->deleteChemical(3);
    EXPECT_FALSE(clsFormula().copyFormula(formula));
    expectReport("clsFormula:copyFormula");
    const double before = formula->Chemical->value("fch_Qty").toDouble();
    EXPECT_THROW(formula->makeQuantity(20), platform::RuntimeError);
    EXPECT_DOUBLE_EQ(before, 1.2345);
    EXPECT_EQ(str(platform::nullText(formula->Chemical->value("fch_Qty"))), "2.469");
    EXPECT_EQ(str(platform::nullText(formula->Chemical->value("chm_Cost"))), "4.94");
    EXPECT_EQ(formula->frm_JarSize, 4);
    EXPECT_EQ(str(sqlText("SELECT fch_Qty FROM FormChem WHERE FormChemID = 1")), "1.2345");
    EXPECT_NO_THROW(open(1)->makeQuantity(20));
}

TEST_F(FormulaLinesTest, PricesAtTheLimitOfMoneyOpen) {
    sql("UPDATE Chemical SET chm_Cost = 922337203685477.5807, chm_AWP = 922337203685477.5 WHERE ChemicalID = 1");
    sql("DELETE FROM FormChem WHERE FormulaID = 2");
    sql("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (2, 1, 1.0)");
    const auto formula = open(2);
    EXPECT_EQ(str(formula->frm_Cost.toText()), "922337203685477.5807");
    EXPECT_EQ(str(formula->frm_AWP.toText()), "922337203685477.5");
    EXPECT_EQ(str(platform::nullCurrency(formula->Chemical->value("chm_Cost")).toText()),
              "922337203685477.5807");
}

TEST_F(FormulaLinesTest, AQuotientIsStoredAsTheDialectGivesIt) {
    const auto formula = open(2);
    asker.expectInputBox("Input desired quantity for chemical", "5/2", u""_s);
    EXPECT_TRUE(add(*formula, "Asp"));
    EXPECT_EQ(str(sqlText("SELECT fch_Qty FROM FormChem WHERE FormulaID = 2")), "2.5");
    asker.expectInputBox("Input desired quantity for chemical", "1/0", u""_s);
    EXPECT_FALSE(add(*formula, "Asp"));
    expectReport("clsFormula:addChemical");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM FormChem WHERE FormulaID = 2")), "1");
}

TEST_F(FormulaLinesTest, TheQuestionForTheQuantitySaysWhatWillBeStored) {
    const auto formula = open(2);
    const QString name = sqlText("SELECT chm_Name FROM Chemical WHERE ChemicalID = 1");
    sql("UPDATE Chemical SET chm_Units = 'GMS' WHERE ChemicalID = 1");
    platform::setSystemLocale(QLocale("de_DE"));
    const QString doubt = "This is not a plain number: the database will work it out.";
    asker.expectInputBox(
        "Input desired quantity for chemical", "1.25", u""_s, [&](const platform::LineGuide& guide) {
            EXPECT_EQ(guide.note("").text, name + " (GMS)");
            EXPECT_FALSE(guide.note("").doubtful);
            for (const auto& [line, stored] : {std::pair{"1.25", "1,25"},
                                               {"1.250", "1,25"},
                                               {" 2", "2"},
                                               {".5", "0,5"},
                                               {"-5", "-5"},
                                               {"5.", "5"},
                                               {"1000.5", "1000,5"}}) {
                EXPECT_EQ(guide.note(line).text, name + ": " + stored + " GMS") << line;
                EXPECT_FALSE(guide.note(line).doubtful) << line;
            }
            for (const char* line :
                 {"5/2", "10-20", "TRUE", "NULL", "2,5", "1.2.3", "1e5", "1 250", "5\t2", "5\n", "-", "."}) {
                EXPECT_EQ(guide.note(line).text, name + " (GMS): " + doubt) << line;
                EXPECT_TRUE(guide.note(line).doubtful) << line;
            }
            EXPECT_TRUE(guide.note(QString(400, u'9')).doubtful);
            for (const auto& [line, corrected] : {std::pair{"2,5", "2.5"},
                                                  {"2,", "2."},
                                                  {",5", ".5"},
                                                  {"-2,50", "-2.50"},
                                                  {"1.250,5", "1.250,5"},
                                                  {"2,5,5", "2,5,5"},
                                                  {"5,2+1", "5,2+1"},
                                                  {"2.5", "2.5"},
                                                  {",", ","},
                                                  {"", ""},
                                                  {"a,b", "a,b"}})
                EXPECT_EQ(guide.corrected(line), corrected) << line;
            platform::setSystemLocale(QLocale::c());
            EXPECT_EQ(guide.corrected("2,5"), "2,5");
            EXPECT_TRUE(guide.note("2,5").doubtful);
            EXPECT_EQ(guide.note("1.25").text, name + ": 1.25 GMS");
        });
    EXPECT_TRUE(add(*formula, "Asp"));
    platform::setSystemLocale(std::nullopt);
}

}  // namespace
