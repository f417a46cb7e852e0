// Long work as the user sees it: nothing for what is over soon, then a window that says how far it is and stops it.
#include "platform/widgets/LongWork.h"

#include "support/Child.h"
#include "support/Waiting.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
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
