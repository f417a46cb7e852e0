// Steps of the programme put in another order, with the mouse and through the list's own signals.
#include "FormulaScreenTest.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>

using namespace sorvanto;

namespace {

class MixSettingsDragTest : public FormulaScreenTest {
protected:
    void open(bool unlocked = true) {
        loadAt("Cooling Gel");
        if (unlocked)
            click("cmdEdit");
        tabs().setCurrentIndex(2);
        steps().clear();
        for (const char* name : {"A", "B", "C", "D"})
            steps().addRow({name, QString(name) + "1", QString(name) + "2", QString(name) + "3"});
        ASSERT_TRUE(support::becomesActive(window.get()));
        QCoreApplication::processEvents();
    }
    QString order() const {
        QString names;
        for (int row = 0; row < steps().count(); ++row) {
            const QStringList cells = steps().row(row);
            EXPECT_EQ(str(cells.join(' ')),
                      str(cells[0] + " " + cells[0] + "1 " + cells[0] + "2 " + cells[0] + "3"))
                << "cells stay together";
            names += cells[0];
        }
        return names;
    }
    QPoint middle(int row) const { return steps().visualItemRect(steps().topLevelItem(row)).center(); }
    /// Drops row from on row to (-1: below the last one) with the mouse.
    void drag(int from, int to) const {
        QWidget* view = steps().viewport();
        const QPoint start = middle(from);
        const QPoint end = to >= 0 ? middle(to) : QPoint(start.x(), view->height() - 3);
        ASSERT_TRUE(to >= 0 || !steps().itemAt(end)) << "no room below the last row";
        QTest::mousePress(view, Qt::LeftButton, {}, start);
        for (int part = 1; part <= 4; ++part) {
            const QPoint place = start + (end - start) * part / 4;
            QMouseEvent move(QEvent::MouseMove, place, view->mapToGlobal(QPointF(place)), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view, &move);
        }
        QTest::mouseRelease(view, Qt::LeftButton, {}, end);
    }
    void signal(int from, int to) const {
        steps().setCurrentRow(from);
        emit steps().dragStarted();
        emit steps().dropped(to);
    }
};

struct Drop {
    int from, to;
    const char* order;
    int selected;
};

// A step lands directly above the row it was dropped on: downward that is one place before it.
const Drop drops[] = {{0, 0, "ABCD", 0},  {0, 1, "ABCD", 0}, {0, 2, "BACD", 1}, {0, 3, "BCAD", 2},
                      {0, -1, "BCDA", 3}, {1, 0, "BACD", 0}, {1, 2, "ABCD", 1}, {1, 3, "ACBD", 2},
                      {3, 0, "DABC", 0},  {3, 2, "ABDC", 2}, {2, 1, "ACBD", 1}, {2, 3, "ABCD", 2},
                      {2, -1, "ABDC", 3}, {3, -1, "ABCD", 3}};

TEST_F(MixSettingsDragTest, DropsThroughTheSignals) {
    for (const Drop& drop : drops) {
        open();
        signal(drop.from, drop.to);
        EXPECT_EQ(str(order()), drop.order) << drop.from << " on " << drop.to;
        EXPECT_EQ(steps().currentRow(), drop.selected) << drop.from << " on " << drop.to;
        window.reset();
    }
}

TEST_F(MixSettingsDragTest, DropsWithTheMouse) {
    open();
    for (const Drop& drop : drops) {
        steps().clear();
        for (const char* name : {"A", "B", "C", "D"})
            steps().addRow({name, QString(name) + "1", QString(name) + "2", QString(name) + "3"});
        QCoreApplication::processEvents();
        drag(drop.from, drop.to);
        EXPECT_EQ(str(order()), drop.order) << drop.from << " on " << drop.to;
    }
}

TEST_F(MixSettingsDragTest, ALockedListStaysAsItIs) {
    open(false);
    for (const Drop& drop : drops) {
        signal(drop.from, drop.to);
        drag(drop.from, drop.to);
    }
    EXPECT_EQ(str(order()), "ABCD");
    QSignalSpy drags(&steps(), &platform::ReportList::dragStarted);
    drag(0, 2);
    EXPECT_EQ(drags.count(), 0) << "it can't even be taken up";
    click("cmdEdit");
    EXPECT_EQ(steps().count(), 2) << "shown anew";
    drag(1, 0);
    EXPECT_EQ(drags.count(), 1);
}

TEST_F(MixSettingsDragTest, ADropWithoutADragDoesNothing) {
    open();
    emit steps().dropped(2);
    EXPECT_EQ(str(order()), "ABCD");
}

TEST_F(MixSettingsDragTest, LockingBetweenDragAndDropForbidsIt) {
    open();
    steps().setCurrentRow(0);
    emit steps().dragStarted();
    formula().lockForm();
    emit steps().dropped(3);
    EXPECT_EQ(str(order()), "ABCD");
}

TEST_F(MixSettingsDragTest, TheNewOrderIsSaved) {
    open();
    signal(3, 0);
    click("cmdSave");
    EXPECT_EQ(str(stored("frm_Mix", 1).section("LiftRPM=\"", 1).section('"', 0, 0)), "D");
}

}  // namespace
