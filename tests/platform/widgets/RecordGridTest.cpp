// A grid over a real result set of a real file: current row, formats, edits by keys and mouse, refusals.
#include "platform/widgets/RecordGrid.h"
#include "SampleRows.h"
#include "ScriptedAsker.h"
#include "Settle.h"
#include "TestDatabase.h"
#include "Waiting.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/AnswerWait.h"
#include "platform/widgets/Boxes.h"
#include "platform/widgets/Hint.h"
#include "platform/widgets/Rows.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/WorkWindow.h"

#include <QApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace platform;

enum Column { Key, Name, Qty, Cost, Done, Made, Missing };

class Grids : public testing::Test {
protected:
    void SetUp() override {
        grid = new RecordGrid(&window);
        after = new QPushButton("after", &window);
        auto* column = new QVBoxLayout(&window);
        column->addWidget(grid);
        column->addWidget(after);
        window.resize(900, 400);
        grid->setColumns({{"lineid", "LineID", 0, false, true, {}},
                          {"NAME", "Name", 200, true, false, {}},
                          {"Qty", "Qty", 100, true, false, "#0.000"},
                          {"Cost", "Cost", 100, true, false, {}},
                          {"Done", "QS", 80, true, false, {}},
                          {"Made", "Date", 120, false, false, {}},
                          {"Nowhere", "Missing", 0, true, false, {}}});
        grid->setAllowUpdate(true);
        rows = sample.open();
        grid->setDataSource(rows);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(support::becomesActive(&window));
        grid->setFocus();
    }
    QString shown(int row, int column) const { return grid->model()->index(row, column).data().toString(); }
    QPoint place(int row, int column) const {
        return grid->visualRect(grid->model()->index(row, column)).center();
    }
    void click(int row, int column) {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, place(row, column));
    }
    QLineEdit* editor() const { return grid->viewport()->findChild<QLineEdit*>("cellEditor"); }
    /// Opens the cell's editor with F2 and types over what is there.
    void type(int row, int column, const QString& text) {
        grid->setCurrentIndex(grid->model()->index(row, column));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QTest::keyClick(grid, Qt::Key_F2);
        ASSERT_NE(editor(), nullptr);
        editor()->selectAll();
        QTest::keyClicks(editor(), text);
    }

    support::SampleRows sample;
    support::ScriptedAsker asker;
    RecordsetPtr rows;
    QWidget window;
    RecordGrid* grid = nullptr;
    QPushButton* after = nullptr;
};

TEST_F(Grids, ShowsValuesByKindAndPicture) {
    EXPECT_EQ(grid->model()->rowCount(), 3);
    EXPECT_EQ(shown(0, Name), "Line 1");
    EXPECT_EQ(shown(1, Qty), "2.500");
    EXPECT_EQ(shown(1, Cost), "2.25");
    EXPECT_EQ(shown(0, Made), "3/7/2026");
    EXPECT_EQ(shown(0, Missing), "");
    EXPECT_EQ(grid->model()->index(1, Done).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(grid->model()->index(0, Done).data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_EQ(grid->model()->index(1, Done).data(Qt::AccessibleTextRole).toString(), "Yes");
    const auto alignment = [this](int column) {
        return grid->model()->index(0, column).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    EXPECT_TRUE(alignment(Qty) & Qt::AlignRight);
    EXPECT_TRUE(alignment(Cost) & Qt::AlignRight);
    EXPECT_TRUE(alignment(Name) & Qt::AlignLeft);
    EXPECT_TRUE(grid->isColumnHidden(Key));
}

TEST_F(Grids, FormatsCanBeSetLaterAndFollowTheUsersMarks) {
    grid->setNumberFormat(Cost, "$ ###,##0.00");
    EXPECT_EQ(shown(0, Cost), "$ 1.25");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(shown(0, Cost), "$ 1,25");
    QLocale::setDefault(QLocale::c());
    grid->setNumberFormat(Qty, "Currency");
    EXPECT_EQ(shown(0, Qty), "$1.50");
    grid->setNumberFormat(Done, "Yes/No");
    EXPECT_EQ(shown(0, Done), "No");
    EXPECT_EQ(shown(1, Done), "Yes");
}

TEST_F(Grids, ColumnsAreFoundByDesignedCaptionAndField) {
    grid->setShownCaption(Done, "Auffüllen");
    EXPECT_EQ(grid->columnByCaption("QS"), Done);
    EXPECT_EQ(grid->shownCaption(Done), u"Auffüllen"_s);
    EXPECT_EQ(grid->model()->headerData(Done, Qt::Horizontal, Qt::DisplayRole).toString(), u"Auffüllen"_s);
    EXPECT_EQ(grid->columnByField("LINEID"), Key);
    EXPECT_THROW(grid->columnByCaption("Auffüllen"), RuntimeError);
    EXPECT_THROW(grid->columnByField("x"), RuntimeError);
}

TEST_F(Grids, TheCurrentRowIsSeenBeforeAnyClickAndWithoutTheFocus) {
    for (const bool dark : {false, true}) {
        applyTheme(*qApp, dark);
        const auto at = [&](int row) {
            const QRect cell = grid->visualRect(grid->model()->index(row, Name));
            return grid->viewport()->grab().toImage().pixelColor(cell.right() - 3, cell.top() + 4);
        };
        grid->clearFocus();
        rows->moveFirst();
        EXPECT_EQ(at(0), theme().softAccent);
        EXPECT_NE(at(1), theme().softAccent);
        rows->moveNext();
        EXPECT_EQ(at(1), theme().softAccent);
        EXPECT_NE(at(0), theme().softAccent);
        EXPECT_EQ(grid->selectedCount(), 0);
    }
}

TEST_F(Grids, TheFirstRowIsCurrentButNotSelected) {
    EXPECT_EQ(grid->currentValue(Key).toInt(), 1);
    EXPECT_EQ(grid->selectedCount(), 0);
    click(2, Name);
    EXPECT_EQ(grid->selectedCount(), 1);
    EXPECT_EQ(grid->currentValue(Key).toInt(), 3);
    EXPECT_EQ(rows->position(), 2);
}

TEST_F(Grids, WithoutACurrentCellCopyingAndTypingDoNothing) {
    grid->setCurrentIndex({});
    for (const int role : {Qt::DisplayRole, Qt::EditRole, Qt::CheckStateRole, Qt::TextAlignmentRole})
        EXPECT_FALSE(grid->model()->data({}, role).isValid()) << role;
    EXPECT_EQ(grid->model()->flags({}), Qt::NoItemFlags);
    EXPECT_FALSE(grid->model()->setData({}, 1));
    for (const auto key : {Qt::Key_C, Qt::Key_F2, Qt::Key_Space, Qt::Key_Return})
        QTest::keyClick(grid, key, key == Qt::Key_C ? Qt::ControlModifier : Qt::NoModifier);
    EXPECT_EQ(shown(0, Name), "Line 1");
}

TEST_F(Grids, CurrentRowsFollowEachOther) {
    QTest::keyClick(grid, Qt::Key_Down);
    EXPECT_EQ(rows->position(), 1);
    rows->moveLast();
    EXPECT_EQ(grid->currentIndex().row(), 2);
    rows->moveNext();
    EXPECT_EQ(rows->position(), -1);
    EXPECT_FALSE(grid->currentIndex().isValid());
    EXPECT_FALSE(grid->currentValue(Key).isValid());
}

TEST_F(Grids, ANewRowOfTheSetAppears) {
    rows->addNew();
    rows->setValue("Name", "Fourth");
    rows->update();
    EXPECT_EQ(grid->model()->rowCount(), 4);
    EXPECT_EQ(shown(3, Name), "Fourth");
}

TEST_F(Grids, AnEditIsWrittenToTheFileAtOnce) {
    type(1, Qty, "7.25");
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(shown(1, Qty), "7.250");
    EXPECT_EQ(sample.stored(2, "Qty"), "7.25");
    EXPECT_EQ(grid->currentIndex().row(), 2);
    EXPECT_EQ(grid->currentIndex().column(), Qty);
}

TEST_F(Grids, TypingOpensTheEditor) {
    grid->setCurrentIndex(grid->model()->index(0, Name));
    QTest::keyClicks(grid, "N");
    ASSERT_NE(editor(), nullptr);
    QTest::keyClicks(editor(), "ew");
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(sample.stored(1, "Name"), "New");
}

TEST_F(Grids, TabWritesAndMovesOn) {
    type(0, Name, "O'Brien");
    QTest::keyClick(editor(), Qt::Key_Tab);
    EXPECT_EQ(sample.stored(1, "Name"), "O'Brien");
    EXPECT_EQ(grid->currentIndex().column(), Qty);
    QTest::keyClick(grid, Qt::Key_Tab);
    EXPECT_EQ(grid->currentIndex().column(), Cost);
    QTest::keyClick(grid, Qt::Key_Backtab);
    EXPECT_EQ(grid->currentIndex().column(), Qty);
}

TEST_F(Grids, TabAtTheLastCellLeavesTheGrid) {
    grid->setCurrentIndex(grid->model()->index(2, Missing));
    QTest::keyClick(grid, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(Grids, TabLeavesALockedGridAtOnce) {
    grid->setAllowUpdate(false);
    QTest::keyClick(grid, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
}

TEST_F(Grids, EscapeGivesTheCellBack) {
    type(0, Name, "Nonsense");
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(shown(0, Name), "Line 1");
    EXPECT_EQ(sample.stored(1, "Name"), "Line 1");
}

TEST_F(Grids, AnOpenEditorIsCommitted) {
    EXPECT_TRUE(grid->commitEdit());
    type(0, Cost, "3.5");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Cost"), "3.5");
    EXPECT_EQ(shown(0, Cost), "3.5");
}

TEST_F(Grids, LeavingTheGridCommitsToo) {
    type(0, Name, "Left");
    after->setFocus();
    EXPECT_EQ(sample.stored(1, "Name"), "Left");
}

TEST_F(Grids, ARefusedEditIsToldAndShowsTheStoredValue) {
    int failed = 0;
    grid->onEditFailed = [&failed] { ++failed; };
    type(0, Qty, "99999");
    asker.expectMsgBox(
        "The change was not saved.\n\nA value does not fit its column (CHECK constraint failed: "
        "Qty < 50000)");
    EXPECT_FALSE(grid->commitEdit());
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(shown(0, Qty), "1.500");
    EXPECT_EQ(sample.stored(1, "Qty"), "1.5");
    EXPECT_FALSE(rows->hasPendingChanges());
    type(0, Qty, "2");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Qty"), "2.0");
}

TEST_F(Grids, ANumberThatCanBeReadInTwoWaysStaysInTheEditor) {
    type(0, Qty, "1.234,5");
    QTest::keyClick(editor(), Qt::Key_Return);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(sample.stored(1, "Qty"), "1.5");
    asker.expectMsgBox(
        "The change was not saved.\n\nThis can be read in two ways. Leave out the thousands mark and "
        "use \".\" for decimals.");
    EXPECT_FALSE(grid->commitEdit());
    EXPECT_EQ(shown(0, Qty), "1.500");
}

TEST_F(Grids, AChangeByTensIsShownWithBothValuesBeforeItIsSaved) {
    type(0, Qty, "15");
    EXPECT_EQ(Hint::textOf(*editor()), "Please check: 1.5 before, 15 now.");
    EXPECT_EQ(sample.stored(1, "Qty"), "1.5");
    EXPECT_TRUE(grid->commitEdit()) << "shown, not blocked";
    EXPECT_EQ(sample.stored(1, "Qty"), "15.0");
}

TEST_F(Grids, AVeryLongTextIsKeptWhole) {
    const QString text(10000, u'x');
    grid->setCurrentIndex(grid->model()->index(0, Name));
    QTest::keyClick(grid, Qt::Key_F2);
    editor()->setText(text);
    editor()->setModified(true);
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Name"), text);
    EXPECT_EQ(shown(0, Name), text);
}

TEST_F(Grids, AnEmptiedNumberIsNull) {
    grid->setCurrentIndex(grid->model()->index(0, Cost));
    QTest::keyClick(grid, Qt::Key_F2);
    editor()->selectAll();
    QTest::keyClick(editor(), Qt::Key_Delete);
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Cost"), "NULL");
    EXPECT_EQ(shown(0, Cost), "");
}

TEST_F(Grids, ADateIsTypedAsInADateBox) {
    grid->setColumns({{"Made", "Date", 120, true, false, {}}});
    grid->setDataSource(rows);
    type(0, 0, "4/5/2026");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Made"), "2026-04-05 00:00:00");
    for (const char* nonsense : {"soon", "12", "4/31/2026", "10:15"}) {
        type(0, 0, nonsense);
        asker.expectMsgBox("The change was not saved.\n\nPlease type a date, such as 3/27/1965.");
        EXPECT_FALSE(grid->commitEdit()) << nonsense;
        EXPECT_EQ(shown(0, 0), "4/5/2026") << nonsense;
    }
    type(0, 0, " ");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Made"), "NULL");
    EXPECT_EQ(shown(0, 0), "");
}

TEST_F(Grids, AnUntouchedEditorWritesNothing) {
    grid->setCurrentIndex(grid->model()->index(0, Qty));
    QTest::keyClick(grid, Qt::Key_F2);
    support::runSql(sample.path(), "UPDATE Line SET Qty = 4 WHERE LineID = 1");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(sample.stored(1, "Qty"), "4.0");
}

TEST_F(Grids, AFlagIsToggledByClickAndSpace) {
    click(0, Done);
    EXPECT_EQ(sample.stored(1, "Done"), "1");
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(sample.stored(1, "Done"), "0");
    grid->setAllowUpdate(false);
    click(0, Done);
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(sample.stored(1, "Done"), "0");
}

TEST_F(Grids, OnlyEditableColumnsOfAnOpenGridAreEdited) {
    grid->setCurrentIndex(grid->model()->index(0, Made));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr);
    grid->setCurrentIndex(grid->model()->index(0, Missing));
    QTest::keyClick(grid, Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr);
    grid->setAllowUpdate(false);
    grid->setCurrentIndex(grid->model()->index(0, Name));
    QTest::keyClick(grid, Qt::Key_F2);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, place(0, Name));
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(Grids, ADisconnectedSetIsEditedInMemory) {
    rows->disconnect();
    type(0, Qty, "3");
    EXPECT_TRUE(grid->commitEdit());
    EXPECT_EQ(shown(0, Qty), "3.000");
    EXPECT_EQ(sample.stored(1, "Qty"), "1.5");
}

TEST_F(Grids, NoSetAndAnEmptySet) {
    grid->setDataSource(nullptr);
    EXPECT_EQ(grid->model()->rowCount(), 0);
    EXPECT_FALSE(grid->currentValue(Key).isValid());
    EXPECT_TRUE(grid->commitEdit());
    const support::SampleRows empty(0);
    grid->setDataSource(empty.open());
    EXPECT_EQ(grid->model()->rowCount(), 0);
    EXPECT_EQ(grid->selectedCount(), 0);
    EXPECT_FALSE(grid->currentValue(Key).isValid());
    QTest::keyClick(grid, Qt::Key_Down);
    grid->grab();
}

TEST_F(Grids, ASetReadAnewIsShownWhenItIsBoundAgain) {
    support::runSql(sample.path(), "INSERT INTO Line (Name) VALUES ('Other')");
    rows->requery();
    grid->setDataSource(rows);
    EXPECT_EQ(shown(3, Name), "Other");
    EXPECT_EQ(shown(3, Qty), "");
    EXPECT_EQ(shown(3, Made), "");
}

TEST_F(Grids, AClosedSetShowsNothing) {
    rows->close();
    EXPECT_EQ(grid->model()->rowCount(), 0);
    EXPECT_FALSE(grid->currentValue(Key).isValid());
}

TEST_F(Grids, ARowDeletedByAnotherProgramIsToldWhenEdited) {
    support::runSql(sample.path(), "DELETE FROM Line WHERE LineID = 2");
    type(1, Name, "Gone");
    asker.expectMsgBox(
        "The change was not saved.\n\nThe row can't be written: it has been deleted from table Line");
    EXPECT_FALSE(grid->commitEdit());
    EXPECT_EQ(shown(1, Name), "Line 2");
    grid->grab();
}

TEST_F(Grids, DestroyingTheGridReleasesTheSet) {
    delete grid;
    rows->moveLast();
    EXPECT_EQ(rows->position(), 2);
}

TEST_F(Grids, ItsHeightIsThatOfItsRows) {
    const int three = grid->sizeHint().height();
    const support::SampleRows five(5), many(40);
    grid->setDataSource(five.open());
    EXPECT_EQ(grid->sizeHint().height(), three + 2 * rowPitch);
    grid->setDataSource(many.open());
    EXPECT_EQ(grid->sizeHint().height(), three + 37 * rowPitch);
    EXPECT_EQ(grid->rowHeight(0), rowPitch);
}

TEST_F(Grids, TheHorizontalScrollBarCoversNoRow) {
    static_cast<QVBoxLayout*>(window.layout())->addStretch(1);
    const int rowsAlone = grid->sizeHint().height();
    window.resize(320, 400);
    ASSERT_TRUE(support::waitFor([&] { return grid->horizontalScrollBar()->maximum() > 0; }));
    support::settle();
    EXPECT_EQ(grid->sizeHint().height(), rowsAlone + grid->horizontalScrollBar()->height());
    EXPECT_EQ(grid->verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(
        grid->viewport()->rect().contains(grid->visualRect(grid->model()->index(2, Name)).bottomLeft()));
    window.resize(900, 400);
    ASSERT_TRUE(support::waitFor([&] { return grid->horizontalScrollBar()->maximum() == 0; }));
    EXPECT_EQ(grid->sizeHint().height(), rowsAlone);
}

TEST_F(Grids, AWaitThatTakesTheFocusLeavesACellOpen) {
    type(1, Qty, "7");
    AnswerWait wait([] { return u"Waiting"_s; }, [] {});
    while (window.isActiveWindow())
        EXPECT_TRUE(wait.goesOn(windowlessMilliseconds));
    wait.ended();
    window.activateWindow();  // as desktops do it
    ASSERT_TRUE(support::becomesActive(&window));
    ASSERT_TRUE(grid->isCellOpen());
    EXPECT_EQ(shown(1, Qty), "2.500");
    EXPECT_EQ(editor()->text(), "7");
    EXPECT_TRUE(editor()->hasFocus());
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(shown(1, Qty), "7.000");
}

TEST_F(Grids, ADoubleClickIsHeardInALockedGrid) {
    grid->setAllowUpdate(false);
    QSignalSpy chosen(grid, &QTableView::doubleClicked);
    click(1, Name);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, place(1, Name));
    EXPECT_EQ(chosen.count(), 1);
}

TEST(LargeGrid, ThirtyTwoThousandRows) {
    const support::SampleRows sample(32000);
    RecordGrid grid;
    grid.setColumns({{"LineID", "LineID", 0, false, true, {}},
                     {"Name", "Name", 0, false, false, {}},
                     {"Qty", "Qty", 100, false, false, "#0.000"}});
    grid.setDataSource(sample.open(false));
    grid.resize(600, 500);
    grid.show();
    ASSERT_TRUE(support::becomesExposed(&grid));
    EXPECT_EQ(grid.model()->rowCount(), 32000);
    QTest::keyClick(&grid, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(grid.currentValue(0).toInt(), 32000);
    EXPECT_EQ(grid.dataSource()->position(), 31999);
}

}  // namespace
