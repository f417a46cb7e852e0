// The ingredients: cells written at once, lines added and removed, each with its side effects.
#include "FormulaScreenTest.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Answer;
using platform::TextBox;

namespace {

const platform::BoxStyle removal{platform::Buttons::YesNo, platform::Icon::Exclamation};
const QString chemicalPrompt = "Enter all or part of chemical name";
const QString quantityPrompt = "Input desired quantity for chemical";

class FormulaIngredientsTest : public FormulaScreenTest {
protected:
    void editIngredients(const QString& name) {
        edit(name);
        tabs().setCurrentIndex(1);
    }
    QString lines(int formulaID) const {
        return sqlText(u"SELECT ChemicalID, fch_Qty, fch_QS, fch_Active FROM FormChem WHERE FormulaID = %1"
                       u" ORDER BY FormChemID"_s.arg(formulaID));
    }
    QString line(int key) const {
        return sqlText(u"SELECT fch_Qty, fch_QS, fch_Active FROM FormChem WHERE FormChemID = %1"_s.arg(key));
    }
    void expectChemical(const QString& search, const QString& quantity) {
        asker.expectInputBox(chemicalPrompt, search, "Search Chemical");
        asker.expectInputBox(quantityPrompt, quantity, "");
    }
};

TEST_F(FormulaIngredientsTest, ACellIsWrittenAtOnceAndCancelDoesNotTakeItBack) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 0, "fch_Qty", "2.5");
    QTest::keyClick(cellEditor(grid()), Qt::Key_Return);
    EXPECT_EQ(str(line(11)), "2.5|0|1");
    EXPECT_EQ(str(shown("txtfrm_AWP")), "$ 16.59") << "totals follow at the next save";
    click("cmdCancel");
    EXPECT_EQ(str(line(11)), "2.5|0|1");
    EXPECT_EQ(column("fch_Qty").first(), "2.5");
}

TEST_F(FormulaIngredientsTest, ANewLineIsScrolledToAndMarked) {
    for (int i = 0; i < 30; ++i)
        sql("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 4, 1)");
    editIngredients("Cooling Gel");
    expectChemical("Borax", "7.25");
    press("cmdAdd");
    const int row = grid().currentIndex().row();
    EXPECT_EQ(str(grid().model()->index(row, grid().columnByField("fch_Qty")).data().toString()), "7.25");
    EXPECT_TRUE(grid().viewport()->rect().contains(grid().visualRect(grid().currentIndex())));
    asker.expectInputBox(chemicalPrompt, "nothing of that name", "Search Chemical");
    asker.expectMsgBox("No Records");
    grid().setCurrentIndex(grid().model()->index(4, 1));
    press("cmdAdd");
    EXPECT_EQ(grid().currentIndex().row(), 4) << "without a new line the mark stays where it is";
}

TEST_F(FormulaIngredientsTest, FlagsAreWrittenAtOnce) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 0, "fch_Qty", "1");
    QTest::keyClick(cellEditor(grid()), Qt::Key_Escape);
    for (const char* field : {"fch_QS", "fch_Active"}) {
        grid().setCurrentIndex(grid().model()->index(2, grid().columnByField(field)));
        QTest::keyClick(&grid(), Qt::Key_Space);
    }
    EXPECT_EQ(str(line(13)), "0.5|1|1");
    EXPECT_EQ(str(line(11)), "1.2345|0|1");
}

TEST_F(FormulaIngredientsTest, ASaveTakesTheCellThatIsStillOpen) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 1, "fch_Qty", "7");
    click("cmdSave");
    EXPECT_EQ(str(line(12)), "7.0|1|1");
    EXPECT_EQ(str(stored("frm_AWP", 1)), "20.9928");
    EXPECT_EQ(str(shown("txtfrm_AWP")), "$ 20.99");
    EXPECT_TRUE(formula().formLocked());
}

TEST_F(FormulaIngredientsTest, ACellThatIsRefusedKeepsTheFormOpen) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 1, "fch_Qty", "many");
    asker.expectMsgBox("The change was not saved.\n\nPlease type a number, such as 12.5.");
    click("cmdSave");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_EQ(str(line(12)), "5.0|1|1");
}

TEST_F(FormulaIngredientsTest, LockedCellsOpenNoEditor) {
    loadAt("Cooling Gel");
    tabs().setCurrentIndex(1);
    grid().setFocus();
    grid().setCurrentIndex(grid().model()->index(0, grid().columnByField("fch_Qty")));
    QTest::keyClick(&grid(), Qt::Key_F2);
    EXPECT_EQ(cellEditor(grid()), nullptr);
    grid().setCurrentIndex(grid().model()->index(0, grid().columnByField("fch_QS")));
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_EQ(str(line(11)), "1.2345|0|1");
}

TEST_F(FormulaIngredientsTest, ALineDeletedByAnotherProgramIsToldAtTheEdit) {
    editIngredients("Cooling Gel");
    sql("DELETE FROM FormChem WHERE FormChemID = 11");
    typeInCell(grid(), 0, "fch_Qty", "9");
    asker.expectMsgBox("The change was not saved.\n\n"
                       "The row can't be written: it has been deleted from table FormChem");
    QTest::keyClick(cellEditor(grid()), Qt::Key_Return);
    EXPECT_EQ(str(lines(1)), "4|5.0|1|1\n2|0.5|0|0");
}

TEST_F(FormulaIngredientsTest, AddSearchesAsksTheQuantityAndSavesTheWholeFormula) {
    editIngredients("Plain Base");
    box<TextBox>("txtfrm_Desc").setText("saved on the way");
    expectChemical("Asp", "4.5");
    press("cmdAdd");
    EXPECT_EQ(str(lines(2)), "1|4.5|0|1");
    EXPECT_EQ(str(stored("frm_Desc", 2)), "saved on the way");
    EXPECT_EQ(str(stored("frm_AWP", 2)), "5.625");
    EXPECT_EQ(column("chm_Name"), QStringList("Aspirin"));
    EXPECT_FALSE(formula().formLocked());
}

TEST_F(FormulaIngredientsTest, AddFindsByNDCAndByLot) {
    editIngredients("Plain Base");
    expectChemical("#222", "1");
    press("cmdAdd");
    expectChemical("?L300", "2");
    press("cmdAdd");
    EXPECT_EQ(str(lines(2)), "2|1.0|0|1\n3|2.0|0|1");
}

TEST_F(FormulaIngredientsTest, ACancelledSearchStillGoesThroughAndSaves) {
    editIngredients("Plain Base");
    box<TextBox>("txtfrm_Desc").setText("saved all the same");
    asker.expectInputBox(chemicalPrompt, "", "Search Chemical");
    asker.expectMsgBox("No Records");
    press("cmdAdd");
    EXPECT_EQ(str(lines(2)), "");
    EXPECT_EQ(str(stored("frm_Desc", 2)), "saved all the same");
}

TEST_F(FormulaIngredientsTest, ACancelledQuantityIsAFailedStatement) {
    editIngredients("Plain Base");
    expectChemical("Asp", "");
    press("cmdAdd");
    expectReport("clsFormula:addChemical");
    EXPECT_EQ(str(lines(2)), "");
}

TEST_F(FormulaIngredientsTest, WithoutAQuantityTheIngredientIsAddedAndTheMessageShown) {
    load();
    click("cmdNew");
    box<TextBox>("txtfrm_Name").setText("Draft");
    tabs().setCurrentIndex(1);
    expectChemical("Borax", "3");
    asker.expectMsgBox("Quantity is required");
    press("cmdAdd");
    EXPECT_EQ(str(lines(4)), "2|3.0|0|1");
    EXPECT_EQ(str(stored("frm_Name", 4)), "");
    EXPECT_EQ(str(shown("txtfrm_Name")), "") << "the refresh shows the record object";
}

TEST_F(FormulaIngredientsTest, RemoveTakesTheCurrentLineAndSaves) {
    editIngredients("Cooling Gel");
    grid().setCurrentIndex(grid().model()->index(1, 1));
    box<TextBox>("txtfrm_Desc").setText("saved too");
    asker.expectMsgBox("Are you sure?", removal, "Delete Chemical", Answer::Yes);
    press("cmdRemove");
    EXPECT_EQ(str(lines(1)), "3|1.2345|0|1\n2|0.5|0|0");
    EXPECT_EQ(str(stored("frm_Desc", 1)), "saved too");
    EXPECT_EQ(column("chm_Name"), QStringList({"Camphor", "Borax"}));
}

TEST_F(FormulaIngredientsTest, ARefusedRemovalSavesAllTheSame) {
    editIngredients("Cooling Gel");
    box<TextBox>("txtfrm_Desc").setText("saved too");
    asker.expectMsgBox("Are you sure?", removal, "Delete Chemical", Answer::No);
    press("cmdRemove");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM FormChem WHERE FormulaID = 1")), "3");
    EXPECT_EQ(str(stored("frm_Desc", 1)), "saved too");
}

TEST_F(FormulaIngredientsTest, RemoveWithoutALineIsAFailureAndSavesNothing) {
    editIngredients("Plain Base");
    box<TextBox>("txtfrm_Desc").setText("not saved");
    asker.expectMsgBox("Are you sure?", removal, "Delete Chemical", Answer::Yes);
    press("cmdRemove");
    expectReport("frmFormula:cmdRemove_Click");
    EXPECT_EQ(str(stored("frm_Desc", 2)), "");
}

TEST_F(FormulaIngredientsTest, AddAndRemoveTakeTheCellThatIsStillOpen) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 0, "fch_Qty", "8");
    expectChemical("Asp", "1");
    press("cmdAdd");
    EXPECT_EQ(str(line(11)), "8.0|0|1");
    typeInCell(grid(), 0, "fch_Qty", "9");
    asker.expectMsgBox("Are you sure?", removal, "Delete Chemical", Answer::No);
    press("cmdRemove");
    EXPECT_EQ(str(line(11)), "9.0|0|1");
}

TEST_F(FormulaIngredientsTest, MakeTakesTheCellThatIsStillOpen) {
    editIngredients("Cooling Gel");
    typeInCell(grid(), 0, "fch_Qty", "8");
    asker.expectModal("frmMake",
                      [](QWidget& form) { support::child<QPushButton>(form, "CancelButton")->click(); });
    force("cmdMake");
    EXPECT_EQ(str(line(11)), "8.0|0|1");
    EXPECT_EQ(window->current(), currentFormula);
}

TEST_F(FormulaIngredientsTest, AfterAChangeOfLinesACopyFailsUntilTheFormulaIsOpenedAgain) {
    editIngredients("Plain Base");
    expectChemical("Asp", "4.5");
    press("cmdAdd");
    click("cmdSave");
    click("cmdCopy");
    expectReport("clsFormula:copyFormula");
    expectReports("frmFormula:refreshForm");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM FormChem WHERE FormulaID = 4")), "0");
    click("cmdCancel");
    dropReports();
    search("Plain");
    click("cmdCopy");
    EXPECT_EQ(str(lines(5)), "1|4.5|0|1");
}

}  // namespace
