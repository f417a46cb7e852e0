// The patient record and its prescriptions.
#include "RecordsTest.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Values.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::Answer;
using platform::nullText;

namespace {

class PatientTest : public RecordsTest {
protected:
    void SetUp() override {
        RecordsTest::SetUp();
        seedLogs();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, "
            "pat_State, pat_Zip, pat_Country, pat_BDay, pat_Phone, pat_Fax, pat_Notes) VALUES "
            "(1, 'Jane', 'Doe', '1 Elm St.', 'Apt. 2', 'Fenwick', 'ZZ', '54321', 'US', "
            "'1980-10-31 00:00:00', '555-0101', '555-0102', 'allergic'),"
            "(2, ' Jane', 'anemone', '', '', '', '', '', '', NULL, '555-0201', '', ''),"
            "(3, 'Mary', 'O''Hara', '', '', '', '', '', '', '1980-01-31 00:00:00', '777', '', '');"
            "INSERT INTO RXs (RXsID, LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Doctor) VALUES "
            "(1, 1, 1, '2026-01-05 00:00:00', 5, 1, 2, 'Dr. A'),"
            "(2, 2, 1, '2026-02-20 00:00:00', 6, 3, 4, 'Dr. B');");
        clearStatements();
    }
    static clsPatientPtr open(std::int16_t key) { return clsPatient().openPatient(key, {}); }
    static clsPatientPtr find(const QString& text) { return clsPatient().openPatient(0, text); }
};

TEST_F(PatientTest, ANewObjectIsBlankWithTheZeroDate) {
    const clsPatient patient;
    EXPECT_EQ(patient.PatientID, 0);
    EXPECT_EQ(patient.pat_BDay, platform::zeroDate());
}

TEST_F(PatientTest, OpensByKeyWithThePrescriptionsNewestFirst) {
    const auto patient = open(1);
    expectStatements("patient_open_key.txt");
    ASSERT_TRUE(patient);
    EXPECT_EQ(patient->PatientID, 1);
    EXPECT_EQ(str(patient->pat_FName), "Jane");
    EXPECT_EQ(str(patient->pat_LName), "Doe");
    EXPECT_EQ(str(patient->pat_Address1), "1 Elm St.");
    EXPECT_EQ(str(patient->pat_Address2), "Apt. 2");
    EXPECT_EQ(str(patient->pat_City), "Fenwick");
    EXPECT_EQ(str(patient->pat_State), "ZZ");
    EXPECT_EQ(str(patient->pat_Zip), "54321");
    EXPECT_EQ(str(patient->pat_Country), "US");
    EXPECT_EQ(patient->pat_BDay.date(), QDate(1980, 10, 31));
    EXPECT_EQ(str(patient->pat_Phone), "555-0101");
    EXPECT_EQ(str(patient->pat_Fax), "555-0102");
    EXPECT_EQ(str(patient->pat_Notes), "allergic");
    ASSERT_EQ(patient->RXs->recordCount(), 2);
    EXPECT_EQ(str(nullText(patient->RXs->value("RXsID"))), "2");
    EXPECT_EQ(open(3)->pat_BDay.date(), QDate(1980, 1, 31));
}

TEST_F(PatientTest, EachSearchKindHasItsStatement) {
    asker.alwaysAnswer("No Records");
    for (const char* text : {"9#9", "Zzz", "Doe, John", "Li,X", ",X", "Doe,", "a,b,c", "a'b", "$L"})
        find(text);
    expectReport("clsPatient:openPatient");
    statements.removeIf([](const QString& text) { return text.contains("RXs"); });
    expectStatements("patient_open_search.txt");
}

TEST_F(PatientTest, TheCommaRuleTestsTheRightEndOfTheWholeText) {
    EXPECT_EQ(find("Doe, Jane")->PatientID, 2);
    EXPECT_EQ(find("DO")->PatientID, 1);
    asker.expectMsgBox("No Records");
    EXPECT_EQ(find("Jane")->PatientID, 0);
}

TEST_F(PatientTest, ANumberSignAnywhereSearchesThePhone) {
    EXPECT_EQ(find("77#")->PatientID, 3);
    EXPECT_EQ(find("555-#02")->PatientID, 2);
}

TEST_F(PatientTest, NothingFoundGivesABlankObjectWithAnEmptyList) {
    asker.expectMsgBox("No Records");
    const auto patient = find("zzz");
    ASSERT_TRUE(patient);
    EXPECT_EQ(patient->PatientID, 0);
    EXPECT_EQ(patient->RXs->recordCount(), 0);
}

TEST_F(PatientTest, AKeyBeyondSixteenBitsIsAFailure) {
    sql("INSERT INTO Patient (PatientID, pat_LName) VALUES (32768, 'Far')");
    EXPECT_FALSE(find("Far"));
    EXPECT_EQ(str(expectReport("clsPatient:openPatient").number), "6");
}

TEST_F(PatientTest, AddsARowWithoutABirthDateThatOpensAsTheZeroDate) {
    const auto patient = clsPatient().addPatient();
    expectStatements("patient_add.txt");
    ASSERT_TRUE(patient);
    EXPECT_EQ(patient->PatientID, 4);
    EXPECT_EQ(patient->pat_BDay, platform::zeroDate());
    EXPECT_EQ(str(sqlText("SELECT pat_BDay, pat_FName, pat_Notes FROM Patient WHERE PatientID = 4")),
              "NULL||");
    patient->pat_LName = "New";
    clearStatements();
    ASSERT_TRUE(clsPatient().savePatient(patient));
    expectStatements("patient_save_zero_date.txt");
    EXPECT_EQ(str(sqlText("SELECT pat_BDay FROM Patient WHERE PatientID = 4")), "1899-12-30 00:00:00");
    EXPECT_EQ(open(4)->pat_BDay, platform::zeroDate());
}

TEST_F(PatientTest, AFailureAfterTheInsertIsReportedAndLeavesABlankRow) {
    failStatement("@@IDENTITY");
    EXPECT_FALSE(clsPatient().addPatient());
    expectReport("clsPatient:addPatient");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Patient WHERE pat_LName = ''")), "1");
}

TEST_F(PatientTest, SavesInTheOrderOfTheTable) {
    const auto patient = open(1);
    patient->pat_FName = " D'Arcy ";
    patient->pat_LName = "O'Hara";
    patient->pat_Address1 = "1 St. John's";
    patient->pat_Address2 = " ";
    patient->pat_City = "L'Aquila";
    patient->pat_State = "'";
    patient->pat_Zip = " 1 ";
    patient->pat_Country = "C'";
    patient->pat_Phone = " 2 ";
    patient->pat_Fax = " 3 ";
    patient->pat_Notes = " don't ";
    clearStatements();
    EXPECT_EQ(clsPatient().savePatient(patient), patient);
    expectStatements("patient_save.txt");
    EXPECT_EQ(
        str(sqlText("SELECT pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State, pat_Zip, "
                    "pat_Country, pat_BDay, pat_Phone, pat_Fax, pat_Notes FROM Patient WHERE PatientID = 1")),
        "D'Arcy|O'Hara|1 St. John's||L'Aquila|'|1|C'|1980-10-31 00:00:00|2|3|don't");
}

TEST_F(PatientTest, AnApostropheInZipPhoneOrFaxIsAFailureOfTheCaller) {
    for (QString clsPatient::*field : {&clsPatient::pat_Zip, &clsPatient::pat_Phone, &clsPatient::pat_Fax}) {
        const auto patient = open(1);
        (*patient).*field = "5'5";
        EXPECT_THROW(clsPatient().savePatient(patient), platform::RuntimeError);
    }
    EXPECT_THROW(clsPatient().savePatient(nullptr), platform::RuntimeError);
    EXPECT_TRUE(reporter->calls.empty());
}

TEST_F(PatientTest, SavingARowThatIsGoneGivesNothing) {
    const auto patient = open(3);
    sql("DELETE FROM Patient WHERE PatientID = 3");
    EXPECT_FALSE(clsPatient().savePatient(patient));
}

TEST_F(PatientTest, DeletingAsksThenTakesThePrescriptionsFirst) {
    const auto patient = open(1);
    clearStatements();
    asker.expectMsgBox("Delete Doe, Jane?", platform::deletionStyle, Answer::Cancel);
    EXPECT_FALSE(clsPatient().deletePatient(patient, false));
    EXPECT_TRUE(statements.isEmpty());
    asker.expectMsgBox("Delete Doe, Jane?", platform::deletionStyle, Answer::Yes);
    EXPECT_TRUE(clsPatient().deletePatient(patient, false));
    expectStatements("patient_delete.txt");
    EXPECT_EQ(str(sqlText("SELECT (SELECT COUNT(*) FROM RXs), (SELECT COUNT(*) FROM Patient)")), "0|2");
}

TEST_F(PatientTest, DeletingGoesOnAfterAFailedStatement) {
    const auto patient = open(3);
    failStatement("[RXs] WHERE");
    EXPECT_TRUE(clsPatient().deletePatient(patient, true));
    EXPECT_EQ(str(expectReport("clsPatient:deletePatient").description), "Made to fail");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM Patient WHERE PatientID = 3")), "0");
}

TEST_F(PatientTest, AFailureAtTheSecondDeletionLeavesThePatientWithoutPrescriptions) {
    const auto patient = open(1);
    failStatement("[Patient] WHERE");
    EXPECT_TRUE(clsPatient().deletePatient(patient, true));
    expectReport("clsPatient:deletePatient");
    EXPECT_EQ(str(sqlText("SELECT (SELECT COUNT(*) FROM RXs), (SELECT COUNT(*) FROM Patient)")), "0|3");
}

TEST_F(PatientTest, DeletingNoObjectNeverDeletesARow) {
    EXPECT_FALSE(clsPatient().deletePatient(nullptr, false));
    EXPECT_TRUE(clsPatient().deletePatient(nullptr, true));
    expectReports("clsPatient:deletePatient");
    EXPECT_EQ(str(sqlText("SELECT (SELECT COUNT(*) FROM RXs), (SELECT COUNT(*) FROM Patient)")), "2|3");
}

TEST_F(PatientTest, APrescriptionTakesTheAwpAsCostAndTheCostAsPrice) {
    const auto patient = open(3);
    clearStatements();
    EXPECT_TRUE(patient->addRX("?AA1"));
    expectStatements("prescription_add.txt");
    EXPECT_EQ(str(sqlText("SELECT LogID, PatientID, rxs_Date, rxs_QTY, rxs_Cost, rxs_Price, rxs_Consult, "
                          "rxs_Doctor FROM RXs WHERE PatientID = 3")),
              "1|3|2026-03-07 00:00:00|25.0|10|4|NULL|");
    ASSERT_EQ(patient->RXs->recordCount(), 1);
    EXPECT_EQ(str(nullText(patient->RXs->value("log_Lot"))), "AA1");
}

TEST_F(PatientTest, ABatchWithNullFiguresIsPrescribedWithZeros) {
    const auto patient = open(3);
    EXPECT_TRUE(patient->addRX("#900-3"));
    EXPECT_EQ(str(sqlText("SELECT rxs_QTY, rxs_Cost, rxs_Price FROM RXs WHERE PatientID = 3")), "10.0|0|0");
}

TEST_F(PatientTest, ThePrescriptionSearchHasItsOwnAliases) {
    folder.write("GermanTranslation.xml",
                 "<Translations Language=\"German\"><Translate English=\"JarSize\" Translated=\"Glas (ml)\"/>"
                 "</Translations>");
    startConfiguration(2);
    const auto patient = open(3);
    clearStatements();
    asker.alwaysAnswer("No Records");
    for (const char* text : {"zzz", "#99", "?zz", "a'b", ""})
        EXPECT_FALSE(patient->addRX(text));
    expectReport("clsPatient:addRX");
    expectReport("clsPatient:addRX");
    statements.removeIf([](const QString& text) { return text.contains("FROM Patient"); });
    expectStatements("prescription_search.txt");
}

TEST_F(PatientTest, ACancelledSearchAddsNothingAndRefreshesTheListWithoutOrder) {
    const auto patient = open(1);
    const auto list = patient->RXs;
    asker.expectModal("frmSearchRS", [](QWidget& form) { form.close(); });
    EXPECT_FALSE(patient->addRX("Cool"));
    EXPECT_NE(patient->RXs, list);
    EXPECT_EQ(str(nullText(patient->RXs->value("RXsID"))), "1");
    EXPECT_EQ(str(sqlText("SELECT COUNT(*) FROM RXs")), "2");
}

TEST_F(PatientTest, RemovingAPrescriptionReadsTheListAnewWithoutOrder) {
    const auto patient = open(1);
    clearStatements();
    EXPECT_TRUE(patient->deleteRX(2));
    expectStatements("prescription_delete.txt");
    EXPECT_EQ(patient->RXs->recordCount(), 1);
    EXPECT_FALSE(patient->deleteRX(2));
    failStatement("DELETE");
    EXPECT_THROW(patient->deleteRX(1), platform::RuntimeError);
    EXPECT_TRUE(reporter->calls.empty());
}

TEST_F(PatientTest, AnEditInTheListGoesToTheTableAndNotToTheBatch) {
    const auto patient = open(1);
    clearStatements();
    patient->RXs->setValue("rxs_Doctor", u"Dr. O'Neil"_s);
    patient->RXs->setValue("rxs_Price", u"12.5"_s);
    patient->RXs->update();
    EXPECT_TRUE(statements.isEmpty());
    EXPECT_EQ(str(sqlText("SELECT rxs_Doctor, rxs_Price FROM RXs WHERE RXsID = 2")), "Dr. O'Neil|12.5");
    EXPECT_EQ(str(sqlText("SELECT log_Cost FROM Log WHERE LogID = 2")), "8");
}

}  // namespace
