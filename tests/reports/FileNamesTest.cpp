// What is proposed as the name of a report's file.
#include "reports/FileNames.h"

#include "FixedClock.h"
#include "ReportTest.h"

using namespace Qt::StringLiterals;
using sorvanto::reportFileName;

namespace {

class FileNamesTest : public ReportTest {};

TEST_F(FileNamesTest, NameTheReportTheRecordAndTheDay) {
    EXPECT_EQ(
        str(reportFileName("Worksheet", {u"Magic Mouthwash"_s, u"240"_s, u"MLS"_s}, QDate(2026, 11, 21))),
        "Worksheet Magic Mouthwash 240 MLS 2026-11-21");
    EXPECT_EQ(str(reportFileName("Jar Usage Report", {}, QDate(2026, 10, 21), QDate(2026, 11, 21))),
              "Jar Usage Report 2026-10-21 2026-11-21");
}

TEST_F(FileNamesTest, HoldSignsThatEveryFileSystemTakes) {
    EXPECT_EQ(
        str(reportFileName("Label", {u"../A\\B:C*?\"<D>|'E'\n\t\u202E & 5% (rot)"_s}, QDate(2026, 1, 2))),
        "Label .. A B C D E 5% (rot) 2026-01-02");
    EXPECT_EQ(str(reportFileName("Label", {u"Kühlgel Мазь"_s}, QDate(2026, 1, 2))),
              "Label Kühlgel Мазь 2026-01-02");
}

TEST_F(FileNamesTest, StayShort) {
    EXPECT_LE(reportFileName("Label", {QString(5000, u'x')}, QDate(2026, 1, 2)).size(), 110);
}

TEST_F(FileNamesTest, OfTheEightReports) {
    seedPharmacy();
    const QDateTime begin = day(2020, 1, 1), end = day(2030, 12, 31);
    EXPECT_TRUE(worksheet(1, 20)->fileName.startsWith(u"Worksheet Cooling Gel 20 "_s))
        << qPrintable(worksheet(1, 20)->fileName);
    const auto log = batch(1);
    const QString batchName =
        log->log_Name + u' ' + log->log_Lot + u' ' + log->log_Date.date().toString(Qt::ISODate);
    EXPECT_EQ(str(formulaLog(1)->fileName), str(u"Formula Log "_s + batchName));
    EXPECT_EQ(str(batchLabels(1, "1", 1)->fileName), str(u"Label "_s + batchName));
    const QString prescription = prescriptionLabels(31, "1", 1)->fileName;
    EXPECT_TRUE(prescription.startsWith(u"Label Cooling Gel "_s)) << str(prescription);
    EXPECT_EQ(str(logReport(1, begin, end)->fileName), "Log Report Cooling Gel 2020-01-01 2030-12-31");
    EXPECT_EQ(str(jarUsage(begin, end)->fileName), "Jar Usage Report 2020-01-01 2030-12-31");
    EXPECT_TRUE(chemicals()->fileName.startsWith(u"Chemicals Report "_s));
    EXPECT_TRUE(patient(1, begin, end)->fileName.endsWith(u"2020-01-01 2030-12-31"_s));
}

}  // namespace
