// Prescriptions of a patient: linking a batch, taking the link away, making again, labels and the report.
#include "PatientScreenTest.h"

#include "platform/widgets/CommandBar.h"
#include "screens/frmCurrFormula.h"

#include <QApplication>
#include <QDateTimeEdit>

using namespace sorvanto;

namespace {

class PatientPrescriptionTest : public PatientScreenTest {
protected:
    void select(int rowNumber) const { grid().selectRow(rowNumber); }
};

TEST_F(PatientPrescriptionTest, AddingLinksABatchWithItsFiguresCrossed) {
    editPrescriptions();
    asker.expectInputBox(searchPrompt, "?AB0011", "Search Log");
    press("cmdAddRX");
    EXPECT_EQ(prescriptions(), 3);
    EXPECT_EQ(
        str(rx("LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Consult, rxs_Doctor", 33)),
        "3|1|2026-03-07 00:00:00|10.0|16.6|10.1|NULL|");
    EXPECT_FALSE(patient().formLocked());
    click("cmdSave");
    click("cmdFirst");
    EXPECT_EQ(str(row(0).section('|', 0, 0)), "33") << "newest first after an opening";
}

TEST_F(PatientPrescriptionTest, AddingSavesThePatientAsWell) {
    editPrescriptions();
    box("txtpat_City").setText("typed");
    asker.expectInputBox(searchPrompt, "?AB0012", "Search Log");
    press("cmdAddRX");
    EXPECT_EQ(str(stored("pat_City")), "typed");
}

TEST_F(PatientPrescriptionTest, AnEmptyAnswerAddsNothingAndRefreshes) {
    editPrescriptions();
    box("txtpat_City").setText("typed");
    asker.expectInputBox(searchPrompt, "", "Search Log");
    press("cmdAddRX");
    EXPECT_EQ(prescriptions(), 2);
    EXPECT_EQ(str(shown("txtpat_City")), "Fenwick");
}

TEST_F(PatientPrescriptionTest, ASearchWithoutAChoiceAddsNothing) {
    editPrescriptions();
    asker.expectInputBox(searchPrompt, "zzz", "Search Log");
    asker.expectMsgBox("No Records");
    press("cmdAddRX");
    asker.expectInputBox(searchPrompt, "Cool", "Search Log");
    asker.expectModal("frmSearchRS", [](QWidget& list) { list.close(); });
    press("cmdAddRX");
    asker.expectInputBox(searchPrompt, "O'B", "Search Log");
    press("cmdAddRX");
    expectReport("clsPatient:addRX");
    EXPECT_EQ(prescriptions(), 2);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM RXs")), "2");
}

TEST_F(PatientPrescriptionTest, AMissingNameStopsTheSaveAfterTheRowIsThere) {
    editPrescriptions();
    box("txtpat_FName").clear();
    asker.expectInputBox(searchPrompt, "?AB0012", "Search Log");
    asker.expectMsgBox("First Name is required");
    press("cmdAddRX");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM RXs")), "3");
    EXPECT_EQ(prescriptions(), 3);
}

TEST_F(PatientPrescriptionTest, DeletingTakesTheCurrentRowAfterAQuestion) {
    editPrescriptions();
    select(1);
    asker.expectMsgBox("Are you sure?", yesNo, "Delete RX", platform::Answer::No);
    press("cmdDeleteRX");
    EXPECT_EQ(prescriptions(), 2);
    box("txtpat_City").setText("typed");
    asker.expectMsgBox("Are you sure?", yesNo, "Delete RX", platform::Answer::Yes);
    press("cmdDeleteRX");
    EXPECT_EQ(str(sqlText("SELECT RXsID FROM RXs")), "32");
    EXPECT_EQ(prescriptions(), 1);
    EXPECT_EQ(str(stored("pat_City")), "typed");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Log")), "3") << "the batch stays";
}

TEST_F(PatientPrescriptionTest, DeletingWithoutARowIsReported) {
    openScreen();
    click("cmdNext");
    click("cmdEdit");
    asker.expectMsgBox("Are you sure?", yesNo, "Delete RX", platform::Answer::Yes);
    press("cmdDeleteRX");
    expectReport("frmPatient:cmdDeleteRX_Click");
}

TEST_F(PatientPrescriptionTest, TheButtonsWorkWhileEditingAlone) {
    openScreen();
    for (const char* button : {"cmdAddRX", "cmdDeleteRX"})
        EXPECT_FALSE(control<QPushButton>(patients, button).isEnabled()) << button;
    click("cmdEdit");
    for (const char* button : {"cmdAddRX", "cmdDeleteRX"})
        EXPECT_TRUE(control<QPushButton>(patients, button).isEnabled()) << button;
}

TEST_F(PatientPrescriptionTest, MakingAgainTestsInOrder) {
    openScreen();
    click("cmdNext");
    asker.expectMsgBox("No prescriptions");
    click("cmdMake");
    click("cmdFirst");
    asker.expectMsgBox("You must select a prescription.");
    click("cmdMake");
    EXPECT_EQ(window->current(), patients);
    select(0);
    sql("DELETE FROM RXs WHERE LogID = 2; DELETE FROM Log WHERE LogID = 2;");
    asker.expectMsgBox("Formula not found.");
    click("cmdMake");
    EXPECT_EQ(window->current(), patients);
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Patients  :  Doe, Jane");
}

TEST_F(PatientPrescriptionTest, TheFormulaIsLookedUpByTheBatchOfTheCurrentRow) {
    openScreen();
    select(1);
    clearStatements();
    EXPECT_TRUE(patient().getFormula());
    EXPECT_EQ(str(statements.join('\n')), "SELECT Log.FormulaID FROM Log WHERE ([LogID] = 1)");
}

TEST_F(PatientPrescriptionTest, MakingAgainSwitchesAndAsksForTheQuantityOnce) {
    openScreen();
    select(0);
    asker.expectModal("frmMake",
                      [](QWidget& form) { support::child<QPushButton>(form, "CancelButton")->click(); });
    click("cmdMake");
    EXPECT_EQ(window->current(), currentFormula);
    EXPECT_EQ(str(text(currentFormula, "txtfrm_Name")), "Cooling Gel");
    EXPECT_FALSE(on("cmdMake"));
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Current Formula");
}

TEST_F(PatientPrescriptionTest, AFormulaDeletedMeanwhileStartsNoMake) {
    openScreen();
    select(0);
    sql("DELETE FROM FormChem; DELETE FROM Formula;");
    click("cmdMake");
    EXPECT_EQ(window->current(), currentFormula);
}

TEST_F(PatientPrescriptionTest, LabelsAreOfTheCurrentRowAndLeaveTheirFlagSet) {
    openScreen();
    grid().setCurrentIndex(grid().model()->index(1, 1));
    asker.expectModal("frmSelPrint", [](QWidget& form) { form.close(); });
    clearStatements();
    click("mnuLabelx");
    EXPECT_FALSE(folder.has("RXLabel.xls"));
    EXPECT_TRUE(basMain::labelsCancelled);
    EXPECT_EQ(
        str(statements.value(0)),
        "SELECT Log.log_Name, Log.log_Strength, Log.log_Lot, RXs.rxs_QTY, RXs.rxs_Consult, RXs.rxs_Date, "
        "RXs.rxs_Doctor, Patient.pat_FName, Patient.pat_LName, RXs.RXsID FROM Patient INNER JOIN (Log INNER "
        "JOIN RXs ON Log.LogID = RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE (((RXs.RXsID)=31));");
    const auto choose = [](QWidget& form) { support::child<QPushButton>(form, "cmdPosition_1")->click(); };
    asker.expectModal("frmSelPrint", choose);
    click("mnuLabelx");
    EXPECT_TRUE(folder.has("RXLabel.xls"));
    EXPECT_TRUE(basMain::labelsCancelled);
    asker.expectModal("frmSelPrint", choose);
    click("mnuLabel");
    EXPECT_TRUE(closePreview());
    EXPECT_TRUE(basMain::labelsCancelled);
}

TEST_F(PatientPrescriptionTest, LabelsWithoutPrescriptionsAreRefused) {
    openScreen();
    click("cmdNext");
    basMain::labelsCancelled = false;
    asker.expectMsgBox("No records");
    click("mnuLabel");
    EXPECT_TRUE(basMain::labelsCancelled);
}

TEST_F(PatientPrescriptionTest, TheReportAsksForDatesAndIsPreviewedOrExported) {
    openScreen();
    const auto cancel = [](QWidget& form) { support::child<QPushButton>(form, "cmdCancel")->click(); };
    const auto accept = [](QWidget& form) {
        support::child<QDateTimeEdit>(form, "dtBegin")->setDateTime(QDateTime({2025, 1, 1}, {}, Qt::UTC));
        support::child<QPushButton>(form, "cmdOK")->click();
    };
    asker.expectModal("frmReportDate", cancel);
    click("mnuReportx");
    EXPECT_FALSE(folder.has("RXReport.xls"));
    asker.expectModal("frmReportDate", accept);
    click("mnuReportx");
    EXPECT_TRUE(folder.has("RXReport.xls"));
    asker.expectModal("frmReportDate", accept);
    click("mnuReport");
    EXPECT_TRUE(closePreview());
}

TEST_F(PatientPrescriptionTest, AReportWithoutRecordsShowsAndWritesNothing) {
    openScreen();
    sql("UPDATE RXs SET rxs_Date = '1999-01-01 00:00:00'");
    for (const char* entry : {"mnuReport", "mnuReportx"}) {
        asker.expectModal("frmReportDate",
                          [](QWidget& form) { support::child<QPushButton>(form, "cmdOK")->click(); });
        asker.expectMsgBox("No records");
        click(entry);
        EXPECT_FALSE(closePreview()) << entry;
    }
    EXPECT_FALSE(folder.has("RXReport.xls"));
}

}  // namespace
