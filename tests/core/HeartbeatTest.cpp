// When the interface stood still, by a clock that the events themselves put forward.
#include "core/Heartbeat.h"

#include "core/Application.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QStringList>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class HeartbeatTest : public testing::Test {
protected:
    /// The work as an event of the loop.
    void event(const QString& receiver, const std::function<void()>& work) {
        QTimer::singleShot(0, &loop, [this, receiver, work] {
            deliver(receiver, work);
            loop.quit();
        });
        loop.exec();
    }
    /// The work as an event that another one sends on.
    void deliver(const QString& receiver, const std::function<void()>& work) {
        const qint64 begun = heartbeat.begin();
        work();
        heartbeat.end(begun, receiver, "QAction");
    }

    qint64 now = 0;
    QStringList blocks;
    QEventLoop loop;
    Heartbeat heartbeat{
        *QAbstractEventDispatcher::instance(), 100,
        [this](qint64 block, const QString& event) { blocks << u"%1 %2"_s.arg(block).arg(event); },
        [this] { return now; }};
};

TEST_F(HeartbeatTest, TellsHowLongABlockTookAndWhoTookLongest) {
    event(u"window"_s, [&] {
        for (const auto& [name, time] :
             {std::pair{u"cmdNext"_s, 30}, {u"cmdExport"_s, 90}, {u"lblState"_s, 10}})
            deliver(name, [this, time = time] { now += time; });
    });
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks.back(), "130 window (QAction)");
    event(u"cmdPrint"_s, [&] { now += 101; });
    ASSERT_EQ(blocks.size(), 2);
    EXPECT_EQ(blocks.back(), "101 cmdPrint (QAction)");
}

// A click comes to its button through the window, a key through window and box to the action.
TEST_F(HeartbeatTest, TheActionIsNamedAndNotTheWindowThatItCameThrough) {
    event(u"frmMainWindow"_s, [&] {
        deliver(u"txtSearch"_s, [&] {
            now += 5;
            deliver(u"cmdExport"_s, [&] { now += 190; });
        });
        deliver(u"lblState"_s, [&] { now += 5; });
    });
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks.back(), "200 cmdExport (QAction)");
    event(u"frmMainWindow"_s, [&] {
        deliver(u"cmdNext"_s, [&] { now += 20; });
        now += 150;
    });
    EXPECT_EQ(blocks.back(), "170 frmMainWindow (QAction)");
}

TEST_F(HeartbeatTest, UpToTheLimitNobodyIsTold) {
    event(u"cmdNext"_s, [&] { now += 100; });
    event(u"cmdNext"_s, [&] { now += 100; });
    EXPECT_TRUE(blocks.isEmpty());
}

TEST_F(HeartbeatTest, WaitingIsNoBlock) {
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop,
                     [&] { now += 5000; });
    event(u"cmdOptions"_s, [&] {
        QEventLoop dialog;
        QTimer::singleShot(20, &dialog, [&] { deliver(u"cmdSave"_s, [&] { dialog.quit(); }); });
        dialog.exec();
    });
    EXPECT_GE(now, 5000);
    EXPECT_TRUE(blocks.isEmpty()) << blocks.join(u' ').toStdString();
}

TEST_F(HeartbeatTest, ALoopInsideAnEventBeginsAnew) {
    event(u"cmdOptions"_s, [&] {
        now += 60;
        QEventLoop dialog;
        QTimer::singleShot(0, &dialog, [&] {
            deliver(u"cmdSave"_s, [&] {
                now += 60;
                dialog.quit();
            });
        });
        dialog.exec();
        now += 60;
    });
    EXPECT_TRUE(blocks.isEmpty()) << blocks.join(u' ').toStdString();
}

TEST_F(HeartbeatTest, EachSideOfALoopInsideAnEventCounts) {
    event(u"cmdOptions"_s, [&] {
        now += 110;
        QEventLoop dialog;
        QTimer::singleShot(0, &dialog, [&] {
            deliver(u"cmdSave"_s, [&] {
                now += 120;
                dialog.quit();
            });
        });
        dialog.exec();
        now += 130;
    });
    ASSERT_EQ(blocks.size(), 3) << blocks.join(u' ').toStdString();
    EXPECT_TRUE(blocks[0].startsWith(u"110 "));
    EXPECT_EQ(blocks[1], "120 cmdSave (QAction)");
    EXPECT_EQ(blocks[2], "130 cmdOptions (QAction)");
}

TEST_F(HeartbeatTest, WorkInPiecesThatLooksUpBetweenThemIsNoBlock) {
    event(u"cmdExport"_s, [&] {
        for (int piece = 0; piece < 10; ++piece) {
            now += 60;
            QCoreApplication::processEvents();
        }
    });
    EXPECT_TRUE(blocks.isEmpty()) << blocks.join(u' ').toStdString();
}

}  // namespace
