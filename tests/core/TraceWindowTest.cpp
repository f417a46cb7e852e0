// Where did it go, as its user sees it: what is typed, what the lists show, what a row opens.
#include "core/TraceWindow.h"
#include "config/clsOptions.h"
#include "core/TraceList.h"
#include "db/Archive.h"
#include "platform/report/PreviewWindow.h"
#include "platform/widgets/Boxes.h"
#include "shared/Context.h"
#include "support/Waiting.h"
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
#include <QTimer>
#include <algorithm>
#include <functional>
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
    void open(const QString& text, std::int64_t key = 0,
              TraceWindow::Found found = TraceWindow::Found::Chemicals) {
        window = std::make_unique<TraceWindow>(context, tracer(), TraceWindow::Start{text, key, found});
        window->begin();
    }
    /// Once all is looked for; the texts of the buttons that offer what else was found, parted by bars.
    std::string offers() {
        QCoreApplication::processEvents();
        QStringList texts;
        for (int number = 0; number < 4; ++number) {
            if (const auto* offer = window->findChild<QPushButton*>(u"cmdFound%1"_s.arg(number)))
                texts << offer->text();
        }
        return texts.join(u'|').toStdString();
    }
    bool shown(const QString& name) { return list(name).isVisibleTo(window.get()); }
    /// By the keys, as far as its record.
    TraceWindow::Wanted enterOn(const QString& name, int row) {
        list(name).setCurrentIndex(list(name).model()->index(row, 0));
        QTest::keyClick(&list(name), Qt::Key_Return);
        return window->wanted();
    }
    void formulas() const {
        sql(u"INSERT INTO Formula (FormulaID, frm_Name, frm_Strength) VALUES (3, 'Salve', '1%'), (4, 'Gel', NULL)"_s);
        sql(u"INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (3, 7), (4, 7)"_s);
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
    ASSERT_TRUE(support::becomesActive(window.get()));
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

TEST_F(TraceWindowTest, TheFormulasThatUseAChemicalNowAreListedAndOpen) {
    formulas();
    sql(u"INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot) VALUES (8, 'Other', 'L1')"_s);
    sql(u"INSERT INTO FormChem (FormulaID, ChemicalID) VALUES (4, 8)"_s);
    open(u"L1"_s);
    EXPECT_TRUE(shown(u"grdFormulas"_s));
    EXPECT_EQ(column(u"grdFormulas"_s, 0), u"Gel Salve 1%"_s) << "of all that was found, each once";
    EXPECT_EQ(list(u"grdFormulas"_s).accessibleName(), u"Formulas that use it now"_s);
    list(u"grdFound"_s).selectRow(1);
    EXPECT_EQ(column(u"grdFormulas"_s, 0), u"Gel"_s) << "of the chosen one";
    list(u"grdFound"_s).selectRow(0);
    EXPECT_EQ(enterOn(u"grdFormulas"_s, 1).screen, ScreenNumber::formulas);
    EXPECT_EQ(window->wanted().key, 3);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    for (const QString& other : {u"B0900"_s, u"aber"_s, u"nowhere"_s, u"Salve"_s}) {
        open(other);
        EXPECT_FALSE(shown(u"grdFormulas"_s)) << "no chemical: " << other.toStdString();
    }
}

TEST_F(TraceWindowTest, APatientNamedAsAChemicalIsOfferedBesideIt) {
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Ann', 'Basey'), (4, 'Bob', 'Basel')"_s);
    prescription(2, 4, u"02-07"_s);
    open(u"base"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Base"_s) << "the chemical first";
    ASSERT_EQ(offers(), "Patients found: 2");
    window->show();
    window->activateWindow();
    ASSERT_TRUE(support::becomesActive(window.get()));
    window->findChild<QLineEdit*>(u"txtTrace"_s)->setFocus();
    for (int stops = 0; stops < 9 && !qobject_cast<QPushButton*>(QApplication::focusWidget()); ++stops)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), u"cmdFound2"_s) << "the keys come by";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Basel, Bob Basey, Ann"_s);
    EXPECT_EQ(QApplication::focusWidget(), &list(u"grdFound"_s));
    EXPECT_EQ(column(u"grdBatches"_s, 2), QString()) << "which of them is for the user to say";
    EXPECT_EQ(offers(), "Chemicals found: 1") << "and back";
    QCoreApplication::processEvents();
    EXPECT_LT(button(u"cmdFound0"_s).width(), window->width() / 2) << "as wide as its text";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s);
    EXPECT_EQ(enterOn(u"grdFound"_s, 0).screen, patients);
    EXPECT_EQ(window->wanted().key, 4);
    button(u"cmdFound0"_s).click();
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Base"_s);
    type(u"B0900"_s);
    EXPECT_EQ(offers(), "") << "of this text there is nothing else";
    type(u"xu"_s);
    EXPECT_EQ(offers(), "") << "the patient is what is shown";
}

TEST_F(TraceWindowTest, APatientNamedAsABatchsLotIsOffered) {
    sql(u"UPDATE Patient SET pat_LName = 'B0900' WHERE PatientID = 1"_s);
    open(u"b0900"_s);
    EXPECT_EQ(offers(), "Patients found: 1");
    button(u"cmdFound2"_s).click();
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0001"_s) << "the only one needs no choice";
    EXPECT_EQ(offers(), "Batches found: 1");
}

TEST_F(TraceWindowTest, ABatchThatIsStockedTooShowsWhatIsInItWhereItIsMeant) {
    sql(u"INSERT INTO LogChem (LogID, lch_Name, lch_Lot) VALUES (3, 'Other', 'B0001')"_s);
    open(u"B0001"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Other Stock"_s);
    EXPECT_EQ(offers(), "Batches found: 1");
    button(u"cmdFound1"_s).click();
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Base Active"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
    EXPECT_EQ(offers(), "Chemicals found: 2");
    open(u"B0001"_s, 0, TraceWindow::Found::Batches);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Base Active"_s) << "as the log asks";
}

TEST_F(TraceWindowTest, APatientWhoGotNothingSaysWhatWasSearched) {
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Ann', 'Kent')"_s);
    open(u"kent"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"Nothing was dispensed: 3 batches were searched."_s);
    type(u"abern"_s);
    setDay(u"txtTo"_s, u"2025-01-05"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"1 prescription outside these dates is not listed."_s);
}

TEST_F(TraceWindowTest, AFormulaLeadsToItsBatches) {
    formulas();
    open(u"salve"_s);
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Salve"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900 B0001"_s);
    EXPECT_EQ(label(u"lblTotals"_s), u"3 batches · 2 prescriptions · 2 patients"_s);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled());
    EXPECT_EQ(enterOn(u"grdFound"_s, 0).screen, ScreenNumber::formulas);
    EXPECT_EQ(window->wanted().key, 3);
    type(u"gel"_s);
    EXPECT_EQ(label(u"lblNothing"_s), u"No batch was made of it: 3 batches were searched."_s);
    sql(u"INSERT INTO Formula (FormulaID, frm_Name) VALUES (5, 'Salve')"_s);
    type(u"salve"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), QString()) << "which of them is for the user to say";
    EXPECT_FALSE(button(u"cmdPrint"_s).isEnabled());
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
    sql(u"INSERT INTO Formula (FormulaID, frm_Name) VALUES (3, 'Base'), (4, 'Base')"_s);
    open(u"Base"_s, 3, TraceWindow::Found::Formulas);
    EXPECT_EQ(list(u"grdFound"_s).selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0900 B0001"_s);
    open(u"Base"_s, 4, TraceWindow::Found::Formulas);
    EXPECT_EQ(column(u"grdBatches"_s, 2), QString()) << "of the other one nothing was made";
    EXPECT_EQ(offers(), "Chemicals found: 1");
    sql(u"UPDATE Patient SET pat_LName = 'Base', pat_FName = NULL WHERE PatientID = 2"_s);
    open(u"Base"_s, 2, TraceWindow::Found::Patients);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"B0900"_s) << "though a chemical is called so";
    EXPECT_EQ(offers(), "Chemicals found: 1|Formulas found: 2");
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
    EXPECT_TRUE(support::waitFor([&] { return column(u"grdBatches"_s, 2) == u"C3 B0001"_s; }));
}

TEST_F(TraceWindowTest, ATextThatItOpensWithIsTypedOver) {
    open(u"L1"_s);
    auto& box = *window->findChild<QLineEdit*>(u"txtTrace"_s);
    QTest::keyClicks(&box, u"B0"_s);
    EXPECT_EQ(box.text(), u"B0"_s);
}

TEST_F(TraceWindowTest, EnterOnARowOpensItsRecord) {
    const auto fromL1 = [&](const QString& name, int row) {
        open(u"L1"_s);
        return enterOn(name, row);
    };
    EXPECT_EQ(fromL1(u"grdBatches"_s, 1).screen, logs);
    EXPECT_EQ(window->wanted().key, 2);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(fromL1(u"grdPrescriptions"_s, 1).screen, patients);
    EXPECT_EQ(window->wanted().key, 1);
    EXPECT_EQ(fromL1(u"grdFound"_s, 0).screen, chemicals);
    EXPECT_EQ(window->wanted().key, 7);
    open(u"C3"_s);
    EXPECT_EQ(enterOn(u"grdFound"_s, 1).screen, chemicals);
    EXPECT_EQ(window->wanted().key, 7);
    EXPECT_EQ(enterOn(u"grdFound"_s, 0).screen, logs) << "a stock base was made here";
    EXPECT_EQ(window->wanted().key, 1);
    sql(u"DELETE FROM Chemical"_s);
    EXPECT_EQ(fromL1(u"grdFound"_s, 0).key, 0);
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

/// A text that stands for so many that looking for them takes more than one piece.
class LongTraceTest : public TraceWindowTest {
protected:
    static constexpr int many = 6'000;
    void SetUp() override {
        TraceWindowTest::SetUp();
        sql(u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
            "INSERT INTO Chemical (ChemicalID, chm_Name, chm_Lot, chm_NDC) SELECT 100 + i, 'Many ' || i, 'M' || i, "
            "'N' || i FROM n"_s.arg(many));
        m_turn.callOnTimeout([this] {
            m_turn.stop();
            action();
        });
    }
    /// Does this as soon as something else has a turn while it looks.
    void whileItLooks(std::function<void()> what) {
        turned = false;
        most = 0;
        QObject::connect(list(u"grdFound"_s).model(), &QAbstractItemModel::modelReset, &m_turn,
                         [this] { most = std::max(most, rows(u"grdFound"_s)); });
        action = [this, what = std::move(what)] {
            turned = true;
            what();
        };
        m_turn.start(0);
    }
    int rows(const QString& name) { return list(name).model()->rowCount(); }
    void expectNothingToPrint() {
        EXPECT_FALSE(button(u"cmdPrint"_s).isEnabled());
        EXPECT_FALSE(button(u"cmdExport"_s).isEnabled());
        for (const QString& name : {u"grdFound"_s, u"grdFormulas"_s, u"grdBatches"_s, u"grdPrescriptions"_s})
            EXPECT_EQ(rows(name), 0) << name.toStdString();
    }

    std::function<void()> action;
    bool turned = false;
    int most = 0;  ///< rows that were found and on show

private:
    QTimer m_turn;
};

TEST_F(LongTraceTest, NothingIsShownOrPrintedOfAListThatIsNotComplete) {
    open(u"L1"_s);
    whileItLooks([this] {
        expectNothingToPrint();
        EXPECT_EQ(label(u"lblTotals"_s), u"The list is not complete yet."_s);
    });
    type(u"many"_s);
    EXPECT_TRUE(turned);
    EXPECT_EQ(rows(u"grdFound"_s), many);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([this] {
        return label(u"lblTotals"_s).startsWith(u"0 batches"_s) &&
               !label(u"lblTotals"_s).contains(u"complete"_s);
    }));
}

TEST_F(LongTraceTest, AnotherTextEndsWhatRuns) {
    open(u"B0900"_s);
    whileItLooks([this] { type(u"L2"_s); });
    type(u"many"_s);
    EXPECT_TRUE(turned);
    EXPECT_LT(most, many) << "what was found of the former text never came on show";
    EXPECT_EQ(column(u"grdFound"_s, 0), u"Active"_s);
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled());
}

TEST_F(LongTraceTest, AKeyEndsWhatRunsBeforeTheNextTextIsLookedFor) {
    open(u"L1"_s);
    whileItLooks([this] { QTest::keyClicks(window->findChild<QLineEdit*>(u"txtTrace"_s), u"x"_s); });
    type(u"many"_s);
    EXPECT_TRUE(turned);
    EXPECT_LT(most, many);
    expectNothingToPrint();
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return label(u"lblNothing"_s).startsWith(u"Nothing has this lot"_s); }));
}

TEST_F(LongTraceTest, TypedTextCantBePrintedBeforeItIsLookedFor) {
    open(u"L1"_s);
    ASSERT_TRUE(button(u"cmdPrint"_s).isEnabled());
    QTest::keyClicks(window->findChild<QLineEdit*>(u"txtTrace"_s), u"L2"_s);
    EXPECT_FALSE(button(u"cmdPrint"_s).isEnabled());
    EXPECT_FALSE(button(u"cmdExport"_s).isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return button(u"cmdPrint"_s).isEnabled(); }));
    EXPECT_EQ(column(u"grdBatches"_s, 2), u"C3 B0001"_s);
}

TEST_F(LongTraceTest, ClosingTheWindowEndsWhatRuns) {
    open(u"L1"_s);
    whileItLooks([this] { window->reject(); });
    type(u"many"_s);
    EXPECT_TRUE(turned);
    EXPECT_TRUE(window->wasClosed());
    EXPECT_LT(most, many);
    expectNothingToPrint();
}

TEST_F(LongTraceTest, WhatIsStoppedSaysSoAndIsLookedForAgain) {
    open(u"L1"_s);
    whileItLooks([this] { button(u"cmdStop"_s).click(); });
    type(u"many"_s);
    EXPECT_TRUE(turned);
    expectNothingToPrint();
    EXPECT_EQ(label(u"lblNothing"_s),
              u"Stopped: the list is not complete. Enter in the text searches again."_s);
    QTest::keyClick(window->findChild<QLineEdit*>(u"txtTrace"_s), Qt::Key_Return);
    EXPECT_EQ(rows(u"grdFound"_s), many);
    EXPECT_TRUE(button(u"cmdPrint"_s).isEnabled());
}

TEST_F(LongTraceTest, ARowIsOpenedThoughItLooks) {
    open(u"many"_s);
    whileItLooks([this] { enterOn(u"grdFound"_s, 4); });
    setDay(u"txtFrom"_s, u"2026-02-01"_s);
    EXPECT_TRUE(turned);
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(window->wanted().screen, chemicals);
    EXPECT_GT(window->wanted().key, 100);
}

TEST_F(TraceOutputTest, WhatChangedSinceIsInTheListThatIsExported) {
    open(u"L1"_s);
    QCoreApplication::processEvents();
    ASSERT_EQ(column(u"grdPrescriptions"_s, 0), u"Xu, Jin Abernathy, Margaret"_s);
    sql(u"INSERT INTO Patient (PatientID, pat_FName, pat_LName) VALUES (3, 'Ann', 'Kent')"_s);
    prescription(1, 3, u"03-06"_s);
    button(u"cmdExport"_s).click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(u"lblNothing"_s) == u"Exported Recall.xls"_s; }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return column(u"grdPrescriptions"_s, 0).contains(u"Kent"_s); }));
}

}  // namespace
}  // namespace sorvanto
