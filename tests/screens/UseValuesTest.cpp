// The values of an earlier day in the boxes of today's record: as if typed, and saved by nobody but the user.
#include "HistoryScreenTest.h"
#include "shared/PastValues.h"
#include "support/Waiting.h"

#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

class UseValuesTest : public HistoryScreenTest {
protected:
    /// What is in the history so far was ten days ago.
    void longAgo() const { place().moveHistory(databasePath(), u"-10 days"_s); }
    /// Chooses the day nine days ago in the history of the record on show and presses the button.
    void useOldValues() {
        asker.expectModal(u"HistoryWindow"_s, [&](QWidget& form) {
            auto* day = child<platform::DateBox>(form, "txtDay");
            day->setValue(QDateTime(QDate::currentDate().addDays(-9), QTime(), Qt::UTC));
            emit day->valueEdited();
            auto* use = child<QPushButton>(form, "cmdUseValues");
            ASSERT_TRUE(use->isVisibleTo(&form));
            use->click();
        });
        click(u"mnuHistory"_s);
        QCoreApplication::processEvents();
    }
};

TEST_F(UseValuesTest, AChemicalsBoxesAreFilledAndNothingIsSaved) {
    start();
    sql("UPDATE Chemical SET chm_Lot = 'OLD', chm_Cost = 2.5, chm_Notes = 'then' WHERE chm_Name = 'Aspirin'");
    longAgo();
    sql("UPDATE Chemical SET chm_Lot = 'NEW', chm_Cost = 1234.5, chm_Notes = 'now' WHERE chm_Name = 'Aspirin'");
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    ASSERT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "NEW");
    const QString before = sqlText("SELECT * FROM Chemical");
    useOldValues();
    EXPECT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "OLD");
    EXPECT_EQ(str(text(chemicals, u"txtchm_Notes"_s)), "then");
    EXPECT_EQ(control<platform::NumberBox>(chemicals, u"txtchm_Cost"_s).toDouble(), 2.5);
    EXPECT_TRUE(announced().starts_with("Filled in as it was on ")) << announced();
    EXPECT_EQ(str(sqlText("SELECT * FROM Chemical")), str(before)) << "only Save saves";
    EXPECT_TRUE(on(u"cmdSave"_s));
    click(u"cmdSave"_s);
    EXPECT_EQ(str(sqlText("SELECT chm_Lot, chm_Cost, chm_Notes FROM Chemical WHERE chm_Name = 'Aspirin'")),
              "OLD|2.5|then");
}

TEST_F(UseValuesTest, AFormulasStepsComeBackAndLinesAreNamed) {
    start();
    search(u"Cooling Gel"_s);
    const QString steps = sqlText("SELECT frm_Mix FROM Formula WHERE FormulaID = 1");
    sql("UPDATE Formula SET frm_Desc = 'then' WHERE FormulaID = 1");
    longAgo();
    sql("UPDATE Formula SET frm_Desc = 'now', frm_Mix = '<CustomMix PreGrind=\"1\" FreeSpin=\"1\"/>' WHERE FormulaID = 1;"
        "UPDATE FormChem SET fch_Qty = 77.0 WHERE FormChemID = (SELECT min(FormChemID) FROM FormChem WHERE FormulaID = 1)");
    search(u"Cooling Gel"_s);
    useOldValues();
    EXPECT_EQ(str(text(formulas, u"txtfrm_Desc"_s)), "then");
    EXPECT_NE(announced().find("These lines differ"), std::string::npos) << announced();
    EXPECT_NE(announced().find("now 77"), std::string::npos) << announced();
    click(u"cmdSave"_s);
    EXPECT_EQ(str(sqlText("SELECT frm_Desc FROM Formula WHERE FormulaID = 1")), "then");
    const auto stored = document(sqlText("SELECT frm_Mix FROM Formula WHERE FormulaID = 1"));
    EXPECT_EQ(str(stored->xml()), str(document(steps)->xml()));
    EXPECT_EQ(str(sqlText("SELECT max(fch_Qty) FROM FormChem WHERE FormulaID = 1")), "77.0")
        << "lines are changed by hand";
}

TEST_F(UseValuesTest, AnotherRecordThanTheOneThatWasMeantTakesNone) {
    start();
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    auto& boxes = dynamic_cast<TakesPastValues&>(*window->screen(chemicals));
    const PastValues other{2, u"3/1/2026"_s, {{u"chm_Lot"_s, u"OLD"_s}}, {u"chm_Lot"_s}, {}};
    for (const char* state : {"locked", "being changed"}) {
        ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Aspirin");
        boxes.useValues(other);
        EXPECT_EQ(announced(), "Choose Edit on the record first: it can not be changed now.") << state;
        EXPECT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "L100") << state;
        EXPECT_EQ(on(u"cmdSave"_s), state == QLatin1String("being changed")) << state;
        click(u"cmdEdit"_s);
    }
}

TEST_F(UseValuesTest, WhatWasTypedIsPutOnOfferAndNotLost) {
    start();
    sql("UPDATE Chemical SET chm_Lot = 'OLD' WHERE chm_Name = 'Aspirin'");
    longAgo();
    sql("UPDATE Chemical SET chm_Lot = 'NEW' WHERE chm_Name = 'Aspirin'");
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    click(u"cmdEdit"_s);
    control<platform::TextBox>(chemicals, u"txtchm_Lot"_s).setText(u"typed"_s);
    useOldValues();
    EXPECT_EQ(str(text(chemicals, u"txtchm_Lot"_s)), "OLD");
    EXPECT_TRUE(support::waitFor(
        [this] { return QDir(folder.path(u"drafts"_s)).entryList({u"*.json"_s}).size() == 2; }));
}

}  // namespace
