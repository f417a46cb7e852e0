// The formula screen's fields: what is shown, what a save takes and refuses.
#include "FormulaScreenTest.h"
#include "support/Waiting.h"

#include "config/clsOptions.h"
#include "platform/widgets/Hint.h"

using namespace Qt::StringLiterals;

using namespace sorvanto;
using platform::ChoiceBox;
using platform::MemoBox;
using platform::NumberBox;
using platform::TextBox;

namespace {

class FormulaFieldsTest : public FormulaScreenTest {};

TEST_F(FormulaFieldsTest, ShowsTheRecord) {
    loadAt("Cooling Gel");
    const std::pair<const char*, const char*> fields[] = {
        {"txtfrm_Name", "Cooling Gel"}, {"txtfrm_Desc", "For the skin"}, {"txtfrm_Quantity", "10"},
        {"txtfrm_Units", "GMS"},        {"txtfrm_Strength", "2 %"},      {"txtFrm_NDC", "777-01"},
        {"txtfrm_Cost", "$ 7.98"},      {"txtfrm_AWP", "$ 16.59"},       {"txtfrm_Instructions", "Mix cold."},
        {"cbofrm_Type", "Custom"},      {"cbofrm_JarSize", "30 ml"},
    };
    for (const auto& [name, value] : fields)
        EXPECT_EQ(str(shown(name)), value) << name;
    EXPECT_EQ(str(formula().formName()), "Cooling Gel");
    EXPECT_EQ(column("chm_Name"), QStringList({"Camphor", "Menthol", "Borax"}));
    EXPECT_EQ(column("fch_Qty"), QStringList({"1.2345", "5", "0.5"}));
    EXPECT_EQ(steps().count(), 2);
}

TEST_F(FormulaFieldsTest, TypeAndJarListsAreTheMixersTables) {
    loadAt("Cooling Gel");
    auto& type = box<ChoiceBox>("cbofrm_Type");
    ASSERT_EQ(type.count(), basMain::MixTypes.size());
    for (int i = 0; i < type.count(); ++i)
        EXPECT_EQ(str(type.itemText(i)), str(basMain::MixTypes[i]));
    auto& jar = box<ChoiceBox>("cbofrm_JarSize");
    ASSERT_EQ(jar.count(), basMain::JarSizes.size() - 1);
    for (int i = 0; i < jar.count(); ++i) {
        EXPECT_EQ(str(jar.itemText(i)), str(basMain::JarSizes[i + 1]));
        EXPECT_EQ(jar.itemData(i).toInt(), i + 1);
    }
    EXPECT_EQ(type.listIndex(), 9);
    EXPECT_EQ(jar.listIndex(), 2);
}

TEST_F(FormulaFieldsTest, TabsHoldTheirFrames) {
    load();
    EXPECT_EQ(tabs().count(), 3);
    EXPECT_EQ(tabs().currentIndex(), 0);
    const std::tuple<int, const char*, const char*> places[] = {
        {0, "General", "fraFormula/cbofrm_Type"},
        {0, "General", "fraFormula/cbofrm_JarSize"},
        {1, "Ingredients", "fraIngredients/grdIngredients"},
        {1, "Ingredients", "fraIngredients/cmdAdd"},
        {1, "Ingredients", "fraIngredients/cmdRemove"},
        {2, "Mix Options", "fraCustom/lstCustom"},
        {2, "Mix Options", "fraReaction/updReactRPM"}};
    for (const auto& [tab, title, path] : places) {
        EXPECT_EQ(str(tabs().tabText(tab)), title);
        EXPECT_NO_THROW(support::child<QWidget>(tabs().widget(tab), path));
    }
    EXPECT_EQ(str(box<QPushButton>("cmdAdd").toolTip()), "Add Ingredient");
    EXPECT_EQ(str(box<QPushButton>("cmdRemove").toolTip()), "Remove Ingredient");
}

TEST_F(FormulaFieldsTest, TheGridsColumnsInOrder) {
    load();
    QStringList columns;
    for (const platform::GridColumn& column : grid().columns())
        columns << column.field + "=" + column.caption;
    EXPECT_EQ(str(columns.join(' ')),
              "FormChemID=FormChemID chm_Name=Name chm_Units=Units fch_Qty=Qty fch_QS=QS "
              "fch_Active=Active");
}

TEST_F(FormulaFieldsTest, MoneyBearsTheCurrencyOfTheOptionsAtEachRefresh) {
    loadAt("Cooling Gel");
    basMain::Options->DefCurrency(QString::fromUtf8("€"));
    click("cmdFormulas");
    EXPECT_EQ(str(shown("txtfrm_AWP")), "€ 16.59");
    EXPECT_EQ(str(shown("txtfrm_Cost")), "€ 7.98");
}

TEST_F(FormulaFieldsTest, ASaveStoresTheFields) {
    edit("Plain Base");
    box<TextBox>("txtfrm_Name").setText("Plain Base O'Neil");
    box<TextBox>("txtfrm_Desc").setText("d'");
    box<TextBox>("txtfrm_Strength").setText("5 %");
    box<TextBox>("txtfrm_Units").setText("GMS");
    box<TextBox>("txtFrm_NDC").setText("n'1");
    box<MemoBox>("txtfrm_Instructions").setText("One\nTwo'");
    box<NumberBox>("txtfrm_Quantity").setText("75");
    box<ChoiceBox>("cbofrm_JarSize").setListIndex(7);
    box<ChoiceBox>("cbofrm_Type").setListIndex(5);
    click("cmdSave");
    EXPECT_EQ(
        str(sqlText(
            "SELECT frm_Name, frm_Desc, frm_Strength, frm_Units, frm_NDC, frm_Instructions, frm_Quantity,"
            " frm_JarSize, frm_FormType, frm_AWP, frm_Mix, frm_GUID FROM Formula WHERE FormulaID = 2")),
        "Plain Base O'Neil|d'|5 %|GMS|n'1|One\nTwo'|75|8|5|0|<CustomMix PreGrind=\"0\" FreeSpin=\"1\"/>|F2");
    EXPECT_TRUE(formula().formLocked());
}

TEST_F(FormulaFieldsTest, TheCostIsNeverTakenFromItsBoxAndTheAWPIsComputedAnew) {
    edit("Cooling Gel");
    box<NumberBox>("txtfrm_Cost").setText("999");
    box<NumberBox>("txtfrm_AWP").setText("888");
    click("cmdSave");
    EXPECT_EQ(str(shown("txtfrm_Cost")), "$ 7.98");
    EXPECT_EQ(str(stored("frm_AWP", 1)), "16.5928");
}

TEST_F(FormulaFieldsTest, LongTextsAndApostrophesSurvive) {
    edit("Plain Base");
    const QString longText = u"It's "_s.repeated(2000) + "end";
    box<MemoBox>("txtfrm_Instructions").setText(longText);
    click("cmdSave");
    EXPECT_EQ(stored("frm_Instructions", 2), longText);
    click("cmdFormulas");
    EXPECT_EQ(shown("txtfrm_Instructions"), longText);
}

TEST_F(FormulaFieldsTest, ANameIsRequired) {
    edit("Plain Base");
    box<TextBox>("txtfrm_Name").clear();
    box<TextBox>("txtfrm_Desc").setText("kept in the box");
    asker.expectMsgBox("Formula Name is required");
    click("cmdSave");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_TRUE(formula().isEnabled());
    EXPECT_EQ(str(shown("txtfrm_Desc")), "kept in the box");
    EXPECT_EQ(str(stored("frm_Name", 2)), "Plain Base");
    EXPECT_TRUE(on("cmdSave"));
}

TEST_F(FormulaFieldsTest, ANameOfBlanksIsTakenAndStoredTrimmed) {
    edit("Plain Base");
    box<TextBox>("txtfrm_Name").setText("   ");
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_Name", 2)), "");
    EXPECT_TRUE(formula().formLocked());
}

TEST_F(FormulaFieldsTest, AQuantityAboveZeroIsRequired) {
    edit("Plain Base");
    for (const char* quantity : {"0", "", "-5"}) {
        auto& field = box<NumberBox>("txtfrm_Quantity");
        field.setFocus();
        field.selectAll();
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, quantity);
        asker.expectMsgBox("Quantity is required");
        click("cmdSave");
        EXPECT_FALSE(formula().formLocked()) << quantity;
    }
    EXPECT_EQ(str(stored("frm_Quantity", 2)), "50");
}

TEST_F(FormulaFieldsTest, AQuantityThatCanNotBeReadIsRefusedWhereTheUserSeesIt) {
    edit("Plain Base");
    ASSERT_TRUE(support::becomesActive(window.get()));
    auto& field = box<NumberBox>("txtfrm_Quantity");
    for (const char* quantity : {"1001", "1.234,5", "2.5"}) {
        tabs().setCurrentIndex(0);
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, quantity);
        tabs().setCurrentIndex(1);
        click("cmdSave");
        EXPECT_FALSE(formula().formLocked()) << quantity;
        EXPECT_EQ(tabs().currentIndex(), 0);
        EXPECT_TRUE(field.hasFocus());
        EXPECT_FALSE(platform::Hint::textOf(field).isEmpty()) << quantity;
    }
    EXPECT_EQ(str(stored("frm_Quantity", 2)), "50");
}

TEST_F(FormulaFieldsTest, QuantitiesAtTheLimitsAreTaken) {
    edit("Plain Base");
    for (const char* quantity : {"1", "1000"}) {
        auto& field = box<NumberBox>("txtfrm_Quantity");
        field.selectAll();
        QTest::keyClicks(&field, quantity);
        click("cmdSave");
        EXPECT_EQ(str(stored("frm_Quantity", 2)), quantity);
        click("cmdEdit");
    }
}

TEST_F(FormulaFieldsTest, WithoutAJarTheSaveFailsAndNothingIsWritten) {
    edit("Plain Base");
    box<TextBox>("txtfrm_Desc").setText("new");
    box<ChoiceBox>("cbofrm_JarSize").setBoxText("none of these");
    click("cmdSave");
    expectReport("frmFormula:saveForm");
    EXPECT_FALSE(formula().formLocked());
    EXPECT_EQ(str(stored("frm_Desc", 2)), "");
}

TEST_F(FormulaFieldsTest, CancelShowsWhatTheRecordObjectHolds) {
    edit("Plain Base");
    box<TextBox>("txtfrm_Desc").setText("not wanted");
    click("cmdCancel");
    EXPECT_EQ(str(shown("txtfrm_Desc")), "");
    EXPECT_TRUE(formula().formLocked());
    EXPECT_EQ(str(caption()), "Sorvanto Control Panel: Formulas  :  Plain Base");
}

TEST_F(FormulaFieldsTest, ARecordDeletedByAnotherProgramIsGoneAfterTheSave) {
    edit("Plain Base");
    sql("DELETE FROM Formula WHERE FormulaID = 2");
    click("cmdSave");
    expectReports("frmFormula:refreshForm");
    EXPECT_TRUE(formula().formLocked());
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve");
    click("cmdLast");
    EXPECT_EQ(str(shown("txtfrm_Name")), "") << "its key is in the set until that is read anew";
}

TEST_F(FormulaFieldsTest, AFailedUpdateIsReportedOnceUnderTheRecordsTag) {
    edit("Plain Base");
    failStatement("UPDATE Formula");
    click("cmdSave");
    expectReport("clsFormula:saveFormula");
    expectReports("frmFormula:refreshForm");
    EXPECT_EQ(str(stored("frm_Name", 2)), "Plain Base");
}

TEST_F(FormulaFieldsTest, ReadingTheSetResumesAfterAFailure) {
    load();
    failStatement("SELECT FormulaID FROM Formula");
    formula().getData();
    expectReport("frmFormula:getData");
    expectReport("frmFormula:getData");  // the count of a set that never opened
}

TEST_F(FormulaFieldsTest, ASearchResumesAfterAFailure) {
    loadAt("Plain Base");
    search("it's");
    expectReport("clsFormula:openFormula");
    expectReports("frmFormula:refreshForm");
    click("cmdFirst");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Arnica Salve");
}

TEST_F(FormulaFieldsTest, SearchesByNDCAndShowsAListForSeveral) {
    load();
    search("#777-02");
    EXPECT_EQ(str(shown("txtfrm_Name")), "Plain Base");
    search("nothing like it");
    EXPECT_EQ(str(shown("txtfrm_Name")), "");
    asker.expectModal("frmSearchRS", [](QWidget& list) { list.close(); });
    search("%");
}

}  // namespace
