// Rows of texts, and dragging them with the mouse as a user does.
#include "platform/widgets/ReportList.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using namespace platform;

class Lists : public testing::Test {
protected:
    void SetUp() override {
        list.setColumnCaptions({"Lift RPM", "Mix RPM", "Time", "Cycles"});
        for (const char* speed : {"24", "48", "72"})
            list.addRow({speed, "1200", "00:01:00", "0"});
        list.resize(500, 300);
        list.show();
        list.activateWindow();
        ASSERT_TRUE(support::becomesActive(&list));
    }
    QStringList firstCells() const {
        QStringList cells;
        for (int i = 0; i < list.count(); ++i)
            cells << list.row(i).front();
        return cells;
    }
    QPoint middle(int row) const { return list.visualItemRect(list.topLevelItem(row)).center(); }

    /// Presses on a row, moves in steps to the place, and lets go there.
    void drag(int row, const QPoint& to) {
        const QPoint from = middle(row);
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 4; ++step)
            moveTo(from + (to - from) * step / 4);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, to);
    }
    void moveTo(const QPoint& place) {
        QWidget* view = list.viewport();
        QMouseEvent move(QEvent::MouseMove, place, view->mapToGlobal(QPointF(place)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &move);
    }

    ReportList list;
};

TEST_F(Lists, KeepsRowsInOrder) {
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.row(1), QStringList({"48", "1200", "00:01:00", "0"}));
    list.addRow({"36", "1", "2", "3"}, 1);
    EXPECT_EQ(firstCells(), QStringList({"24", "36", "48", "72"}));
    list.removeRow(0);
    EXPECT_EQ(firstCells(), QStringList({"36", "48", "72"}));
    list.clear();
    EXPECT_EQ(list.count(), 0);
    EXPECT_EQ(list.columnCaption(0), "Lift RPM");
    list.removeRow(0);
    EXPECT_EQ(list.row(0), QStringList());
}

TEST_F(Lists, NothingIsSelectedUntilARowIsChosen) {
    EXPECT_EQ(list.currentRow(), -1);
    list.setCurrentRow(2);
    EXPECT_EQ(list.currentRow(), 2);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middle(0));
    EXPECT_EQ(list.currentRow(), 0);
    list.setCurrentRow(-1);
    EXPECT_EQ(list.currentRow(), -1);
}

TEST_F(Lists, TextsAreNotEdited) {
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, middle(0));
    EXPECT_EQ(list.findChild<QLineEdit*>(), nullptr);
}

TEST_F(Lists, ADragIsToldAndMovesNothingByItself) {
    QSignalSpy started(&list, &ReportList::dragStarted), dropped(&list, &ReportList::dropped);
    drag(0, middle(2));
    ASSERT_EQ(started.count(), 1);
    ASSERT_EQ(dropped.count(), 1);
    EXPECT_EQ(dropped.front().front().toInt(), 2);
    EXPECT_EQ(list.currentRow(), 0);
    EXPECT_EQ(firstCells(), QStringList({"24", "48", "72"}));
}

TEST_F(Lists, ADropBelowTheLastRowIsOnNone) {
    QSignalSpy dropped(&list, &ReportList::dropped);
    drag(1, QPoint(100, 200));
    ASSERT_EQ(dropped.count(), 1);
    EXPECT_EQ(dropped.front().front().toInt(), -1);
}

TEST_F(Lists, ASmallMoveIsNoDrag) {
    QSignalSpy started(&list, &ReportList::dragStarted), dropped(&list, &ReportList::dropped);
    drag(1, middle(1) + QPoint(2, 2));
    EXPECT_EQ(started.count(), 0);
    EXPECT_EQ(dropped.count(), 0);
    EXPECT_EQ(list.currentRow(), 1);
}

TEST_F(Lists, ADropOnTheDraggedRowItselfIsTold) {
    QSignalSpy dropped(&list, &ReportList::dropped);
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, middle(1));
    moveTo(middle(2));
    moveTo(middle(1));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, middle(1));
    ASSERT_EQ(dropped.count(), 1);
    EXPECT_EQ(dropped.front().front().toInt(), 1);
}

TEST_F(Lists, LettingGoOutsideOrEscapeDropsNothing) {
    QSignalSpy started(&list, &ReportList::dragStarted), dropped(&list, &ReportList::dropped);
    drag(0, QPoint(100, 900));
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, middle(0));
    moveTo(middle(2));
    QTest::keyClick(&list, Qt::Key_Escape);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, middle(2));
    EXPECT_EQ(started.count(), 2);
    EXPECT_EQ(dropped.count(), 0);
}

TEST_F(Lists, AKeyMovesARowOnePlace) {
    QSignalSpy started(&list, &ReportList::dragStarted), dropped(&list, &ReportList::dropped);
    list.setCurrentRow(0);
    QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(started.count(), 0);
    QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
    list.setCurrentRow(1);
    QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(started.count(), 3);
    ASSERT_EQ(dropped.count(), 3);
    EXPECT_EQ(dropped.at(0).front().toInt(), 2);
    EXPECT_EQ(dropped.at(1).front().toInt(), -1);
    EXPECT_EQ(dropped.at(2).front().toInt(), 0);
}

TEST_F(Lists, WithoutDraggingNothingStarts) {
    QSignalSpy started(&list, &ReportList::dragStarted), dropped(&list, &ReportList::dropped);
    list.setRowDragging(false);
    drag(0, middle(2));
    EXPECT_EQ(started.count(), 0);
    EXPECT_EQ(dropped.count(), 0);
}

TEST_F(Lists, TheListenerMayRebuildTheRowsInTheDrop) {
    QObject::connect(&list, &ReportList::dropped, &list, [this](int row) {
        const QStringList texts = list.row(list.currentRow());
        list.addRow(texts, row);
        list.setCurrentRow(row);
        list.removeRow(1);
    });
    drag(0, middle(2));
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(firstCells(), QStringList({"24", "24", "72"}));
}

TEST(ReportLists, RowsAreNumberedBesideTheirTexts) {
    ReportList list;
    list.setColumnCaptions({"Lift RPM", "Mix RPM"});
    list.resize(300, 160);
    list.addRow({"24", "12"});
    const QImage first = list.grab().toImage();
    list.clear();
    list.addRow({"", ""});
    list.addRow({"24", "12"});
    list.removeRow(0);
    EXPECT_EQ(list.grab().toImage(), first);
    list.addRow({"24", "12"});
    const QRect one = list.visualItemRect(list.topLevelItem(0)),
                two = list.visualItemRect(list.topLevelItem(1));
    const QImage rows = list.viewport()->grab().toImage();
    EXPECT_NE(rows.copy(QRect(one.left(), one.top() + 4, 30, one.height() - 8)),
              rows.copy(QRect(two.left(), two.top() + 4, 30, two.height() - 8)));
    EXPECT_EQ(list.row(1), QStringList({"24", "12"})) << "the number is no text of the row";
}

TEST(ReportLists, ARowIsBroughtIntoView) {
    ReportList list;
    list.setColumnCaptions({"Lift RPM"});
    list.resize(300, 140);
    for (int row = 0; row < 16; ++row)
        list.addRow({QString::number(row)});
    list.show();
    EXPECT_FALSE(list.viewport()->rect().contains(list.visualItemRect(list.topLevelItem(15))));
    list.showRow(15);
    EXPECT_TRUE(list.viewport()->rect().contains(list.visualItemRect(list.topLevelItem(15))));
    EXPECT_EQ(list.currentRow(), -1) << "nothing is chosen by it";
}

}  // namespace
