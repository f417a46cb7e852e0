// Long work as the user sees it: nothing for what is over soon, then a window that says how far it is and stops it.
#include "platform/widgets/LongWork.h"
#include "platform/widgets/WorkLine.h"

#include "support/Child.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace platform;
using support::child;

namespace {

QWidget* window() { return QApplication::activeModalWidget(); }

/// Goes on until the window is there.
void untilShown(LongWork& work, double done) {
    const QDeadlineTimer patience(20'000);
    while (!window() && !patience.hasExpired())
        ASSERT_TRUE(work.goesOn(done));
    ASSERT_TRUE(window());
}

}  // namespace

TEST(LongWork, ShowsHowFarItIs) {
    LongWork work("Exporting Log.xls");
    EXPECT_TRUE(work.goesOn(0));
    EXPECT_FALSE(window());
    untilShown(work, 0.25);
    EXPECT_EQ(window()->windowTitle(), "Exporting Log.xls");
    auto* bar = window()->findChild<QProgressBar*>();
    ASSERT_TRUE(support::waitFor([&] { return work.goesOn(0.25) && bar->value() > 0; }));
    EXPECT_NEAR(double(bar->value()) / bar->maximum(), 0.25, 0.01);
    ASSERT_TRUE(support::waitFor([&] { return work.goesOn(1) && bar->value() * 4 > 3 * bar->maximum(); }));
    EXPECT_TRUE(window()) << "the window goes with the work, not with the number";
}

TEST(LongWork, GoesWithItsWindow) {
    {
        LongWork work("Exporting");
        untilShown(work, -1);
        auto* bar = window()->findChild<QProgressBar*>();
        EXPECT_EQ(bar->maximum(), 0) << "nobody knows how far it is";
    }
    EXPECT_FALSE(window());
}

TEST(LongWork, StopsAtTheButtonAndAtEscape) {
    for (const bool byKey : {false, true}) {
        LongWork work("Exporting");
        untilShown(work, 0.5);
        if (byKey)
            QTest::keyClick(window(), Qt::Key_Escape);
        else
            QTest::mouseClick(window()->findChild<QPushButton*>(), Qt::LeftButton);
        EXPECT_FALSE(work.goesOn(0.6));
        EXPECT_FALSE(work.goesOn(0.7)) << "it stays stopped";
    }
}

TEST(LongWork, LetsTimersRunMeanwhile) {
    LongWork work("Exporting");
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    const QDeadlineTimer patience(20'000);
    while (!ran && !patience.hasExpired())
        work.goesOn(0.1);
    EXPECT_TRUE(ran);
}

TEST(LongWork, InALineLeavesItsWindowToBeUsed) {
    QWidget usable;
    auto* column = new QVBoxLayout(&usable);
    auto* box = new QLineEdit(&usable);
    auto* line = new WorkLine(&usable);
    column->addWidget(box);
    column->addWidget(line);
    usable.show();
    for (const bool stopped : {false, true}) {
        LongWork work("Searching", *line);
        EXPECT_TRUE(work.goesOn(-1));
        EXPECT_FALSE(line->isVisible()) << "nothing for what is over soon";
        QTimer::singleShot(0, box, [box] { QTest::keyClicks(box, "a"); });
        const QDeadlineTimer patience(20'000);
        while (!line->isVisible() && !patience.hasExpired())
            ASSERT_TRUE(work.goesOn(-1));
        ASSERT_TRUE(line->isVisible());
        EXPECT_FALSE(window()) << "no window above it";
        EXPECT_EQ(line->findChild<QProgressBar*>()->maximum(), 0) << "nobody knows how far it is";
        EXPECT_EQ(line->findChild<QProgressBar*>()->accessibleName(), "Searching");
        if (stopped)
            QTest::mouseClick(line->findChild<QPushButton*>(), Qt::LeftButton);
        EXPECT_EQ(work.goesOn(-1), !stopped);
    }
    EXPECT_FALSE(line->isVisible()) << "it goes with the work";
    EXPECT_EQ(box->text(), "aa");
}
