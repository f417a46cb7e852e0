// What the screens have in common with the main window, seen on the formula screen: listening, moving,
// searching, locking, the tools' states, the caption, the save question.
#include "ScreenTest.h"

#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmFormula.h"

using namespace sorvanto;

namespace {

class ScreenContractTest : public ScreenTest {
protected:
    void seed() override { seedFormulas(); }
    frmFormula& formula() const { return screen<frmFormula>(formulas); }
    QString name() const { return text(formulas, "txtfrm_Name"); }
};

class EmptyTableTest : public ScreenTest {};

TEST_F(ScreenContractTest, StartsBrowsingOnTheFirstRecordByName) {
    load();
    EXPECT_TRUE(formula().formLocked());
    EXPECT_EQ(str(name()), "Arnica Salve");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Arnica Salve");
}

TEST_F(ScreenContractTest, TheIdentifiersAreReadWithTheirStatement) {
    load();
    clearStatements();
    formula().getData();
    EXPECT_EQ(str(statements.join('\n')), "SELECT FormulaID FROM Formula Order By frm_Name");
}

TEST_F(ScreenContractTest, MovesStopAtBothEndsWithoutAWord) {
    load();
    const QStringList shown{"Arnica Salve", "Cooling Gel", "Plain Base"};
    struct Move {
        const char* tool;
        int record;
    };
    for (const Move& move :
         {Move{"cmdNext", 1}, Move{"cmdNext", 2}, Move{"cmdNext", 2}, Move{"cmdNext", 2},
          Move{"cmdPrevious", 1}, Move{"cmdPrevious", 0}, Move{"cmdPrevious", 0}, Move{"cmdNext", 1},
          Move{"cmdLast", 2}, Move{"cmdFirst", 0}, Move{"cmdFirst", 0}}) {
        click(move.tool);
        EXPECT_EQ(str(name()), str(shown[move.record])) << move.tool;
        EXPECT_TRUE(on("cmdNext") && on("cmdPrevious") && on("cmdFirst") && on("cmdLast"));
    }
}

TEST_F(ScreenContractTest, BeyondAnEndTheRecordIsOpenedTwice) {
    load();
    const auto opened = [&](const char* toolName) {
        clearStatements();
        click(toolName);
        return statements.filter("FROM [Formula] WHERE").size();
    };
    EXPECT_EQ(opened("cmdPrevious"), 2);
    EXPECT_EQ(opened("cmdNext"), 1);
    EXPECT_EQ(opened("cmdLast"), 1);
    EXPECT_EQ(opened("cmdNext"), 2);
}

TEST_F(ScreenContractTest, ASearchLeavesTheSetWhereItWas) {
    load();
    search("Plain");
    EXPECT_EQ(str(name()), "Plain Base");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Plain Base");
    click("cmdNext");
    EXPECT_EQ(str(name()), "Cooling Gel");
}

TEST_F(ScreenContractTest, TheFindButtonSearchesForNothing) {
    load();
    tool("txtSearch").setText("Plain");
    click("cmdSearch");
    EXPECT_EQ(str(name()), "");
    EXPECT_EQ(str(tool("txtSearch").text()), "Plain");
}

TEST_F(ScreenContractTest, LockingGoesByTheControlsNames) {
    load();
    const QString locked = lockStates(formulas);
    click("cmdEdit");
    const QString unlocked = lockStates(formulas);
    support::expectGolden("screens/formula_locks.txt", "locked\n" + locked + "\nunlocked\n" + unlocked);
    click("cmdCancel");
    EXPECT_EQ(str(lockStates(formulas)), str(locked));
}

TEST_F(ScreenContractTest, ALockedBoxTakesNoKeys) {
    load();
    auto& box = control<platform::TextBox>(formulas, "txtfrm_Name");
    QTest::keyClicks(&box, "x");
    EXPECT_EQ(str(box.text()), "Arnica Salve");
    auto& type = control<platform::ChoiceBox>(formulas, "cbofrm_Type");
    QTest::keyClick(&type, Qt::Key_Up);
    EXPECT_EQ(type.listIndex(), 9);
    EXPECT_TRUE(box.isEnabled()) << "the text of a locked box can still be selected";
}

TEST_F(ScreenContractTest, ToolStatesOfTheFormulaAndTheCurrentFormulaScreen) {
    load();
    const QStringList locked = toolStates();
    click("cmdEdit");
    const QStringList unlocked = toolStates();
    click("cmdCancel");
    EXPECT_EQ(toolStates(), locked);
    click("cmdCurrent");
    const QStringList current = toolStates();
    sql("DELETE FROM FormChem; DELETE FROM Formula;");
    formula().getData();
    click("cmdFormulas");
    const QStringList empty = toolStates();
    support::expectGolden("screens/tool_states_formula.txt", stateTable({{"formulas locked", locked},
                                                                         {"unlocked", unlocked},
                                                                         {"empty", empty},
                                                                         {"current formula", current}}));
}

TEST_F(ScreenContractTest, ListeningIsStoredAndConnectsOrReleases) {
    load();
    formula().Listener(0);
    force("cmdNext");
    EXPECT_EQ(str(name()), "Arnica Salve");
    formula().Listener(5);
    EXPECT_EQ(formula().Listener(), 5);
    force("cmdNext");
    EXPECT_EQ(str(name()), "Arnica Salve");
    formula().Listener(-1);
    formula().Listener(-1);
    EXPECT_EQ(formula().Listener(), -1);
    force("cmdNext");
    EXPECT_EQ(str(name()), "Cooling Gel") << "once, however often it is set";
}

TEST_F(ScreenContractTest, TheCaptionBearsTheEditMarkWhileUnlocked) {
    load();
    click("cmdNext");
    click("cmdEdit");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Cooling Gel  (Edit)");
    click("cmdFormulas");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Cooling Gel  (Edit)");
    click("cmdSave");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Cooling Gel");
}

TEST_F(ScreenContractTest, ClosingALockedScreenAsksNothing) {
    load();
    EXPECT_EQ(formula().closeForm(), 0);
}

TEST_F(ScreenContractTest, ClosingAnUnlockedScreenAnswersByTheQuestion) {
    load();
    click("cmdEdit");
    control<platform::TextBox>(formulas, "txtfrm_Desc").setText("changed");
    const auto asks = [&](platform::Answer answer) {
        asker.expectMsgBox("Formula data not saved! Save Changes?", saveQuestion, "Save Data?", answer);
    };
    asks(platform::Answer::Cancel);
    EXPECT_EQ(formula().closeForm(), 2);
    asks(platform::Answer::No);
    EXPECT_EQ(formula().closeForm(), 7);
    EXPECT_EQ(str(sqlText("SELECT frm_Desc FROM Formula WHERE FormulaID = 3")), "Old recipe");
    asks(platform::Answer::Yes);
    EXPECT_EQ(formula().closeForm(), 6);
    EXPECT_EQ(str(sqlText("SELECT frm_Desc FROM Formula WHERE FormulaID = 3")), "changed");
}

TEST_F(ScreenContractTest, ARefusedSaveDoesNotKeepTheProgramOpen) {
    load();
    click("cmdChemicals");
    click("cmdCancel");  // that screen starts unlocked
    click("cmdFormulas");
    click("cmdEdit");
    control<platform::TextBox>(formulas, "txtfrm_Name").clear();
    asker.expectMsgBox("Formula data not saved! Save Changes?", saveQuestion, "Save Data?",
                       platform::Answer::Yes);
    asker.expectMsgBox("Formula Name is required");
    window->close();
    EXPECT_EQ(programEnds, 1);
}

TEST_F(EmptyTableTest, AllToolsAreOffButNew) {
    load();
    for (const QString& name : ScreenTest::recordTools())
        EXPECT_EQ(on(name), name == "cmdNew" || name == "cmdOptions") << str(name);
}

TEST_F(EmptyTableTest, TheFreshlyLoadedScreenShowsItsPrompts) {
    load();
    frmFormula fresh(context);
    fresh.Form_Load();
    EXPECT_EQ(str(support::child<platform::ChoiceBox>(fresh, "cbofrm_Type")->boxText()), "Select Type");
    EXPECT_EQ(str(support::child<platform::ChoiceBox>(fresh, "cbofrm_JarSize")->boxText()),
              "Select Jar Size");
    EXPECT_EQ(support::child<platform::ChoiceBox>(fresh, "cbofrm_Type")->listIndex(), -1);
    EXPECT_TRUE(fresh.formLocked());
}

TEST_F(EmptyTableTest, MovingOnAnEmptySetAndSwitchingThereSayNothing) {
    load();
    force("cmdFirst");
    force("cmdLast");
    click("cmdFormulas");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  ");
}

TEST_F(EmptyTableTest, NewLeavesTheEmptyStateAndCancelReturnsToIt) {
    load();
    click("cmdNew");
    EXPECT_TRUE(on("cmdSave"));
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "1");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Formula")), "0");
    EXPECT_TRUE(on("cmdNew"));
    EXPECT_FALSE(on("cmdEdit"));
    EXPECT_TRUE(screen<frmFormula>(formulas).formLocked());
}

}  // namespace
