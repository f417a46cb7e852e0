// What the screens say they have done, and that they say nothing where nothing was done.
#include "Announced.h"
#include "OpenedOutside.h"
#include "PatientScreenTest.h"

#include "config/frmOptions.h"
#include "screens/frmLog.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>

using namespace sorvanto;

namespace {

/// The patients with their prescriptions, and with them batches, formulas and chemicals.
class AnnouncedTest : public PatientScreenTest {
protected:
    void SetUp() override {
        PatientScreenTest::SetUp();
        load();
        announced = std::make_unique<support::Announced>();
    }
    void TearDown() override {
        announced.reset();
        PatientScreenTest::TearDown();
    }
    void go(const QString& button) {
        click(button);
        if (on(u"cmdCancel"_s))
            click(u"cmdCancel"_s);  // the chemicals start unlocked
    }
    void expectDeletion(const QString& question, platform::Answer answer) {
        asker.expectMsgBox(question, platform::deletionStyle, answer);
    }
    /// A batch of the first formula is mixed and signed.
    bool logBatch() {
        asker.expectModal(u"frmInitials"_s, [](QWidget& form) {
            support::child<platform::TextBox>(form, u"txtInitials"_s)->setText(u"RK"_s);
            support::child<platform::TextBox>(form, u"txtVerified"_s)->setText(u"LM"_s);
            support::child<QPushButton>(form, u"cmdOK"_s)->click();
        });
        const auto formula =
            document(u"<Formula><ID>1</ID><Name>Cooling Gel</Name><Type>9</Type><Make>30</Make>"
                     "<Size>4</Size><CustomMix PreGrind=\"3\" FreeSpin=\"5\"/></Formula>"_s);
        return screen<frmLog>(logs).addLog(formula, document(resultsXml(u"CD"_s, u"0077"_s)));
    }
    /// Runs an action of the newest happening.
    void act(const QString& text) {
        for (const HappeningAction& action : announced->last().actions)
            if (action.text == text)
                return action.run();
        FAIL() << str(text);
    }
    QString place() const { return support::child<QLabel>(*window, u"lblPlace"_s)->text(); }

    std::unique_ptr<support::Announced> announced;
};

TEST_F(AnnouncedTest, ASavedRecordOfEachScreenIsSaidWithItsTime) {
    for (const char* button : {"cmdFormulas", "cmdChemicals", "cmdLogs", "cmdPatients"}) {
        go(QLatin1String(button));
        click(u"cmdEdit"_s);
        click(u"cmdSave"_s);
        EXPECT_EQ(announced->texts().size(), 1) << button;
        EXPECT_EQ(str(announced->texts().value(0)), "Saved 2:05 PM") << button;
        announced = nullptr;
        announced = std::make_unique<support::Announced>();
    }
}

TEST_F(AnnouncedTest, ARefusedOrCancelledRecordIsNotSaidToBeSaved) {
    go(u"cmdChemicals"_s);
    click(u"cmdEdit"_s);
    control<platform::TextBox>(chemicals, u"txtchm_Name"_s).setText({});
    asker.expectMsgBox(u"Chemical Name is required"_s);
    click(u"cmdSave"_s);
    EXPECT_EQ(announced->texts(), QStringList());
    click(u"cmdCancel"_s);
    EXPECT_EQ(announced->texts(), QStringList{u"Changes thrown away: \"Aspirin\""_s});
}

TEST_F(AnnouncedTest, ASaveThatTheFileRefusesIsNotSaid) {
    go(u"cmdLogs"_s);
    click(u"cmdEdit"_s);
    failStatement(u"UPDATE"_s);
    click(u"cmdSave"_s);
    dropReports();
    EXPECT_EQ(announced->texts(), QStringList());
}

TEST_F(AnnouncedTest, ADeletionSaysWhatWasDeleted) {
    go(u"cmdFormulas"_s);
    expectDeletion(u"Delete Arnica Salve?"_s, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    go(u"cmdChemicals"_s);
    click(u"cmdLast"_s);
    sql(u"DELETE FROM FormChem"_s);
    expectDeletion(u"Delete Menthol?"_s, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    go(u"cmdPatients"_s);
    click(u"cmdNext"_s);
    expectDeletion(u"Delete Lie, Ole?"_s, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    go(u"cmdLogs"_s);
    click(u"cmdLast"_s);
    sql(u"DELETE FROM RXs"_s);
    expectDeletion(u"Delete Cooling Gel ?"_s, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    EXPECT_EQ(str(announced->texts().join(u" | "_s)),
              "Arnica Salve deleted | Menthol deleted | Lie, Ole deleted | AB0011, Cooling Gel deleted");
}

TEST_F(AnnouncedTest, ALineOfAFormulaAndAPrescriptionAreNamedAsWell) {
    go(u"cmdFormulas"_s);
    click(u"cmdNext"_s);
    click(u"cmdEdit"_s);
    const QString name =
        control<platform::RecordGrid>(formulas, u"grdIngredients"_s).currentValue(1).toString();
    asker.expectMsgBox(u"Are you sure?"_s, yesNo, u"Delete Chemical"_s, platform::Answer::Yes);
    control<QPushButton>(formulas, u"cmdRemove"_s).click();
    EXPECT_EQ(str(announced->last().text), str(name + u" deleted"_s));
    click(u"cmdCancel"_s);
    go(u"cmdPatients"_s);
    click(u"cmdEdit"_s);
    asker.expectMsgBox(u"Are you sure?"_s, yesNo, u"Delete RX"_s, platform::Answer::Yes);
    press(u"cmdDeleteRX"_s);
    EXPECT_EQ(str(announced->last().text), "Cooling Gel deleted");
}

TEST_F(AnnouncedTest, ADeletionThatIsDeclinedOrRefusedIsNotSaid) {
    go(u"cmdLogs"_s);
    expectDeletion(u"Delete Cooling Gel ?"_s, platform::Answer::No);
    click(u"cmdDelete"_s);
    go(u"cmdPatients"_s);
    failStatement(u"DELETE"_s);
    expectDeletion(u"Delete Doe, Jane?"_s, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    dropReports();
    EXPECT_EQ(announced->texts(), QStringList());
}

TEST_F(AnnouncedTest, ASpreadsheetIsSaidAndOpened) {
    const support::OpenedOutside desktop;
    go(u"cmdChemicals"_s);
    click(u"mnuReportx"_s);
    ASSERT_EQ(str(announced->texts().join(u"|"_s)), "Exported Chemicals.xls");
    act(u"Open"_s);
    EXPECT_EQ(QFileInfo(desktop.paths.value(0)).fileName(), u"Chemicals.xls"_s);
}

TEST_F(AnnouncedTest, ASpreadsheetThatCanNotBeWrittenIsNotSaid) {
    QDir().mkpath(folder.path(u"Chemicals.xls"_s));
    go(u"cmdChemicals"_s);
    click(u"mnuReportx"_s);
    dropReports();
    EXPECT_EQ(announced->texts(), QStringList());
}

TEST_F(AnnouncedTest, ALoggedBatchOffersItsPapers) {
    ASSERT_TRUE(logBatch());
    ASSERT_EQ(str(announced->texts().join(u"|"_s)), "Batch CD0077 logged");
    EXPECT_TRUE(announced->last().card);
    click(u"cmdFormulas"_s);
    act(u"Formula log"_s);
    EXPECT_TRUE(closePreview());
    asker.expectModal(u"frmSelPrint"_s,
                      [](QWidget& form) { support::child<QPushButton>(form, u"cmdPosition_5"_s)->click(); });
    act(u"Labels"_s);
    EXPECT_TRUE(closePreview());
    EXPECT_EQ(window->current(), formulas) << "the papers need no other screen";
}

TEST_F(AnnouncedTest, ACancelledSigningIsNotSaid) {
    asker.expectModal(u"frmInitials"_s,
                      [](QWidget& form) { support::child<QPushButton>(form, u"cmdCancel"_s)->click(); });
    const auto formula =
        document(u"<Formula><ID>1</ID><Type>9</Type><Make>30</Make><Size>4</Size><CustomMix/></Formula>"_s);
    EXPECT_FALSE(screen<frmLog>(logs).addLog(formula, document(resultsXml(u"CD"_s, u"0077"_s))));
    EXPECT_EQ(announced->texts(), QStringList());
}

TEST_F(AnnouncedTest, ABatchThatWasDeletedSinceHasNoPapers) {
    ASSERT_TRUE(logBatch());
    const auto actions = announced->last().actions;
    sql(u"DELETE FROM Log WHERE log_Lot = 'CD0077'"_s);
    actions.at(0).run();
    actions.at(1).run();
    EXPECT_FALSE(closePreview());
    EXPECT_EQ(str(announced->texts().mid(1).join(u"|"_s)),
              "Batch CD0077 has been deleted|Batch CD0077 has been deleted");
}

TEST_F(AnnouncedTest, ALoggedBatchIsDispensedToThePatientOnShow) {
    ASSERT_TRUE(logBatch());
    act(u"Dispense to a patient"_s);
    EXPECT_EQ(window->current(), patients);
    EXPECT_EQ(str(announced->last().text), "Choose the patient for batch CD0077.");
    EXPECT_TRUE(announced->last().card);
    click(u"cmdNext"_s);
    act(u"Add to this patient"_s);
    EXPECT_EQ(str(announced->last().text), "Batch CD0077 dispensed to Lie, Ole");
    EXPECT_EQ(str(sqlText(
                  u"SELECT log_Lot FROM RXs INNER JOIN Log ON Log.LogID = RXs.LogID WHERE PatientID = 2"_s)),
              "CD0077");
    EXPECT_EQ(prescriptions(), 1);
    EXPECT_TRUE(patient().formLocked());
}

TEST_F(AnnouncedTest, DispensingKeepsWhatIsBeingTyped) {
    ASSERT_TRUE(logBatch());
    act(u"Dispense to a patient"_s);
    const auto add = announced->last().actions.at(0).run;
    click(u"cmdEdit"_s);
    box(u"txtpat_City"_s).setText(u"typed"_s);
    add();
    EXPECT_EQ(str(stored(u"pat_City"_s)), "typed");
    EXPECT_EQ(prescriptions(), 3);
}

TEST_F(AnnouncedTest, ThePlaceInTheSetFollowsTheMovesAndTheList) {
    go(u"cmdFormulas"_s);
    EXPECT_EQ(str(place()), "Formula 1 of 3");
    click(u"cmdLast"_s);
    EXPECT_EQ(str(place()), "Formula 3 of 3");
    go(u"cmdChemicals"_s);
    click(u"cmdNext"_s);
    EXPECT_EQ(str(place()), "Chemical 2 of 4");
    go(u"cmdPatients"_s);
    EXPECT_EQ(str(place()), "Patient 1 of 3");
    go(u"cmdCurrent"_s);
    EXPECT_EQ(str(place()), "");
}

TEST_F(AnnouncedTest, ARecordFoundBySearchIsNotWhereTheSetStands) {
    go(u"cmdChemicals"_s);
    search(u"Menthol"_s);
    EXPECT_EQ(str(place()), "4 chemicals");
    click(u"cmdNext"_s);
    EXPECT_EQ(str(place()), "Chemical 2 of 4") << "where the moves go on";
}

TEST_F(AnnouncedTest, AnotherLanguageComesWithTheNextStart) {
    frmOptions same(context);
    support::child<QPushButton>(same, u"cmdSave"_s)->click();
    EXPECT_EQ(announced->texts(), QStringList());
    frmOptions other(context);
    support::child<platform::ChoiceBox>(other, u"cboLanguage"_s)->setListIndex(2);
    support::child<QPushButton>(other, u"cmdSave"_s)->click();
    EXPECT_EQ(str(announced->texts().join(u"|"_s)), "Language changes at the next start");
}

}  // namespace
