// What the log screen says of the formula since the batch, and where that leads.
#include "HistoryScreenTest.h"
#include "support/Waiting.h"

#include <QAbstractItemModel>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

using namespace Qt::StringLiterals;
using namespace sorvanto;
using support::child;

namespace {

class LogChangesTest : public HistoryScreenTest {
protected:
    QPushButton& line() const { return control<QPushButton>(logs, u"lnkRecipeChanges"_s); }
    /// What the line says once it has looked.
    QString said() const {
        return support::waitFor([&] { return !line().text().isEmpty(); }) ? line().text() : QString();
    }
    /// Batch 1 is from after the beginning of the history, and from before all that is changed from now on.
    void openFirstBatch() {
        load();
        sql(u"UPDATE Log SET log_Date = '%1' WHERE LogID = 1"_s.arg(
            QDateTime::currentDateTime().addSecs(60).toString(u"yyyy-MM-dd HH:mm:ss"_s)));
        place().moveHistory(databasePath(), u"-1 hour"_s);
        click(u"cmdLogs"_s);
        click(u"cmdNext"_s);
        click(u"cmdFirst"_s);
        ASSERT_EQ(str(text(logs, u"txtlog_Lot"_s)), str(sqlText("SELECT log_Lot FROM Log WHERE LogID = 1")));
    }
    /// An hour after the batch.
    void changeLater(const char* statement) const {
        sql(statement);
        sql(u"UPDATE History SET hst_When = '%1' WHERE HistoryID = (SELECT max(HistoryID) FROM History)"_s
                .arg(QDateTime::currentDateTimeUtc().addSecs(3600).toString(u"yyyy-MM-dd HH:mm:ss.zzz"_s)));
    }
};

TEST_F(LogChangesTest, AFormulaThatStayedIsUnchangedAndLeadsNowhere) {
    openFirstBatch();
    EXPECT_EQ(str(said()), "Formula unchanged since");
    EXPECT_FALSE(line().isEnabled());
}

TEST_F(LogChangesTest, ChangesOfTheFormulaAndItsLinesAreCountedAndListed) {
    openFirstBatch();
    sql("UPDATE Formula SET frm_Desc = 'before' WHERE FormulaID = 1");
    changeLater("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID = 1");
    changeLater("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID = 2");
    changeLater(
        "UPDATE FormChem SET fch_Qty = fch_Qty + 1.0 WHERE FormChemID = (SELECT min(FormChemID) FROM FormChem WHERE FormulaID = 1)");
    changeLater(
        "UPDATE FormChem SET fch_Qty = fch_Qty + 1.0 WHERE FormChemID = (SELECT max(FormChemID) FROM FormChem WHERE FormulaID = 1)");
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    EXPECT_EQ(str(said()), "Formula: 3 changes since");
    QString title;
    int listed = 0;
    asker.expectModal(u"HistoryWindow"_s, [&](QWidget& form) {
        title = form.windowTitle();
        listed = child<QTableView>(form, "grdChanges")->model()->rowCount();
        child<QPushButton>(form, "cmdClose")->click();
    });
    line().click();
    EXPECT_EQ(str(title), "History of Cooling Gel");
    EXPECT_EQ(listed, 3) << "not what was changed before the batch";
}

TEST_F(LogChangesTest, ABatchFromBeforeTheHistorySaysNothingUntilAChange) {
    load();
    click(u"cmdLogs"_s);
    QTest::qWait(0);
    EXPECT_EQ(str(line().text()), "");
    sql("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID = 1");
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    EXPECT_EQ(str(said()), "Formula: at least 1 change since");
    EXPECT_TRUE(line().isEnabled());
}

TEST_F(LogChangesTest, WhatAnArchiveTookAlongMayHaveHeldMore) {
    openFirstBatch();
    changeLater("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID = 1");
    changeLater("UPDATE Formula SET frm_Desc = 'y' WHERE FormulaID = 1");
    changeLater("UPDATE Formula SET frm_Desc = 'z' WHERE FormulaID = 1");
    sql("DELETE FROM History WHERE HistoryID < (SELECT max(HistoryID) - 1 FROM History)");
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    EXPECT_EQ(str(said()), "Formula: at least 2 changes since");
}

TEST_F(LogChangesTest, ItIsNoStatementOfTheScreen) {
    load();
    click(u"cmdLogs"_s);
    clearStatements();
    sql("UPDATE Formula SET frm_Desc = 'x' WHERE FormulaID = 1");
    line().hide();
    line().show();
    ASSERT_EQ(str(said()), "Formula: at least 1 change since");
    EXPECT_EQ(statements, QStringList());
}

}  // namespace
