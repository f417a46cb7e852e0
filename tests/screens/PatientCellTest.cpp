// The prescriptions' grid: which cells can be edited, what an edit writes, who takes an open cell, and what
// happens when the file refuses.
#include "PatientScreenTest.h"

#include "platform/widgets/CommandBar.h"

#include <QDateTimeEdit>

using namespace sorvanto;

namespace {

class PatientCellTest : public PatientScreenTest {};

TEST_F(PatientCellTest, CellsAreWrittenAtOnce) {
    struct Cell {
        const char *caption, *typed, *column, *stored;
    };
    editPrescriptions();
    for (const Cell& cell : {Cell{"Qty", "12.5", "rxs_QTY", "12.5"}, Cell{"Cost", "1.25", "rxs_Cost", "1.25"},
                             Cell{"Price", "99.99", "rxs_Price", "99.99"},
                             Cell{"RX Date", "2/3/2026", "rxs_Date", "2026-02-03 00:00:00"},
                             Cell{"Consult", "it's", "rxs_Consult", "it's"},
                             Cell{"Doctor", "Dr. O'Neil", "rxs_Doctor", "Dr. O'Neil"}}) {
        typeIntoCell(1, cell.caption, cell.typed);
        QTest::keyClick(editor(), Qt::Key_Return);
        EXPECT_EQ(str(rx(cell.column)), cell.stored) << cell.caption;
    }
    EXPECT_EQ(str(sqlText("SELECT log_Name FROM Log WHERE LogID = 1")), "Cooling Gel");
}

TEST_F(PatientCellTest, CellsOfTheBatchAndLockedOnesTakeNoEditor) {
    openScreen();
    grid().setCurrentIndex(grid().model()->index(0, grid().columnByCaption("Doctor")));
    QTest::keyClick(&grid(), Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr);
    click("cmdEdit");
    for (const char* caption : {"RXID", "Name", "Strength", "Lot", "Log Date"}) {
        grid().setCurrentIndex(grid().model()->index(0, grid().columnByCaption(caption)));
        QTest::keyClick(&grid(), Qt::Key_F2);
        EXPECT_EQ(editor(), nullptr) << caption;
    }
}

TEST_F(PatientCellTest, AnOpenCellIsTakenBySaveAndByAdd) {
    editPrescriptions();
    typeIntoCell(0, "Doctor", "Dr. Elm");
    asker.expectInputBox(searchPrompt, "", "Search Log");
    press("cmdAddRX");
    EXPECT_EQ(str(rx("rxs_Doctor", 32)), "Dr. Elm");
    typeIntoCell(0, "Doctor", "Dr. Fir");
    click("cmdSave");
    EXPECT_EQ(str(rx("rxs_Doctor", 32)), "Dr. Fir");
    EXPECT_TRUE(patient().formLocked());
}

TEST_F(PatientCellTest, AnOpenCellIsTakenByDeleteAndByMake) {
    editPrescriptions();
    typeIntoCell(0, "Doctor", "Dr. Elm");
    asker.expectMsgBox("Are you sure?", yesNo, "Delete RX", platform::Answer::No);
    press("cmdDeleteRX");
    EXPECT_EQ(str(rx("rxs_Doctor", 32)), "Dr. Elm");
    typeIntoCell(0, "Doctor", "Dr. Fir");
    asker.expectModal("frmMake",
                      [](QWidget& form) { support::child<QPushButton>(form, "CancelButton")->click(); });
    force("cmdMake");
    EXPECT_EQ(str(rx("rxs_Doctor", 32)), "Dr. Fir");
}

TEST_F(PatientCellTest, EmptiedCellsAreStoredEmptyAndStillPrint) {
    editPrescriptions();
    for (const char* caption : {"Qty", "Price", "Doctor"}) {
        typeIntoCell(1, caption, "");
        QTest::keyClick(editor(), Qt::Key_Delete);
        QTest::keyClick(editor(), Qt::Key_Return);
    }
    EXPECT_EQ(str(rx("rxs_QTY, rxs_Price, rxs_Doctor")), "NULL|NULL|");
    click("cmdSave");
    EXPECT_TRUE(patient().formLocked());
    click("cmdFirst");
    EXPECT_EQ(str(row(1)), "31|Cooling Gel|2 %||$ 33.20||AB0010|1/5/2026 9:30:00 AM|1/6/2026|call|");
    grid().setCurrentIndex(grid().model()->index(1, 1));
    asker.expectModal("frmSelPrint",
                      [](QWidget& form) { support::child<QPushButton>(form, "cmdPosition_1")->click(); });
    click("mnuLabelx");
    EXPECT_TRUE(folder.has("RXLabel.xls"));
    asker.expectModal("frmReportDate", [](QWidget& form) {
        support::child<QDateTimeEdit>(form, "dtBegin")->setDateTime(QDateTime({2025, 1, 1}, {}, Qt::UTC));
        support::child<QPushButton>(form, "cmdOK")->click();
    });
    click("mnuReportx");
    EXPECT_TRUE(folder.has("RXReport.xls"));
}

TEST_F(PatientCellTest, CancelDropsAnOpenCell) {
    editPrescriptions();
    typeIntoCell(0, "Doctor", "Dr. Elm");
    click("cmdCancel");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(str(rx("rxs_Doctor", 32)), "");
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(PatientCellTest, ACellThatTheFileRefusesIsToldAndShowsTheStoredValue) {
    editPrescriptions();
    place().refuse(databasePath(), {u"UPDATE"_s, u"RXs"_s, u"rxs_Doctor"_s, u"Dr. Elm"_s});
    typeIntoCell(0, "Doctor", "Dr. Elm");
    box("txtpat_City").setText("typed");
    asker.expectMsgBox(
        "The change was not saved.\n\nThe record is related to records of another table (no room)");
    click("cmdSave");
    EXPECT_FALSE(patient().formLocked());
    EXPECT_EQ(str(row(0).section('|', 10)), "");
    EXPECT_EQ(str(shown("txtpat_City")), "typed");
    EXPECT_EQ(str(stored("pat_City")), "Fenwick");
}

TEST_F(PatientCellTest, APrescriptionDeletedByAnotherProgramTakesNoEdit) {
    editPrescriptions();
    sql("DELETE FROM RXs WHERE RXsID = 32");
    typeIntoCell(0, "Doctor", "Dr. Elm");
    asker.expectMsgBox(
        "The change was not saved.\n\nThe row can't be written: it has been deleted from table RXs");
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM RXs WHERE rxs_Doctor = 'Dr. Elm'")), "0");
}

}  // namespace
