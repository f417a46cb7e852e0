// Where did it go, as its user sees it: what is typed, what the lists show, what a row opens.
#include "core/TraceWindow.h"
#include "config/clsOptions.h"
#include "core/TraceList.h"
#include "db/Archive.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"
#include "trace/TracePharmacy.h"

#include <QAbstractItemModel>
#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPaintEvent>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <memory>

namespace sorvanto {
namespace {

class TraceWindowTest : public TraceTest {
protected:
    void SetUp() override {
        TraceTest::SetUp();
        batch(1, u"B0001"_s, u"01-05"_s, u"Base L1, Active L2"_s);
        batch(2, u"B0900"_s, u"02-05"_s, u"Base L1"_s);
        batch(3, u"C3"_s, u"03-05"_s, u"Stock B0001"_s);
        prescription(1, 1, u"01-06"_s);
        prescription(2, 2, u"02-06"_s);
        sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) VALUES (7, 'Base', 'L1', 'N-Base')"_s);
    }
    void open(const QString& text, std::int64_t key = 0) {
        window = std::make_unique<TraceWindow>(context, tracer(), TraceWindow::Start{text, key});
    }
    void setDay(const QString& name, const QString& text) {
        auto& box = *window->findChild<platform::DateBox*>(name)->findChild<QLineEdit*>();
        box.selectAll();
        QTest::keyClicks(&box, text);
        if (text.isEmpty())
            QTest::keyClick(&box, Qt::Key_Delete);
    }
    QPushButton& button(const QString& name) { return *window->findChild<QPushButton*>(name); }
    void type(const QString& text) {
        auto& box = *window->findChild<QLineEdit*>(u"txtTrace"_s);
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Return);
    }
    QTableView& list(const QString& name) { return *window->findChild<QTableView*>(name); }
    /// The texts of one column, parted by blanks.
    QString column(const QString& name, int number) {
        const QAbstractItemModel& rows = *list(name).model();
        QStringList texts;
        for (int row = 0; row < rows.rowCount(); ++row)
            texts << rows.index(row, number).data().toString();
        return texts.join(u' ');
    }
    QString label(const QString& name) { return window->findChild<QLabel*>(name)->text(); }

    Context context;
    std::unique_ptr<TraceWindow> window;
};

TEST_F(TraceWindowTest, ALotShowsItsBatchesPrescriptionsAndTotals) {
    open(u"l1"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Base"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900 B0001"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 3), u"with B0001  "_s) << "through which stock base it came";
    EXPECT_EQ(column(u"grdPrescriptions"_s, 0), u"Xu, Jin Abernathy, Margaret"_s);
    EXPECT_EQ(column(u"grdPrescriptions"_s, 1), u"440-555-0188 440-555-0117"_s);
    EXPECT_EQ(label(u"lblTotals"_s), u"3 batches · 2 prescriptions · 2 patients"_s);
    EXPECT_FALSE(window->findChild<QLabel*>(u"lblNothing"_s)->isVisibleTo(window.get()));
}

TEST_F(TraceWindowTest, AChosenBatchShowsItsPrescriptionsAlone) {
    open(u"L1"_s);
    list(u"grdBatches"_s).selectRow(1);
    EXPECT_EQ(column(u"grdPrescriptions"_s, 0), u"Xu, Jin"_s);
    list(u"grdBatches"_s).clearSelection();
    EXPECT_EQ(list(u"grdPrescriptions"_s).model()->rowCount(), 2);
}

/// What is painted anew, of a list.
class Painted : public QObject {
public:
    explicit Painted(QTableView& view) { view.viewport()->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion region;
};

TEST_F(TraceWindowTest, ByTheArrowsTheFramedRowIsChosenFirst) {
    open(u"L1"_s);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTableView& batches = list(u"grdBatches"_s);
    batches.setFocus(Qt::TabFocusReason);
    ASSERT_EQ(batches.currentIndex().row(), 0);
    EXPECT_FALSE(batches.selectionModel()->hasSelection()) << "all prescriptions until one is chosen";
    QTest::keyClick(&batches, Qt::Key_Down);
    EXPECT_EQ(batches.selectionModel()->selectedRows().value(0).row(), 0);
    QTest::keyClick(&batches, Qt::Key_Down);
    EXPECT_EQ(batches.selectionModel()->selectedRows().value(0).row(), 1);
}

TEST_F(TraceWindowTest, TheFrameLeavesTheWholeFormerRow) {
    open(u"L1"_s);
    window->show();
    QTableView& batches = list(u"grdBatches"_s);
    batches.selectionModel()->setCurrentIndex(batches.model()->index(0, 0), QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    Painted painted(batches);
    batches.selectionModel()->setCurrentIndex(batches.model()->index(1, 0), QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    for (int column = 0; column < batches.model()->columnCount(); ++column)
        EXPECT_TRUE(painted.region.contains(batches.visualRect(batches.model()->index(0, column)).center()))
            << column;
}

TEST_F(TraceWindowTest, AChosenIngredientNarrowsTheBatches) {
    batch(4, u"D4"_s, u"04-05"_s, u"Other L1"_s);
    open(u"L1"_s);
    ASSERT_EQ(column(u"grdFound"_s, 0), u"Base Other"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"D4 C3 B0900 B0001"_s);
    list(u"grdFound"_s).selectRow(1);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"D4"_s);
}

TEST_F(TraceWindowTest, ABatchShowsWhatIsInItAndWhereItWent) {
    open(u"C3"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Stock Base Active"_s);
    EXPECT_EQ(column(u"grdFound"_s, 4), u" with B0001 with B0001"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3"_s);
    type(u"b0001"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
}

TEST_F(TraceWindowTest, APatientIsFoundByName) {
    open(u"aber"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Abernathy, Margaret"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0001"_s) << "the only one needs no choice";
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Jin', 'Xu-Kent')"_s);
    type(u"xu"_s);
    EXPECT_EQ(list(u"grdFound"_s).model()->rowCount(), 2);
    EXPECT_EQ(list(u"grdBatches"_s).model()->rowCount(), 0) << "which of them is for the user to say";
    list(u"grdFound"_s).selectRow(0);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s);
}

TEST_F(TraceWindowTest, DatesBoundTheBatchesAndSayWhatTheyHide) {
    open(u"L1"_s);
    setDay(u"txtFrom"_s, u"2026-02-01"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900"_s);
    EXPECT_EQ(column(u"grdPrescriptions"_s, 0), u"Xu, Jin"_s);
    EXPECT_EQ(label(u"lblTotals"_s), u"2 batches · 1 prescription · 1 patient"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"1 batch outside these dates is not listed."_s);
    setDay(u"txtTo"_s, u"2026-02-05"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s) << "the last day belongs to them";
    EXPECT_EQ(label(u"lblNothing"_s), u"2 batches outside these dates are not listed."_s);
    setDay(u"txtFrom"_s, {});
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900 B0001"_s);
    type(u"aber"_s);
    setDay(u"txtTo"_s, u"2026-01-05"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), QString());
    EXPECT_EQ(label(u"lblNothing"_s), u"1 prescription outside these dates is not listed."_s);
    setDay(u"txtTo"_s, {});
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0001"_s);
    EXPECT_TRUE(label(u"lblNothing"_s).isEmpty());
}

TEST_F(TraceWindowTest, ItOpensAtTheRecordThatItWasAskedFrom) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot) VALUES (8, 'Other', 'L1')"_s);
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Jin', 'Xu')"_s);
    open(u"L1"_s, 8);
    EXPECT_EQ(list(u"grdFound"_s).selectionModel()->selectedRows().value(0).data().toString(), u"Other"_s);
    EXPECT_EQ(list(u"grdBatches"_s).model()->rowCount(), 0) << "it went nowhere, unlike its namesake";
    open(u"Xu, Jin"_s, 2);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s);
    open(u"Xu, Jin"_s, 3);
    EXPECT_EQ(column(u"grdBatches"_s, 2), QString());
}

/// With the program's options, which the papers bear.
class TraceOutputTest : public TraceWindowTest {
protected:
    void SetUp() override {
        TraceWindowTest::SetUp();
        folder.write(
            u"options.xml"_s,
            "<Configuration><Version>1</Version><Options><CommPort>1</CommPort><DBLocation/><Language>0"
            "</Language><DefPrinter/><DefCurrency>$</DefCurrency></Options><Pharmacy><StoreName>Kelmar Systems"
            "</StoreName><Address/><City/><State/><PostalCode/><Phone/><Fax/><DEA/><ShowPatients>1"
            "</ShowPatients><OverrideSpeed>0</OverrideSpeed></Pharmacy></Configuration>");
        context.options = std::make_shared<clsOptions>(context);
    }
};

TEST_F(TraceOutputTest, TheListOnShowIsPrinted) {
    open(u"L1"_s);
    setDay(u"txtFrom"_s, u"2026-02-01"_s);
    window->setModal(true);
    window->show();
    button(u"cmdPrint"_s).click();
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto shown = std::find_if(all.begin(), all.end(), [](const QWidget* widget) {
        return qobject_cast<const platform::PreviewWindow*>(widget) && widget->isVisible();
    });
    ASSERT_NE(shown, all.end());
    auto* preview = static_cast<platform::PreviewWindow*>(*shown);
    EXPECT_TRUE(preview->isModal()) << "else this window would keep every click from it";
    QString texts;
    for (const platform::Page& page : preview->document().pages) {
        for (const platform::PageItem& item : page.items)
            texts += item.text + u'\n';
    }
    EXPECT_TRUE(texts.contains("B0900") && !texts.contains("\nB0001\n")) << texts.toStdString();
    EXPECT_TRUE(texts.contains("1 batch outside these dates is not listed."));
    preview->close();
}

TEST_F(TraceOutputTest, TheListOnShowIsExported) {
    open(u"L1"_s);
    button(u"cmdExport"_s).click();
    EXPECT_EQ(label(u"lblNothing"_s), u"Exported Recall.xls"_s);
    QFile file(path(u"Recall.xls"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("\xD0\xCF\x11\xE0"));
}

TEST_F(TraceWindowTest, WithoutAQuestionThereIsNothingToPrint) {
    open({});
    EXPECT_FALSE(button(u"cmdPrint"_s).isEnabled());
    EXPECT_FALSE(button(u"cmdExport"_s).isEnabled());
    type(u"nowhere"_s);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled()) << "that it is nowhere may be wanted on paper";
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Jin', 'Xu-Kent')"_s);
    type(u"xu"_s);
    EXPECT_FALSE(button(u"cmdPrint"_s).isEnabled()) << "which patient is not chosen";
    list(u"grdFound"_s).selectRow(0);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled());
}

TEST_F(TraceWindowTest, EveryFieldHasAName) {
    open(u"L1"_s);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(window.get()))
            continue;
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
            << widget->objectName().toStdString() << ' ' << widget->metaObject()->className();
    }
}

TEST_F(TraceWindowTest, NothingFoundSaysWhatWasSearched) {
    open(u"nowhere"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"Nothing has this lot, NDC or name: 3 batches were searched."_s);
    EXPECT_EQ(label(u"lblTotals"_s), u"0 batches · 0 prescriptions · 0 patients"_s);
    type(u"L2"_s);
    EXPECT_TRUE(label(u"lblNothing"_s).isEmpty());
    type(u" "_s);
    EXPECT_TRUE(label(u"lblNothing"_s).isEmpty()) << "nothing was asked";
}

TEST_F(TraceWindowTest, AChemicalThatNoBatchTookInSaysWhatWasSearched) {
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) VALUES (8, 'Unused', 'L9', 'N-9')"_s);
    open(u"L9"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Unused"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"No batch took it in: 3 batches were searched."_s);
    setDay(u"txtFrom"_s, u"2026-12-31"_s);
    type(u"L1"_s);
    EXPECT_FALSE(label(u"lblNothing"_s).contains(u"No batch took it in"_s)) << "the dates hide them";
}

TEST_F(TraceWindowTest, ABatchThatLacksIngredientsJoinsTheListByItself) {
    batch(4, u"D4"_s, u"04-05"_s, u"Other L7"_s);
    sql(u"UPDATE LogChem SET lch_Cost = 1, lch_AWP = 1, lch_QTY = 2 WHERE LogID = 4"_s);
    sql(u"UPDATE Log SET log_Cost = 9, log_AWP = 1, log_Quantity = 10 WHERE LogID = 4"_s);
    open(u"L1"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900 B0001"_s) << "at once";
    QTest::qWait(0);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900 B0001 D4"_s);
    EXPECT_TRUE(column(u"grdBatches"_s, 3).endsWith(u"ingredients not complete"_s));
}

TEST_F(TraceWindowTest, ABatchWithoutIngredientsIsNamedApart) {
    batch(4, u"D4"_s, u"04-05"_s, QString());
    open(u"L2"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001 D4"_s);
    EXPECT_TRUE(column(u"grdBatches"_s, 3).endsWith(u"ingredients not known"_s));
    EXPECT_EQ(label(u"lblTotals"_s),
              u"2 batches · 1 prescription · 1 patient · 1 batch whose ingredients are not known"_s);
    list(u"grdBatches"_s).selectRow(2);
    EXPECT_EQ(column(u"grdPrescriptions"_s, 0), u"Abernathy, Margaret"_s)
        << "it limits nothing: what it has to do with the lot is not known";
}

TEST_F(TraceWindowTest, ASimilarLotIsAButtonThatSearchesForIt) {
    open(u"BOOO1"_s);
    auto buttons = window->findChildren<QPushButton*>();
    const auto similar = std::find_if(buttons.begin(), buttons.end(),
                                      [](const QPushButton* button) { return button->text() == u"B0001"_s; });
    ASSERT_NE(similar, buttons.end());
    EXPECT_EQ(list(u"grdBatches"_s).model()->rowCount(), 0) << "not mixed in";
    (*similar)->click();
    EXPECT_EQ(window->findChild<QLineEdit*>(u"txtTrace"_s)->text(), u"B0001"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
}

TEST_F(TraceWindowTest, ASimilarLotOfOtherBlanksIsReached) {
    sql(u"UPDATE LogChem SET lch_Lot = 'L1' || char(160) WHERE LogID = 2"_s);
    open(u"L1"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
    auto buttons = window->findChildren<QPushButton*>();
    const auto similar = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* button) {
        return button->text() == u"L1\u00a0"_s;
    });
    ASSERT_NE(similar, buttons.end());
    (*similar)->click();
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s);
    open(u"L1\u00a0"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s) << "as its record has it";
}

TEST_F(TraceWindowTest, TypingSearchesByItselfAfterAMoment) {
    open({});
    QTest::keyClicks(window->findChild<QLineEdit*>(u"txtTrace"_s), u"L2"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return column(u"grdBatches"_s, 2) == u"C3 B0001"_s; }));
}

TEST_F(TraceWindowTest, ATextThatItOpensWithIsTypedOver) {
    open(u"L1"_s);
    auto& box = *window->findChild<QLineEdit*>(u"txtTrace"_s);
    QTest::keyClicks(&box, u"B0"_s);
    EXPECT_EQ(box.text(), u"B0"_s);
}

TEST_F(TraceWindowTest, EnterOnARowOpensItsRecord) {
    const auto enterOn = [&](const QString& name, int row) {
        open(u"L1"_s);
        list(name).setCurrentIndex(list(name).model()->index(row, 0));
        QTest::keyClick(&list(name), Qt::Key_Return);
        return window->wanted();
    };
    EXPECT_EQ(enterOn(u"grdBatches"_s, 1).screen, logs);
    EXPECT_EQ(window->wanted().key, 2);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(enterOn(u"grdPrescriptions"_s, 1).screen, patients);
    EXPECT_EQ(window->wanted().key, 1);
    EXPECT_EQ(enterOn(u"grdFound"_s, 0).screen, chemicals);
    EXPECT_EQ(window->wanted().key, 7);
    open(u"C3"_s);
    const auto enterOnContents = [&](int row) {
        list(u"grdFound"_s).setCurrentIndex(list(u"grdFound"_s).model()->index(row, 0));
        QTest::keyClick(&list(u"grdFound"_s), Qt::Key_Return);
        return window->wanted();
    };
    EXPECT_EQ(enterOnContents(1).screen, chemicals);
    EXPECT_EQ(window->wanted().key, 7);
    EXPECT_EQ(enterOnContents(0).screen, logs) << "a stock base was made here";
    EXPECT_EQ(window->wanted().key, 1);
    sql(u"DELETE FROM Chemical"_s);
    EXPECT_EQ(enterOn(u"grdFound"_s, 0).key, 0);
    EXPECT_EQ(label(u"lblNothing"_s), u"This chemical is not among the chemicals any more."_s);
}

TEST_F(TraceWindowTest, WhatLiesInAnArchiveIsListedAndSaysSo) {
    archiveDatabase(path(), path(u"old.mdb"_s), QDate(2026, 2, 1));
    open(u"L2"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
    list(u"grdBatches"_s).setCurrentIndex(list(u"grdBatches"_s).model()->index(1, 0));
    QTest::keyClick(&list(u"grdBatches"_s), Qt::Key_Return);
    EXPECT_EQ(window->wanted().key, 0);
    EXPECT_EQ(label(u"lblNothing"_s), u"This batch lies in an archive: open that file to see its record."_s);
    QFile::remove(path(u"old.mdb"_s));
    open(u"L9"_s);
    EXPECT_EQ(
        label(u"lblNothing"_s),
        u"Nothing has this lot, NDC or name: 2 batches were searched.\nAn archive with 1 batch from 1/5/2026 to "
        "1/5/2026 is not at hand and was not searched.\nWhat is counted here is not final."_s);
}

}  // namespace
}  // namespace sorvanto
