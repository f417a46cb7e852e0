// Formulas made, copied, deleted and given up.
#include "FormulaScreenTest.h"
#include "support/Waiting.h"

using namespace sorvanto;
using platform::Answer;
using platform::NumberBox;
using platform::TextBox;

namespace {

const platform::BoxStyle deletion{platform::Buttons::YesNoCancel, platform::Icon::Exclamation, true, false};

class FormulaRecordsTest : public FormulaScreenTest {
protected:
    QString names() const { return sqlText("SELECT frm_Name FROM Formula ORDER BY FormulaID"); }
};

class OneFormulaTest : public FormulaScreenTest {
protected:
    void seed() override {
        sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Quantity, frm_JarSize, frm_FormType, frm_Mix)"
            " VALUES (1, 'Only One', 10, 1, 3, '')");
    }
};

TEST_F(FormulaRecordsTest, NewMakesTheRowAtOnceAndOpensItForEditing) {
    loadAt("Cooling Gel");
    tabs().setCurrentIndex(1);
    click("cmdNew");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "4");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_EQ(str(shown("txtfrm_Name")), "");
    EXPECT_EQ(str(shown("txtfrm_Units")), "MLS");
    EXPECT_EQ(str(shown("txtfrm_Quantity")), "0");
    EXPECT_EQ(str(shown("cbofrm_JarSize")), str(basMain::JarSizes[3]));
    EXPECT_EQ(str(shown("cbofrm_Type")), str(basMain::MixTypes[3]));
    EXPECT_EQ(str(shown("lblSetFreeSpin")), "1");
    EXPECT_EQ(str(shown("lblSetPreGrind")), "0");
    EXPECT_EQ(steps().count(), 0);
    EXPECT_TRUE(column("chm_Name").isEmpty());
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :    (Edit)");
    ASSERT_TRUE(support::becomesActive(window.get()));
    EXPECT_TRUE(box<TextBox>("txtfrm_Name").hasFocus());
}

TEST_F(FormulaRecordsTest, CancelOfANewRecordDeletesItWithoutAQuestion) {
    loadAt("Plain Base");
    click("cmdNew");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "3");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve") << "the first record";
    EXPECT_TRUE(formula().formLocked());
    click("cmdEdit");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "3") << "the new flag is down";
}

TEST_F(FormulaRecordsTest, SaveKeepsANewRecord) {
    load();
    click("cmdNew");
    box<TextBox>("txtfrm_Name").setText("Balm");
    box<NumberBox>("txtfrm_Quantity").setText("20");
    click("cmdSave");
    click("cmdEdit");
    click("cmdCancel");
    EXPECT_EQ(str(names()), "Cooling Gel\nPlain Base\nArnica Salve\nBalm");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Balm");
    EXPECT_EQ(str(stored("frm_Mix", 4)), "<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve") << "the set was read when the row had no name";
}

TEST_F(FormulaRecordsTest, ACopyIsOpenForEditingAndCancelKeepsIt) {
    loadAt("Cooling Gel");
    click("cmdCopy");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Copy of Cooling Gel  (Edit)");
    EXPECT_EQ(str(sqlText("SELECT ChemicalID, fch_Qty, fch_QS, fch_Active FROM FormChem WHERE FormulaID = 4"
                          " ORDER BY FormChemID")),
              "3|1.2345|0|1\n4|5.0|1|1\n2|0.5|0|0");
    click("cmdCancel");
    EXPECT_TRUE(formula().formLocked());
    EXPECT_EQ(str(shown("txtfrm_Name")), "Copy of Cooling Gel");
    EXPECT_EQ(str(names()), "Cooling Gel\nPlain Base\nArnica Salve\nCopy of Cooling Gel");
}

TEST_F(FormulaRecordsTest, DeleteAsksAndTakesTheLinesWithIt) {
    loadAt("Cooling Gel");
    asker.expectMsgBox("Delete Cooling Gel?", deletion, Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(names()), "Plain Base\nArnica Salve");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM FormChem WHERE FormulaID = 1")), "0");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve");
    EXPECT_TRUE(on("cmdEdit"));
}

TEST_F(FormulaRecordsTest, DeletingTheFirstRecordShowsTheNext) {
    load();
    asker.expectMsgBox("Delete Arnica Salve?", deletion, Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Cooling Gel");
}

TEST_F(FormulaRecordsTest, ANewRowThatTheFileRefusesLeavesTheSwappedPromptsOnShow) {
    loadAt("Cooling Gel");
    failStatement("INSERT INTO  Formula (");
    click("cmdNew");
    expectReport("clsFormula:addFormula");
    expectReports("frmFormula:refreshForm");
    EXPECT_EQ(str(shown("cbofrm_JarSize")), "Select Form");
    EXPECT_EQ(str(shown("cbofrm_Type")), "Select Jar Size");
    EXPECT_EQ(str(shown("txtfrm_Name")), "");
    EXPECT_EQ(str(shown("txtfrm_Units")), "MLS");
    EXPECT_EQ(steps().count(), 0);
    EXPECT_EQ(str(names()), "Cooling Gel\nPlain Base\nArnica Salve");
}

TEST_F(FormulaRecordsTest, ARefusedDeleteShowsTheFirstRecordToo) {
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
        loadAt("Plain Base");
        asker.expectMsgBox("Delete Plain Base?", deletion, answer);
        click("cmdDelete");
        EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "3");
        EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve");
        EXPECT_TRUE(formula().formLocked());
        window.reset();
    }
}

TEST_F(OneFormulaTest, DeletingTheLastOneLeavesThePromptsSwapped) {
    load();
    asker.expectMsgBox("Delete Only One?", deletion, Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(shown("cbofrm_JarSize")), "Select Form");
    EXPECT_EQ(str(shown("cbofrm_Type")), "Select Jar Size");
    EXPECT_EQ(box<platform::ChoiceBox>("cbofrm_Type").listIndex(), -1);
    EXPECT_EQ(str(shown("txtfrm_Units")), "MLS");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  ");
    for (const QString& name : ScreenTest::recordTools())
        EXPECT_EQ(on(name), name == "cmdNew" || name == "cmdOptions") << str(name);
}

TEST_F(OneFormulaTest, TheEmptyStateHoldsEvenWhileUnlocked) {
    load();
    click("cmdEdit");
    sql("DELETE FROM Formula");
    formula().getData();
    click("mnuUpdate");  // any click sets the tools anew
    EXPECT_FALSE(formula().formLocked());
    EXPECT_TRUE(on("cmdNew"));
    EXPECT_FALSE(on("cmdSave"));
    EXPECT_FALSE(on("cmdCancel"));
}

TEST_F(OneFormulaTest, ClearingLeavesTheMixLabelsAndTheUpDowns) {
    load();
    upDown("updPreGrind").setValue(7);
    upDown("updCustRPM").setValue(3);
    asker.expectMsgBox("Delete Only One?", deletion, Answer::No);
    click("cmdDelete");
    EXPECT_EQ(upDown("updPreGrind").value(), 7);
    EXPECT_EQ(str(shown("lblCustRPM")), "72");
}

}  // namespace
