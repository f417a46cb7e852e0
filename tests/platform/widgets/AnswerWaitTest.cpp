// The wait for a server as the user sees it, and what must not happen meanwhile: another statement would get in between.
#include "platform/widgets/AnswerWait.h"
#include "support/Waiting.h"

#include "platform/widgets/FreshKeys.h"
#include "platform/widgets/WorkWindow.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace platform;

namespace {

class Painted : public QWidget {
public:
    int times = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++times; }
};

class AnswerWaitTest : public ::testing::Test {
protected:
    static QWidget* window() { return QApplication::activeModalWidget(); }
    /// As long as it takes until the window of the wait is on its screen.
    void untilShown() {
        EXPECT_TRUE(wait.goesOn(windowlessMilliseconds));
        while (!window() || !window()->windowHandle()->isExposed())
            EXPECT_TRUE(wait.goesOn(windowlessMilliseconds));
    }

    int saved = 0;
    AnswerWait wait{[] { return QString("Waiting"); }, [this] { ++saved; }};
};

}  // namespace

TEST_F(AnswerWaitTest, WindowsArePaintedFromTheFirstTurnOn) {
    Painted painted;
    painted.show();
    ASSERT_TRUE(support::becomesExposed(&painted));
    QApplication::processEvents();
    const int before = painted.times;
    painted.update();
    EXPECT_TRUE(wait.goesOn(30));
    EXPECT_GT(painted.times, before);
    EXPECT_FALSE(window()) << "nothing to see of a short wait";
    wait.ended();
}

TEST_F(AnswerWaitTest, NeitherTimersNorCallsRunBeforeTheWindowIsThere) {
    int ran = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ran; });
    timer.start(0);
    QPushButton button("x");
    QObject::connect(&button, &QPushButton::clicked, [&] { ++ran; });
    button.show();
    ASSERT_TRUE(support::becomesExposed(&button));
    ran = 0;
    QTimer::singleShot(0, &button, [&] { ++ran; });
    QMetaObject::invokeMethod(
        &button, [&] { ++ran; }, Qt::QueuedConnection);
    for (int waited = 0; waited < windowlessMilliseconds; ++waited)
        EXPECT_TRUE(wait.goesOn(waited));
    EXPECT_EQ(ran, 0);
    QApplication::processEvents();
    EXPECT_GE(ran, 3) << "they have waited";
}

TEST_F(AnswerWaitTest, ALongWaitShowsItselfAndLetsNoTimerRun) {
    int ran = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ran; });
    timer.start(0);
    untilShown();
    EXPECT_EQ(window()->windowTitle(), "Waiting");
    EXPECT_TRUE(window()->isModal());
    EXPECT_EQ(ran, 0);
    wait.ended();
    EXPECT_FALSE(window());
}

TEST_F(AnswerWaitTest, AQuietOneShowsNothingAndEndsByItself) {
    EXPECT_TRUE(wait.isPatient());
    {
        const AnswerWait::Quietly quietly;
        EXPECT_FALSE(wait.isPatient());
        EXPECT_TRUE(wait.goesOn(windowlessMilliseconds - 1));
        EXPECT_FALSE(wait.goesOn(windowlessMilliseconds));
        EXPECT_FALSE(window());
        wait.ended();
    }
    EXPECT_TRUE(wait.isPatient());
    untilShown();
    wait.ended();
}

TEST_F(AnswerWaitTest, TheUserEndsItByButtonAndByEscape) {
    for (const bool byKey : {false, true}) {
        untilShown();
        if (byKey)
            QTest::keyClick(window(), Qt::Key_Escape);
        else
            QTest::mouseClick(window()->findChild<QPushButton*>(), Qt::LeftButton);
        EXPECT_FALSE(wait.goesOn(windowlessMilliseconds));
        EXPECT_FALSE(wait.goesOn(windowlessMilliseconds)) << "it stays ended";
        wait.ended();
        EXPECT_TRUE(wait.goesOn(30)) << "the next wait is another one";
        wait.ended();
    }
}

TEST_F(AnswerWaitTest, AKeyThatWasMeantForAnotherWindowDoesNotEndIt) {
    setTypingRest(std::chrono::milliseconds(600'000));
    untilShown();
    setTypingRest(std::chrono::milliseconds(0));
    auto* const cancel = window()->findChild<QPushButton*>();
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape})
        QTest::keyClick(cancel, key);
    EXPECT_TRUE(wait.goesOn(windowlessMilliseconds));
    wait.ended();
}

TEST_F(AnswerWaitTest, KeysCountAgainALittleLaterThoughNoTimerRuns) {
    setTypingRest(std::chrono::milliseconds(1));
    untilShown();
    setTypingRest(std::chrono::milliseconds(0));
    bool goesOn = true;
    for (int tries = 0; goesOn && tries < 10'000; ++tries) {
        QTest::keyClick(window(), Qt::Key_Escape);
        goesOn = wait.goesOn(windowlessMilliseconds);
    }
    EXPECT_FALSE(goesOn);
    wait.ended();
}

TEST_F(AnswerWaitTest, WhatAsksForRecordsBeginsWhenItIsOver) {
    int ran = 0;
    EXPECT_FALSE(UnderWay::any());
    whenIdle(*qApp, [&] { ++ran; });
    untilShown();
    EXPECT_TRUE(UnderWay::any());
    EXPECT_EQ(ran, 0);
    wait.ended();
    EXPECT_FALSE(UnderWay::any());
    EXPECT_TRUE(support::waitFor([&] { return ran == 1; }));
}

TEST_F(AnswerWaitTest, ASavedChangeIsToldOnceTheWaitIsOver) {
    wait.foundSaved();
    wait.goesOn(30);
    EXPECT_EQ(saved, 0);
    wait.ended();
    QApplication::processEvents();
    EXPECT_EQ(saved, 1);
}
