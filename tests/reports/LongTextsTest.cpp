// Texts far too long for their places, in every record and in all eight reports: nothing is drawn outside its
// control, and the spreadsheet has the whole text.
#include "ReportTest.h"
#include "platform/report/TextMeasure.h"
#include "platform/report/Tools.h"
#include "reports/ReportFlow.h"

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

struct Words {
    const char* name;
    QString text;  ///< 300 characters
};

QString filled(const QString& piece) { return piece.repeated(300 / piece.size() + 1).left(300); }

const Words cases[] = {
    {"OneWord", filled("W")},
    {"Words", filled("very long name ")},
    {"LineEnds", filled("a line and\r\n")},
    {"Cyrillic", filled(u"Гидрокортизон в креме "_s)},
    {"Accents", filled(u"Größe œuvre ação niño così "_s)},
    {"Combined", filled(u"e\u0301 "_s)},
    {"Beyond16Bits", filled(u"\U0001F600 "_s)},
    {"TabsAndControls", filled("tab\tand\x07 bell ")},
};

class LongTextsTest : public ReportTest, public ::testing::WithParamInterface<Words> {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
        QString text = GetParam().text;
        text.replace('\'', "''");
        const auto fill = [&](const char* table, const QStringList& columns) {
            QStringList parts;
            for (const QString& column : columns)
                parts << column + " = '" + text + "'";
            sql(u"UPDATE %1 SET %2;"_s.arg(table, parts.join(", ")));
        };
        fill("Chemical",
             {"chm_Name", "chm_Units", "chm_Lot", "chm_NDC", "chm_Notes", "chm_Form", "chm_Supplier"});
        fill("Formula", {"frm_Name", "frm_Desc", "frm_Strength", "frm_Units", "frm_Instructions"});
        fill("Log", {"log_Name", "log_Strength", "log_Desc", "log_Units", "log_NDC", "log_Lot",
                     "log_Initials", "log_Verified"});
        fill("LogChem", {"lch_Name", "lch_Units", "lch_Lot", "lch_Supplier", "lch_Form"});
        fill("Patient", {"pat_FName", "pat_LName", "pat_Address1", "pat_Address2", "pat_City", "pat_State",
                         "pat_Zip", "pat_Country", "pat_Phone", "pat_Fax"});
        fill("RXs", {"rxs_Consult", "rxs_Doctor"});
    }

    /// A value without room takes its label off the paper.
    static void expectLeftOut(std::unique_ptr<Report> report) {
        const RunPtr run = finished(std::move(report));
        EXPECT_EQ(run->document().leftOutLabels, 2);
        for (const Page& page : run->document().pages)
            for (const PageItem& item : page.items)
                EXPECT_EQ(item.runCount, 0u) << str(item.text);
    }
    static void expectInside(std::unique_ptr<Report> report, const char* name) {
        const RunPtr run = finished(std::move(report));
        const auto measure = fontMeasure();
        int shown = 0;
        for (const Page& page : run->document().pages) {
            for (const PageItem& item : page.items) {
                const TextStyle& style = run->document().styles[item.drawn];
                const FontExtent font = measure->extent(style);
                // A single line may hang over a control that is lower than its font, and no other.
                const int over = std::max(font.line() / 5, (font.line() - item.height + 1) / 2);
                for (std::uint32_t r = item.firstRun; r < item.firstRun + item.runCount; ++r, ++shown) {
                    const TextRun& text = page.runs[r];
                    EXPECT_GE(text.x, item.x) << name;
                    EXPECT_LE(text.x + measure->width(style, text.text), item.x + item.width)
                        << name << str(text.text);
                    EXPECT_GE(text.baseline - font.ascent, item.y - over) << name;
                    EXPECT_LE(text.baseline + font.descent, item.y + item.height + over) << name;
                }
            }
        }
        EXPECT_GT(shown, 0) << name;
        EXPECT_FALSE(cut(*run).isEmpty()) << name << " must warn";
    }
};

}  // namespace

TEST_P(LongTextsTest, NothingLeavesItsControl) {
    const QDateTime begin = day(2026, 1, 1), end = day(2026, 3, 7);
    expectInside(worksheet(1, 25), "worksheet");
    expectInside(formulaLog(2), "formula log");
    expectLeftOut(batchLabels(2, "2", 1));
    expectLeftOut(prescriptionLabels(31, "2", 1));
    sql("UPDATE Log SET log_Strength = '2 %', log_Lot = 'AB0012', log_NDC = '777-01';");
    expectInside(batchLabels(2, "2", 1), "batch labels");
    expectInside(prescriptionLabels(31, "2", 1), "prescription labels");
    expectInside(logReport(1, begin, end), "log report");
    expectInside(chemicals(), "chemicals");
    expectInside(patient(1, begin, end), "patient");
}

TEST_P(LongTextsTest, TheSpreadsheetHasTheWholeText) {
    runReport(chemicals(), true, "\\Chemicals.xls");
    const char* const script =
        "import sys, xlrd\ns = xlrd.open_workbook(sys.argv[1]).sheet_by_index(0)\n"
        "print(sorted({s.cell(r, 0).value for r in range(s.nrows)}, key=len)[-1], end='')";
    const QString longest = tools::output("/usr/bin/python3", {"-c", script, folder.path("Chemicals.xls")});
    // Line ends are the spreadsheet's own and none is last; tabs are gaps.
    QString expected =
        QString(GetParam().text).replace("\r\n", "\n").replace('\r', '\n').replace('\t', "   ");
    while (expected.endsWith('\n'))
        expected.chop(1);
    EXPECT_EQ(str(longest), str(expected));
}

INSTANTIATE_TEST_SUITE_P(Texts, LongTextsTest, ::testing::ValuesIn(cases),
                         [](const auto& row) { return std::string(row.param.name); });
