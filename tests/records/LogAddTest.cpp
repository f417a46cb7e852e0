// Writing a finished batch: the signatures, the row, the frozen lines, and what failures leave behind.
#include "RecordsTest.h"

#include "platform/basic/Values.h"

using namespace sorvanto;
using platform::Answer;

namespace {

class LogAddTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedFormulas();
        useSigning();
    }
    clsLogPtr add(const platform::XmlDocumentPtr& results) {
        clearStatements();
        return clsLog().addLog(document("<Formula><ID>1</ID></Formula>"), results);
    }
    std::string counts() const {
        return str(sqlText("SELECT (SELECT COUNT(*) FROM Log), (SELECT COUNT(*) FROM LogChem)"));
    }
};

TEST_F(LogAddTest, WritesTheRowAndTheScaledLines) {
    signing.formula = scaled(1, 25);
    const auto log = add(results());
    expectStatements("log_add.txt");
    ASSERT_TRUE(log);
    EXPECT_EQ(log->LogID, 1);
    EXPECT_EQ(signing.shown, 1);
    EXPECT_EQ(str(signing.lot), "AB0012");
    EXPECT_EQ(str(platform::nodeText(*signing.document, "//Formula/ID")), "1");
    EXPECT_EQ(
        str(sqlText("SELECT FormulaID, log_Name, log_Strength, log_Desc, log_Units, log_FormType, "
                    "log_Quantity, log_JarSize, log_NDC, log_Date, log_Lot, log_Initials, log_Verified, "
                    "log_Version, log_AWP, log_Cost, log_Notes FROM Log")),
        "1|Cooling Gel|2 %|Topical|GMS|2|25|3|900-1|2026-03-07 14:05:09|AB0012|AB|CD|SIM-2.1|16.6455|"
        "8.6788|");
    EXPECT_EQ(str(sqlText("SELECT log_Results FROM Log")), str(results()->xml()));
    EXPECT_EQ(str(sqlText("SELECT log_Mix FROM Log")), str(signing.formula->frm_Mix->xml()));
    EXPECT_EQ(
        str(sqlText("SELECT LogID, ChemicalID, lch_Name, lch_Units, lch_Lot, lch_NDC, lch_Cost, lch_AWP, "
                    "lch_Supplier, lch_Form, lch_GUID, lch_QTY FROM LogChem ORDER BY LogChemID")),
        "1|3|Camphor|GMS|L3|333-3|6.17|10.8|Beta|Crystal|G3|3.086\n"
        "1|4|Menthol|GMS|L4|333-4|1.25|2.5|Beta|Crystal|G4|12.5\n"
        "1|2|Borax|GMS|L2|222-2|1.26|3.34|Alpha|Powder|G2|1.25");
}

TEST_F(LogAddTest, TheNewObjectsLinesHaveTheColumnsOfTheirTable) {
    signing.formula = scaled(1, 25);
    const auto log = add(results());
    ASSERT_TRUE(log);
    EXPECT_EQ(log->Chemical->recordCount(), 3);
    EXPECT_TRUE(log->Chemical->hasField("lch_GUID"));
    EXPECT_FALSE(log->Chemical->hasField("chm_Notes"));
    log->openLog(log->LogID, {});
    EXPECT_TRUE(log->Chemical->hasField("chm_Notes"));
}

TEST_F(LogAddTest, LineCostsNeedNotSumUpToTheBatchCost) {
    signing.formula = scaled(1, 25);
    add(results());
    EXPECT_EQ(str(sqlText(
                  "SELECT log_Cost, (SELECT CAST(SUM(lch_Cost) AS double precision) FROM LogChem) FROM Log")),
              "8.6788|8.68");
}

TEST_F(LogAddTest, ALoggedBatchIsFrozen) {
    signing.formula = scaled(1, 25);
    const auto log = add(results());
    const QString rows = sqlText("SELECT * FROM Log") + sqlText("SELECT * FROM LogChem");
    const auto formula = clsFormula().openFormula(1, QString());
    formula->frm_Name = "Other";
    formula->frm_Mix = document("<CustomMix PreGrind=\"9\" FreeSpin=\"9\"/>");
    formula->Chemical->setValue("fch_Qty", 99.0);
    formula->Chemical->update();
    ASSERT_TRUE(clsFormula().saveFormula(formula));
    const auto chemical = clsChemical().openChemical(3, {});
    chemical->chm_Name = "Other";
    chemical->chm_Lot = "Other";
    chemical->chm_Cost = platform::Currency::fromText("77");
    ASSERT_TRUE(clsChemical().saveChemical(chemical));
    ASSERT_TRUE(clsFormula().deleteFormula(formula, true));
    ASSERT_TRUE(clsChemical().deleteChemical(chemical, true));
    EXPECT_EQ(str(sqlText("SELECT * FROM Log") + sqlText("SELECT * FROM LogChem")), str(rows));
    log->openLog(1, {});
    EXPECT_EQ(str(log->log_Name), "Cooling Gel");
    EXPECT_EQ(log->Chemical->recordCount(), 3);
}

TEST_F(LogAddTest, TextsOfTheFormulaAreDoubledAndNotTrimmed) {
    signing.formula = scaled(1, 25);
    signing.formula->frm_Name = "  O'Hara's ";
    signing.formula->frm_Strength = "'";
    signing.formula->frm_Desc = " d ";
    signing.formula->frm_Units = "it's";
    ASSERT_TRUE(add(results()));
    EXPECT_EQ(str(sqlText("SELECT log_Name, log_Strength, log_Desc, log_Units FROM Log")),
              "  O'Hara's |'| d |it's");
}

TEST_F(LogAddTest, AnApostropheInARawValueBreaksTheInsertAndNothingIsLogged) {
    const auto breaks = [&](auto change) {
        signing = {};
        signing.formula = scaled(1, 25);
        change();
        EXPECT_FALSE(add(results()));
        expectReport("clsLog:addLog");
        EXPECT_EQ(counts(), "0|0");
    };
    breaks([&] { signing.initials = "O'B"; });
    breaks([&] { signing.verified = "O'B"; });
    breaks([&] { signing.formula->frm_NDC = "9'1"; });
    breaks([&] { signing.formula->frm_Mix = document("<CustomMix PreGrind=\"it's\"/>"); });
    signing = {};
    signing.formula = scaled(1, 25);
    EXPECT_FALSE(add(document("<Results Value=\"A\"><PreparationNumber Value=\"1\"/>"
                              "<HardwareVersion Value=\"1\"/><Size Value=\"it's\"/></Results>")));
    expectReport("clsLog:addLog");
    EXPECT_EQ(counts(), "0|0");
}

TEST_F(LogAddTest, ACancelledDialogWritesNothing) {
    EXPECT_FALSE(add(results()));
    EXPECT_EQ(signing.shown, 1);
    EXPECT_TRUE(statements.isEmpty());
    EXPECT_EQ(counts(), "0|0");
}

TEST_F(LogAddTest, WithoutResultsItFailsBeforeTheDialogIsShown) {
    signing.formula = scaled(1, 25);
    EXPECT_FALSE(add(nullptr));
    expectReport("clsLog:addLog");
    EXPECT_EQ(signing.shown, 0);
    EXPECT_TRUE(statements.isEmpty());
}

TEST_F(LogAddTest, AMissingNodeOrValueOfTheResultsWritesNothing) {
    for (const char* xml :
         {"<Other/>", "<Results/>", "<Results Value=\"A\"/>",
          "<Results Value=\"A\"><PreparationNumber/></Results>",
          "<Results Value=\"A\"><PreparationNumber Value=\"1\"/></Results>",
          "<Results Value=\"A\"><PreparationNumber Value=\"1\"/><HardwareVersion/></Results>"}) {
        signing.formula = scaled(1, 25);
        EXPECT_FALSE(add(document(xml))) << xml;
        expectReport("clsLog:addLog");
        EXPECT_EQ(counts(), "0|0");
    }
}

TEST_F(LogAddTest, WithoutADialogItFails) {
    makeSigningDialog = nullptr;
    EXPECT_FALSE(add(results()));
    EXPECT_EQ(str(expectReport("clsLog:addLog").number), "91");
}

TEST_F(LogAddTest, ABaseBatchOfZeroFailsBeforeAnythingIsWritten) {
    signing.formula = scaled(1, 25);
    signing.formula->frm_Quantity = 0;
    EXPECT_FALSE(add(results()));
    EXPECT_EQ(str(expectReport("clsLog:addLog").number), "11");
    EXPECT_TRUE(statements.isEmpty());
}

TEST_F(LogAddTest, AFormulaWithoutLinesGivesARowAlone) {
    signing.formula = scaled(2, 25);
    const auto log = add(results());
    ASSERT_TRUE(log);
    EXPECT_EQ(log->Chemical->recordCount(), 0);
    EXPECT_EQ(counts(), "1|0");
}

TEST_F(LogAddTest, AFailureAtALineLeavesTheRowAndTheLinesBeforeIt) {
    place().refuse(databasePath(), {"INSERT", "LogChem", "lch_Name", "Menthol"});
    signing.formula = scaled(1, 25);
    EXPECT_FALSE(add(results()));
    expectReport("clsLog:addLog");
    EXPECT_EQ(str(sqlText("SELECT lch_Name FROM LogChem")), "Camphor");
    EXPECT_EQ(counts(), "1|1");
}

TEST_F(LogAddTest, AFailureAfterTheInsertLeavesTheRowWithoutLines) {
    signing.formula = scaled(1, 25);
    failStatement("@@IDENTITY");
    EXPECT_FALSE(add(results()));
    expectReport("clsLog:addLog");
    EXPECT_EQ(counts(), "1|0");
}

TEST_F(LogAddTest, TheShortListCannotBeLogged) {
    signing.formula = clsFormula().openFormula(1, QString());
    signing.formula->deleteChemical(3);
    EXPECT_FALSE(add(results()));
    expectReport("clsLog:addLog");
    EXPECT_EQ(counts(), "1|0");
}

TEST_F(LogAddTest, AnIdentityBeyondSixteenBitsIsReportedAndTheRowHasNoLines) {
    sql("INSERT INTO Log (LogID, log_Date) VALUES (40000, '2026-01-01 00:00:00'); DELETE FROM Log");
    signing.formula = scaled(1, 25);
    EXPECT_FALSE(add(results()));
    EXPECT_EQ(str(expectReport("clsLog:openLog").number), "6");
    expectReport("clsLog:addLog");
    EXPECT_EQ(str(sqlText("SELECT LogID FROM Log")), "40001");
    EXPECT_EQ(counts(), "1|0");
}

}  // namespace
