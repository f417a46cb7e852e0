// What can be done to a batch: three texts corrected, the entry deleted, and its reports.
#include "LogScreenTest.h"

#include "platform/widgets/CommandBar.h"

#include <QApplication>
#include <QDateTimeEdit>
#include <QPointer>
#include <QPushButton>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

class LogEditTest : public LogScreenTest {
protected:
    QString signatures(int key) const {
        return sqlText(u"SELECT log_Initials, log_Verified, log_Notes FROM Log WHERE LogID = %1"_s.arg(key));
    }
    platform::MemoBox& notes() const { return control<platform::MemoBox>(logs, "txtlog_Notes"); }
    /// Answers the date dialog with a range that holds every batch.
    void answerDates() {
        asker.expectModal("frmReportDate", [](QWidget& form) {
            support::child<QDateTimeEdit>(form, "dtBegin")->setDateTime(QDateTime({2025, 1, 1}, {}, Qt::UTC));
            support::child<QDateTimeEdit>(form, "dtEnd")->setDateTime(QDateTime({2027, 1, 1}, {}, Qt::UTC));
            support::child<QPushButton>(form, "cmdOK")->click();
        });
    }
};

TEST_F(LogEditTest, SavingChangesThreeColumnsAloneWhateverTheBoxesShow) {
    edit();
    const QString before = stored(1);
    box("txtlog_Initials").setText(" O'B ");
    box("txtlog_Verified").setText("Z'Z");
    notes().setText("it's\ntwo lines");
    for (const char* name : {"txtlog_Name", "txtlog_Strength", "txtlog_Units", "txtlog_NDC", "txtlog_Lot"})
        box(name).setText("never");
    control<platform::NumberBox>(logs, "txtlog_Cost").setValue(1.0);
    click("cmdSave");
    EXPECT_EQ(str(stored(1)), str(before));
    EXPECT_EQ(str(signatures(1)), "O'B|Z'Z|it's\ntwo lines");
    EXPECT_TRUE(log().formLocked());
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010") << "the boxes show the record again";
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  Cooling Gel");
}

TEST_F(LogEditTest, AfterSavingTheSetStandsOnTheSavedBatch) {
    openScreen();
    search("?AB0012");
    click("cmdEdit");
    click("cmdSave");
    click("cmdNext");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0011");
}

TEST_F(LogEditTest, CancelShowsTheObjectWithoutReadingIt) {
    edit();
    box("txtlog_Initials").setText("typed");
    clearStatements();
    click("cmdCancel");
    EXPECT_EQ(str(shown("txtlog_Initials")), "RK");
    EXPECT_TRUE(log().formLocked());
    EXPECT_TRUE(statements.isEmpty());
    EXPECT_EQ(str(signatures(1)), "RK|LM|first");
}

TEST_F(LogEditTest, TheScreensOwnButtonKeepsWhatIsTyped) {
    edit();
    box("txtlog_Initials").setText("typed");
    click("cmdLogs");
    EXPECT_EQ(str(shown("txtlog_Initials")), "typed");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  Cooling Gel  (Edit)");
    click("mnuLogs");
    EXPECT_EQ(str(shown("txtlog_Initials")), "typed");
}

TEST_F(LogEditTest, ClosingUnlockedAsksAndAnswers) {
    edit();
    const auto close = [&](platform::Answer answer) {
        asker.expectMsgBox("Log data not saved! Save Changes?", saveQuestion, "Save Data?", answer);
        return log().closeForm();
    };
    box("txtlog_Initials").setText("NEW");
    EXPECT_EQ(close(platform::Answer::Cancel), 2);
    EXPECT_EQ(close(platform::Answer::No), 7);
    EXPECT_FALSE(log().formLocked());
    EXPECT_EQ(str(signatures(1)), "RK|LM|first");
    EXPECT_EQ(close(platform::Answer::Yes), 6);
    EXPECT_EQ(str(signatures(1)), "NEW|LM|first");
    EXPECT_EQ(log().closeForm(), 0);
}

TEST_F(LogEditTest, LongTextsAreKept) {
    edit();
    const QString longText = u"note ' \" ; -- "_s.repeated(800).left(9999) + ".";
    notes().setText(longText);
    box("txtlog_Initials").setText(longText);
    click("cmdSave");
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtlog_Notes")), str(longText));
    EXPECT_EQ(str(shown("txtlog_Initials")), str(longText));
}

TEST_F(LogEditTest, ABatchDeletedByAnotherProgramTakesNoTexts) {
    edit();
    sql("DELETE FROM Log WHERE LogID = 1");
    notes().setText("too late");
    click("cmdSave");
    EXPECT_TRUE(log().formLocked());
    EXPECT_EQ(str(shown("txtlog_Notes")), "too late");
    click("cmdPrevious");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0011") << "the set stood behind its last row";
}

TEST_F(LogEditTest, ARefusedStatementIsReportedAndKeepsTheTextsOnView) {
    edit();
    place().refuse(databasePath(), {u"UPDATE"_s, u"Log"_s, u"log_Name"_s, u"Cooling Gel"_s});
    box("txtlog_Verified").setText("typed");
    click("cmdSave");
    expectReport("clsLog:saveLog");
    EXPECT_EQ(str(shown("txtlog_Verified")), "typed");
    EXPECT_EQ(str(signatures(1)), "RK|LM|first");
}

TEST_F(LogEditTest, ADeclinedOrRefusedDeletionLeavesTheBatchOnView) {
    openScreen();
    click("cmdNext");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::No);
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012");
    sql("INSERT INTO Patient (PatientID) VALUES (1); INSERT INTO RXs (LogID, PatientID) VALUES (2, 1);");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("Cooling Gel\r\nis currently used in a prescription,\rit can not be deleted.", {}, "");
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012");
    EXPECT_EQ(str(sqlText("SELECT count(*) FROM Log")), "3");
}

TEST_F(LogEditTest, DeletingABatchTakesItsLinesAndShowsTheFirst) {
    openScreen();
    click("cmdNext");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(sqlText("SELECT LogID FROM Log ORDER BY 1")), "1\n3");
    EXPECT_EQ(str(sqlText("SELECT DISTINCT LogID FROM LogChem")), "1");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0010");
}

TEST_F(LogEditTest, DeletingTheFirstLeavesTheScreenBlankSinceTheMoveRunsOnTheOldSet) {
    openScreen();
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, platform::Answer::Yes);
    asker.expectMsgBox("No Records");
    click("cmdDelete");
    EXPECT_EQ(str(shown("txtlog_Name")), "");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Logs  :  ");
    EXPECT_TRUE(on("cmdNext"));
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtlog_Lot")), "AB0012");
}

TEST_F(LogEditTest, TheBatchReportIsPreviewedOrExported) {
    openScreen();
    click("mnuFormulaLog");
    EXPECT_TRUE(closePreview());
    click("mnuFormulaLogx");
    EXPECT_TRUE(folder.has("FormulaLog.xls"));
    EXPECT_FALSE(closePreview());
}

TEST_F(LogEditTest, LabelsAreMadeUnlessTheirDialogIsClosed) {
    openScreen();
    asker.expectModal("frmSelPrint", [](QWidget& form) { form.close(); });
    click("mnuLabelx");
    EXPECT_FALSE(folder.has("LogAvery8160.xls"));
    const auto choose = [](QWidget& form) { support::child<QPushButton>(form, "cmdPosition_5")->click(); };
    asker.expectModal("frmSelPrint", choose);
    click("mnuLabelx");
    EXPECT_TRUE(folder.has("LogAvery8160.xls"));
    asker.expectModal("frmSelPrint", choose);
    click("mnuLabel");
    EXPECT_TRUE(closePreview());
}

TEST_F(LogEditTest, TheReportOfAFormulaAndOfJarsAsksForDatesAndEndsWithoutRecords) {
    openScreen();
    for (const auto& [entry, file] :
         {std::pair("mnuReport", "LogReport.xls"), std::pair("mnuJarReport", "JarUsage.xls")}) {
        const QString exported = QString(entry) + "x";
        asker.expectModal("frmReportDate",
                          [](QWidget& form) { support::child<QPushButton>(form, "cmdCancel")->click(); });
        click(exported);
        EXPECT_FALSE(folder.has(file));
        answerDates();
        click(exported);
        EXPECT_TRUE(folder.has(file));
        answerDates();
        click(entry);
        EXPECT_TRUE(closePreview()) << entry;
    }
    sql("UPDATE Log SET log_Date = '2020-01-01 00:00:00'");
    answerDates();
    asker.expectMsgBox("No records");
    click("mnuReport");
    EXPECT_FALSE(closePreview());
}

TEST_F(LogEditTest, WithoutRecordsNoFileIsWritten) {
    sql("UPDATE Log SET log_Date = '2020-01-01 00:00:00'");
    openScreen();
    for (const char* entry : {"mnuReportx", "mnuJarReportx"}) {
        answerDates();
        asker.expectMsgBox("No records");
        click(entry);
    }
    EXPECT_FALSE(folder.has("LogReport.xls"));
    EXPECT_FALSE(folder.has("JarUsage.xls"));
}

}  // namespace
