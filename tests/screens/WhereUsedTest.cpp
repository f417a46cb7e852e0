// "Where Used" on the screens: it is on for a record that leads somewhere, and opens the trace at that record; and what a
// row of the trace brings on show.
#include "Announced.h"
#include "ScreenTest.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <optional>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using support::child;

namespace {

class WhereUsedTest : public ScreenTest {
protected:
    void seed() override {
        seedLogs();
        sql("UPDATE Chemical SET chm_Lot = 'L' || ChemicalID; UPDATE Chemical SET chm_Lot = 'L2', chm_NDC = 'N' WHERE "
            "chm_Name = 'Aspirin';"
            "INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (1, 'Jin', 'Xu'), (2, 'Jin', 'Xu')");
    }
    /// What the window is asked at once, and how many of the rows found are chosen.
    QString asked(const QString& tool = u"cmdTrace"_s) {
        QString told;
        asker.expectModal(u"TraceWindow"_s, [&](QWidget& form) {
            told = child<QLineEdit>(form, "txtTrace")->text();
            for (const QModelIndex& row :
                 child<QTableView>(form, "grdFound")->selectionModel()->selectedRows())
                told += u" -> "_s + row.data().toString();
            child<QPushButton>(form, "cmdClose")->click();
        });
        click(tool);
        return told;
    }
};

TEST_F(WhereUsedTest, AChemicalIsTracedByItsLotAndChosenAmongOthersOfIt) {
    load();
    click(u"cmdChemicals"_s);
    ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Aspirin");
    EXPECT_EQ(str(asked()), "L2 -> Aspirin");
    sql("UPDATE Chemical SET chm_Lot = NULL WHERE chm_Name = 'Aspirin'");
    click(u"cmdCancel"_s);  // its first state lets change it
    click(u"cmdNext"_s);
    click(u"cmdFirst"_s);
    EXPECT_EQ(str(asked(u"mnuTrace"_s)), "N") << "without a lot by its NDC";
}

TEST_F(WhereUsedTest, ABatchIsTracedByItsLotAndAPatientByKey) {
    load();
    click(u"cmdLogs"_s);
    EXPECT_EQ(str(asked()), str(text(logs, u"txtlog_Lot"_s)));
    click(u"cmdPatients"_s);
    click(u"cmdLast"_s);
    EXPECT_EQ(str(asked()), "Xu, Jin -> Xu, Jin") << "one of two of this name";
}

TEST_F(WhereUsedTest, ItIsOnForARecordThatLeadsSomewhere) {
    load();
    EXPECT_TRUE(on(u"cmdTrace"_s)) << "a formula leads to its batches";
    click(u"cmdCurrent"_s);
    EXPECT_FALSE(on(u"cmdTrace"_s));
    EXPECT_EQ(str(asked(u"mnuTrace"_s)), "") << "the menu asks nothing there";
    click(u"cmdChemicals"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s)) << "also while it can be changed, as at first here";
    click(u"cmdCancel"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s));
    click(u"cmdFormulas"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s));
    click(u"cmdEdit"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s));
}

TEST_F(WhereUsedTest, AFormulaIsTracedByKeyAlsoWhereAChemicalHasItsName) {
    sql("UPDATE Formula SET frm_Name = 'Aspirin'; UPDATE LogChem SET lch_Name = 'Aspirin'");
    load();
    click(u"cmdLast"_s);
    EXPECT_EQ(str(asked()), "Aspirin -> Aspirin");
    asker.expectModal(u"TraceWindow"_s, [&](QWidget& form) {
        EXPECT_EQ(child<QTableView>(form, "grdFound")->model()->rowCount(), 3) << "the formulas of this name";
        EXPECT_NE(child<QTableView>(form, "grdBatches")->model()->rowCount(), 0);
        child<QPushButton>(form, "cmdClose")->click();
    });
    click(u"cmdFirst"_s);
    click(u"mnuTrace"_s);
}

/// What a row of the lists leads to.
class OpenedFromTraceTest : public WhereUsedTest {
protected:
    void TearDown() override {
        announced.reset();
        WhereUsedTest::TearDown();
    }
    void load() {
        WhereUsedTest::load();
        announced.emplace();
    }
    /// The chemical that Cooling Gel alone uses.
    void showBorax() {
        click(u"cmdChemicals"_s);
        click(u"cmdCancel"_s);
        click(u"cmdNext"_s);
        ASSERT_EQ(str(text(chemicals, u"txtchm_Name"_s)), "Borax");
    }
    /// Enter on a row of the list, in the window that opens at the record on show, or once the text was typed.
    void enter(const char* list, int row, const QString& text = {}) {
        asker.expectModal(u"TraceWindow"_s, [=](QWidget& form) {
            if (!text.isEmpty()) {
                child<QLineEdit>(form, "txtTrace")->setText(text);
                QTest::keyClick(child<QLineEdit>(form, "txtTrace"), Qt::Key_Return);
            }
            auto* view = child<QTableView>(form, list);
            view->setCurrentIndex(view->model()->index(row, 0));
            QTest::keyClick(view, Qt::Key_Return);
        });
        click(u"cmdTrace"_s);
        QCoreApplication::processEvents();
    }
    const QString refused =
        u"The record was not opened: another one is being changed there. Save or cancel that one first."_s;
    std::optional<support::Announced> announced;
};

TEST_F(OpenedFromTraceTest, AFormulaThatUsesAChemicalIsShown) {
    load();
    ASSERT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Arnica Salve");
    showBorax();
    enter("grdFormulas", 0);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Cooling Gel");
    EXPECT_EQ(announced->texts(), QStringList());
}

TEST_F(OpenedFromTraceTest, WhereAnotherRecordIsBeingChangedItIsSaid) {
    load();
    click(u"cmdEdit"_s);
    showBorax();
    enter("grdFormulas", 0);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(str(text(formulas, u"txtfrm_Name"_s)), "Arnica Salve") << "what is being changed stays";
    EXPECT_EQ(announced->texts(), QStringList{refused});
    EXPECT_TRUE(on(u"cmdSave"_s));
}

TEST_F(OpenedFromTraceTest, TheRecordThatIsBeingChangedItselfIsThereAlready) {
    load();
    click(u"cmdFormulas"_s);
    click(u"cmdEdit"_s);
    enter("grdFound", 0);
    EXPECT_EQ(announced->texts(), QStringList());
    EXPECT_TRUE(on(u"cmdSave"_s));
}

TEST_F(OpenedFromTraceTest, AChemicalIsShownThoughTheScreenIsOpenFromTheStart) {
    load();
    enter("grdFound", 0, u"333-33"_s);
    EXPECT_EQ(window->current(), chemicals);
    EXPECT_EQ(str(text(chemicals, u"txtchm_NDC"_s)), "333-33");
    EXPECT_EQ(announced->texts(), QStringList());
    EXPECT_TRUE(on(u"cmdSave"_s)) << "open as before";
    QTest::keyClicks(&control<QWidget>(chemicals, u"txtchm_Notes"_s), u"typed"_s);
    enter("grdFound", 0, u"N"_s);
    EXPECT_EQ(str(text(chemicals, u"txtchm_NDC"_s)), "333-33") << "what was typed stays";
    EXPECT_EQ(announced->texts(), QStringList{refused});
}

class WithoutPatientsTest : public OpenedFromTraceTest {
protected:
    QByteArray optionsXml() const override {
        return OpenedFromTraceTest::optionsXml().replace("<ShowPatients>1<", "<ShowPatients>0<");
    }
};

TEST_F(WithoutPatientsTest, APatientIsNotOpenedAndThatIsSaid) {
    sql("INSERT INTO RXs (LogID, PatientID, rxs_QTY) SELECT LogID, 1, 5.0 FROM Log");
    load();
    click(u"cmdLogs"_s);
    enter("grdPrescriptions", 0);
    EXPECT_EQ(announced->texts(),
              QStringList{u"The record was not opened: patients are switched off in the options."_s});
    EXPECT_EQ(window->current(), logs);
    dropReports();
}

}  // namespace
