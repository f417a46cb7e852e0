// What the program does of itself waits for the end of what is under way.
#include "platform/widgets/UnderWay.h"
#include "support/Waiting.h"

#include "platform/widgets/LongWork.h"

#include <QCoreApplication>
#include <QTest>
#include <gtest/gtest.h>

using namespace platform;
using namespace Qt::StringLiterals;

namespace {

void severalTurns() {
    constexpr int turns = 5;
    for (int i = 0; i < turns; ++i)
        QCoreApplication::processEvents();
}

TEST(UnderWayTest, WhatIsIdleRunsFromTheEventLoop) {
    int ran = 0;
    whenIdle(*qApp, [&] { ++ran; });
    EXPECT_EQ(ran, 0);
    EXPECT_TRUE(support::waitFor([&] { return ran == 1; }));
    severalTurns();
    EXPECT_EQ(ran, 1);
}

TEST(UnderWayTest, LongWorkIsNotInterrupted) {
    int ran = 0;
    {
        const LongWork work(u"Work"_s);
        EXPECT_TRUE(UnderWay::any());
        whenIdle(*qApp, [&] { ++ran; });
        severalTurns();
        { const UnderWay inside; }
        severalTurns();
        EXPECT_EQ(ran, 0);
    }
    EXPECT_FALSE(UnderWay::any());
    EXPECT_TRUE(support::waitFor([&] { return ran == 1; }));
}

TEST(UnderWayTest, NothingRunsForAReceiverThatHasGone) {
    int ran = 0;
    {
        QObject receiver;
        whenIdle(receiver, [&] { ++ran; });
    }
    severalTurns();
    EXPECT_EQ(ran, 0);
}

TEST(UnderWayTest, TheReceiverMayGoInTheAction) {
    int ran = 0;
    auto* receiver = new QObject;
    whenIdle(*receiver, [&ran, receiver] {
        delete receiver;
        ++ran;
    });
    EXPECT_TRUE(support::waitFor([&] { return ran == 1; }));
}

}  // namespace
