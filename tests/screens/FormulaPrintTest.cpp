// The worksheet of the formula screen: quantity question, preview, export.
#include "FormulaScreenTest.h"
#include "mixing/frmMake.h"

#include <QCheckBox>

using namespace sorvanto;

namespace {

class FormulaPrintTest : public FormulaScreenTest {
protected:
    void expectQuantity(const QString& preset, const QString& typed, const QString& button = "OKButton") {
        asker.expectModal("frmMake", [=](QWidget& question) {
            auto* quantity = support::child<platform::NumberBox>(question, "txtQTY");
            EXPECT_EQ(str(quantity->text()), str(preset));
            EXPECT_TRUE(support::child<QCheckBox>(question, "chkPrint")->isChecked());
            if (!typed.isEmpty())
                QTest::keyClicks(quantity, typed);
            support::child<QPushButton>(question, button)->click();
        });
    }
};

TEST_F(FormulaPrintTest, CancellingTheQuantityPrintsNothingAndShowsTheRecordAgain) {
    edit("Cooling Gel");
    box<platform::TextBox>("txtfrm_Desc").setText("unsaved");
    EXPECT_TRUE(on("mnuWorksheet"));
    expectQuantity("10", "", "CancelButton");
    click("mnuWorksheet");
    EXPECT_FALSE(closePreview());
    EXPECT_EQ(str(shown("txtfrm_Desc")), "For the skin");
    EXPECT_FALSE(formula().formLocked());
}

TEST_F(FormulaPrintTest, OnlyAQuantityAboveNothingIsPrinted) {
    loadAt("Cooling Gel");
    for (const double quantity : {0.0, -5.0}) {
        for (const char* entry : {"mnuWorksheet", "mnuWorksheetx"}) {
            asker.expectModal("frmMake", [&](QWidget& question) {
                dynamic_cast<frmMake&>(question).MakeQty(quantity);
                question.hide();
            });
            click(entry);
            EXPECT_FALSE(closePreview()) << quantity;
            EXPECT_FALSE(folder.has("Worksheet.xls")) << quantity;
        }
    }
}

TEST_F(FormulaPrintTest, PreviewsTheStoredFormulaForTheQuantity) {
    loadAt("Cooling Gel");
    expectQuantity("10", "25");
    click("mnuWorksheet");
    EXPECT_TRUE(closePreview());
    EXPECT_EQ(column("fch_Qty"), QStringList({"1.2345", "5", "0.5"}))
        << "the screen's own object is not scaled";
}

TEST_F(FormulaPrintTest, TheBoxesStateIsNotRead) {
    loadAt("Cooling Gel");
    asker.expectModal("frmMake", [](QWidget& question) {
        support::child<QCheckBox>(question, "chkPrint")->setChecked(false);
        support::child<QPushButton>(question, "OKButton")->click();
    });
    click("mnuWorksheet");
    EXPECT_TRUE(closePreview());
}

TEST_F(FormulaPrintTest, ExportsWithoutShowing) {
    loadAt("Cooling Gel");
    expectQuantity("10", "20");
    click("mnuWorksheetx");
    EXPECT_TRUE(folder.has("Worksheet.xls"));
    EXPECT_FALSE(closePreview());
    EXPECT_TRUE(folder.read("Worksheet.xls").startsWith("\xD0\xCF\x11\xE0"));
}

TEST_F(FormulaPrintTest, WhileEditingTheStoredFormulaIsPrintedAndTheTypedTextsGo) {
    edit("Cooling Gel");
    box<platform::TextBox>("txtfrm_Name").setText("Typed Name");
    box<platform::MemoBox>("txtfrm_Instructions").setText("Typed notes");
    box<platform::NumberBox>("txtfrm_Quantity").setText("77");
    ASSERT_TRUE(on("mnuWorksheetx"));
    expectQuantity("10", "");
    click("mnuWorksheetx");
    const QByteArray sheet = folder.read("Worksheet.xls");
    EXPECT_TRUE(sheet.contains("Cooling Gel"));
    EXPECT_TRUE(sheet.contains("Mix cold."));
    EXPECT_FALSE(sheet.contains("Typed"));
    EXPECT_EQ(str(shown("txtfrm_Name")), "Cooling Gel");
    EXPECT_EQ(str(shown("txtfrm_Instructions")), "Mix cold.");
    EXPECT_EQ(str(shown("txtfrm_Quantity")), "10");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_EQ(str(stored("frm_Name", 1)), "Cooling Gel");
}

TEST_F(FormulaPrintTest, ABaseBatchOfNothingIsReported) {
    sql("UPDATE Formula SET frm_Quantity = 0 WHERE FormulaID = 2");
    loadAt("Plain Base");
    expectQuantity("0", "20");
    click("mnuWorksheet");
    expectReport("frmFormula:printFormula");
    EXPECT_FALSE(closePreview());
}

}  // namespace
