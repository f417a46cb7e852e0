// The chemical record: statements, search kinds, defaults, refusals.
#include "RecordsTest.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Answer;
using platform::Currency;

namespace {

class ChemicalTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedChemicals();
        clearStatements();
    }
    static clsChemicalPtr open(std::int16_t key) { return clsChemical().openChemical(key, {}); }
    static clsChemicalPtr find(const QString& text) { return clsChemical().openChemical(0, text); }
};

TEST_F(ChemicalTest, ANewObjectHoldsTheTwoTranslatedPrompts) {
    folder.write(
        "GermanTranslation.xml",
        "<Translations Language=\"German\"><Translate English=\"Select Units\" Translated=\"Einheit\"/>"
        "<Translate English=\"Select Form\" Translated=\"Form w\xC3\xA4hlen\"/></Translations>");
    startConfiguration(2);
    const clsChemical chemical;
    EXPECT_EQ(chemical.ChemicalID, 0);
    EXPECT_EQ(str(chemical.chm_Units), "Einheit");
    EXPECT_EQ(str(chemical.chm_Form), str(QString::fromUtf8("Form w\xC3\xA4hlen")));
    EXPECT_TRUE(chemical.chm_Name.isEmpty());
}

TEST_F(ChemicalTest, OpensByKeyIntoAFreshObjectWithoutADialog) {
    clsChemical opener;
    const auto chemical = opener.openChemical(3, {});
    ASSERT_TRUE(chemical);
    EXPECT_EQ(chemical->ChemicalID, 3);
    EXPECT_EQ(str(chemical->chm_Name), "Camphor");
    EXPECT_EQ(str(chemical->chm_Units), "GMS");
    EXPECT_EQ(str(chemical->chm_Lot), "L3");
    EXPECT_EQ(str(chemical->chm_NDC), "333-3");
    EXPECT_EQ(chemical->chm_Cost, Currency::fromText("2"));
    EXPECT_EQ(chemical->chm_AWP, Currency::fromText("3.5"));
    EXPECT_EQ(str(chemical->chm_Notes), "keep cool");
    EXPECT_EQ(str(chemical->chm_Form), "Crystal");
    EXPECT_EQ(str(chemical->chm_GUID), "G3");
    EXPECT_EQ(str(chemical->chm_Supplier), "Beta");
    EXPECT_EQ(opener.ChemicalID, 0);
    EXPECT_TRUE(asker.asked().isEmpty());
}

TEST_F(ChemicalTest, EachSearchKindHasItsStatement) {
    asker.alwaysAnswer("No Records");
    for (const char* text : {"", "Asp", "1#1", "#111", "L$1", "1#2$", "?A1", "a'b"})
        clsChemical().openChemical(7, text);
    expectReport("clsChemical:chemicalOpen");
    expectStatements("chemical_open.txt");
}

TEST_F(ChemicalTest, AMarkerAnywhereNamesTheColumn) {
    EXPECT_EQ(find("111#")->ChemicalID, 1);
    EXPECT_EQ(find("22#2")->ChemicalID, 2);
    EXPECT_EQ(find("L$4")->ChemicalID, 4);
    EXPECT_EQ(find("cAm")->ChemicalID, 3);
}

TEST_F(ChemicalTest, HeadingsAreTheTranslationsAndFieldsAreReadByPosition) {
    folder.write("SpanishTranslation.xml",
                 "<Translations Language=\"Spanish\"><Translate English=\"Name\" Translated=\"Nombre\"/>"
                 "<Translate English=\"Cost\" Translated=\"Coste\"/></Translations>");
    startConfiguration(1);
    EXPECT_EQ(str(open(3)->chm_Name), "Camphor");
    EXPECT_TRUE(statements.last().contains("[chm_Name] AS [Nombre]")) << qPrintable(statements.last());
    EXPECT_TRUE(statements.last().contains("[chm_Cost] AS [Coste]"));
}

TEST_F(ChemicalTest, NothingFoundGivesABlankObjectAfterTheMessage) {
    asker.expectMsgBox("No Records");
    const auto chemical = find("zzz");
    ASSERT_TRUE(chemical);
    EXPECT_EQ(chemical->ChemicalID, 0);
    EXPECT_EQ(str(chemical->chm_Units), "Select Units");
    EXPECT_EQ(str(chemical->chm_Form), "Select Form");
}

TEST_F(ChemicalTest, NullsReadAsEmptyAndZero) {
    sql("INSERT INTO Chemical (ChemicalID) VALUES (50)");
    const auto chemical = open(50);
    ASSERT_TRUE(chemical);
    EXPECT_EQ(chemical->ChemicalID, 50);
    EXPECT_TRUE(chemical->chm_Notes.isEmpty());
    EXPECT_EQ(chemical->chm_Cost, Currency());
    EXPECT_EQ(chemical->chm_AWP, Currency());
}

TEST_F(ChemicalTest, AKeyBeyondSixteenBitsIsAFailure) {
    sql("INSERT INTO Chemical (ChemicalID, chm_Name) VALUES (40000, 'Far')");
    EXPECT_FALSE(find("Far"));
    EXPECT_EQ(str(expectReport("clsChemical:chemicalOpen").number), "6");
}

TEST_F(ChemicalTest, AddsAnEmptyRowWithAnIdentityText) {
    const auto chemical = clsChemical().addChemical();
    expectStatements("chemical_add.txt");
    ASSERT_TRUE(chemical);
    EXPECT_EQ(chemical->ChemicalID, 5);
    EXPECT_EQ(str(chemical->chm_GUID), "1234ABCD-00EF-4001-1122-334455667788");
    EXPECT_TRUE(chemical->chm_Units.isEmpty());
    EXPECT_TRUE(chemical->chm_Form.isEmpty());
    EXPECT_EQ(str(sqlText("SELECT chm_Name, chm_Units, chm_Cost, chm_AWP, chm_Supplier FROM Chemical "
                          "WHERE ChemicalID = 5")),
              "||0|0|");
}

TEST_F(ChemicalTest, AddReportsUnderItsOwnLabel) {
    failStatement("INSERT");
    EXPECT_FALSE(clsChemical().addChemical());
    EXPECT_EQ(str(expectReport("clsChemical:chemicalAdd").description), "Made to fail");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical")), "4");
}

TEST_F(ChemicalTest, SavesDoubledAndTrimmedTextsAndMoneyByDefault) {
    const auto chemical = open(2);
    chemical->chm_Name = "  O'Hara's Borax ";
    chemical->chm_Units = "GMS";
    chemical->chm_Lot = "'";
    chemical->chm_NDC = "2'2";
    chemical->chm_Cost = Currency::fromText("2.50");
    chemical->chm_AWP = Currency();
    chemical->chm_Notes = "line\t\n";
    chemical->chm_Form = "it's";
    chemical->chm_Supplier = " St. John's ";
    chemical->chm_GUID = "changed";
    clearStatements();
    EXPECT_EQ(clsChemical().saveChemical(chemical), chemical);
    expectStatements("chemical_save.txt");
    EXPECT_EQ(str(sqlText("SELECT chm_Name, chm_Lot, chm_NDC, chm_Cost, chm_AWP, chm_Form, chm_GUID, "
                          "chm_Supplier FROM Chemical WHERE ChemicalID = 2")),
              "O'Hara's Borax|'|2'2|2.5|0|it's|G2|St. John's");
    EXPECT_EQ(str(sqlText("SELECT chm_Notes FROM Chemical WHERE ChemicalID = 2")), "line\t\n");
}

TEST_F(ChemicalTest, SavingARowThatIsGoneGivesNothing) {
    const auto chemical = open(1);
    sql("DELETE FROM Chemical WHERE ChemicalID = 1");
    EXPECT_FALSE(clsChemical().saveChemical(chemical));
    EXPECT_FALSE(clsChemical().saveChemical(nullptr));
    EXPECT_EQ(str(expectReport("clsChemical:saveChemical").number), "91");
}

TEST_F(ChemicalTest, ANameWithAnApostropheSavesAndItsSearchBreaks) {
    const auto chemical = open(1);
    chemical->chm_Name = "St. John's Wort";
    ASSERT_TRUE(clsChemical().saveChemical(chemical));
    EXPECT_EQ(str(open(1)->chm_Name), "St. John's Wort");
    EXPECT_FALSE(find("St. John's"));
    const auto report = expectReport("clsChemical:chemicalOpen");
    EXPECT_TRUE(report.statement.contains("Like 'St. John's%'")) << qPrintable(report.statement);
}

TEST_F(ChemicalTest, DeletingAsksWithNoAsTheDefault) {
    const auto chemical = open(1);
    clearStatements();
    for (const Answer answer : {Answer::No, Answer::Cancel}) {
        asker.expectMsgBox("Delete Aspirin?", platform::deletionStyle, answer);
        EXPECT_FALSE(clsChemical().deleteChemical(chemical, false));
    }
    EXPECT_TRUE(statements.isEmpty());
    asker.expectMsgBox("Delete Aspirin?", platform::deletionStyle, Answer::Yes);
    EXPECT_TRUE(clsChemical().deleteChemical(chemical, false));
    expectStatements("chemical_delete.txt");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical WHERE ChemicalID = 1")), "0");
}

TEST_F(ChemicalTest, DeletingSilentlyAsksNothingAndDoesNotLookAtTheCount) {
    const auto chemical = open(1);
    EXPECT_TRUE(clsChemical().deleteChemical(chemical, true));
    EXPECT_TRUE(clsChemical().deleteChemical(chemical, true));
}

TEST_F(ChemicalTest, AChemicalInAFormulaIsRefusedByTheFileAndNamed) {
    sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Mix) VALUES (1, 'F', '');"
        "INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 1, 2)");
    folder.write(
        "GermanTranslation.xml",
        "<Translations Language=\"German\"><Translate English=\"is currently used in a formula,&#13;it "
        "can not be deleted.\" Translated=\"wird gebraucht.\"/></Translations>");
    const auto chemical = open(1);
    clearStatements();
    asker.expectMsgBox("Aspirin\r\nis currently used in a formula,\rit can not be deleted.", {}, u""_s);
    EXPECT_FALSE(clsChemical().deleteChemical(chemical, true));
    EXPECT_EQ(statements.size(), 1);
    startConfiguration(2);
    asker.expectMsgBox("Aspirin\r\nwird gebraucht.", {}, u""_s);
    EXPECT_FALSE(clsChemical().deleteChemical(chemical, true));
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Chemical WHERE ChemicalID = 1")), "1");
}

TEST_F(ChemicalTest, AnyOtherFailureOfTheDeletionIsReported) {
    const auto chemical = open(1);
    failStatement("DELETE", platform::error::statement);
    EXPECT_FALSE(clsChemical().deleteChemical(chemical, true));
    expectReport("clsChemical:deleteChemical");
}

TEST_F(ChemicalTest, AChemicalUsedOnlyInABatchCanBeDeleted) {
    sql("INSERT INTO Log (LogID, log_Name, log_Date) VALUES (1, 'B', '2026-01-01 00:00:00');"
        "INSERT INTO LogChem (LogID, ChemicalID, lch_Name) VALUES (1, 1, 'Aspirin')");
    EXPECT_TRUE(clsChemical().deleteChemical(open(1), true));
    EXPECT_EQ(str(sqlText("SELECT lch_Name FROM LogChem")), "Aspirin");
}

}  // namespace
