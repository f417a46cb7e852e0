// "Where Used" on the screens: it is on for a record that leads somewhere, and opens the trace at that record.
#include "ScreenTest.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

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
    EXPECT_FALSE(on(u"cmdTrace"_s)) << "a formula is no lot";
    click(u"cmdChemicals"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s)) << "also while it can be changed, as at first here";
    click(u"cmdCancel"_s);
    EXPECT_TRUE(on(u"cmdTrace"_s));
    click(u"cmdFormulas"_s);
    EXPECT_FALSE(on(u"cmdTrace"_s));
    EXPECT_EQ(str(asked(u"mnuTrace"_s)), "") << "the menu asks nothing there";
}

}  // namespace
