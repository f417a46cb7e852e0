// The history of a record, as its user sees it: who changed what, filtered, and what the record was on a day.
#include "core/HistoryWindow.h"
#include "history/HistoryDeed.h"
#include "history/HistoryTest.h"
#include "platform/widgets/Boxes.h"
#include "reports/HistoryCaptions.h"
#include "shared/Context.h"

#include <QAbstractItemModel>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class HistoryWindowTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        run("INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Urea', 2.5)");
        run("INSERT INTO Chemical (chm_Name) VALUES ('Menthol')");
        run("INSERT INTO Formula (frm_Name, frm_JarSize) VALUES ('Gel', 3)");
        run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty, fch_QS, fch_Active) VALUES (1, 1, 1.5, 0, 1)");
        run("UPDATE Chemical SET chm_Lot = 'L1', chm_Cost = 3 WHERE ChemicalID = 1");
        auto other = open(u"lm@bench1"_s);
        other->execute(u"UPDATE Chemical SET chm_Lot = 'L2' WHERE ChemicalID = 1"_s);
        outside(u"UPDATE Chemical SET chm_Notes = 'n' WHERE ChemicalID = 1"_s);
    }
    void show(const QString& table, std::int64_t key) {
        window = std::make_unique<HistoryWindow>(context, connection,
                                                 HistoryWindow::Record{table, key, u"Urea"_s});
    }
    /// The rows, columns parted by "|".
    QStringList rows(const char* list) const {
        const QAbstractItemModel& model = *window->findChild<QTableView*>(QLatin1String(list))->model();
        QStringList all;
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList texts;
            for (int column = 0; column < model.columnCount(); ++column)
                texts << model.index(row, column).data().toString();
            all << texts.join('|');
        }
        return all;
    }
    /// Without the moments.
    QStringList changes() const {
        QStringList all;
        for (const QString& row : rows("grdChanges"))
            all << row.section('|', 1);
        return all;
    }
    void choose(const char* box, const QString& text) const {
        window->findChild<QComboBox*>(QLatin1String(box))->setCurrentText(text);
    }
    /// As the moments are written down, of the record's changes in their order: days from 1 March on.
    void spreadOverDays() {
        outside(u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Zone = 0, "
                "hst_When = '2026-03-' || printf('%02d', HistoryID) || ' 10:00:00.000'"_s);
    }
    void setDay(const char* box, const QString& day) const {
        auto* date = window->findChild<platform::DateBox*>(QLatin1String(box));
        date->setValue(QDateTime(QDate::fromString(day, Qt::ISODate), QTime(), Qt::UTC));
        emit date->valueEdited();
    }

    /// What stands beside the title of the record on that day.
    QString remark() const {
        const QWidget* card = window->findChild<QTableView*>(u"grdPast"_s)->parentWidget();
        return card->findChildren<QLabel*>().constLast()->text();
    }
    /// Of a record whose boxes are on show.
    void showOnScreen(const QString& table, std::int64_t key) {
        window = std::make_unique<HistoryWindow>(context, connection,
                                                 HistoryWindow::Record{table, key, u"Urea"_s, true});
    }
    bool canBeUsed() const { return !window->findChild<QPushButton*>(u"cmdUseValues"_s)->isHidden(); }
    /// As an archive run or an older file leaves it: the history begins with the entry of that number.
    void forgetUpTo(int number) const {
        outside(u"DROP TRIGGER History_Kept; DELETE FROM History WHERE HistoryID <= %1"_s.arg(number));
    }

    Context context;
    std::unique_ptr<HistoryWindow> window;
};

TEST_F(HistoryWindowTest, ChangesStandNewestFirstWithBothValues) {
    show(u"Chemical"_s, 1);
    EXPECT_EQ(changes(),
              (QStringList{"another program|changed|Notes||n", "lm@bench1|changed|Lot Number|L1|L2",
                           "rkent@bench2|changed|Lot Number||L1", "||Cost per Unit|2.5|3",
                           "rkent@bench2|made|Chemical Name||Urea", "||Cost per Unit||2.5"}));
    EXPECT_TRUE(window->findChild<QLabel*>(u"lblNoHistory"_s)->isHidden());
    EXPECT_TRUE(window->windowTitle().contains("Urea"));
}

TEST_F(HistoryWindowTest, PersonFieldAndDayNarrowTheList) {
    spreadOverDays();
    show(u"Chemical"_s, 1);
    choose("cboPerson", u"rkent@bench2"_s);
    EXPECT_EQ(changes().size(), 4);
    choose("cboField", u"Lot Number"_s);
    EXPECT_EQ(changes(), QStringList{"rkent@bench2|changed|Lot Number||L1"});
    choose("cboPerson", u"All persons"_s);
    EXPECT_EQ(changes().size(), 2);
    choose("cboField", u"All fields"_s);
    setDay("txtSince", u"2026-03-07"_s);
    EXPECT_EQ(changes(),
              (QStringList{"another program|changed|Notes||n", "lm@bench1|changed|Lot Number|L1|L2"}));
}

TEST_F(HistoryWindowTest, AFormulasLinesAreItsOwnHistory) {
    run("UPDATE FormChem SET fch_Qty = 2, fch_QS = 1 WHERE FormChemID = 1");
    show(u"Formula"_s, 1);
    EXPECT_EQ(changes().mid(0, 2),
              (QStringList{"rkent@bench2|changed|Urea · Qty|1.5|2", "||Urea · QS|No|Yes"}));
    EXPECT_TRUE(changes().contains("rkent@bench2|made|Formula Name||Gel"));
}

TEST_F(HistoryWindowTest, TheRecordAsItWasOnADay) {
    run("UPDATE FormChem SET fch_Qty = 2 WHERE FormChemID = 1");
    run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 2, 4)");
    run("UPDATE Formula SET frm_Name = 'Cream' WHERE FormulaID = 1");
    spreadOverDays();
    show(u"Formula"_s, 1);
    EXPECT_TRUE(window->findChild<QTableView*>(u"grdPast"_s)->parentWidget()->isHidden());
    setDay("txtDay", u"2026-03-08"_s);
    QStringList then = rows("grdPast");
    EXPECT_TRUE(then.contains("Formula Name|Gel|Cream"));
    EXPECT_TRUE(then.contains("Urea · Qty|1.5|2"));
    EXPECT_TRUE(then.contains("Menthol · Qty||4"));
    EXPECT_EQ(then.mid(0, 2), (QStringList{"Formula Name|Gel|Cream", "Urea · Qty|1.5|2"}))
        << "what differs first";
    setDay("txtDay", u"2026-03-02"_s);
    EXPECT_EQ(rows("grdPast"), QStringList()) << "it was not there yet";
}

TEST_F(HistoryWindowTest, OfADayBeforeTheHistoryNothingIsClaimed) {
    spreadOverDays();
    forgetUpTo(5);
    showOnScreen(u"Chemical"_s, 1);
    setDay("txtDay", u"2026-03-05"_s);
    EXPECT_EQ(rows("grdPast"), QStringList());
    EXPECT_EQ(remark().toStdString(), "The history begins on 3/6/2026: what was before is not known.");
    EXPECT_FALSE(canBeUsed());
    setDay("txtDay", u"2026-03-06"_s);
    EXPECT_TRUE(rows("grdPast").contains("Lot Number|L1|L2")) << "the day it begins on can be told";
    EXPECT_EQ(remark().toStdString(), "");
    EXPECT_TRUE(canBeUsed());
}

TEST_F(HistoryWindowTest, OfADayBeforeAnErasedChangeNothingIsClaimed) {
    run("INSERT INTO Patient (pat_LName) VALUES ('Then')");
    run("UPDATE Patient SET pat_LName = 'Now'");
    run("UPDATE Patient SET pat_FName = 'F'");
    spreadOverDays();
    outside(u"UPDATE History SET hst_Name = NULL, hst_Fields = NULL, hst_Salt = NULL WHERE HistoryID = 10"_s);
    showOnScreen(u"Patient"_s, 1);
    setDay("txtDay", u"2026-03-09"_s);
    EXPECT_EQ(rows("grdPast"), QStringList());
    EXPECT_EQ(remark().toStdString(),
              "Values of this record were erased on request: what it was then is not known.");
    EXPECT_FALSE(canBeUsed());
    setDay("txtDay", u"2026-03-10"_s);
    EXPECT_FALSE(rows("grdPast").isEmpty()) << "what was changed after it can be taken back";
    EXPECT_TRUE(canBeUsed());
    setDay("txtDay", u"2026-03-08"_s);
    EXPECT_EQ(remark().toStdString(), "The record was not there then.") << "it was made the day after";
}

TEST_F(HistoryWindowTest, AnErasedDeletionDoesNotSayThatTheRecordWasNotThere) {
    run("INSERT INTO Patient (pat_LName) VALUES ('Then')");
    run("DELETE FROM Patient");
    spreadOverDays();
    outside(u"UPDATE History SET hst_Fields = NULL, hst_Salt = NULL WHERE hst_Table = 'Patient'"_s);
    show(u"Patient"_s, 1);
    setDay("txtDay", u"2026-03-09"_s);
    EXPECT_EQ(remark().toStdString(),
              "Values of this record were erased on request: what it was then is not known.");
}

TEST_F(HistoryWindowTest, LinesOfOneIngredientStandApartAndKnowItsNameWithoutHistory) {
    run("INSERT INTO FormChem (FormulaID, ChemicalID, fch_Qty) VALUES (1, 1, 9)");
    outside(u"DROP TRIGGER History_Kept; DELETE FROM History WHERE hst_Table = 'FormChem'"_s);
    show(u"Formula"_s, 1);
    setDay("txtDay", u"2999-03-08"_s);
    EXPECT_TRUE(rows("grdPast").contains("Urea · Qty|1.5|1.5"));
    EXPECT_TRUE(rows("grdPast").contains("Urea · Qty|9|9"));
}

TEST_F(HistoryWindowTest, ADeletedLineComesBackInThePast) {
    run("DELETE FROM FormChem");
    spreadOverDays();
    show(u"Formula"_s, 1);
    EXPECT_EQ(changes().first(), "rkent@bench2|deleted|Urea · Qty|1.5|");
    setDay("txtDay", u"2026-03-08"_s);
    EXPECT_TRUE(rows("grdPast").contains("Urea · Qty|1.5|"));
}

TEST_F(HistoryWindowTest, ARecordWithoutHistorySaysSo) {
    spreadOverDays();
    show(u"Patient"_s, 5);
    EXPECT_EQ(changes(), QStringList());
    const auto* message = window->findChild<QLabel*>(u"lblNoHistory"_s);
    EXPECT_FALSE(message->isHidden());
    EXPECT_EQ(message->text().toStdString(),
              "Nothing is written down of this record since the history began on 3/1/2026.")
        << "what was before the beginning can't be told";
}

// The rule for a new column: it has a caption, or is one that no screen shows.
TEST_F(HistoryWindowTest, EachColumnThatAScreenShowsHasACaption) {
    const QStringList unseen{"chm_GUID", "frm_GUID", "lch_GUID", "lch_Form", "log_Results", "log_Version"};
    for (const QString table : {"Chemical", "Formula", "FormChem", "Log", "LogChem", "Patient", "RXs"}) {
        for (const QString& column :
             outside(u"SELECT name FROM pragma_table_info('%1')"_s.arg(table)).split('\n')) {
            const bool shown = !column.endsWith("ID") || column == "chm_GUID";
            EXPECT_EQ(historyCaption(column).isEmpty(), !shown || unseen.contains(column))
                << qPrintable(column);
        }
    }
}

TEST_F(HistoryWindowTest, AnotherChemicalOfALineIsShownWithItsLotOfThen) {
    run("UPDATE Chemical SET chm_Lot = 'M7' WHERE ChemicalID = 2");
    {
        const HistoryDeed deed(connection->engine(), Deed::NewLot, u"Urea"_s);
        run("UPDATE FormChem SET ChemicalID = 2 WHERE FormChemID = 1");
    }
    spreadOverDays();
    run("UPDATE Chemical SET chm_Lot = 'later' WHERE ChemicalID = 2");
    show(u"Formula"_s, 1);
    EXPECT_EQ(changes().constFirst(),
              "rkent@bench2|new lot of Urea|Menthol · Ingredient|Urea · L2|Menthol · M7");
    choose("cboField", u"Ingredient"_s);
    EXPECT_EQ(changes().size(), 1);
    run("DELETE FROM Chemical WHERE ChemicalID = 1");
    show(u"Formula"_s, 1);
    EXPECT_TRUE(changes().constFirst().endsWith("|Urea · L2|Menthol · M7")) << "also when it is gone";
}

// As after an archive run; and a clock that was set back in between doesn't mix up what came first.
TEST_F(HistoryWindowTest, AnotherChemicalIsThatOfThenWhereTheHistoryIsYoungAndTheClockWasWrong) {
    run("UPDATE Chemical SET chm_Lot = 'M7' WHERE ChemicalID = 2");
    run("UPDATE FormChem SET ChemicalID = 2 WHERE FormChemID = 1");
    run("UPDATE Chemical SET chm_Lot = 'M8', chm_Name = 'Mint' WHERE ChemicalID = 2");
    run("UPDATE Chemical SET chm_Lot = 'L9' WHERE ChemicalID = 1");
    spreadOverDays();
    const QString line = outside(u"SELECT max(HistoryID) - 2 FROM History"_s);
    forgetUpTo(line.toInt() - 1);
    outside(u"UPDATE History SET hst_When = '2026-01-01 10:00:00.000' WHERE HistoryID > "_s + line);
    show(u"Formula"_s, 1);
    EXPECT_TRUE(changes().constFirst().endsWith("|Urea · L2|Menthol · M7"))
        << qPrintable(changes().constFirst());
}

TEST_F(HistoryWindowTest, TheMomentIsThatOfTheClockAtTheComputer) {
    spreadOverDays();
    outside(u"UPDATE History SET hst_Zone = 300 WHERE HistoryID = 8"_s);
    show(u"Chemical"_s, 1);
    EXPECT_EQ(rows("grdChanges").constFirst().section('|', 0, 0), "3/8/2026 3:00:00 PM");
    EXPECT_EQ(rows("grdChanges").at(1).section('|', 0, 0), "3/7/2026 10:00:00 AM");
}

TEST_F(HistoryWindowTest, WhatWasChangedAtTheMomentItselfIsListedAndCounted) {
    spreadOverDays();
    const auto titleSince = [this](const QTime& time) {
        window = std::make_unique<HistoryWindow>(
            context, connection,
            HistoryWindow::Record{u"Chemical"_s, 1, u"Urea"_s, false,
                                  QDateTime(QDate(2026, 3, 6), time, Qt::UTC)});
        const QWidget* card = window->findChild<QTableView*>(u"grdChanges"_s)->parentWidget();
        return card->findChildren<QLabel*>().constFirst()->text();
    };
    EXPECT_EQ(titleSince(QTime(10, 0)).toStdString(), "3 changes") << "two fields of one are one change";
    EXPECT_EQ(changes().size(), 4);
    EXPECT_EQ(titleSince(QTime(10, 0, 1)).toStdString(), "2 changes");
    choose("cboField", u"Notes"_s);
    EXPECT_EQ(changes().size(), 1);
    const QWidget* card = window->findChild<QTableView*>(u"grdChanges"_s)->parentWidget();
    EXPECT_EQ(card->findChildren<QLabel*>().constFirst()->text().toStdString(), "1 change");
}

TEST_F(HistoryWindowTest, ValuesReadAsOnTheScreens) {
    context.jarSizes = {"", "15 ml", "20 ml", "30 ml"};
    context.mixTypes = {"", "Cream", "Gel"};
    const auto shown = [this](const char* column, const QVariant& value) {
        return historyValue(context, QLatin1String(column), value).toStdString();
    };
    EXPECT_EQ(shown("frm_JarSize", 2), "20 ml");
    EXPECT_EQ(shown("log_JarSize", 3), "30 ml");
    EXPECT_EQ(shown("log_JarSize", 9), "9") << "no jar that is known";
    EXPECT_EQ(shown("frm_FormType", 2), "Gel");
    EXPECT_EQ(shown("log_FormType", 1), "Cream");
    EXPECT_EQ(shown("pat_BDay", u"1970-01-02 00:00:00"_s), "1/2/1970");
    EXPECT_EQ(shown("log_Date", u"2026-03-07 14:05:09"_s), "3/7/2026 2:05:09 PM");
    EXPECT_EQ(shown("log_Notes", u"2026-03-07 14:05:09"_s), "2026-03-07 14:05:09") << "a text is no date";
    EXPECT_EQ(shown("frm_Mix", u"<CustomMix/>"_s), "\u2026");
    EXPECT_EQ(shown("fch_Active", 1), "Yes");
    EXPECT_EQ(shown("fch_QS", 0), "No");
    EXPECT_EQ(shown("chm_Cost", 0.285), "0.285");
    EXPECT_EQ(shown("chm_Cost", QVariant()), "");
}

TEST_F(HistoryWindowTest, APatientsPrescriptionsBearTheNameOfTheirBatch) {
    run("INSERT INTO Log (log_Name) VALUES ('Cooling Gel')");
    run("INSERT INTO Patient (pat_LName) VALUES ('Xu')");
    run("INSERT INTO RXs (LogID, PatientID, rxs_QTY) VALUES (1, 1, 30.0)");
    run("UPDATE RXs SET rxs_QTY = 15.0");
    spreadOverDays();
    show(u"Patient"_s, 1);
    EXPECT_EQ(changes().constFirst(), "rkent@bench2|changed|Cooling Gel · Qty|30|15");
    setDay("txtDay", u"2026-03-11"_s);
    EXPECT_TRUE(rows("grdPast").contains("Cooling Gel · Qty|30|15"))
        << qPrintable(rows("grdPast").join('\n'));
    outside(u"DROP TRIGGER History_Kept; DELETE FROM History WHERE hst_Table = 'RXs'"_s);
    show(u"Patient"_s, 1);
    setDay("txtDay", u"2026-03-11"_s);
    EXPECT_TRUE(rows("grdPast").contains("Cooling Gel · Qty|15|15"))
        << "also where its history does not say so";
}

TEST_F(HistoryWindowTest, OnlyTheRecordOnShowCanTakeValues) {
    spreadOverDays();
    show(u"Chemical"_s, 1);
    setDay("txtDay", u"2026-03-07"_s);
    ASSERT_FALSE(rows("grdPast").isEmpty());
    EXPECT_FALSE(canBeUsed()) << "no box is on show for it";
    showOnScreen(u"Chemical"_s, 1);
    setDay("txtDay", u"2026-03-07"_s);
    EXPECT_TRUE(canBeUsed());
    run("DELETE FROM FormChem");
    run("DELETE FROM Chemical WHERE ChemicalID = 1");
    showOnScreen(u"Chemical"_s, 1);
    setDay("txtDay", u"2026-03-07"_s);
    EXPECT_FALSE(canBeUsed()) << "it is there no more";
}

// A change that the log screen counts is one that can be looked up.
TEST_F(HistoryWindowTest, AChangeOfFieldsThatNoScreenShowsIsListedByItself) {
    outside(u"UPDATE Chemical SET chm_GUID = 'x' WHERE ChemicalID = 1"_s);
    show(u"Chemical"_s, 1);
    EXPECT_EQ(changes().constFirst(), "another program|changed|||");
    choose("cboField", u"Notes"_s);
    EXPECT_EQ(changes().size(), 1) << "but under no field's name";
}

}  // namespace
