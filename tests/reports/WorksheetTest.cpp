// The worksheet: texts, quantities, money in the system's manner, several pages, hostile formulas.
#include "Golden.h"
#include "ReportTest.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Tools.h"
#include "reports/ReportFlow.h"
#include "reports/rptFormula.h"
#include "shared/basMain.h"

#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

using namespace platform;
using namespace sorvanto;

namespace {

class WorksheetTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        seedPharmacy();
        speak("English");
    }
    /// Lines 101 and up for formula 2.
    void addLines(int count) const {
        QString lines = "BEGIN;";
        for (int i = 0; i < count; ++i)
            lines += u"INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (2, %1, %2.0);"_s
                         .arg(1 + i % 4)
                         .arg(i + 1);
        sql(lines + "COMMIT;");
    }
};

}  // namespace

TEST_F(WorksheetTest, PageWithEveryTextAtItsPlace) {
    const RunPtr run = finished(worksheet(1, 25));
    kept(*run, "small-worksheet");
    support::expectGolden("reports/worksheet.txt", dumped(run->document()));
    EXPECT_TRUE(cut(*run).isEmpty()) << str(cut(*run).join('\n'));
}

TEST_F(WorksheetTest, PdfMeasuresAsTold) {
    const RunPtr run = finished(worksheet(1, 25));
    const auto words = tools::words(pdf(*run, "worksheet"));
    const auto left = [&](const char* word) { return tools::wordOf(words, word).left; };
    const auto right = [&](const char* word) { return tools::wordOf(words, word).right; };
    constexpr double near = 0.15;
    EXPECT_NEAR(left("03-07-26"), 499.5, near);
    EXPECT_NEAR(left("Date"), 36, near);
    EXPECT_NEAR(left("___/___/_____"), 135, near);
    EXPECT_NEAR(left("Verified"), 324, near);
    EXPECT_NEAR(right("25.00"), 234, near);
    EXPECT_NEAR(left("GMS"), 234 + 3, near) << "a gap behind the number";
    EXPECT_NEAR(left("AWP"), 414, near);
    EXPECT_NEAR(left("Form"), 166.5, near);
    EXPECT_NEAR(left("Units"), 238.5, near);
    EXPECT_NEAR(left("Supplier"), 324, near);
    EXPECT_NEAR(left("Camphor"), 27, near);
    EXPECT_NEAR(right("3.086"), 234, near);
    EXPECT_NEAR(left("$6.17"), 378, near);
    EXPECT_NEAR(left("Instructions"), 18, near);
    EXPECT_NEAR(left("Appropriate"), 36, near);
    EXPECT_NEAR(left("Kelmar"), 261, near);
    EXPECT_NEAR(left("123456789"), 324, near);
    const double pitch = tools::wordOf(words, "Menthol").top - tools::wordOf(words, "Camphor").top;
    EXPECT_NEAR(pitch, 13.5, near);
    EXPECT_NEAR(tools::wordOf(words, "Camphor").top, 144 + 1, 2.5);
}

TEST_F(WorksheetTest, CaptionsAreTranslatedBeforeAnythingPrints) {
    const auto report = worksheet(1, 10);
    for (const auto& [name, caption] : {std::pair{"lblchm_Cost", "Cost"},
                                        {"lblchm_Name", "Chemical"},
                                        {"lblchm_Notes", "Notes"},
                                        {"lblExpDate", "Exp. Date"},
                                        {"txtTitle", "Formula Worksheet -- Sorvanto"}})
        EXPECT_EQ(str(report->control(name).text), caption);
    EXPECT_EQ(str(report->control("txtDateMade").text), "___/___/_____");
    const QString store = QString::fromUtf8(folder.read("EnglishTranslation.xml"));
    EXPECT_FALSE(store.contains("___/"));
    EXPECT_FALSE(store.contains("Est Cost"));
}

TEST_F(WorksheetTest, NameLineHasOneBlankAfterTheKeyAndTrimmedParts) {
    EXPECT_EQ(str(text(*finished(worksheet(1, 10)), "txtFormulaName")),
              "Formula Name: Cooling Gel 2 % Custom");
    EXPECT_EQ(str(text(*finished(worksheet(2, 10)), "txtFormulaName")), "Formula Name: Plain Base  Gel");
}

TEST_F(WorksheetTest, ScaledOnceAndMoneyOfEachLine) {
    const RunPtr run = finished(worksheet(1, 25));
    EXPECT_EQ(str(text(*run, "txtfrm_Qty")), "25.00");
    EXPECT_EQ(str(text(*run, "txtfrm_Units")), "GMS");
    EXPECT_EQ(str(text(*run, "txtfrm_Cost")), "$19.96");
    EXPECT_EQ(str(texts(*run, "txtchm_Name").join('|')), "Camphor|Menthol|Borax");
    EXPECT_EQ(str(texts(*run, "txtchm_QTY").join('|')), "3.086|12.500|1.250");
    EXPECT_EQ(str(texts(*run, "txtchm_Cost").join('|')), "$6.17|$13.75|$0.04") << "with a leading digit";
    EXPECT_EQ(str(texts(*run, "txtchm_Notes").join('|')), "||keep dry");
    EXPECT_FALSE(dumped(run->document()).contains("Harbor")) << "the supplier is written by hand";
}

TEST_F(WorksheetTest, MoneyFollowsTheSystemWhateverTheOptionsSay) {
    setOption("DefCurrency", u"€"_s);
    const RunPtr sheet = finished(worksheet(1, 25));
    EXPECT_EQ(str(text(*sheet, "txtfrm_Cost")), "$19.96");
    EXPECT_EQ(str(text(*sheet, "txtchm_Cost")), "$6.17");
    const RunPtr log = finished(formulaLog(2));
    EXPECT_EQ(str(text(*log, "txtfrm_Cost")), str(u"€1,225.20"_s));
    EXPECT_EQ(str(texts(*log, "txtchm_Cost").join('|')), str(u"€6.17|€1,213.75"_s));
}

TEST_F(WorksheetTest, MoneyInTheMannerOfAnotherSystem) {
    setSystemLocale(QLocale(QLocale::German, QLocale::Germany));
    auto report = worksheet(1, 25);
    const RunPtr run = finished(std::move(report));
    runReport(worksheet(1, 25), true, "\\Worksheet.xls");
    setSystemLocale(std::nullopt);
    EXPECT_EQ(str(text(*run, "txtfrm_Cost").replace(QChar(0xA0), ' ')), str(u"19,96 €"_s));
    EXPECT_EQ(str(text(*run, "txtfrm_Qty")), "25,00");
    EXPECT_TRUE(tools::cells(folder.path("Worksheet.xls")).contains(u"number|19.96|###,##0.00\""_s))
        << "the amount is a number in the spreadsheet";
}

TEST_F(WorksheetTest, LinesHaveTwoDecimalsWhereTheSystemHasOthers) {
    const auto digits = [](QString text) { return text.remove(QRegularExpression("[^0-9.,]")); };
    const struct {
        QLocale system;
        const char *head, *line, *headPicture, *linePicture;
    } systems[] = {
        {QLocale(QLocale::Japanese, QLocale::Japan), "20", "6.17", "###,##0", "###,##0.00"},
        {QLocale(QLocale::French, QLocale::Tunisia), "19,960", "6,17", "###,##0.000", "###,##0.00"},
        {QLocale(QLocale::German, QLocale::Germany), "19,96", "6,17", "###,##0.00", "###,##0.00"},
    };
    for (const auto& [system, head, line, headPicture, linePicture] : systems) {
        setSystemLocale(system);
        const RunPtr run = finished(worksheet(1, 25));
        setSystemLocale(std::nullopt);
        EXPECT_EQ(str(digits(text(*run, "txtfrm_Cost"))), head) << str(system.name());
        EXPECT_EQ(str(digits(text(*run, "txtchm_Cost"))), line) << str(system.name());
        EXPECT_TRUE(run->report().control("txtfrm_Cost").format.contains(headPicture));
        EXPECT_TRUE(run->report().control("txtchm_Cost").format.contains(linePicture));
    }
}

TEST_F(WorksheetTest, MoneyInDigitsOfAnotherScriptIsANumberInTheSpreadsheet) {
    setSystemLocale(QLocale(QLocale::Arabic, QLocale::Egypt));
    runReport(worksheet(1, 25), true, "\\Worksheet.xls");
    setSystemLocale(std::nullopt);
    const QString cells = tools::cells(folder.path("Worksheet.xls"));
    EXPECT_TRUE(cells.contains("number|19.96|")) << str(cells);
    EXPECT_TRUE(cells.contains("###,##0.00")) << str(cells);
}

TEST_F(WorksheetTest, ZeroAfterACancelledQuantity) {
    const RunPtr run = finished(worksheet(1, 0));
    EXPECT_EQ(str(text(*run, "txtfrm_Qty")), "0.00");
    EXPECT_EQ(str(text(*run, "txtchm_QTY")), "0.000");
    EXPECT_EQ(str(text(*run, "txtfrm_Cost")), "$0.00");
}

TEST_F(WorksheetTest, WithoutLinesThereAreHeadsAndFeet) {
    const auto formula = scaled(2, 50);
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    EXPECT_TRUE(formula->Chemical->bof()) << "not moved";
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(run->document().pages.size(), 1u);
    EXPECT_TRUE(texts(*run, "txtchm_Name").isEmpty());
    EXPECT_EQ(texts(*run, "lblchm_Name").size(), 1);
    EXPECT_EQ(texts(*run, "lblfrm_Desc").size(), 1);
    EXPECT_EQ(texts(*run, "txtStore").size(), 1);
}

TEST_F(WorksheetTest, TwoHundredLinesKeepTitleDateAndStoreOnEveryPage) {
    addLines(200);
    auto report = worksheet(2, 50);
    auto run = std::make_unique<ReportRun>(std::move(report));
    ASSERT_TRUE(run->makePage());
    clock.advance(86400);  // the date of the first page stays
    run->makeAll();
    const auto pages = static_cast<qsizetype>(run->document().pages.size());
    EXPECT_GT(pages, 4);
    EXPECT_EQ(texts(*run, "txtchm_Name").size(), 200);
    EXPECT_EQ(texts(*run, "txtStore").count("Kelmar Systems"), pages);
    EXPECT_EQ(texts(*run, "txtDate").count("03-07-26"), pages);
    EXPECT_EQ(texts(*run, "txtTitle").count("Formula Worksheet -- Sorvanto"), pages);
    EXPECT_EQ(texts(*run, "txtCity").count("Fenwick, ZZ     54321"), pages);
    EXPECT_EQ(texts(*run, "lblchm_Name").size(), 1) << "the group header stands once";
    const QStringList quantities = texts(*run, "txtchm_QTY");
    for (int i = 0; i < 200; ++i)
        ASSERT_EQ(str(quantities[i]), str(u"%1.000"_s.arg(i + 1)));
}

TEST_F(WorksheetTest, LinesMovedBetweenTwoPagesAreFoundAgain) {
    addLines(60);
    const auto formula = scaled(2, 50);
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    ReportRun run(std::move(report));
    ASSERT_TRUE(run.makePage());
    formula->Chemical->moveLast();
    run.makeAll();
    const QStringList quantities = texts(run, "txtchm_QTY");
    ASSERT_EQ(quantities.size(), 60);
    EXPECT_EQ(str(quantities.last()), "60.000");
    EXPECT_EQ(QSet<QString>(quantities.begin(), quantities.end()).size(), 60);
}

TEST_F(WorksheetTest, LongAndStrangeTextsStayInTheirControls) {
    const QString name = u"Very long name "_s.repeated(7).left(100);
    sql("UPDATE Formula SET frm_Name = '" + name + "', frm_Instructions = 'one\r\ntwo <b>&amp;</b> " +
        QString(300, 'w') +
        "', frm_Desc = 'Лекарство Größe œuvre żółć Składniki' WHERE FormulaID = 1; "
        "UPDATE Chemical SET chm_Name = '" +
        QString(100, 'W') + "', chm_Notes = '" + QString(300, 'N') + "' WHERE ChemicalID = 3;");
    const RunPtr run = finished(worksheet(1, 25));
    const QString joined = cut(*run).join('\n');
    EXPECT_TRUE(joined.contains("txtchm_Name: WWW"));
    EXPECT_TRUE(joined.contains("txtchm_Notes: NNN"));
    EXPECT_TRUE(joined.contains("txtFormulaName"));
    EXPECT_FALSE(joined.contains("txtfrm_Desc"));
    for (const tools::Word& word : tools::words(pdf(*run, "long"))) {
        const double edge = word.text.startsWith("WWW") ? 162.1 : word.text.startsWith("NNN") ? 585.1 : 594.1;
        EXPECT_LE(word.right, edge) << str(word.text);
    }
}

TEST_F(WorksheetTest, BaseQuantityOfZeroEndsTheReportOnce) {
    const auto formula = scaled(1, 25);
    formula->frm_Quantity = 0;
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    ReportRun run(std::move(report));
    try {
        run.makeAll();
        ADD_FAILURE() << "the first ingredient must fail";
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), platform::error::divisionByZero);
    }
    EXPECT_TRUE(run.isOver());
    EXPECT_FALSE(run.makePage()) << "it is told once";
}

TEST_F(WorksheetTest, FailureInThePreviewGoesTheOneWay) {
    const auto formula = scaled(1, 25);
    formula->frm_Quantity = 0;
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    runReport(std::move(report), false, QString());
    EXPECT_EQ(reporter->calls.size(), 1u);
    expectReport("ReportFlow:preview");
}

TEST_F(WorksheetTest, UnknownTypeIsAnErrorOfTheTable) {
    const auto formula = scaled(1, 25);
    formula->frm_FormType = 77;
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    ReportRun run(std::move(report));
    EXPECT_THROW(run.makeAll(), RuntimeError);
}

TEST_F(WorksheetTest, FormulaIsReleasedAtTheEnd) {
    const auto formula = scaled(1, 25);
    auto report = std::make_unique<rptFormula>(context);
    report->setFormula(formula);
    EXPECT_EQ(formula.use_count(), 2);
    const RunPtr run = finished(std::move(report));
    EXPECT_EQ(formula.use_count(), 1);
    EXPECT_TRUE(run->report().isUnloaded());
}
