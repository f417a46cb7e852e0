// Editing the stock of chemicals: saving, adding, cancelling, deleting, and texts nobody expects.
#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmChemical.h"

#include <QApplication>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class ChemicalEditTest : public ScreenTest {
protected:
    void seed() override { seedFormulas(); }
    void browse() {
        load();
        click("cmdChemicals");
        click("cmdCancel");
    }
    void edit() {
        browse();
        click("cmdEdit");
    }
    frmChemical& chemical() const { return screen<frmChemical>(chemicals); }
    QString shown(const QString& name) const { return text(chemicals, name); }
    platform::TextBox& box(const QString& name) const { return control<platform::TextBox>(chemicals, name); }
    platform::NumberBox& price(const QString& name) const {
        return control<platform::NumberBox>(chemicals, name);
    }
    platform::ChoiceBox& choice(const QString& name) const {
        return control<platform::ChoiceBox>(chemicals, name);
    }
    QString stored(const QString& columns, int key = 1) const {
        return sqlText(u"SELECT %1 FROM Chemical WHERE ChemicalID = %2"_s.arg(columns).arg(key));
    }
    void type(const QString& name, const QString& keys) {
        price(name).setFocus();
        QApplication::setActiveWindow(window.get());
        price(name).selectAll();
        QTest::keyClicks(&price(name), keys);
    }
};

TEST_F(ChemicalEditTest, SavesEveryField) {
    edit();
    box("txtchm_Name").setText("  Aspirin fine ");
    box("txtchm_NDC").setText("1-2-3");
    choice("cbochm_Units").setListIndex(14);
    choice("cbochm_Form").setListIndex(3);
    box("txtchm_Lot").setText("L101");
    box("txtchm_Supplier").setText("Harbor");
    type("txtchm_Cost", "1.23");
    type("txtchm_AWP", "2.5");
    control<platform::MemoBox>(chemicals, "txtchm_Notes").setText("two\nlines");
    click("cmdSave");
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_EQ(str(stored("chm_Name, chm_Units, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Form, chm_Supplier, "
                         "chm_GUID")),
              "Aspirin fine|MGS|L101|1-2-3|1.23|2.5|CRYS|Harbor|G1");
    EXPECT_EQ(str(stored("chm_Notes")), "two\nlines");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :    Aspirin fine ")
        << "the object keeps what was typed until it is opened again";
}

TEST_F(ChemicalEditTest, ASaveWithoutTouchingAPriceKeepsItsFourDecimals) {
    browse();
    click("cmdNext");
    click("cmdEdit");
    price("txtchm_AWP").setFocus();
    box("txtchm_Lot").setFocus();
    click("cmdSave");
    EXPECT_EQ(str(stored("chm_Cost, chm_AWP", 2)), "0.03|0.075");
}

TEST_F(ChemicalEditTest, OnlyAnEmptyNameIsRefused) {
    edit();
    box("txtchm_Name").clear();
    box("txtchm_Lot").setText("kept");
    asker.expectMsgBox("Chemical Name is required");
    click("cmdSave");
    EXPECT_FALSE(chemical().formLocked());
    EXPECT_EQ(str(shown("txtchm_Lot")), "kept") << "the form stays open with what was typed";
    EXPECT_EQ(str(stored("chm_Lot")), "L100");
    box("txtchm_Name").setText("   ");
    click("cmdSave");
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_EQ(str(stored("'<' || chm_Name || '>', chm_Lot")), "<>|kept");
}

TEST_F(ChemicalEditTest, ThePromptsKeepTheOldUnitAndForm) {
    edit();
    choice("cbochm_Units").setBoxText("Select Units");
    choice("cbochm_Form").setBoxText("Select Form");
    click("cmdSave");
    EXPECT_EQ(str(stored("chm_Units, chm_Form")), "GMS|PWD");
}

TEST_F(ChemicalEditTest, ANewChemicalSavesWithAnEmptyFormUnderThePrompt) {
    browse();
    click("cmdNew");
    box("txtchm_Name").setText("Zinc");
    choice("cbochm_Form").setBoxText("Select Form");
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT chm_Units, chm_Form FROM Chemical WHERE chm_Name = 'Zinc'")), "|");
}

TEST_F(ChemicalEditTest, APriceThatIsNoOneNumberIsNotGuessed) {
    edit();
    type("txtchm_Cost", "1.234,5");
    box("txtchm_Lot").setText("typed");
    click("cmdSave");
    EXPECT_FALSE(chemical().formLocked());
    EXPECT_EQ(str(shown("txtchm_Cost")), "1.234,5");
    EXPECT_EQ(str(stored("chm_Cost, chm_Lot")), "0.5|L100") << "nothing is taken over";
    type("txtchm_Cost", "1234.5");
    click("cmdSave");
    EXPECT_EQ(str(stored("chm_Cost, chm_Lot")), "1234.5|typed");
}

TEST_F(ChemicalEditTest, AnEmptyPriceIsZeroAndOneBeyondMoneyIsReported) {
    edit();
    price("txtchm_Cost").clear();
    click("cmdSave");
    EXPECT_EQ(str(stored("chm_Cost")), "0");
    click("cmdEdit");
    price("txtchm_Cost").setText("1e30");
    click("cmdSave");
    expectReports("frmChemical:saveForm");
    EXPECT_FALSE(chemical().formLocked());
    EXPECT_EQ(str(stored("chm_Cost")), "0");
}

TEST_F(ChemicalEditTest, CancelShowsTheStoredRecordAgain) {
    edit();
    box("txtchm_Name").setText("Changed");
    click("cmdCancel");
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
    chemical().editForm();
    box("txtchm_Name").setText("Changed");
    chemical().cancelEdit();
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
}

TEST_F(ChemicalEditTest, ANewRowExistsAtOnceAndTheCaptionGetsNoEditMarkYet) {
    browse();
    click("cmdNew");
    EXPECT_EQ(str(stored("chm_Name, chm_Units, chm_Cost, chm_AWP", 5)), "||0|0");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :  ");
    EXPECT_FALSE(chemical().formLocked());
    EXPECT_EQ(window->focusWidget(), &box("txtchm_Name"));
    EXPECT_EQ(str(shown("txtchm_Cost")), "$ 0.00");
    EXPECT_EQ(str(shown("cbochm_Units")), "") << "the prompt does not survive the opening of the row";
    box("txtchm_Name").setText("Zinc");
    click("cmdSave");
    click("cmdCancel");
    EXPECT_EQ(str(stored("chm_Name", 5)), "Zinc") << "saved, so the cancel removes nothing";
}

TEST_F(ChemicalEditTest, CancellingANewChemicalRemovesItWithoutAQuestion) {
    browse();
    click("cmdLast");
    click("cmdNew");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*), max(ChemicalID) FROM Chemical")), "4|4");
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :  Aspirin");
}

// Cancel at the closing question locks the screen, and the user may go elsewhere from there.
TEST_F(ChemicalEditTest, CancelNeverTakesAnotherRecordForTheNewOne) {
    browse();
    click("cmdNew");
    asker.expectMsgBox("Chemical data not saved! Save Changes?",
                       {platform::Buttons::YesNoCancel, platform::Icon::Exclamation, false, true},
                       "Save Data?", platform::Answer::Cancel);
    EXPECT_EQ(chemical().closeForm(), 2);
    click("cmdChemicals");
    click("cmdFirst");
    click("cmdEdit");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical")), "5");
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
    EXPECT_TRUE(chemical().formLocked());
}

TEST_F(ChemicalEditTest, AUsedChemicalIsRefused) {
    browse();
    click("cmdNext");
    asker.expectMsgBox("Delete Borax?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("Borax\r\nis currently used in a formula,\rit can not be deleted.", {}, "");
    click("cmdDelete");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical")), "4");
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin") << "the first record, whatever the answer was";
}

TEST_F(ChemicalEditTest, ADeclinedDeletionGoesToTheFirstRecord) {
    browse();
    click("cmdLast");
    asker.expectMsgBox("Delete Menthol?", platform::deletionStyle, platform::Answer::No);
    click("cmdDelete");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical")), "4");
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
}

TEST_F(ChemicalEditTest, ADeletedChemicalIsGone) {
    sql("DELETE FROM FormChem;");
    browse();
    click("cmdNext");
    asker.expectMsgBox("Delete Borax?", platform::deletionStyle, platform::Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(sqlText("SELECT ChemicalID FROM Chemical ORDER BY 1")), "1\n3\n4");
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
}

TEST_F(ChemicalEditTest, DeletingTheFirstRowMovesOnTheOldSetOnce) {
    sql("DELETE FROM FormChem;");
    browse();
    asker.expectMsgBox("Delete Aspirin?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("No Records");
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtchm_Name")), "Borax");
}

TEST_F(ChemicalEditTest, DeletingTheLastOneLeavesTheEmptyState) {
    sql("DELETE FROM FormChem; DELETE FROM Chemical WHERE ChemicalID > 1;");
    browse();
    asker.expectMsgBox("Delete Aspirin?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("No Records");
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtchm_Name")), "");
    EXPECT_EQ(str(shown("txtchm_Cost")), "$ 0.00");
    EXPECT_EQ(str(shown("cbochm_Units")), "Select Units");
    EXPECT_TRUE(on("cmdNew"));
    EXPECT_FALSE(on("cmdEdit"));
}

TEST_F(ChemicalEditTest, ApostrophesSaveInEveryField) {
    edit();
    for (const char* name : {"txtchm_Name", "txtchm_NDC", "txtchm_Lot", "txtchm_Supplier"})
        box(name).setText("a'b''c");
    control<platform::MemoBox>(chemicals, "txtchm_Notes").setText("a'b''c");
    choice("cbochm_Units").setBoxText("a'b");
    choice("cbochm_Form").setBoxText("'");
    click("cmdSave");
    EXPECT_EQ(str(stored("chm_Name, chm_NDC, chm_Lot, chm_Supplier, chm_Notes, chm_Units, chm_Form")),
              "a'b''c|a'b''c|a'b''c|a'b''c|a'b''c|a'b|'");
}

TEST_F(ChemicalEditTest, TenThousandCharactersSaveAndShow) {
    edit();
    const QString longText = u"Ünïcode; -- \"x\" [y] %z_ "_s.repeated(420).left(9999) + ".";
    box("txtchm_Name").setText(longText);
    control<platform::MemoBox>(chemicals, "txtchm_Notes").setText(longText);
    click("cmdSave");
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtchm_Name")), str(longText));
    EXPECT_EQ(str(shown("txtchm_Notes")), str(longText));
}

TEST_F(ChemicalEditTest, ARecordDeletedByAnotherProgramIsReportedAtSavingNotLost) {
    sql("DELETE FROM FormChem;");
    edit();
    sql("DELETE FROM Chemical WHERE ChemicalID = 1");
    box("txtchm_Name").setText("Typed");
    click("cmdSave");
    expectReports("frmChemical:refreshForm");
    EXPECT_EQ(str(shown("txtchm_Name")), "Typed") << "what was typed can still be copied";
    click("cmdNext");
    EXPECT_EQ(str(shown("txtchm_Name")), "Borax");
    asker.expectMsgBox("No Records");
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtchm_Name")), "");
}

TEST_F(ChemicalEditTest, ARefusedStatementIsReportedAndLosesNothing) {
    edit();
    box("txtchm_Name").setText("Typed");
    place().refuse(databasePath(), {u"UPDATE"_s, u"Chemical"_s, u"chm_Name"_s, u"Typed"_s});
    click("cmdSave");
    expectReport("clsChemical:saveChemical");
    expectReports("frmChemical:refreshForm");
    EXPECT_EQ(str(shown("txtchm_Name")), "Typed");
    EXPECT_EQ(str(stored("chm_Name")), "Aspirin");
}

}  // namespace
