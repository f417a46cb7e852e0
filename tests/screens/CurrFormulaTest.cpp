// The current formula screen: what it shows, searches, prints; and the make that starts elsewhere.
#include "FormulaScreenTest.h"

#include "mixer/ctlSorvanto.h"

#include <QCheckBox>
#include <QDir>

using namespace sorvanto;
using platform::NumberBox;

namespace {

class CurrFormulaTest : public FormulaScreenTest {
protected:
    frmCurrFormula& current() const { return screen<frmCurrFormula>(currentFormula); }
    QString box(const QString& name) const { return text(currentFormula, name); }
    QString cells() const {
        auto& lines = control<platform::RecordGrid>(currentFormula, "grdIngredients");
        QStringList rows;
        for (int row = 0; row < lines.model()->rowCount(); ++row) {
            QStringList row_;
            for (int column = 0; column < lines.model()->columnCount(); ++column)
                row_ << lines.model()->index(row, column).data().toString();
            rows << row_.join('|');
        }
        return rows.join('\n');
    }
    /// Answers the quantity question; an empty text is Cancel.
    void expectQuantity(const QString& preset, const QString& typed, bool worksheet = false) {
        asker.expectModal("frmMake", [=, this](QWidget& question) {
            ++m_asked;
            auto* quantity = support::child<NumberBox>(question, "txtQTY");
            EXPECT_EQ(str(quantity->text()), str(preset));
            auto* print = support::child<QCheckBox>(question, "chkPrint");
            EXPECT_FALSE(print->isChecked());
            print->setChecked(worksheet);
            if (typed.isEmpty()) {
                support::child<QPushButton>(question, "CancelButton")->click();
                return;
            }
            QTest::keyClicks(quantity, typed);
            support::child<QPushButton>(question, "OKButton")->click();
        });
    }
    /// Formula documents that the mixer has been handed: it keeps a file for each.
    QStringList loaded() const {
        QStringList documents;
        const QDir mixes(folder.path("mixes"));
        for (const QString& name : mixes.entryList(QDir::Files))
            documents << QString::fromUtf8(folder.read("mixes/" + name));
        return documents;
    }

    int m_asked = 0;
};

TEST_F(CurrFormulaTest, ShowsNothingBeforeAFormulaIsGiven) {
    load();
    EXPECT_EQ(current().Formula(), nullptr);
    EXPECT_EQ(str(box("txtfrm_Name")), "");
    click("cmdCurrent");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Current Formula");
    EXPECT_EQ(current().closeForm(), 0);
}

TEST_F(CurrFormulaTest, AMakeFromTheFormulaScreenAsksOnceAndEndsHere) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("cmdMake");
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(window->current(), currentFormula);
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Current Formula");
    EXPECT_EQ(str(box("txtfrm_Name")), "Cooling Gel");
    EXPECT_EQ(str(box("txtfrm_Type")), str(basMain::MixTypes[9]));
    EXPECT_EQ(str(box("txtfrm_JarSize")), str(basMain::JarSizes[3]));
    EXPECT_EQ(str(box("txtfrm_Instructions")), "Mix cold.");
    EXPECT_EQ(str(cells()), "Camphor|333-33|3.086|L300|\nMenthol|444-44|12.5|L400|\nBorax|222-22|1.25|L200|");
    EXPECT_EQ(current().Formula()->makeQuantity(), 25);
    EXPECT_FALSE(on("cmdMake"));
    EXPECT_TRUE(on("cmdSearch"));
    ASSERT_EQ(loaded().size(), 1);
    EXPECT_TRUE(loaded().first().contains("<Make>25</Make>")) << str(loaded().first());
    EXPECT_FALSE(closePreview());
    EXPECT_EQ(str(sqlText("SELECT fch_Qty FROM FormChem WHERE FormChemID = 11")), "1.2345");
}

TEST_F(CurrFormulaTest, TheQuestionNamesItsFormulaAlsoOverAnotherOne) {
    sql("UPDATE Formula SET frm_Units = 'GMS' WHERE frm_Name = 'Cooling Gel'");
    QStringList asked;
    const auto expectNamed = [&] {
        asker.expectModal("frmMake", [&](QWidget& question) {
            asked << box("txtfrm_Name") + ": " + support::child<QLabel>(question, "lblBatch")->text();
            support::child<QPushButton>(question, "OKButton")->click();
        });
    };
    loadAt("Cooling Gel");
    expectNamed();
    click("cmdMake");
    click("cmdFormulas");
    click("cmdFirst");
    const QString first = text(formulas, "txtfrm_Name");
    ASSERT_NE(str(first), "Cooling Gel");
    expectNamed();
    click("cmdMake");
    ASSERT_EQ(asked.size(), 2);
    EXPECT_EQ(str(asked[0]), ": Cooling Gel \u00B7 base batch 10\u00A0GMS") << "over an empty screen";
    EXPECT_TRUE(asked[1].startsWith("Cooling Gel: " + first + u" \u00B7 base batch "_s)) << str(asked[1]);
}

TEST_F(CurrFormulaTest, ACancelledQuantityLeavesTheFormulaHereAndTheMixerAlone) {
    loadAt("Cooling Gel");
    expectQuantity("10", "");
    click("cmdMake");
    EXPECT_EQ(str(box("txtfrm_Name")), "Cooling Gel");
    EXPECT_EQ(current().Formula()->makeQuantity(), 0);
    EXPECT_EQ(str(cells()), "Camphor|333-33|1.2345|L300|\nMenthol|444-44|5|L400|\nBorax|222-22|0.5|L200|");
    EXPECT_TRUE(loaded().isEmpty());
}

TEST_F(CurrFormulaTest, AMakeOverwritesUnsavedTextOnTheFormulaScreen) {
    edit("Cooling Gel");
    FormulaScreenTest::box<platform::TextBox>("txtfrm_Desc").setText("unsaved");
    expectQuantity("10", "");
    force("cmdMake");
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For the skin");
}

TEST_F(CurrFormulaTest, ASecondMakeStartsFromTheStoredFormula) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("cmdMake");
    click("cmdFormulas");
    expectQuantity("10", "20");
    click("cmdMake");
    EXPECT_EQ(m_asked, 2);
    EXPECT_EQ(str(cells().section('\n', 0, 0)), "Camphor|333-33|2.469|L300|");
}

TEST_F(CurrFormulaTest, TheMixerHasItsFormulaBeforeTheWorksheet) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25", true);
    click("cmdMake");
    EXPECT_TRUE(closePreview());
    EXPECT_EQ(loaded().size(), 1);
}

TEST_F(CurrFormulaTest, AWorksheetThatFailsLeavesTheFormulaOnTheMixer) {
    loadAt("Cooling Gel");
    asker.expectModal("frmMake", [](QWidget& question) {
        support::child<QCheckBox>(question, "chkPrint")->setChecked(true);
        support::child<QPushButton>(question, "OKButton")->click();
        basMain::MixTypes.clear();  // the sheet names the type
    });
    click("cmdMake");
    expectReport("ReportFlow:preview");
    expectReport("frmCurrFormula:refreshForm");
    EXPECT_FALSE(closePreview());
    EXPECT_EQ(loaded().size(), 1);
}

TEST_F(CurrFormulaTest, ABaseBatchOfNothingStopsTheMake) {
    sql("UPDATE Formula SET frm_Quantity = 0 WHERE FormulaID = 2");
    loadAt("Plain Base");
    expectQuantity("0", "25");
    click("cmdMake");
    expectReport("frmCurrFormula:makeFormula");
    EXPECT_TRUE(loaded().isEmpty());
    EXPECT_EQ(current().Formula()->makeQuantity(), 0);
}

TEST_F(CurrFormulaTest, AFormulaWithoutAProgrammeIsReportedAndNotLoaded) {
    sql("UPDATE Formula SET frm_Mix = '' WHERE FormulaID = 2");
    loadAt("Plain Base");
    expectQuantity("50", "25");
    click("cmdMake");
    expectReport("clsFormula:getFormulaXML");
    EXPECT_TRUE(loaded().isEmpty());
}

TEST_F(CurrFormulaTest, ASearchHereIsTheShortestWayToAMix) {
    load();
    click("cmdCurrent");
    expectQuantity("10", "30");
    search("Cool");
    EXPECT_EQ(m_asked, 1);
    EXPECT_EQ(str(cells().section('\n', 0, 0)), "Camphor|333-33|3.704|L300|");
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Current Formula");
}

TEST_F(CurrFormulaTest, ASearchThatFindsNothingAsksNoQuantity) {
    load();
    click("cmdCurrent");
    search("unheard of");
    EXPECT_EQ(m_asked, 0);
    EXPECT_EQ(current().Formula()->FormulaID, 0);
    EXPECT_EQ(str(box("txtfrm_Name")), "");
    EXPECT_EQ(str(box("txtfrm_Type")), str(basMain::MixTypes[3]));
    EXPECT_EQ(str(box("txtfrm_JarSize")), str(basMain::JarSizes[3]));
    EXPECT_EQ(str(cells()), "");
}

TEST_F(CurrFormulaTest, AMakeWithoutAFormulaIsAFailureAndNothingElse) {
    load();
    click("cmdCurrent");
    force("cmdMake");
    expectReport("frmCurrFormula:makeFormula");
    expectReport("frmCurrFormula:refreshForm");
}

TEST_F(CurrFormulaTest, AFailedSearchBearsTheOtherScreensName) {
    load();
    click("cmdCurrent");
    failStatement("FROM [Formula]");
    search("Cool");
    expectReport("clsFormula:openFormula");
    expectReport("frmCurrFormula:makeFormula");
    expectReport("frmCurrFormula:refreshForm");
}

TEST_F(CurrFormulaTest, AJarCodeOfZeroShowsTheFirstElement) {
    sql("UPDATE Formula SET frm_JarSize = 0 WHERE FormulaID = 2");
    loadAt("Plain Base");
    expectQuantity("50", "");
    click("cmdMake");
    EXPECT_EQ(str(box("txtfrm_JarSize")), str(basMain::JarSizes[0]));
    EXPECT_EQ(str(box("txtfrm_Type")), str(basMain::MixTypes[3]));
}

TEST_F(CurrFormulaTest, SettingTheFormulaRefreshesNothing) {
    loadAt("Cooling Gel");
    current().Formula(clsFormula().openFormula(2, QString()));
    EXPECT_EQ(str(box("txtfrm_Name")), "");
}

TEST_F(CurrFormulaTest, WorksheetWithoutAFormula) {
    load();
    click("cmdCurrent");
    asker.expectMsgBox("No Formula selected!");
    click("mnuWorksheet");
}

TEST_F(CurrFormulaTest, WorksheetOfTheBatchAsLastMadeAsksNoQuantity) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("cmdMake");
    click("mnuWorksheet");
    EXPECT_TRUE(closePreview());
    EXPECT_EQ(m_asked, 1);
    click("mnuWorksheetx");
    EXPECT_FALSE(folder.has("Worksheet.xls")) << "the export entry is on and does nothing";
    EXPECT_FALSE(closePreview());
}

TEST_F(CurrFormulaTest, ThePrintAndExportListsHoldTheWorksheetAlone) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("cmdMake");
    ASSERT_TRUE(on("cmdPrint") && on("cmdExport") && on("mnuWorksheetx"));
    for (const char* entry : {"cmdPrint", "cmdExport", "mnuPrint", "mnuExport", "mnuWorksheetx",
                              "mnuFormulaLog", "mnuFormulaLogx", "mnuLabel", "mnuLabelx", "mnuReport",
                              "mnuReportx", "mnuJarReport", "mnuJarReportx"}) {
        force(entry);
        EXPECT_FALSE(closePreview()) << entry;
    }
    EXPECT_TRUE(QDir(folder.path()).entryList({"*.xls"}, QDir::Files).isEmpty());
    EXPECT_EQ(window->current(), currentFormula);
}

TEST_F(CurrFormulaTest, AFormulaThatCanNotBeReadAnyMoreIsReported) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("cmdMake");
    failStatement("FROM [Formula]");
    click("mnuWorksheet");
    expectReport("clsFormula:openFormula");
    expectReport("frmCurrFormula:printFormula");
    EXPECT_FALSE(closePreview());
}

TEST_F(CurrFormulaTest, EverythingHereIsForReadingOnly) {
    load();
    EXPECT_FALSE(lockStates(currentFormula).contains("open")) << str(lockStates(currentFormula));
    QStringList columns;
    for (const auto& column : control<platform::RecordGrid>(currentFormula, "grdIngredients").columns())
        columns << column.field + "=" + column.caption;
    EXPECT_EQ(str(columns.join(' ')), "chm_Name=Name chm_NDC=NDC fch_Qty=Qty chm_Lot=Lot fch_QS=QS");
}

}  // namespace
