// The eight spreadsheets: names and places, overwriting, two independent readers, folders that can't be written.
#include "Hindrances.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/Tools.h"
#include "reports/ReportFlow.h"
#include "shared/basMain.h"

#include <QDir>
#include <QFileInfo>

using namespace platform;
using namespace sorvanto;

namespace {

class ExportTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
    }
    void exportAll() {
        const QDateTime begin = day(2026, 1, 1), end = day(2026, 3, 7);
        runReport(worksheet(1, 25), true, "\\Worksheet.xls");
        runReport(formulaLog(2), true, "\\FormulaLog.xls");
        runReport(batchLabels(2, "3", 6), true, "\\LogAvery8160.xls");
        runReport(prescriptionLabels(31, "3", 6), true, "\\RXLabel.xls");
        runReport(logReport(1, begin, end), true, "\\LogReport.xls");
        runReport(jarUsage(begin, end), true, "\\JarUsage.xls");
        runReport(chemicals(), true, "\\Chemicals.xls");
        runReport(patient(1, begin, end), true, "\\RXReport.xls");
    }
};

const QStringList names{"Chemicals.xls", "FormulaLog.xls", "JarUsage.xls", "LogAvery8160.xls",
                        "LogReport.xls", "RXLabel.xls",    "RXReport.xls", "Worksheet.xls"};

/// Compares each cell of two readers; prints what differs. Amounts and dates are compared by their value.
const char* const comparison = R"(
import csv, datetime, re, sys, xlrd
differences = cells = 0
for name in sys.argv[2:]:
    sheet = xlrd.open_workbook(sys.argv[1] + '/' + name + '.xls').sheet_by_index(0)
    rows = list(csv.reader(open(sys.argv[1] + '/' + name + '.csv', encoding='utf-8', newline='')))
    for r in range(sheet.nrows):
        for c in range(sheet.ncols):
            cell = sheet.cell(r, c)
            shown = rows[r][c] if r < len(rows) and c < len(rows[r]) else ''
            if cell.ctype in (0, 6):
                same = shown == ''
            elif cell.ctype == 2:
                digits = re.sub(r'[^0-9.-]', '', shown)
                same = digits not in ('', '-') and abs(float(digits) - cell.value) < 0.0051
            elif cell.ctype == 3:
                date = xlrd.xldate_as_tuple(cell.value, 0)
                same = [int(n) for n in re.findall('[0-9]+', shown)][:3] == [date[1], date[2], date[0]]
            else:
                same = shown.replace('\r\n', '\n') == cell.value.replace('\r\n', '\n')
            cells += cell.ctype not in (0, 6)
            if not same:
                differences += 1
                print(name, r, c, repr(cell.value), repr(shown))
print('cells', cells, 'differences', differences)
)";

}  // namespace

TEST_F(ExportTest, FilesAreNamedAndPlacedAndOverwrittenWithoutAWord) {
    for (const QString& name : names)
        folder.write(name, "an old file");
    exportAll();
    EXPECT_EQ(str(QDir(folder.path()).entryList({"*.xls*"}, QDir::Files, QDir::Name).join('|')),
              str(names.join('|')));
    for (const QString& name : names)
        EXPECT_TRUE(folder.read(name).startsWith("\xD0\xCF\x11\xE0")) << str(name);
}

TEST_F(ExportTest, TwoReadersSeeTheSameValues) {
    exportAll();
    QStringList files, stems;
    for (const QString& name : names) {
        files << folder.path(name);
        stems << name.chopped(4);
    }
    tools::output("soffice", QStringList{"--headless", "-env:UserInstallation=file://" + folder.path("profile"),
                                         "--convert-to",
                                         "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false",
                                         "--outdir", folder.path()} + files);
    const QString told =
        tools::output("/usr/bin/python3", QStringList{"-c", comparison, folder.path()} + stems);
    EXPECT_TRUE(told.trimmed().endsWith("differences 0")) << str(told);
}

TEST_F(ExportTest, CellsHoldAllThatThePagesShow) {
    exportAll();
    const QString sheet = tools::cells(folder.path("Worksheet.xls"));
    for (const char* shown : {"Formula Worksheet -- Sorvanto", "03-07-26", "Formula Name: Cooling Gel 2 % Custom",
                              "Camphor", "3.086", "19.96", "Mix cold.", "Kelmar Systems", "Fenwick, ZZ     54321",
                              "123456789", "___/___/_____", "Supplier"})
        EXPECT_TRUE(sheet.contains(shown)) << shown << "\n" << str(sheet);
    EXPECT_TRUE(sheet.contains("\"$\"###,##0.00")) << "amounts keep their currency\n" << str(sheet);
    const QString labels = tools::cells(folder.path("RXLabel.xls"));
    EXPECT_EQ(labels.count("'Lot#'"), 8);
    EXPECT_EQ(labels.count("'Mara Quist'"), 3);
    const QString log = tools::cells(folder.path("LogReport.xls"));
    EXPECT_TRUE(log.contains("date|'2026-01-05 09:30:00'")) << str(log);
    EXPECT_TRUE(log.contains("'3 Logs'"));
    EXPECT_TRUE(log.contains("1255.4"));
}

TEST_F(ExportTest, WholeLogReportStaysInOrder) {
    runReport(logReport(1, day(2026, 1, 1), day(2026, 3, 7)), true, "\\LogReport.xls");
    const QString cells = tools::cells(folder.path("LogReport.xls"));
    EXPECT_LT(cells.indexOf("Log Report - Sorvanto"), cells.indexOf("Cooling Gel"));
    EXPECT_LT(cells.indexOf("AB0010"), cells.indexOf("AB0012"));
    EXPECT_LT(cells.indexOf("AB0011"), cells.indexOf("3 Logs"));
}

TEST_F(ExportTest, ReadOnlyFolderIsAFailureAndLeavesTheOldFile) {
    folder.write("Chemicals.xls", "an old file");
    auto report = chemicals();
    auto run = std::move(report);
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    {
        const support::OrdinaryUser ordinary;
        EXPECT_THROW(runReport(std::move(run), true, "\\Chemicals.xls"), RuntimeError);
    }
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(folder.read("Chemicals.xls"), "an old file");
}

TEST_F(ExportTest, FailedReportWritesNoFile) {
    const auto broken = [this] {
        sql("UPDATE Log SET log_JarSize = 44;");
        return jarUsage(day(2026, 1, 1), day(2026, 3, 7));
    };
    EXPECT_THROW(runReport(broken(), true, "\\JarUsage.xls"), RuntimeError);
    EXPECT_FALSE(folder.has("JarUsage.xls"));
}

TEST_F(ExportTest, TextsThatLookLikeFormulasStayTexts) {
    sql("UPDATE Chemical SET chm_Name = '=1+1', chm_Lot = '+7', chm_NDC = '@x', chm_Supplier = '-2' WHERE "
        "ChemicalID = 1;");
    runReport(chemicals(), true, "\\Chemicals.xls");
    const QString cells = tools::cells(folder.path("Chemicals.xls"));
    for (const char* text : {"'=1+1'", "'+7'", "'@x'", "'-2'"})
        EXPECT_TRUE(cells.contains(QString("text|") + text)) << text;
}
