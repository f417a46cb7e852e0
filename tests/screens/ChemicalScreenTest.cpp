// The chemical screen as it shows itself: its unlocked start, captions, lists, prices, moves and tools.
#include "ScreenTest.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmChemical.h"

#include <QLabel>

using namespace sorvanto;

namespace {

const QString unsaved = "Chemical data not saved! Save Changes?";

class ChemicalScreenTest : public ScreenTest {
protected:
    void seed() override { seedChemicals(); }
    void openScreen() {
        load();
        click("cmdChemicals");
    }
    /// The screen opened and its first, unlocked state left.
    void browse() {
        openScreen();
        click("cmdCancel");
    }
    frmChemical& chemical() const { return screen<frmChemical>(chemicals); }
    QString shown(const QString& name) const { return text(chemicals, name); }
    platform::ChoiceBox& choice(const QString& name) const {
        return control<platform::ChoiceBox>(chemicals, name);
    }
    QStringList entries(const QString& name) const {
        QStringList texts;
        for (int row = 0; row < choice(name).count(); ++row)
            texts << choice(name).itemText(row);
        return texts;
    }
};

class NoChemicalsTest : public ChemicalScreenTest {
    void seed() override {}
};

class EuroTest : public ChemicalScreenTest {
    QByteArray optionsXml() const override {
        return ChemicalScreenTest::optionsXml().replace("<DefCurrency>$<", "<DefCurrency>€<");
    }
};

class GermanChemicalTest : public ChemicalScreenTest {
    QByteArray optionsXml() const override {
        folder.write("GermanTranslation.xml",
                     "<Translations Language=\"German\"><Translate English=\"GMS\" Translated=\"GRAMM\"/>"
                     "<Translate English=\"Select Units\" Translated=\"Einheit wählen\"/>"
                     "<Translate English=\"Select Form\" Translated=\"Form wählen\"/></Translations>");
        return ChemicalScreenTest::optionsXml().replace("<Language>0<", "<Language>2<");
    }
};

TEST_F(ChemicalScreenTest, StartsUnlockedOnTheFirstRecord) {
    openScreen();
    EXPECT_FALSE(chemical().formLocked());
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
    EXPECT_TRUE(on("cmdSave") && on("cmdCancel"));
    EXPECT_FALSE(on("cmdEdit") || on("cmdNew") || on("cmdNext"));
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :  Aspirin  (Edit)");
}

TEST_F(ChemicalScreenTest, ClosingRightAfterTheStartAsksToSave) {
    load();
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Cancel);
    window->close();
    EXPECT_EQ(programEnds, 0);
    EXPECT_TRUE(chemical().formLocked()) << "No and Cancel lock this screen";
    window->close();
    EXPECT_EQ(programEnds, 1);
}

TEST_F(ChemicalScreenTest, TheSaveQuestionAnswersByItsNumber) {
    openScreen();
    control<platform::TextBox>(chemicals, "txtchm_Lot").setText("changed");
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::No);
    EXPECT_EQ(chemical().closeForm(), 7);
    EXPECT_EQ(chemical().closeForm(), 0) << "locked by the answer before";
    chemical().editForm();
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Cancel);
    EXPECT_EQ(chemical().closeForm(), 2);
    EXPECT_EQ(str(sqlText("SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1")), "L100");
    chemical().editForm();
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Yes);
    EXPECT_EQ(chemical().closeForm(), 6);
    EXPECT_EQ(str(sqlText("SELECT chm_Lot FROM Chemical WHERE ChemicalID = 1")), "changed");
}

TEST_F(ChemicalScreenTest, Captions) {
    openScreen();
    const std::pair<const char*, const char*> labels[] = {
        {"lblchm_Name", "Chemical Name"},    {"lblchm_NDC", "NDC"},
        {"lblchm_Units", "Unit of Measure"}, {"lblchm_Form", "Chemical Form"},
        {"lblchm_Lot", "Lot Number"},        {"lblchm_Supplier", "Supplier"},
        {"lblchm_Price", "Cost per Unit"},   {"lblchm_AWP", "AWP per Unit"},
        {"lblchm_Notes", "Notes"},
    };
    for (const auto& [name, caption] : labels)
        EXPECT_EQ(str(control<QLabel>(chemicals, name).text()), caption) << name;
}

TEST_F(ChemicalScreenTest, ShowsEveryFieldOfTheRecord) {
    browse();
    click("cmdNext");
    const std::pair<const char*, const char*> boxes[] = {
        {"txtchm_Name", "Borax"},  {"txtchm_NDC", "222-22"}, {"cbochm_Units", "GMS"},
        {"cbochm_Form", "PWD"},    {"txtchm_Lot", "L200"},   {"txtchm_Supplier", "Northfield"},
        {"txtchm_Cost", "$ 0.03"}, {"txtchm_AWP", "$ 0.08"}, {"txtchm_Notes", "keep dry"},
    };
    for (const auto& [name, shownText] : boxes)
        EXPECT_EQ(str(shown(name)), shownText) << name;
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :  Borax");
}

TEST_F(ChemicalScreenTest, TheListOfUnitsOffersMicrogramsTwice) {
    openScreen();
    EXPECT_EQ(str(entries("cbochm_Units").join(' ')),
              "AMP CAPS CC DROP EACH GMS GR GTTS IU LIT LITR MCG MCG MEQ MGS MLS TABS VIAL");
    EXPECT_EQ(str(entries("cbochm_Form").join(' ')),
              "BOTTLE CAP CRM CRYS CUBE FLAKE GEL GRAM INJ LIQU PWD SOLID SOLN SUSP TAB UNG");
}

TEST_F(ChemicalScreenTest, AUnitOutsideTheListIsShownAllTheSame) {
    openScreen();
    sql("UPDATE Chemical SET chm_Units = 'XYZ', chm_Form = NULL WHERE ChemicalID = 2");
    click("cmdCancel");
    click("cmdNext");
    EXPECT_EQ(str(shown("cbochm_Units")), "XYZ");
    EXPECT_EQ(choice("cbochm_Units").listIndex(), -1);
    EXPECT_EQ(str(shown("cbochm_Form")), "");
}

TEST_F(EuroTest, PricesBearTheCurrencyOfTheOptions) {
    sql("UPDATE Chemical SET chm_Cost = 1234.5, chm_AWP = -2 WHERE ChemicalID = 1");
    openScreen();
    EXPECT_EQ(str(shown("txtchm_Cost")), "€ 1,234.50");
    EXPECT_EQ(str(shown("txtchm_AWP")), "€ 0.00") << "the 0 in front of a stored number hides a negative one";
}

TEST_F(GermanChemicalTest, ListsAndPromptsAreInTheUsersLanguage) {
    openScreen();
    EXPECT_EQ(str(entries("cbochm_Units").value(5)), "GRAMM");
    EXPECT_EQ(str(shown("cbochm_Units")), "GMS") << "a record keeps its text whatever the language is";
    click("cmdCancel");
    click("cmdNew");
    control<platform::TextBox>(chemicals, "txtchm_Name").setText("Neu");
    choice("cbochm_Units").setListIndex(5);
    choice("cbochm_Form").setBoxText("Form wählen");
    click("cmdSave");
    EXPECT_EQ(str(sqlText("SELECT chm_Units, chm_Form FROM Chemical WHERE chm_Name = 'Neu'")), "GRAMM|");
}

TEST_F(ChemicalScreenTest, ToolStates) {
    openScreen();
    const QStringList start = toolStates();
    click("cmdCancel");
    const QStringList locked = toolStates();
    click("cmdEdit");
    const QStringList unlocked = toolStates();
    EXPECT_EQ(start, unlocked);
    click("cmdCancel");
    EXPECT_EQ(toolStates(), locked);
    sql("DELETE FROM Chemical;");
    chemical().getData();
    click("cmdChemicals");
    const QStringList empty = toolStates();
    click("cmdNew");
    const QStringList adding = toolStates();
    support::expectGolden(
        "screens/tool_states_chemical.txt",
        stateTable(
            {{"locked", locked}, {"unlocked", unlocked}, {"empty", empty}, {"adding the first", adding}}));
}

TEST_F(ChemicalScreenTest, LockingGoesByTheControlsNames) {
    openScreen();
    const QString unlocked = lockStates(chemicals);
    click("cmdCancel");
    support::expectGolden("screens/chemical_locks.txt",
                          "locked\n" + lockStates(chemicals) + "\nunlocked\n" + unlocked);
}

TEST_F(NoChemicalsTest, AnEmptyTableStartsUnlockedWithNewOffUntilCancel) {
    openScreen();
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :    (Edit)");
    EXPECT_FALSE(on("cmdNew"));
    EXPECT_TRUE(on("cmdSave") && on("cmdCancel"));
    EXPECT_EQ(str(shown("cbochm_Units")), "Select Units");
    EXPECT_EQ(str(shown("cbochm_Form")), "Select Form");
    click("cmdCancel");
    for (const QString& name : recordTools())
        EXPECT_EQ(on(name), name == "cmdNew" || name == "cmdOptions") << str(name);
}

TEST_F(NoChemicalsTest, CancellingTheVeryFirstLeavesABlankLockedScreen) {
    openScreen();
    click("cmdCancel");
    click("cmdNew");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Chemical")), "0");
    EXPECT_TRUE(chemical().formLocked());
    EXPECT_TRUE(on("cmdNew"));
}

TEST_F(ChemicalScreenTest, TheIdentifiersAreReadWithoutAnOrder) {
    openScreen();
    clearStatements();
    chemical().getData();
    EXPECT_EQ(str(statements.join('\n')), "SELECT ChemicalID FROM Chemical");
}

TEST_F(ChemicalScreenTest, MovesStopAtTheEndsAndOpenTheRecordTwiceThere) {
    browse();
    const auto opened = [&](const char* toolName) {
        clearStatements();
        click(toolName);
        return statements.filter("FROM [Chemical] WHERE").size();
    };
    EXPECT_EQ(opened("cmdLast"), 1);
    EXPECT_EQ(str(shown("txtchm_Name")), "Menthol");
    EXPECT_EQ(opened("cmdNext"), 2);
    EXPECT_EQ(str(shown("txtchm_Name")), "Menthol");
    EXPECT_EQ(opened("cmdPrevious"), 1);
    EXPECT_EQ(str(shown("txtchm_Name")), "Camphor");
    EXPECT_EQ(opened("cmdFirst"), 1);
    EXPECT_EQ(opened("cmdPrevious"), 2);
    EXPECT_EQ(str(shown("txtchm_Name")), "Aspirin");
}

TEST_F(ChemicalScreenTest, SearchesByNameCodeAndLotLeaveTheSetWhereItWas) {
    browse();
    const std::pair<const char*, const char*> searches[] = {
        {"cam", "Camphor"}, {"4#44", "Menthol"}, {"L2$", "Borax"}, {"$L100", "Aspirin"}};
    for (const auto& [typed, found] : searches) {
        search(typed);
        EXPECT_EQ(str(shown("txtchm_Name")), found) << typed;
    }
    click("cmdNext");
    EXPECT_EQ(str(shown("txtchm_Name")), "Borax");
}

TEST_F(ChemicalScreenTest, ASearchThatFindsNothingShowsABlankRecord) {
    browse();
    asker.expectMsgBox("No Records");
    search("zinc");
    EXPECT_EQ(str(shown("txtchm_Name")), "");
    EXPECT_EQ(str(shown("cbochm_Units")), "Select Units");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Chemicals  :  ");
}

TEST_F(ChemicalScreenTest, ACancelledChoiceShowsABlankRecord) {
    browse();
    sql("UPDATE Chemical SET chm_Name = 'Aspirin fine' WHERE ChemicalID = 2");
    asker.expectModal("frmSearchRS", [](QWidget& list) { list.close(); });
    search("asp");
    EXPECT_EQ(str(shown("txtchm_Name")), "");
}

TEST_F(ChemicalScreenTest, AnApostropheBreaksASearchAndTheRefreshGoesOn) {
    browse();
    search("O'B");
    expectReport("clsChemical:chemicalOpen");
    expectReport("frmChemical:refreshForm");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtchm_Name")), "Borax");
}

TEST_F(ChemicalScreenTest, TheListOfAllIsExportedWithoutADialog) {
    browse();
    clearStatements();
    click("mnuReportx");
    EXPECT_TRUE(folder.has("Chemicals.xls"));
    EXPECT_EQ(str(statements.value(0)),
              "SELECT Chemical.chm_Name, Chemical.chm_Units, Chemical.chm_Lot, Chemical.chm_NDC, "
              "Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_Notes, Chemical.chm_Form, "
              "Chemical.chm_Supplier FROM Chemical ORDER BY chm_Name;");
}

TEST_F(ChemicalScreenTest, FailuresBearTheScreensTags) {
    browse();
    click("cmdNext");
    openDB()->setTrace([](const QString&) { throw platform::RuntimeError(5, "Made to fail"); });
    chemical().getData();
    expectReport("frmChemical:getData");
    openDB()->setTrace({});
    chemical().getData();
    sql("DELETE FROM Chemical;");
    chemical().getData();
    chemical().moveNext();
    expectReport("frmChemical:moveNext");
    chemical().movePrevious();
    expectReport("frmChemical:movePrevious");
    chemical().moveFirst();
    chemical().moveLast();
}

}  // namespace

TEST_F(ChemicalScreenTest, TheQuestionOfAScreenThatWasNeverTypedOnSaysSo) {
    openScreen();
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Cancel);
    EXPECT_EQ(chemical().closeForm(), 2);
    EXPECT_EQ(str(asker.note()),
              "Nothing was typed on the chemical screen: it is open for typing from the start.");
}

TEST_F(ChemicalScreenTest, TheQuestionSaysNothingOfTheKindWhereSomethingWasTypedOrTheScreenWasOpenedForIt) {
    openScreen();
    QTest::keyClicks(&control<platform::TextBox>(chemicals, "txtchm_Lot"), "x");
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Cancel);
    EXPECT_EQ(chemical().closeForm(), 2);
    EXPECT_EQ(str(asker.note()), "");
    click("cmdChemicals");
    chemical().lockForm();
    click("cmdChemicals");
    click("cmdEdit");
    asker.expectMsgBox(unsaved, saveQuestion, "Save Data?", platform::Answer::Cancel);
    EXPECT_EQ(chemical().closeForm(), 2);
    EXPECT_EQ(str(asker.note()), "") << "the user has opened it";
}
