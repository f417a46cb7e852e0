// What was deleted on a screen comes back from the status line.
#include "HistoryScreenTest.h"

#include <QPushButton>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class UndoTest : public HistoryScreenTest {
protected:
    void seed() override {
        HistoryScreenTest::seed();
        sql("INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Jin', 'Xu'), (2, 'Ada', 'Moss');"
            "INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (1, 1, 30.0), (2, 1, 15.0);"
            "INSERT INTO Chemical (chm_Name) VALUES ('Zinc')");
    }
    void expectQuestion(const QString& question) {
        asker.expectMsgBox(question, platform::deletionStyle, platform::Answer::Yes);
    }
    /// Presses Undo, as it was announced last.
    void undo() const {
        const auto actions = heard().actions;
        ASSERT_EQ(actions.size(), 1U) << str(heard().text);
        EXPECT_EQ(str(actions.front().text), "Undo");
        EXPECT_TRUE(actions.front().once);
        actions.front().run();
    }
    QString stored() const {
        QString all;
        for (const char* table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"})
            all += sqlText(u"SELECT * FROM %1 ORDER BY 1"_s.arg(QLatin1String(table))) + u'\n';
        return all;
    }
};

TEST_F(UndoTest, AFormulaComesBackWithItsLinesAndIsOnShow) {
    start();
    const QString before = stored();
    const QString name = text(formulas, u"txtfrm_Name"_s);
    expectQuestion(u"Delete %1?"_s.arg(name));
    click(u"cmdDelete"_s);
    EXPECT_EQ(announced(), str(name) + " deleted");
    ASSERT_NE(str(stored()), str(before));
    undo();
    EXPECT_EQ(announced(), str(name) + " restored");
    EXPECT_EQ(str(stored()), str(before));
    EXPECT_EQ(str(text(formulas, u"txtfrm_Name"_s)), str(name));
}

TEST_F(UndoTest, AChemicalABatchAndAPatientComeBack) {
    start();
    const QString before = stored();
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    click(u"cmdLast"_s);
    expectQuestion(u"Delete Zinc?"_s);
    click(u"cmdDelete"_s);
    undo();
    click(u"cmdLogs"_s);
    click(u"cmdLast"_s);
    expectQuestion(u"Delete %1 ?"_s.arg(text(logs, u"txtlog_Name"_s)));
    click(u"cmdDelete"_s);
    undo();
    click(u"cmdPatients"_s);
    const QString patient = text(patients, u"txtpat_LName"_s);
    expectQuestion(u"Delete %1, %2?"_s.arg(patient, text(patients, u"txtpat_FName"_s)));
    asker.expectMsgBox(u"No Records"_s);  // the first move still runs on the set from before
    click(u"cmdDelete"_s);
    ASSERT_NE(str(stored()), str(before));
    undo();
    EXPECT_EQ(str(stored()), str(before));
    EXPECT_EQ(str(text(patients, u"txtpat_LName"_s)), str(patient));
}

TEST_F(UndoTest, AnIngredientComesBackWhileTypedTextStays) {
    start();
    search(u"Cooling Gel"_s);
    click(u"cmdEdit"_s);
    auto& grid = control<platform::RecordGrid>(formulas, u"grdIngredients"_s);
    const int lines = grid.model()->rowCount();
    const QString before = sqlText("SELECT * FROM FormChem ORDER BY 1");
    grid.setCurrentIndex(grid.model()->index(0, 1));
    asker.expectMsgBox(
        u"Are you sure?"_s,
        {.buttons = platform::Buttons::YesNo, .icon = platform::Icon::Exclamation, .low = true},
        u"Delete Chemical"_s, platform::Answer::Yes);
    control<QPushButton>(formulas, u"cmdRemove"_s).click();
    EXPECT_EQ(grid.model()->rowCount(), lines - 1);
    auto& box = control<platform::TextBox>(formulas, u"txtfrm_Desc"_s);
    box.setText(u"typed meanwhile"_s);
    undo();
    EXPECT_EQ(grid.model()->rowCount(), lines);
    EXPECT_EQ(str(sqlText("SELECT * FROM FormChem ORDER BY 1")), str(before));
    EXPECT_EQ(str(box.text()), "typed meanwhile");
}

TEST_F(UndoTest, WhatStandsInTheWayIsSaid) {
    start();
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    click(u"cmdLast"_s);
    expectQuestion(u"Delete Zinc?"_s);
    click(u"cmdDelete"_s);
    sql("INSERT INTO Chemical (ChemicalID, chm_Name) SELECT hst_Key, 'other' FROM History WHERE hst_What = 'deleted'");
    undo();
    EXPECT_EQ(announced(), "Zinc can not be restored: another record has its number now.");
}

}  // namespace
