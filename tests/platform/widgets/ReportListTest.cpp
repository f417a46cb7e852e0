// Rows of texts, and dragging them with the mouse as a user does.
#include "platform/widgets/ReportList.h"

#include <QApplication>
#include <QDrag>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
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
        ASSERT_TRUE(QTest::qWaitForWindowActive(&list));
    }
    QStringList firstCells() const {
        QStringList cells;
        for (int i = 0; i < list.count(); ++i)
            cells << list.row(i).front();
        return cells;
    }
    QPoint middle(int row) const { return list.visualItemRect(list.topLevelItem(row)).center(); }

    /// Presses on a row, moves in small steps to the place, and lets go there.
    void drag(int row, const QPoint& to) {
        QWidget* view = list.viewport();
        const QPoint from = middle(row);
        QTimer::singleShot(0, &list, [=] {
            QWindow* window = view->window()->windowHandle();
            const auto onWindow = [view](const QPoint& at) { return view->mapTo(view->window(), at); };
            QTest::mouseMove(window, onWindow((from + to) / 2));
            QTest::mouseMove(window, onWindow(to));
            QTest::mouseRelease(window, Qt::LeftButton, {}, onWindow(to));
        });
        QTest::mousePress(view, Qt::LeftButton, {}, from);
        QTest::mouseMove(view, from + QPoint(0, 2));
        QMouseEvent move(QEvent::MouseMove, from + QPointF(0, 30), view->mapToGlobal(from + QPointF(0, 30)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &move);
        QTest::qWait(20);
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

}  // namespace
