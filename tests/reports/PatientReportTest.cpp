// The prescriptions of a patient: statements byte for byte, address lines, totals that lose their zeros.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "reports/rptPatient.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class PatientReportTest : public DateRangeTest {};

}  // namespace

TEST_F(PatientReportTest, PageWithEveryTextAtItsPlace) {
    const RunPtr run = finished(patient(1, begin, end));
    kept(*run, "small-patient");
    support::expectGolden("reports/patient.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(PatientReportTest, StatementsByteForByte) {
    finished(patient(1, begin, end));
    ASSERT_EQ(statements.size(), 3);
    EXPECT_EQ(
        str(statements[0]),
        "SELECT [PatientID],[pat_LName],[pat_FName],[pat_Address1],[pat_Address2],[pat_City],[pat_State],"
        "[pat_Zip],[pat_Country],[pat_BDay],[pat_Phone],[pat_Fax] FROM Patient WHERE PatientID = 1");
    EXPECT_EQ(
        str(statements[1]),
        "SELECT RXs.RXsID, RXs.rxs_Date, Formula.frm_Name, Formula.frm_Strength, RXs.rxs_QTY, "
        "RXs.rxs_Price, RXs.rxs_Doctor, Log.log_Lot FROM Patient INNER JOIN ((Log INNER JOIN Formula ON "
        "Log.FormulaID = Formula.FormulaID) INNER JOIN RXs ON Log.LogID = RXs.LogID) ON Patient.PatientID = "
        "RXs.PatientID WHERE Patient.PatientID=1 AND RXs.rxs_Date >= #01-01-2026# AND RXs.rxs_Date <= "
        "#03-07-2026#;");
    EXPECT_EQ(
        str(statements[2]),
        "SELECT Count(*) as TotalRXs ,Sum(RXs.rxs_Price) as TotalPrice FROM RXs WHERE RXs.PatientID=1 AND "
        "RXs.rxs_Date >= #1/1/2026 2:05:09 PM# AND RXs.rxs_Date <= #3/7/2026 2:05:09 PM#;");
}

TEST_F(PatientReportTest, TextsAndTotals) {
    auto report = patient(1, begin, end);
    EXPECT_EQ(str(report->caption), "Prescription Report");
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(str(text(*run, "lblReportTitle")), "Prescription Report - Sorvanto");
    EXPECT_EQ(str(text(*run, "lblDate")), "3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(text(*run, "txtReportDate")), "Report Dates: 1/1/2026 2:05:09 PM -- 3/7/2026 2:05:09 PM");
    EXPECT_EQ(str(text(*run, "txtPatientID")), "1");
    EXPECT_EQ(str(text(*run, "txtName")), "Mara Quist");
    EXPECT_EQ(str(text(*run, "txtpat_BDay")), "Birthdate: 3/7/1951");
    EXPECT_EQ(str(text(*run, "txtpat_Phone")), "Phone: 440-555-0117");
    EXPECT_EQ(str(text(*run, "txtpat_Fax")), "Fax: 440-555-0118");
    EXPECT_EQ(str(text(*run, "txtAddress")), "14 Orchard Lane\r\nMillbrook, OH 44017\r\nUSA");
    EXPECT_EQ(str(texts(*run, "txtfrm_Name").join('|')), " Cooling Gel | Cooling Gel ");
    EXPECT_EQ(str(text(*run, "txtTotalRXs")), "2 Prescriptions");
    EXPECT_EQ(str(text(*run, "txtTotalPrice")), "$12.5") << "a zero at the end is lost";
    EXPECT_EQ(str(text(*run, "txtCity")), "Fenwick, ZZ     54321");
    EXPECT_EQ(str(text(*run, "lblDEA")), "Pharmacy #");
    QStringList prices = texts(*run, "txtrxs_Price");
    prices.sort();
    EXPECT_EQ(str(prices.join('|')), "$ 10.25|$ 2.25");
}

TEST_F(PatientReportTest, SecondAddressLineAndMissingBirthdate) {
    const RunPtr run = finished(patient(2, begin, end));
    EXPECT_EQ(str(text(*run, "txtAddress")), "208 Quarry Road\r\nApt. 3B\r\nMillbrook, OH 44017\r\nUSA");
    EXPECT_EQ(str(text(*run, "txtpat_BDay")), "Birthdate: ");
    EXPECT_EQ(str(text(*run, "txtName")), str(u"Seán O'Brien"_s));
    EXPECT_EQ(str(text(*run, "txtTotalPrice")), "$100");
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(PatientReportTest, PriceIsRoundedBeforeItIsMoney) {
    sql("UPDATE RXs SET rxs_Price = 1234.565 WHERE RXsID = 33;");
    EXPECT_EQ(str(text(*finished(patient(2, begin, end)), "txtTotalPrice")), "$1234.57");
    sql("UPDATE RXs SET rxs_Price = 100 WHERE RXsID = 33;");
    EXPECT_EQ(str(text(*finished(patient(2, begin, end)), "txtTotalPrice")), "$100");
    sql("UPDATE RXs SET rxs_Price = NULL WHERE RXsID = 33;");
    EXPECT_EQ(str(text(*finished(patient(2, begin, end)), "txtTotalPrice")), "0.00");
    platform::setSystemLocale(QLocale("de_DE"));
    EXPECT_EQ(str(text(*finished(patient(2, begin, end)), "txtTotalPrice")), "0,00");
    platform::setSystemLocale(std::nullopt);
}

TEST_F(PatientReportTest, PrescriptionOfADeletedFormulaIsCountedAndNotListed) {
    sql("INSERT INTO Formula (FormulaID, frm_Name) VALUES (9, 'Kept'); UPDATE Log SET FormulaID = 9 WHERE LogID = "
        "1; DELETE FROM FormChem WHERE FormulaID = 1; DELETE FROM Formula WHERE FormulaID = 1;");
    const RunPtr run = finished(patient(1, begin, end));
    EXPECT_EQ(str(texts(*run, "txtRXsID").join('|')), "32");
    EXPECT_EQ(str(text(*run, "txtTotalRXs")), "2 Prescriptions");
    EXPECT_EQ(
        str(run->document().notes.join('|')),
        "The list shows 1 prescription, the totals count 2: the list leaves out prescriptions whose formula "
        "is deleted, and the totals go by the time of day.");
}

TEST_F(PatientReportTest, CancelledShowsNothing) {
    basMain::reportCancelled = false;
    rptPatient report(context);
    asker.expectModal("frmReportDate",
                      [](QWidget& form) { form.findChild<QAbstractButton*>("cmdCancel")->click(); });
    report.PatientID(1);
    EXPECT_TRUE(basMain::reportCancelled);
    EXPECT_TRUE(report.isUnloaded());
    EXPECT_TRUE(statements.isEmpty());
}

TEST_F(PatientReportTest, NothingInTheRangeSaysNoRecords) {
    for (const std::int16_t key : {std::int16_t{1}, std::int16_t{999}}) {
        rptPatient report(context);
        expectDates(end, begin);
        asker.expectMsgBox("No records");
        report.PatientID(key);
        EXPECT_TRUE(basMain::reportCancelled);
        EXPECT_TRUE(report.isUnloaded());
    }
}

TEST_F(PatientReportTest, PatientWithoutARowFailsAtTheHead) {
    rptPatient report(context);
    auto fed = std::make_unique<rptPatient>(context);
    expectDates(begin, end);
    asker.expectMsgBox("No records");
    fed->PatientID(999);
    ReportRun run(std::move(fed));
    EXPECT_THROW(run.makeAll(), RuntimeError);
    EXPECT_TRUE(run.isOver());
}

TEST_F(PatientReportTest, TheLargestKeysAndQuantitiesAreWhole) {
    sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (32767, 'Mara', 'Quist'); INSERT INTO RXs "
        "(RXsID, LogID, PatientID, rxs_Date, rxs_QTY, rxs_Price) VALUES (32767, 2, 32767, '2026-03-02 00:00:00', "
        "32767, 1234.5);");
    const RunPtr run = finished(patient(32767, begin, end));
    EXPECT_EQ(str(text(*run, "txtPatientID")), "32767");
    EXPECT_EQ(str(text(*run, "txtRXsID")), "32767");
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(PatientReportTest, StoreBlockStandsOnEveryPageAndThereIsNoNumber) {
    QString more = "BEGIN;";
    for (int i = 0; i < 40; ++i)
        more += "INSERT INTO RXs (LogID, PatientID, rxs_Date, rxs_QTY, rxs_Price) VALUES (2, 1, '2026-03-02 "
                "00:00:00', 1, 1);";
    sql(more + "COMMIT;");
    const RunPtr run = finished(patient(1, begin, end));
    const auto pages = static_cast<qsizetype>(run->document().pages.size());
    EXPECT_GT(pages, 2);
    EXPECT_EQ(texts(*run, "txtStore").size(), pages);
    EXPECT_EQ(texts(*run, "txtName").count("Mara Quist"), pages);
    EXPECT_FALSE(dumped(run->document()).contains("Page "));
}
