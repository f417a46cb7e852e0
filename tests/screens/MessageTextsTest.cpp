// Captions, questions and messages of the record screens in another language: which are translated, and which
// titles stay as they are although the language file holds them.
#include "ScreenTest.h"

#include "platform/ask/Ask.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/CommandBar.h"
#include "screens/frmChemical.h"
#include "screens/frmFormula.h"
#include "screens/frmPatient.h"

#include <QPushButton>

using namespace sorvanto;
using platform::Answer;

namespace {

const QStringList messageTexts{
    "Sorvanto Control Panel", "Formulas", "Chemicals", "Patients", "Edit", "Delete", "Are you sure?",
    "Save Data?", "Formula data not saved! Save Changes?", "Chemical data not saved! Save Changes?",
    "Patient data not saved! Save Changes?", "Formula Name is required", "Quantity is required",
    "Chemical Name is required", "First Name is required", "Last Name is required",
    "Combination Mix is unsupported at this time", "Invalid mix parameters",
    "Enter all or part of chemical name", "Enter all or part of Log name", "Search Log", "No prescriptions",
    "You must select a prescription.", "Formula not found.", "No records",
    // these are never asked for
    "Search Chemical", "Delete Chemical", "Delete RX", "No Records"};

/// Each text is translated by the same text behind "de".
class MessageTextsTest : public ScreenTest {
protected:
    QByteArray optionsXml() const override {
        folder.writeGerman(messageTexts);
        return ScreenTest::optionsXml().replace("<Language>0<", "<Language>2<");
    }
    void seed() override {
        seedLogs();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Jane', 'Doe'), (2, 'Ole', 'Lie');"
            "INSERT INTO RXs (RXsID, LogID, PatientID, rxs_Date, rxs_QTY) VALUES"
            " (31, 1, 1, '2026-01-06 00:00:00', 20);");
    }
    void edit(const char* opener) {
        load();
        click(opener);
        click("cmdEdit");
    }
    void press(ScreenNumber number, const QString& button) const {
        control<QPushButton>(number, button).click();
    }
    void clear(ScreenNumber number, const QString& name) const {
        control<platform::TextBox>(number, name).clear();
    }
    void expectSaveQuestion(const QString& question) {
        asker.expectMsgBox(question, saveQuestion, "de Save Data?", Answer::Cancel);
    }
};

TEST_F(MessageTextsTest, OfTheFormulaScreen) {
    edit("cmdFormulas");
    EXPECT_EQ(str(caption()), "de Sorvanto Control Panel: de Formulas  :  Arnica Salve  (de Edit)");
    expectSaveQuestion("de Formula data not saved! Save Changes?");
    EXPECT_EQ(screen<frmFormula>(formulas).closeForm(), 2);
    asker.expectMsgBox("de Invalid mix parameters", {platform::Buttons::Ok, platform::Icon::Information});
    press(formulas, "cmdAddMix");
    asker.expectInputBox("de Enter all or part of chemical name", "", "Search Chemical");
    asker.expectMsgBox("No Records");
    press(formulas, "cmdAdd");
    asker.expectMsgBox("de Are you sure?", yesNo, "Delete Chemical", Answer::No);
    press(formulas, "cmdRemove");
    asker.expectMsgBox("de Combination Mix is unsupported at this time");
    control<platform::ChoiceBox>(formulas, "cbofrm_Type").setListIndex(0);
    control<platform::NumberBox>(formulas, "txtfrm_Quantity").setText("0");
    asker.expectMsgBox("de Quantity is required");
    click("cmdSave");
    clear(formulas, "txtfrm_Name");
    asker.expectMsgBox("de Formula Name is required");
    click("cmdSave");
    click("cmdCancel");
    asker.expectMsgBox("de Delete Arnica Salve?", platform::deletionStyle, Answer::No);
    click("cmdDelete");
}

TEST_F(MessageTextsTest, OfTheChemicalScreen) {
    load();
    click("cmdChemicals");
    EXPECT_EQ(str(caption()), "de Sorvanto Control Panel: de Chemicals  :  Aspirin  (de Edit)");
    clear(chemicals, "txtchm_Name");
    asker.expectMsgBox("de Chemical Name is required");
    click("cmdSave");
    expectSaveQuestion("de Chemical data not saved! Save Changes?");
    EXPECT_EQ(screen<frmChemical>(chemicals).closeForm(), 2);
}

TEST_F(MessageTextsTest, OfThePatientScreen) {
    edit("cmdPatients");
    EXPECT_EQ(str(caption()), "de Sorvanto Control Panel: de Patients  :  Doe, Jane  (de Edit)");
    expectSaveQuestion("de Patient data not saved! Save Changes?");
    EXPECT_EQ(screen<frmPatient>(patients).closeForm(), 2);
    asker.expectInputBox("de Enter all or part of Log name", "", "de Search Log");
    press(patients, "cmdAddRX");
    asker.expectMsgBox("de Are you sure?", yesNo, "Delete RX", Answer::No);
    press(patients, "cmdDeleteRX");
    clear(patients, "txtpat_FName");
    asker.expectMsgBox("de First Name is required");
    click("cmdSave");
    clear(patients, "txtpat_LName");
    asker.expectMsgBox("de Last Name is required");
    click("cmdSave");
    click("cmdCancel");
    asker.expectMsgBox("de Delete Doe, Jane?", platform::deletionStyle, Answer::No);
    click("cmdDelete");
}

TEST_F(MessageTextsTest, OfThePrescriptions) {
    load();
    click("cmdPatients");
    asker.expectMsgBox("de You must select a prescription.");
    click("cmdMake");
    control<platform::RecordGrid>(patients, "grdRXs").selectRow(0);
    sql("DELETE FROM RXs WHERE LogID = 1; DELETE FROM LogChem WHERE LogID = 1; DELETE FROM Log WHERE LogID = 1;");
    asker.expectMsgBox("de Formula not found.");
    click("cmdMake");
    click("cmdNext");
    asker.expectMsgBox("de No prescriptions");
    click("cmdMake");
    asker.expectMsgBox("de No records");
    click("mnuLabel");
}

}  // namespace
