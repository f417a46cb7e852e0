// The batch record: finding, signing off, deleting, its frozen lines.
#include "RecordsTest.h"

#include "platform/basic/Values.h"
#include "platform/widgets/RecordGrid.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Answer;
using platform::nullText;

namespace {

class LogTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedLogs();
        clearStatements();
    }
    static clsLogPtr open(std::int32_t key, const QString& search = {}) {
        auto log = std::make_shared<clsLog>();
        log->openLog(key, search);
        return log;
    }
};

TEST_F(LogTest, OpensByKeyIntoThisObject) {
    const auto log = open(1);
    expectStatements("log_open_key.txt");
    EXPECT_EQ(log->LogID, 1);
    EXPECT_EQ(log->FormulaID, 1);
    EXPECT_EQ(str(log->log_Lot), "AA1");
    EXPECT_EQ(log->log_Date, QDateTime(QDate(2025, 10, 2), QTime(8, 0), Qt::UTC));
    EXPECT_EQ(str(log->log_Name), "Cooling Gel");
    EXPECT_EQ(log->log_Quantity, 25);
    EXPECT_EQ(log->log_JarSize, 3);
    EXPECT_EQ(str(log->log_NDC), "900-1");
    EXPECT_EQ(str(log->log_Cost.toText()), "4");
    EXPECT_EQ(str(log->log_AWP.toText()), "10");
    EXPECT_EQ(str(log->log_Initials), "EF");
    EXPECT_EQ(str(log->log_Verified), "GH");
    EXPECT_EQ(str(log->log_Results->root().attribute("Value")), "AA");
    EXPECT_EQ(str(log->log_Mix->root().name()), "CustomMix");
    EXPECT_EQ(str(log->log_Version), "1.0");
    EXPECT_EQ(str(log->log_Notes), "first");
    EXPECT_EQ(str(log->log_Desc), "Topical");
    EXPECT_EQ(str(log->log_Strength), "2 %");
    EXPECT_EQ(str(log->log_Units), "GMS");
    EXPECT_EQ(log->log_FormType, 2);
    EXPECT_EQ(log->Chemical->recordCount(), 2);
}

TEST_F(LogTest, EachSearchKindHasItsStatement) {
    asker.alwaysAnswer("No Records");
    for (const char* text : {"#1#2", "??Z", "z#", "$L", "a'b"})
        open(7, text);
    expectReport("clsLog:openLog");
    statements.removeIf([](const QString& text) { return text.contains("LogChem"); });
    expectStatements("log_open_search.txt");
}

TEST_F(LogTest, ALotSearchFindsOneRowAndItsLinesBelongToTheArgument) {
    const auto log = open(0, "?AA?2");
    EXPECT_EQ(log->LogID, 2);
    EXPECT_EQ(log->Chemical->recordCount(), 0);
    const auto other = open(1, "#900-3");
    EXPECT_EQ(other->LogID, 3);
    EXPECT_EQ(other->Chemical->recordCount(), 2);
}

TEST_F(LogTest, AFieldThatIsNullReadsAsEmptyAndADocumentBecomesEmpty) {
    const auto log = open(1);
    log->openLog(3, {});
    EXPECT_EQ(log->LogID, 3);
    EXPECT_EQ(log->FormulaID, 9);
    EXPECT_EQ(str(log->log_Cost.toText()), "0");
    EXPECT_TRUE(log->log_Version.isEmpty());
    EXPECT_FALSE(log->log_Results->root());
    EXPECT_FALSE(log->log_Mix->root());
}

TEST_F(LogTest, AnEmptyTextLoadsAsAnEmptyDocumentWithoutAWord) {
    const auto log = open(1);
    ASSERT_TRUE(log->log_Results->root());
    ASSERT_TRUE(log->log_Mix->root());
    log->openLog(2, {});
    EXPECT_EQ(log->LogID, 2);
    EXPECT_FALSE(log->log_Results->root());
    EXPECT_FALSE(log->log_Mix->root());
}

TEST_F(LogTest, ANullDateIsAFailureThatLeavesTheObjectHalfFilled) {
    sql("INSERT INTO Log (LogID, log_Lot, log_Name) VALUES (8, 'NN', 'No date')");
    const auto log = open(8);
    EXPECT_EQ(str(expectReport("clsLog:openLog").number), "13");
    EXPECT_EQ(log->LogID, 8);
    EXPECT_EQ(str(log->log_Lot), "NN");
    EXPECT_TRUE(log->log_Name.isEmpty());
    EXPECT_FALSE(log->Chemical);
}

TEST_F(LogTest, NothingFoundKeepsTheFieldsAndStillOpensTheLines) {
    const auto log = open(1);
    asker.expectMsgBox("No Records");
    log->openLog(2, "zzz");
    EXPECT_EQ(log->LogID, 1);
    EXPECT_EQ(str(log->log_Lot), "AA1");
    EXPECT_EQ(log->Chemical->recordCount(), 1);
}

TEST_F(LogTest, TheSearchListIsNewestFirst) {
    QStringList dates;
    asker.expectModal("frmSearchRS", [&](QWidget& form) {
        const auto* list = form.findChild<platform::RecordGrid*>("TDBList1");
        const auto rows = list->dataSource();
        for (int row = 0; row < rows->recordCount(); ++row)
            dates << nullText(rows->valueAt(row, 1));
        form.close();
    });
    const auto log = open(0, "Cool");
    EXPECT_EQ(dates, (QStringList{"AA2", "BB3", "AA1"}));
    EXPECT_EQ(log->LogID, 0);
}

TEST_F(LogTest, AKeyBeyondSixteenBitsIsAFailure) {
    sql("INSERT INTO Log (LogID, log_Name, log_Date) VALUES (40000, 'Far', '2026-01-01 00:00:00')");
    EXPECT_EQ(open(40000)->LogID, 0);
    EXPECT_EQ(str(expectReport("clsLog:openLog").number), "6");
}

TEST_F(LogTest, NotesOfAChemicalAreLiveAndItsOtherTextsFrozen) {
    sql("UPDATE Chemical SET chm_Name = 'New', chm_Cost = 99, chm_Lot = 'New', chm_Notes = 'new note' "
        "WHERE ChemicalID = 3");
    const auto lines = open(1)->Chemical;
    EXPECT_EQ(str(nullText(lines->value("lch_Name"))), "Camphor");
    EXPECT_EQ(str(nullText(lines->value("lch_Lot"))), "L3");
    EXPECT_EQ(str(nullText(lines->value("lch_Cost"))), "6.17");
    EXPECT_EQ(str(nullText(lines->value("chm_Notes"))), "new note");
    lines->moveNext();
    EXPECT_EQ(str(nullText(lines->value("lch_Name"))), "Gone");
    EXPECT_FALSE(lines->value("chm_Notes").isValid());
}

TEST_F(LogTest, SavesInitialsVerifierAndNotesAlone) {
    const auto log = open(2);
    log->log_Initials = " O'B ";
    log->log_Verified = "V";
    log->log_Notes = "  it's fine ";
    log->log_Name = "changed";
    log->log_Lot = "changed";
    clearStatements();
    EXPECT_TRUE(clsLog().saveLog(log));
    expectStatements("log_save.txt");
    EXPECT_EQ(str(sqlText("SELECT log_Initials, log_Verified, log_Notes, log_Name, log_Lot FROM Log "
                          "WHERE LogID = 2")),
              "O'B|V|it's fine|Cooling Gel|AA2");
    sql("DELETE FROM Log WHERE LogID = 2");
    EXPECT_FALSE(clsLog().saveLog(log));
}

TEST_F(LogTest, DeletingAsksWithABlankBeforeTheMarkAndTakesTheLinesAlong) {
    const auto log = open(1);
    clearStatements();
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
        asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, answer);
        EXPECT_FALSE(clsLog().deleteLog(log));
    }
    EXPECT_TRUE(statements.isEmpty());
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, Answer::Yes);
    EXPECT_TRUE(clsLog().deleteLog(log));
    expectStatements("log_delete.txt");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM LogChem WHERE LogID = 1")), "0");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, Answer::Yes);
    EXPECT_FALSE(clsLog().deleteLog(log));
}

TEST_F(LogTest, APrescribedBatchIsRefusedAndNamed) {
    sql("INSERT INTO Patient (PatientID, pat_LName) VALUES (1, 'Doe');"
        "INSERT INTO RXs (LogID, PatientID) VALUES (1, 1)");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, Answer::Yes);
    asker.expectMsgBox("Cooling Gel\r\nis currently used in a prescription,\rit can not be deleted.", {},
                       u""_s);
    EXPECT_FALSE(clsLog().deleteLog(open(1)));
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM LogChem WHERE LogID = 1")), "2");
}

TEST_F(LogTest, AnyOtherFailureOfTheDeletionIsReported) {
    const auto log = open(1);
    failStatement("DELETE");
    asker.expectMsgBox("Delete Cooling Gel ?", platform::deletionStyle, Answer::Yes);
    EXPECT_FALSE(clsLog().deleteLog(log));
    expectReport("clsLog:deleteLog");
    EXPECT_FALSE(clsLog().saveLog(nullptr));
    expectReport("clsLog:saveLog");
}

TEST_F(LogTest, ASearchSetIsClosedAgainSoThatOthersCanWrite) {
    const auto log = open(1);
    sql("UPDATE Log SET log_Notes = 'by another program' WHERE LogID = 1");
    log->openLog(1, {});
    EXPECT_EQ(str(log->log_Notes), "by another program");
}

}  // namespace
