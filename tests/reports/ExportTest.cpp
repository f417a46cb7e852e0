// The eight spreadsheets: names and places, overwriting, two independent readers, folders that can't be written.
#include "Hindrances.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/report/SheetPlan.h"
#include "platform/report/SpreadsheetExport.h"
#include "platform/report/Tools.h"
#include "reports/ReportFlow.h"
#include "shared/basMain.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class ExportTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
    }
    enum class Cells { AsTheyAre, AsShown };
    /// Each spreadsheet as the office program has it: comma separated values beside it.
    void openInOffice(const QStringList& sheets, Cells cells) const {
        const QString shown = cells == Cells::AsShown ? "true" : "false";
        QStringList arguments{
            "--headless",   "-env:UserInstallation=file://" + folder.path("profile"),
            "--convert-to", "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true," + shown,
            "--outdir",     folder.path()};
        for (const QString& sheet : sheets)
            arguments << folder.path(sheet);
        tools::output("soffice", arguments);
    }
    std::unique_ptr<Report> reportOf(const QString& stem) {
        const QDateTime begin = day(2026, 1, 1), end = day(2026, 3, 7);
        if (stem == "Worksheet")
            return worksheet(1, 25);
        if (stem == "FormulaLog")
            return formulaLog(2);
        if (stem == "LogReport")
            return logReport(1, begin, end);
        if (stem == "JarUsage")
            return jarUsage(begin, end);
        return stem == "Chemicals" ? chemicals() : patient(1, begin, end);
    }
    /// Column of a control on the spreadsheet.
    static int columnOf(const Report& report, const QString& name) {
        const SheetPlan plan(report.definition());
        const auto& sections = report.definition().sections;
        for (int s = 0; s < static_cast<int>(sections.size()); ++s)
            for (int c = 0; c < static_cast<int>(sections[s].controls.size()); ++c)
                if (sections[s].controls[c].name == name)
                    return plan.place(s, c).column;
        ADD_FAILURE() << "no control " << str(name);
        return -1;
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

/// Numbers, amounts and dates that each report's rows above have.
struct ShownCase {
    const char* stem;
    int values;
};

const QStringList names{"Chemicals.xls", "FormulaLog.xls", "JarUsage.xls", "LogAvery8160.xls",
                        "LogReport.xls", "RXLabel.xls",    "RXReport.xls", "Worksheet.xls"};

/// Shows where a number or amount reads differently in the office program and on the pages, where a date has
/// another format than the reader's own, and where a column is too narrow, so that only "###" shows.
const char* const shownAlike = R"(
import csv, re, sys, xlrd
folder, stem = sys.argv[1:3]
paper = set(open(folder + '/texts.txt', encoding='utf-8').read().split(chr(1)))
book = xlrd.open_workbook(folder + '/' + stem + '.xls', formatting_info=True)
sheet = book.sheet_by_index(0)
rows = list(csv.reader(open(folder + '/' + stem + '.csv', encoding='utf-8', newline='')))
def narrow(r, c):
    font = book.font_list[book.xf_list[sheet.cell_xf_index(r, c)].font_index]
    return sheet.colinfo_map[c].width / 256 < len(rows[r][c]) * font.height / 200
def alike(r, c):
    cell = sheet.cell(r, c)
    if cell.ctype == 2:
        return rows[r][c] in paper
    date = xlrd.xldate_as_tuple(cell.value, 0)
    own = book.xf_list[cell.xf_index].format_key == (22 if any(date[3:]) else 14)
    shown = [int(n) for n in re.findall('[0-9]+', rows[r][c])][:3]
    return own and shown in ([date[1], date[2], date[0]], [date[1], date[2], date[0] % 100])
values = [(r, c) for r in range(sheet.nrows) for c in range(sheet.ncols) if sheet.cell(r, c).ctype in (2, 3)]
print(*[(r, c, rows[r][c]) for r, c in values if not alike(r, c) or narrow(r, c)], 'values', len(values))
)";

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
    QStringList stems;
    for (const QString& name : names)
        stems << name.chopped(4);
    openInOffice(names, Cells::AsTheyAre);
    const QString told =
        tools::output("/usr/bin/python3", QStringList{"-c", comparison, folder.path()} + stems);
    EXPECT_TRUE(told.trimmed().endsWith("differences 0")) << str(told);
}

TEST_F(ExportTest, NumbersAmountsAndDatesReadAsOnPaper) {
    const ShownCase cases[] = {{"Worksheet", 10}, {"FormulaLog", 9}, {"LogReport", 11},
                               {"JarUsage", 3},   {"Chemicals", 9},  {"RXReport", 11}};
    QStringList sheets;
    for (const auto& [stem, values] : cases) {
        sheets << QString(stem) + ".xls";
        runReport(reportOf(stem), true, u"\\%1.xls"_s.arg(stem));
    }
    openInOffice(sheets, Cells::AsShown);
    for (const auto& [stem, values] : cases) {
        const RunPtr run = finished(reportOf(stem));
        QStringList texts;
        for (const Page& page : run->document().pages)
            for (const PageItem& item : page.items)
                texts << item.text;
        folder.write("texts.txt", texts.join(QChar(1)).toUtf8());
        EXPECT_EQ(str(tools::output("/usr/bin/python3", {"-c", shownAlike, folder.path(), stem}).trimmed()),
                  "values " + std::to_string(values))
            << stem;
    }
}

TEST_F(ExportTest, WhatIsWrittenWithoutPagesIsWhatPagesWouldGive) {
    sql("UPDATE Formula SET frm_Instructions = '" + QString(3000, 'x') +
        "' WHERE FormulaID = 1; UPDATE Chemical SET chm_Name = '" + QString(200, 'w') +
        "' WHERE ChemicalID = 1;");
    for (const char* stem : {"Worksheet", "FormulaLog", "LogReport", "JarUsage", "Chemicals", "RXReport"}) {
        runReport(reportOf(stem), true, u"\\%1.xls"_s.arg(stem));
        EXPECT_TRUE(folder.read(u"%1.xls"_s.arg(stem)) == spreadsheet(finished(reportOf(stem))->document()))
            << stem;
    }
}

TEST_F(ExportTest, CellsHoldAllThatThePagesShow) {
    exportAll();
    const QString sheet = tools::cells(folder.path("Worksheet.xls"));
    for (const char* shown :
         {"Formula Worksheet -- Sorvanto", "date|'2026-03-07 00:00:00'|m/d/yy",
          "Formula Name: Cooling Gel 2 % Custom", "Camphor", "3.086", "19.96", "Mix cold.", "Kelmar Systems",
          "Fenwick, ZZ     54321", "123456789", "___/___/_____", "Supplier"})
        EXPECT_TRUE(sheet.contains(shown)) << shown << "\n" << str(sheet);
    EXPECT_TRUE(sheet.contains("\"$\"###,##0.00")) << "amounts keep their currency\n" << str(sheet);
    const QString batch = tools::cells(folder.path("FormulaLog.xls"));
    EXPECT_TRUE(batch.contains("date|'2026-03-01 16:00:00'|m/d/yy h:mm")) << str(batch);
    const QString list = tools::cells(folder.path("Chemicals.xls"));
    EXPECT_TRUE(list.contains("date|'2026-03-07 14:05:09'|m/d/yy h:mm|bold")) << str(list);
    const QString labels = tools::cells(folder.path("RXLabel.xls"));
    EXPECT_EQ(labels.count("'Lot#'"), 8);
    EXPECT_EQ(labels.count("'Mara Quist'"), 3);
    const QString log = tools::cells(folder.path("LogReport.xls"));
    EXPECT_TRUE(log.contains("date|'2026-01-05 09:30:00'")) << str(log);
    EXPECT_TRUE(log.contains("'3 Logs'"));
    EXPECT_TRUE(log.contains("1255.4"));
}

TEST_F(ExportTest, ValuesStandUnderTheirHeadings) {
    const struct {
        const char *stem, *heading, *value;
    } pairs[] = {
        {"Worksheet", "lblchm_Name", "txtchm_Name"},
        {"Worksheet", "lblchm_Form", "txtchm_Form"},
        {"Worksheet", "lblchm_QTY", "txtchm_QTY"},
        {"Worksheet", "lblchm_Unit", "txtchm_Unit"},
        {"Worksheet", "lblchm_Cost", "txtchm_Cost"},
        {"Worksheet", "lblchm_Notes", "txtchm_Notes"},
        {"FormulaLog", "lblchm_Unit", "txtchm_Units"},
        {"FormulaLog", "lblchm_Lot", "txtchm_Lot"},
        {"FormulaLog", "lblchm_Cost", "txtchm_Cost"},
        {"FormulaLog", "lblchm_Supplier", "txtchm_Supplier"},
        {"LogReport", "lbllog_Date", "txtlog_Date"},
        {"LogReport", "lbllog_Initials", "txtlog_Initials"},
        {"LogReport", "lbllog_Cost", "txtTotalCost"},
        {"LogReport", "lbllog_Quantity", "txtTotalQTY"},
        {"JarUsage", "lblJarSize", "txtJarSize"},
        {"JarUsage", "lblUsage", "txtUsed"},
        {"Chemicals", "lblchm_Cost", "txtChemical_chm_Cost"},
        {"Chemicals", "lblchm_Supplier", "txtChemical_chm_Supplier"},
        {"RXReport", "lblrxs_Price", "txtrxs_Price"},
        {"RXReport", "lblrxs_Price", "txtTotalPrice"},
        {"RXReport", "lblRXsID", "txtRXsID"},
        {"RXReport", "lblfrm_Strength", "txtfrm_Strength"},
    };
    for (const auto& [stem, heading, value] : pairs) {
        const auto report = reportOf(stem);
        EXPECT_EQ(columnOf(*report, heading), columnOf(*report, value)) << stem << " " << heading;
    }
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
    QFile::setPermissions(folder.path(),
                          QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
    {
        const support::OrdinaryUser ordinary;
        EXPECT_THROW(runReport(std::move(run), true, "\\Chemicals.xls"), RuntimeError);
    }
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(folder.read("Chemicals.xls"), "an old file");
}

TEST_F(ExportTest, FullDiskIsAFailureAndLeavesTheOldFileAlone) {
    folder.write("Chemicals.xls", "an old file");
    const QStringList before = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    auto report = chemicals();
    {
        const support::FullDisk full(1024);
        EXPECT_THROW(runReport(std::move(report), true, "\\Chemicals.xls"), RuntimeError);
    }
    EXPECT_EQ(folder.read("Chemicals.xls"), "an old file");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), before) << "no half file beside it";
}

TEST_F(ExportTest, TextTooLongForACellIsSaidAndLeavesTheOldFile) {
    folder.write("Worksheet.xls", "an old file");
    sql("UPDATE Formula SET frm_Instructions = '" + QString(32768, 'x') + "' WHERE FormulaID = 1;");
    try {
        runReport(worksheet(1, 25), true, "\\Worksheet.xls");
        ADD_FAILURE() << "no cell holds that";
    } catch (const RuntimeError& failure) {
        EXPECT_TRUE(failure.description().contains("32,767 characters")) << str(failure.description());
    }
    EXPECT_EQ(folder.read("Worksheet.xls"), "an old file");
    sql("UPDATE Formula SET frm_Instructions = '" + QString(32767, 'x') + "' WHERE FormulaID = 1;");
    runReport(worksheet(1, 25), true, "\\Worksheet.xls");
    EXPECT_TRUE(tools::cells(folder.path("Worksheet.xls")).contains(QString(32'767, 'x')));
}

TEST_F(ExportTest, MoreRowsThanASpreadsheetHasAreSaidAndLeaveTheOldFile) {
    folder.write("Chemicals.xls", "an old file");
    place().runInBulk(
        databasePath(),
        "INSERT INTO Chemical (ChemicalID, chm_Name) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
        "SELECT i + 1 FROM n WHERE i < 66000) SELECT 100 + i, 'C' || i FROM n;");
    try {
        runReport(chemicals(), true, "\\Chemicals.xls");
        ADD_FAILURE() << "no sheet holds that";
    } catch (const RuntimeError& failure) {
        EXPECT_TRUE(failure.description().contains("65,536 rows")) << str(failure.description());
    }
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
        EXPECT_TRUE(cells.contains(u"text|"_s + text)) << text;
}
