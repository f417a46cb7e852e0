// Editing patients: saving, adding, cancelling, deleting, and texts nobody expects.
#include "PatientScreenTest.h"

#include "platform/widgets/CommandBar.h"
#include "platform/widgets/Hint.h"

#include <QTabWidget>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class PatientEditTest : public PatientScreenTest {};

TEST_F(PatientEditTest, SavesEveryField) {
    edit();
    const std::pair<const char*, const char*> typed[] = {
        {"txtpat_FName", " Joan "}, {"txtpat_LName", "O'Doe"}, {"txtpat_Address1", "2 Oak"},
        {"txtpat_Address2", "b"},   {"txtpat_City", "c"},      {"txtpat_State", "d"},
        {"txtpat_Zip", " 12 "},     {"txtpat_Country", "f"},   {"txtpat_Phone", "g"},
        {"txtpat_Fax", "h"},
    };
    for (const auto& [name, text] : typed)
        box(name).setText(text);
    typeBirthDate("2/29/1984");
    control<platform::MemoBox>(patients, "txtpat_Notes").setText("two\nlines");
    click("cmdSave");
    EXPECT_TRUE(patient().formLocked());
    EXPECT_EQ(str(stored("pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State, pat_Zip,"
                         " pat_Country, pat_BDay, pat_Phone, pat_Fax, pat_Notes")),
              "Joan|O'Doe|2 Oak|b|c|d|12|f|1984-02-29 00:00:00|g|h|two\nlines");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  O'Doe,  Joan ");
}

TEST_F(PatientEditTest, BothNamesAreRequiredTheFirstOneFirst) {
    edit();
    box("txtpat_FName").clear();
    box("txtpat_LName").clear();
    asker.expectMsgBox("First Name is required");
    click("cmdSave");
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(str(shown("txtpat_FName")), "Jane") << "a refused save refreshes";
    box("txtpat_LName").clear();
    asker.expectMsgBox("Last Name is required");
    click("cmdSave");
    EXPECT_FALSE(patient().formLocked());
    box("txtpat_FName").setText(" ");
    click("cmdSave");
    EXPECT_EQ(str(stored("'<' || pat_FName || '>'")), "<>") << "blanks pass the test";
}

TEST_F(PatientEditTest, AnEmptiedBirthDateSavesTheZeroDate) {
    edit();
    typeBirthDate("");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_BDay")), "1899-12-30 00:00:00");
    EXPECT_EQ(str(shown("txtpat_BDay")), "");
}

TEST_F(PatientEditTest, ANullBirthDateIsSavedAsTheZeroDate) {
    openScreen();
    click("cmdNext");
    click("cmdEdit");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_BDay", 2)), "1899-12-30 00:00:00");
}

TEST_F(PatientEditTest, ABirthDateThatCannotBeReadComesToTheFrontAndLosesNothing) {
    edit();
    typeBirthDate("31/31/19");
    box("txtpat_City").setText("typed");
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    click("cmdSave");
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(control<QTabWidget>(patients, "tabPatient").currentIndex(), 0);
    EXPECT_EQ(str(shown("txtpat_BDay")), "31/31/19");
    EXPECT_EQ(str(shown("txtpat_City")), "typed");
    EXPECT_EQ(str(stored("pat_City")), "Fenwick");
    press("cmdAddRX");
    press("cmdDeleteRX");
    EXPECT_EQ(prescriptions(), 2) << "nothing is asked, nothing changes";
    typeBirthDate("1/31/1919");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_BDay, pat_City")), "1919-01-31 00:00:00|typed");
}

TEST_F(PatientEditTest, ABirthDateLiesInThePast) {
    edit();
    typeBirthDate("3/8/2026");  // the day after today
    click("cmdSave");
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(str(platform::Hint::textOf(*birthDate().findChild<QLineEdit*>())),
              "A birth date lies in the past.");
    typeBirthDate("3/8/26");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_BDay")), "1926-03-08 00:00:00");
}

TEST_F(PatientEditTest, CancelShowsTheObjectAgain) {
    edit();
    box("txtpat_FName").setText("typed");
    click("cmdCancel");
    EXPECT_TRUE(patient().formLocked());
    EXPECT_EQ(str(shown("txtpat_FName")), "Jane");
}

TEST_F(PatientEditTest, ANewRowExistsAtOnceAndCancelRemovesItWithoutAQuestion) {
    openScreen();
    click("cmdLast");
    control<QTabWidget>(patients, "tabPatient").setCurrentIndex(1);
    click("cmdNew");
    EXPECT_EQ(str(stored("pat_FName, pat_Notes, pat_BDay", 4)), "||NULL");
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(window->focusWidget(), &box("txtpat_FName"));
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  ,   (Edit)");
    EXPECT_EQ(str(shown("txtpat_City")), "");
    click("cmdCancel");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Patient")), "3");
    EXPECT_EQ(str(shown("txtpat_LName")), "Doe");
    EXPECT_TRUE(patient().formLocked());
}

TEST_F(PatientEditTest, ASavedNewPatientStays) {
    openScreen();
    click("cmdNew");
    box("txtpat_FName").setText("Ann");
    box("txtpat_LName").setText("Poe");
    click("cmdSave");
    click("cmdCancel");
    EXPECT_EQ(str(stored("pat_FName, pat_LName, pat_BDay", 4)), "Ann|Poe|1899-12-30 00:00:00");
    search("Poe");
    EXPECT_EQ(str(shown("txtpat_FName")), "Ann");
}

TEST_F(PatientEditTest, DeletingAPatientTakesItsPrescriptions) {
    openScreen();
    asker.expectMsgBox("Delete Doe, Jane?", platform::deletionStyle, platform::Answer::Cancel);
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtpat_LName")), "Doe");
    asker.expectMsgBox("Delete Doe, Jane?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("No Records");
    click("cmdDelete");
    EXPECT_EQ(str(sqlText("SELECT PatientID FROM Patient ORDER BY 1")), "2\n3");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM RXs")), "0");
    EXPECT_EQ(str(shown("txtpat_LName")), "Lie");
}

TEST_F(PatientEditTest, ADeclinedDeletionGoesToTheFirstRecord) {
    openScreen();
    click("cmdLast");
    asker.expectMsgBox("Delete O'Hara, Mary?", platform::deletionStyle, platform::Answer::No);
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtpat_LName")), "Doe");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Patient")), "3");
}

TEST_F(PatientEditTest, ClosingUnlockedAsksAndAnswers) {
    edit();
    const auto close = [&](platform::Answer answer) {
        asker.expectMsgBox("Patient data not saved! Save Changes?", saveQuestion, "Save Data?", answer);
        return patient().closeForm();
    };
    box("txtpat_City").setText("new");
    EXPECT_EQ(close(platform::Answer::Cancel), 2);
    EXPECT_EQ(close(platform::Answer::No), 7);
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(str(stored("pat_City")), "Fenwick");
    EXPECT_EQ(close(platform::Answer::Yes), 6);
    EXPECT_EQ(str(stored("pat_City")), "new");
}

TEST_F(PatientEditTest, ARefusedSaveAtClosingAnswersSavedAllTheSame) {
    edit();
    box("txtpat_LName").clear();
    asker.expectMsgBox("Patient data not saved! Save Changes?", saveQuestion, "Save Data?",
                       platform::Answer::Yes);
    asker.expectMsgBox("Last Name is required");
    EXPECT_EQ(patient().closeForm(), 6);
}

TEST_F(PatientEditTest, ApostrophesSaveInNamesAndAddressAndBreakInZipPhoneAndFax) {
    edit();
    for (const char* name : {"txtpat_FName", "txtpat_LName", "txtpat_Address1", "txtpat_Address2",
                             "txtpat_City", "txtpat_State", "txtpat_Country"})
        box(name).setText("a'b");
    control<platform::MemoBox>(patients, "txtpat_Notes").setText("it's");
    click("cmdSave");
    EXPECT_EQ(str(stored("pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State, pat_Country,"
                         " pat_Notes")),
              "a'b|a'b|a'b|a'b|a'b|a'b|a'b|it's");
    for (const char* name : {"txtpat_Zip", "txtpat_Phone", "txtpat_Fax"}) {
        click("cmdEdit");
        const QString before = shown(name);
        box(name).setText("5'5");
        click("cmdSave");
        expectReport("frmPatient:saveForm");
        EXPECT_FALSE(patient().formLocked()) << name;
        EXPECT_EQ(str(shown(name)), "5'5") << "what was typed stays";
        box(name).setText(before);
        click("cmdSave");
        EXPECT_TRUE(patient().formLocked()) << name;
    }
}

TEST_F(PatientEditTest, TenThousandCharactersSaveAndShow) {
    edit();
    const QString longText = u"Ünïcode; -- \"x\" ' [y] %z_ "_s.repeated(420).left(9999) + ".";
    box("txtpat_LName").setText(longText);
    control<platform::MemoBox>(patients, "txtpat_Notes").setText(longText);
    click("cmdSave");
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtpat_LName")), str(longText));
    EXPECT_EQ(str(shown("txtpat_Notes")), str(longText));
}

TEST_F(PatientEditTest, APatientDeletedByAnotherProgramIsReportedAtSavingNotLost) {
    edit();
    sql("DELETE FROM RXs; DELETE FROM Patient WHERE PatientID = 1;");
    box("txtpat_City").setText("Typed");
    click("cmdSave");
    expectReports("frmPatient:refreshForm");
    EXPECT_EQ(str(shown("txtpat_City")), "Typed");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtpat_LName")), "Lie");
}

}  // namespace
