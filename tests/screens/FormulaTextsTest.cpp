// The formula screen in another language: what is translated, and what stays as designed.
#include "FormulaScreenTest.h"

#include <QFile>

using namespace sorvanto;
using platform::ChoiceBox;

namespace {

const QStringList formulaTexts{"Formula",
                               "Formula Name",
                               "Formula Type",
                               "Jar Size",
                               "Description",
                               "Quantity",
                               "Units",
                               "Strength",
                               "Formula NDC",
                               "Cost",
                               "AWP",
                               "Mix Notes",
                               "Add",
                               "Add Ingredient",
                               "Remove",
                               "General",
                               "Ingredients",
                               "Mix Options",
                               "Remove Ingredient",
                               "Name",
                               "Qty",
                               "QS",
                               "Active",
                               "Lift RPM",
                               "Mix RPM",
                               "Time",
                               "Cycles",
                               "Add Mix",
                               "Delete Mix",
                               "Pre Grind",
                               "Free Spin",
                               "Mix Time",
                               "Reaction Options",
                               "FormChemID",
                               "MLS",
                               "Select Type",
                               "Select Form",
                               "Select Jar Size",
                               "Optional precision settings"};

/// Each text of the screen is translated by the same text behind "de".
class FormulaTextsTest : public FormulaScreenTest {
protected:
    QByteArray optionsXml() const override {
        folder.writeGerman(formulaTexts);
        return FormulaScreenTest::optionsXml().replace("<Language>0<", "<Language>2<");
    }
    QString title(const QString& frame) const { return box<QWidget>(frame).property("title").toString(); }
};

class EmptyFormulaTextsTest : public FormulaTextsTest {
    void seed() override {}
};

class OneFormulaTextsTest : public FormulaTextsTest {
    void seed() override {
        sql("INSERT INTO Formula (FormulaID, frm_Name, frm_Quantity, frm_JarSize, frm_FormType, frm_Mix)"
            " VALUES (1, 'Only One', 10, 1, 3, '')");
    }
};

TEST_F(FormulaTextsTest, CaptionsAreTranslated) {
    load();
    EXPECT_EQ(str(formula().windowTitle()), "de Formula");
    const std::pair<const char*, const char*> captions[] = {
        {"lblfrm_Name", "Formula Name"}, {"lblformType", "Formula Type"},
        {"lblfrm_JarSize", "Jar Size"},  {"lblfrm_Desc", "Description"},
        {"lblfrm_Quantity", "Quantity"}, {"lblfrm_Units", "Units"},
        {"lblfrm_Strength", "Strength"}, {"lblfrm_NDC", "Formula NDC"},
        {"lblfrm_Cost", "Cost"},         {"lblfrm_AWP", "AWP"},
        {"lblMixNotes", "Mix Notes"},    {"cmdAdd", "Add"},
        {"cmdRemove", "Remove"},         {"cmdAddMix", "Add Mix"},
        {"cmdDelete", "Delete Mix"},     {"lblPreGrind", "Pre Grind"},
        {"lblFreeSpin", "Free Spin"},    {"lblLiftRPM", "Lift RPM"},
        {"lblMixRPM", "Mix RPM"},        {"lblTime", "Time"},
        {"lblCycles", "Cycles"},
    };
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(str(shown(name)), std::string("de ") + caption) << name;
    EXPECT_EQ(str(box<QPushButton>("cmdAdd").toolTip()), "de Add Ingredient");
    EXPECT_EQ(str(box<QPushButton>("cmdRemove").toolTip()), "de Remove Ingredient");
    EXPECT_EQ(str(title("fraCustom")), "de Optional precision settings");
    EXPECT_EQ(str(tabs().tabText(0) + "|" + tabs().tabText(1) + "|" + tabs().tabText(2)),
              "de General|de Ingredients|de Mix Options");
}

TEST_F(FormulaTextsTest, ColumnsAreTranslatedButTheKey) {
    load();
    QStringList columns;
    for (int column = 0; column < 6; ++column)
        columns << grid().shownCaption(column);
    EXPECT_EQ(str(columns.join('|')), "FormChemID|de Name|de Units|de Qty|de QS|de Active");
    columns.clear();
    for (int column = 0; column < 4; ++column)
        columns << steps().columnCaption(column);
    EXPECT_EQ(str(columns.join('|')), "de Lift RPM|de Mix RPM|de Time|de Cycles");
}

TEST_F(FormulaTextsTest, TheReactionSettingsStayAsDesigned) {
    load();
    EXPECT_EQ(str(title("fraReaction")), "Reaction Options");
    EXPECT_EQ(str(shown("lblfrm_ReactRPM")), "Mix RPM");
    EXPECT_EQ(str(shown("lblfrm_ReactTime")), "Mix Time");
}

TEST_F(FormulaTextsTest, TheRefusedTypeShowsTheTranslatedPrompt) {
    edit("Cooling Gel");
    asker.expectMsgBox("Combination Mix is unsupported at this time");
    box<ChoiceBox>("cbofrm_Type").setListIndex(0);
    EXPECT_EQ(str(shown("cbofrm_Type")), "de Select Type");
}

TEST_F(EmptyFormulaTextsTest, ThePromptsOfTheLoadingAreNotTranslated) {
    load();
    frmFormula fresh(context);
    fresh.Form_Load();
    EXPECT_EQ(str(support::child<ChoiceBox>(fresh, "cbofrm_Type")->boxText()), "Select Type");
    EXPECT_EQ(str(support::child<ChoiceBox>(fresh, "cbofrm_JarSize")->boxText()), "Select Jar Size");
}

TEST_F(OneFormulaTextsTest, ThePromptsOfAClearedFormAreTranslatedAndSwapped) {
    load();
    asker.expectMsgBox("Delete Only One?", platform::deletionStyle, platform::Answer::Yes);
    click("cmdDelete");
    EXPECT_EQ(str(shown("cbofrm_JarSize")), "de Select Form");
    EXPECT_EQ(str(shown("cbofrm_Type")), "de Select Jar Size");
    EXPECT_EQ(str(shown("txtfrm_Units")), "de MLS");
}

}  // namespace
