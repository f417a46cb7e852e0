// The whole window on a server while another bench changes the same records: what is told of it, and what follows.
#include "screens/ScreenTest.h"

#include "TestServer.h"
#include "Waiting.h"
#include "core/BenchWatch.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/RecordList.h"

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using support::child;

namespace {

/// Past the program, as the program of that computer would.
void changeAt(const QString& bench, const QString& statement) {
    support::runOnServer(
        u"SET sorvanto.person = '%1'; SET sorvanto.program = '1.6'; %2"_s.arg(bench, statement));
}

class OtherBenchTest : public ScreenTest {
protected:
    void SetUp() override {
        ScreenTest::SetUp();
        ASSERT_TRUE(QFile::remove(databasePath()));
        support::makeEmptyServer();
        support::runOnServer(
            u"INSERT INTO \"Chemical\" VALUES (DEFAULT, 'Camphor', 'GMS', 'L1', '1-1', 2, 4.5, '', 'CRYS', 'G1', 'Harbor'), "
            "(DEFAULT, 'Menthol', 'MLS', 'L2', '2-2', 1.1, 2.2, '', 'SOLN', 'G2', 'Harbor');"
            "INSERT INTO \"Formula\" VALUES "
            "(DEFAULT, 'Cooling Gel', 'For the skin', '2 %', 'GMS', '', 10, 3, 9, 0, '7-1', 'F1', ''), "
            "(DEFAULT, 'Plain Base', '', '', 'MLS', '', 50, 5, 3, 0, '7-2', 'F2', ''), "
            "(DEFAULT, 'Arnica Salve', 'Old recipe', '1:10', 'GMS', '', 30, 9, 9, 0, '7-3', 'F3', '');"
            "INSERT INTO \"FormChem\" VALUES (DEFAULT, 1, 1, 1.2345, 0, 0), (DEFAULT, 1, 2, 5, 0, 0), "
            "(DEFAULT, 3, 1, 3, 0, 0)"_s);
        load();
        ASSERT_TRUE(openDB()->isServer());
        look();
    }
    QByteArray optionsXml() const override {
        return ScreenTest::optionsXml().replace(databasePath().toUtf8(),
                                                support::serverAddress().toHtmlEscaped().toUtf8());
    }

    void look() const { window->findChild<BenchWatch*>()->look(); }
    /// Another bench does that, and then the program looks.
    void otherDoes(const QString& statement) const {
        changeAt(u"jt@bench2"_s, statement);
        look();
    }
    void browse() const {
        click("cmdFormulas");
        search("Cooling");
    }
    QWidget& strip() const { return *child<QWidget>(*window, "changeStrip"); }
    QString told() const {
        return strip().isVisible() ? child<QLabel>(strip(), "lblChange")->text() : QString();
    }
    QString shown(const QString& name) const { return text(formulas, name); }
    platform::TextBox& box(const QString& name) const { return control<platform::TextBox>(formulas, name); }
    QString place() const { return child<QLabel>(*window, "lblPlace")->text(); }

    const QString describe =
        u"UPDATE \"Formula\" SET \"frm_Desc\" = 'For cold days' WHERE \"FormulaID\" = 1"_s;
};

TEST_F(OtherBenchTest, ARecordThatIsLookedAtIsShownFreshAndTheStripSaysWhoChangedIt) {
    browse();
    EXPECT_EQ(str(told()), "");
    otherDoes(describe);
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For cold days");
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
    EXPECT_FALSE(told().contains("What you save")) << str(told());
    EXPECT_EQ(str(strip().accessibleName()), str(told()));
    click("cmdLast");
    EXPECT_EQ(str(told()), "") << "of another record there is nothing to tell";
}

TEST_F(OtherBenchTest, WhatIsBeingChangedStaysAndTheStripWarnsBeforeItIsSaved) {
    browse();
    click("cmdEdit");
    box("txtfrm_Strength").setText("3 %");
    otherDoes(describe);
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For the skin");
    EXPECT_EQ(str(shown("txtfrm_Strength")), "3 %");
    EXPECT_TRUE(told().endsWith("What you save replaces it.")) << str(told());
    click("cmdSave");
    const auto stored = support::runOnServer(
        u"SELECT \"frm_Desc\", \"frm_Strength\" FROM \"Formula\" WHERE \"FormulaID\" = 1"_s);
    EXPECT_EQ(str(stored[0][0] + u'|' + stored[0][1]), "For the skin|3 %") << "the last save wins";
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
    EXPECT_FALSE(told().contains("What you save")) << str(told());
}

TEST_F(OtherBenchTest, AfterACancelWhatTheOtherBenchSavedIsShown) {
    browse();
    click("cmdEdit");
    otherDoes(describe);
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For the skin") << "also where nothing was typed yet";
    click("cmdCancel");
    look();
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For cold days");
}

TEST_F(OtherBenchTest, OwnSavesAreNotTold) {
    browse();
    click("cmdEdit");
    box("txtfrm_Desc").setText("Mine ");
    click("cmdSave");
    look();
    EXPECT_EQ(str(told()), "");
    EXPECT_EQ(str(shown("txtfrm_Desc")), "Mine ") << "the record is not read again";
}

TEST_F(OtherBenchTest, LinesBelongToTheirRecord) {
    browse();
    otherDoes(u"UPDATE \"FormChem\" SET \"fch_Qty\" = 9 WHERE \"FormChemID\" = 2"_s);
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
    otherDoes(u"UPDATE \"Formula\" SET \"frm_Desc\" = 'x' WHERE \"FormulaID\" = 3"_s);
    click("cmdLast");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Plain Base");
    EXPECT_EQ(str(told()), "");
    otherDoes(u"UPDATE \"FormChem\" SET \"fch_Qty\" = 8 WHERE \"FormChemID\" = 3"_s);
    EXPECT_EQ(str(told()), "") << "a line of another one";
}

TEST_F(OtherBenchTest, TheCostOfAFormulaFollowsThePricesOfItsIngredients) {
    browse();
    const QString before = shown("txtfrm_Cost");
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Cost\" = 4 WHERE \"ChemicalID\" = 1"_s);
    EXPECT_EQ(str(before + u' ' + shown("txtfrm_Cost")), "$ 7.97 $ 10.44");
    EXPECT_TRUE(told().startsWith("Camphor was changed at bench2 at ")) << str(told());
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Lot\" = 'L9', \"chm_Cost\" = 5 WHERE \"ChemicalID\" = 2"_s);
    EXPECT_TRUE(told().startsWith("Menthol was changed at bench2 at ")) << str(told());
    otherDoes(describe);
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Cost\" = 6 WHERE \"ChemicalID\" = 2"_s);
    EXPECT_EQ(str(shown("txtfrm_Cost")), "$ 34.94");
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << "of the formula itself" << str(told());
}

TEST_F(OtherBenchTest, WhatAFormulaDoesNotShowOfChemicalsIsNotTold) {
    browse();
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Lot\" = 'L9', \"chm_Notes\" = 'x' WHERE \"ChemicalID\" = 1"_s);
    EXPECT_EQ(str(told()), "");
    click("cmdLast");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Plain Base");
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Cost\" = 4"_s);
    EXPECT_EQ(str(told()), "") << "none of its ingredients";
}

TEST_F(OtherBenchTest, TheCostOfAFormulaThatIsBeingChangedStaysAndTheStripWarns) {
    browse();
    click("cmdEdit");
    box("txtfrm_Strength").setText("3 %");
    const QString before = shown("txtfrm_Cost");
    otherDoes(u"UPDATE \"Chemical\" SET \"chm_Cost\" = 4 WHERE \"ChemicalID\" = 1"_s);
    EXPECT_EQ(str(shown("txtfrm_Cost")), str(before));
    EXPECT_TRUE(told().startsWith("Camphor was changed at bench2 at ")) << str(told());
    EXPECT_FALSE(told().contains("What you save replaces it.")) << "it does not";
    click("cmdSave");
    EXPECT_EQ(str(shown("txtfrm_Cost")), "$ 10.44");
}

TEST_F(OtherBenchTest, ARecordThatIsGoneIsToldAndStaysOnShow) {
    browse();
    otherDoes(
        u"DELETE FROM \"FormChem\" WHERE \"FormulaID\" = 1; DELETE FROM \"Formula\" WHERE \"FormulaID\" = 1"_s);
    EXPECT_TRUE(told().startsWith("Deleted at bench2 at ")) << str(told());
    EXPECT_EQ(str(shown("txtfrm_Name")), "Cooling Gel");
    EXPECT_EQ(str(place()), "2 formulas");
}

TEST_F(OtherBenchTest, WhatAnotherProgramDoesIsTold) {
    browse();
    support::runOnServer(describe);
    look();
    EXPECT_TRUE(told().startsWith("Changed by another program at ")) << str(told());
}

TEST_F(OtherBenchTest, ShowListsWhatWasChanged) {
    browse();
    otherDoes(describe);
    QString all;
    asker.expectModal(u"HistoryWindow"_s, [&](QWidget& history) {
        EXPECT_EQ(str(history.windowTitle()), "History of Cooling Gel");
        const auto* rows = child<QTableView>(history, "grdChanges")->model();
        for (int row = 0; row < rows->rowCount(); ++row) {
            for (int column = 1; column < rows->columnCount(); ++column)
                all += rows->index(row, column).data().toString() + u'|';
        }
        child<QPushButton>(history, "cmdClose")->click();
    });
    child<QPushButton>(strip(), "cmdShowChange")->click();
    EXPECT_TRUE(all.contains("jt@bench2")) << str(all);
    EXPECT_TRUE(all.contains("For the skin|For cold days")) << str(all);
}

TEST_F(OtherBenchTest, TheStripIsPutAsideUntilTheNextChange) {
    browse();
    otherDoes(describe);
    child<QToolButton>(strip(), "cmdCloseChange")->click();
    EXPECT_EQ(str(told()), "");
    look();
    EXPECT_EQ(str(told()), "");
    otherDoes(u"UPDATE \"Formula\" SET \"frm_Desc\" = 'Again' WHERE \"FormulaID\" = 1"_s);
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
}

TEST_F(OtherBenchTest, AScreenThatWasNotOnShowIsFreshWhenItIs) {
    browse();
    click("cmdChemicals");
    otherDoes(describe);
    EXPECT_EQ(str(told()), "");
    click("cmdFormulas");
    look();
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For cold days");
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
}

TEST_F(OtherBenchTest, TheStatusLineAndTheMovesFollow) {
    click("cmdFormulas");
    click("cmdFirst");
    click("cmdNext");
    EXPECT_EQ(str(place()), "Formula 2 of 3");
    otherDoes(u"INSERT INTO \"Formula\" (\"frm_Name\") VALUES ('A Lotion'), ('Zinc Paste')"_s);
    EXPECT_EQ(str(place()), "Formula 3 of 5");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Cooling Gel");
    otherDoes(u"DELETE FROM \"Formula\" WHERE \"frm_Name\" = 'A Lotion'"_s);
    EXPECT_EQ(str(place()), "Formula 2 of 4");
    otherDoes(
        u"DELETE FROM \"FormChem\" WHERE \"FormulaID\" = 1; DELETE FROM \"Formula\" WHERE \"FormulaID\" = 1"_s);
    click("cmdNext");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Plain Base") << "what came behind the one that is gone";
}

TEST_F(OtherBenchTest, TheOtherScreensFollowToo) {
    click("cmdChemicals");
    click("cmdCancel");
    EXPECT_EQ(str(place()), "Chemical 1 of 2");
    otherDoes(
        u"INSERT INTO \"Chemical\" (\"chm_Name\") VALUES ('Zinc'); UPDATE \"Chemical\" SET \"chm_Lot\" = 'L9'"_s);
    EXPECT_EQ(str(place()), "Chemical 1 of 3");
    EXPECT_EQ(str(text(chemicals, "txtchm_Lot")), "L9");
    click("cmdPatients");
    EXPECT_EQ(str(place()), "0 patients");
    otherDoes(u"INSERT INTO \"Patient\" VALUES (DEFAULT, 'Jane', 'Doe', '', '', '', '', '', '', NULL, '')"_s);
    EXPECT_EQ(str(place()), "Patient 1 of 1");
    EXPECT_EQ(str(text(patients, "txtpat_LName")), "Doe") << "the first record comes on show";
}

TEST_F(OtherBenchTest, WhileARecordIsChangedTheSetStays) {
    click("cmdFormulas");
    click("cmdFirst");
    click("cmdEdit");
    otherDoes(u"INSERT INTO \"Formula\" (\"frm_Name\") VALUES ('A Lotion')"_s);
    EXPECT_EQ(str(place()), "Formula 1 of 3");
    click("cmdCancel");
    look();
    EXPECT_EQ(str(place()), "Formula 2 of 4");
}

TEST_F(OtherBenchTest, TheListFollows) {
    window->resize(1700, 900);
    click("cmdFormulas");
    auto& list = *child<platform::RecordList>(*window, u"recordList"_s);
    ASSERT_TRUE(support::waitFor([&] { return list.model().rowCount() == 3; }));
    otherDoes(u"INSERT INTO \"Formula\" (\"frm_Name\") VALUES ('A Lotion')"_s);
    EXPECT_TRUE(support::waitFor([&] { return list.model().rowCount() == 4; }));
}

TEST_F(OtherBenchTest, NothingIsShownFreshBelowAWindow) {
    browse();
    QDialog question(window.get());
    question.setModal(true);
    question.show();
    otherDoes(describe);
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For the skin");
    question.close();
    look();
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For cold days");
    EXPECT_TRUE(told().startsWith("Changed at bench2 at ")) << str(told());
}

}  // namespace
