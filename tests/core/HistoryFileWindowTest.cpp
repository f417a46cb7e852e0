// The history of the whole file, as its user sees it.
#include "core/HistoryFileWindow.h"
#include "FixedClock.h"
#include "TempProgramFolder.h"
#include "Waiting.h"
#include "config/clsOptions.h"
#include "history/HistoryTest.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

class HistoryFileWindowTest : public HistoryTest {
protected:
    static int rows(const HistoryFileWindow& window) {
        return window.findChild<QTableView*>(u"grdChanges"_s)->model()->rowCount();
    }
    static QString cell(const HistoryFileWindow& window, int row, int column) {
        const QAbstractItemModel& model = *window.findChild<QTableView*>(u"grdChanges"_s)->model();
        return model.index(row, column).data().toString();
    }
    static void setDay(const HistoryFileWindow& window, const char* box, const QDate& day) {
        auto* date = window.findChild<platform::DateBox*>(QLatin1String(box));
        date->setValue(QDateTime(day, QTime(), Qt::UTC));
        emit date->valueEdited();
    }

    Context context;
};

TEST_F(HistoryFileWindowTest, AllRecordsOfTheDaysAreListedNewestFirst) {
    run("INSERT INTO Chemical (chm_Name, chm_Cost) VALUES ('Urea', 2.5)");
    run("INSERT INTO Patient (pat_LName) VALUES ('Stone')");
    outside(u"UPDATE Chemical SET chm_Lot = 'L1'"_s);
    outside(
        u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Zone = 0, hst_When = '2026-03-0' || HistoryID || "
        "' 10:00:00.000'"_s);
    const HistoryFileWindow window(context, connection);
    setDay(window, "txtFrom", QDate(2026, 3, 2));
    setDay(window, "txtTo", QDate(2026, 3, 4));
    ASSERT_EQ(rows(window), 4);
    EXPECT_EQ(cell(window, 0, 1), "another program");
    EXPECT_EQ(cell(window, 0, 3), "Chemical: Urea");
    EXPECT_EQ(cell(window, 0, 6), "L1");
    EXPECT_EQ(cell(window, 1, 3), "Patient: Stone");
    setDay(window, "txtTo", QDate(2026, 3, 2));
    EXPECT_EQ(rows(window), 2);
    setDay(window, "txtFrom", QDate(2026, 5, 2));
    EXPECT_EQ(rows(window), 0);
    EXPECT_FALSE(window.findChild<QPushButton*>(u"cmdPrint"_s)->isEnabled()) << "nothing to print";
}

// Paper and spreadsheet have them all, so the list says how many there are.
TEST_F(HistoryFileWindowTest, OfManyTheNewestAreListedAndAllAreCounted) {
    outside(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5002) "
            "INSERT INTO Chemical (chm_Name) SELECT 'Urea ' || i FROM n"_s);
    const HistoryFileWindow window(context, connection);
    setDay(window, "txtFrom", QDate(2000, 1, 1));
    setDay(window, "txtTo", QDate(2999, 1, 1));
    const auto labels =
        window.findChild<QTableView*>(u"grdChanges"_s)->parentWidget()->findChildren<QLabel*>();
    EXPECT_TRUE(support::waitFor([&] { return labels.constFirst()->text() == "5,003 changes"_L1; }))
        << labels.constFirst()->text().toStdString();
    EXPECT_EQ(rows(window), 5000);
    EXPECT_EQ(cell(window, 0, 3), "Chemical: Urea 5002");
    EXPECT_EQ(cell(window, 4999, 3), "Chemical: Urea 3");
    EXPECT_EQ(labels.constLast()->text().toStdString(), "The newest are listed; print and export have all.");
}

// What is written down meanwhile is none of the list that was opened, and reading on disturbs nobody.
TEST_F(HistoryFileWindowTest, AListReadInPiecesStaysWhatItWasAndKeepsTheChosenRow) {
    outside(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
            "INSERT INTO Chemical (chm_Name) SELECT 'Urea ' || i FROM n"_s);
    const HistoryFileWindow window(context, connection);
    const auto* list = window.findChild<QTableView*>(u"grdChanges"_s);
    const int atOnce = rows(window);
    ASSERT_GE(atOnce, 50) << "the first picture";
    ASSERT_LT(atOnce, 3001) << "else nothing is read in pieces here";
    list->selectionModel()->select(list->model()->index(3, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    outside(u"INSERT INTO Chemical (chm_Name) VALUES ('Menthol')"_s);
    EXPECT_TRUE(support::waitFor([&] { return rows(window) >= 3001; })) << rows(window);
    EXPECT_EQ(cell(window, 0, 3), "Chemical: Urea 3000");
    EXPECT_EQ(cell(window, 2999, 3), "Chemical: Urea 1");
    EXPECT_TRUE(list->selectionModel()->isRowSelected(3));
    const auto title = list->parentWidget()->findChildren<QLabel*>().constFirst()->text();
    EXPECT_EQ(title.toStdString(), "3,001 changes");
}

/// With the program's options, which the papers bear.
class HistoryOutputTest : public HistoryFileWindowTest {
protected:
    void SetUp() override {
        HistoryFileWindowTest::SetUp();
        programFolder.write(
            u"options.xml"_s,
            "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation/><Language>0"
            "</Language><DefPrinter/><DefCurrency>$</DefCurrency></Options><Pharmacy><StoreName>Kelmar Systems"
            "</StoreName><Address/><City/><State/><PostalCode/><Phone/><Fax/><DEA/><ShowPatients>1"
            "</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>");
        context.options = std::make_shared<clsOptions>(context);
        for (const char* name : {"One", "Two", "Three", "Four"})
            run(qPrintable(u"INSERT INTO Chemical (chm_Name) VALUES ('%1')"_s.arg(QLatin1String(name))));
        outside(
            u"DROP TRIGGER History_Sealed; UPDATE History SET hst_Zone = 0, hst_When = '2026-03-0' || HistoryID || "
            "' 10:00:00.000'"_s);
    }

    void TearDown() override {
        context.options.reset();  // it writes into the folder
        HistoryFileWindowTest::TearDown();
    }

    support::TempProgramFolder programFolder;
};

TEST_F(HistoryOutputTest, TheDaysOnShowArePrintedAndExported) {
    HistoryFileWindow window(context, connection);
    setDay(window, "txtFrom", QDate(2026, 3, 3));
    setDay(window, "txtTo", QDate(2026, 3, 4));
    ASSERT_EQ(rows(window), 2);
    window.setModal(true);
    window.show();
    window.findChild<QPushButton*>(u"cmdPrint"_s)->click();
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto shown = std::find_if(all.begin(), all.end(), [](const QWidget* widget) {
        return qobject_cast<const platform::PreviewWindow*>(widget) && widget->isVisible();
    });
    ASSERT_NE(shown, all.end());
    auto* preview = static_cast<platform::PreviewWindow*>(*shown);
    QString texts;
    for (const platform::Page& page : preview->document().pages) {
        for (const platform::PageItem& item : page.items)
            texts += item.text + u'\n';
    }
    preview->close();
    EXPECT_TRUE(texts.contains("3/3/2026 – 3/4/2026")) << texts.toStdString();
    EXPECT_TRUE(texts.contains("Two") && texts.contains("Three")) << texts.toStdString();
    EXPECT_FALSE(texts.contains("One") || texts.contains("Four")) << texts.toStdString();
    window.findChild<QPushButton*>(u"cmdExport"_s)->click();
    QFile file(programFolder.path(u"ChangeHistory.xls"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("\xD0\xCF\x11\xE0"));
}

}  // namespace
