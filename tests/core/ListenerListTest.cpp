// Delivery of tool clicks over a list that changes meanwhile.
#include "core/ListenerList.h"
#include "shared/MainWindow.h"

#include <QStringList>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using sorvanto::ListenerList;

QStringList heard;

struct Ear : sorvanto::ToolListener {
    explicit Ear(QString earName) : name(std::move(earName)) {}
    void m_frmMain_btnClick(const QString& toolName, const QString& searchText) override {
        heard << u"%1 %2 %3"_s.arg(name, toolName, searchText).trimmed();
        if (react)
            react(toolName);
    }
    QString name;
    std::function<void(const QString&)> react;
};

class ListenerListTest : public testing::Test {
protected:
    void SetUp() override { heard.clear(); }
    ListenerList list;
    Ear a{"a"}, b{"b"}, c{"c"};
};

TEST_F(ListenerListTest, OnlyTheConnectedHear) {
    list.connect(a);
    list.connect(b);
    list.release(a);
    list.deliver("cmdNext", "x");
    EXPECT_EQ(heard, QStringList{"b cmdNext x"});
}

TEST_F(ListenerListTest, ConnectingTwiceDoesNotDoubleTheClick) {
    list.connect(a);
    list.connect(a);
    list.deliver("cmdNext", {});
    EXPECT_EQ(heard.size(), 1);
}

TEST_F(ListenerListTest, OneConnectedDuringTheDeliveryHearsItOnce) {
    list.connect(a);
    a.react = [&](const QString&) {
        list.connect(b);
        list.release(a);
    };
    list.deliver("cmdMake", {});
    EXPECT_EQ(heard, (QStringList{"a cmdMake", "b cmdMake"}));
    heard.clear();
    list.deliver("cmdNext", {});
    EXPECT_EQ(heard, QStringList{"b cmdNext"});
}

TEST_F(ListenerListTest, OneReleasedBeforeItsTurnHearsNothing) {
    list.connect(a);
    list.connect(b);
    list.connect(c);
    a.react = [&](const QString&) { list.release(b); };
    list.deliver("cmdNext", {});
    EXPECT_EQ(heard, (QStringList{"a cmdNext", "c cmdNext"}));
}

TEST_F(ListenerListTest, ANestedClickReachesTheOnesThatListenByThen) {
    list.connect(a);
    a.react = [&](const QString& tool) {
        if (tool != "cmdMake")
            return;
        list.connect(b);
        list.release(a);
        list.deliver("cmdCurrent", {});
    };
    list.deliver("cmdMake", {});
    EXPECT_EQ(heard, (QStringList{"a cmdMake", "b cmdCurrent", "b cmdMake"}));
}

TEST_F(ListenerListTest, OneReleasedAndConnectedAnewHearsTheClickOnce) {
    list.connect(a);
    a.react = [&](const QString&) {
        list.release(a);
        list.connect(b);
        list.release(b);
        list.connect(a);
    };
    list.deliver("cmdDelete", {});
    EXPECT_EQ(heard, QStringList{"a cmdDelete"});
    list.deliver("cmdNext", {});
    EXPECT_EQ(heard.size(), 2) << "the next click is heard again";
}

TEST_F(ListenerListTest, ConnectedAnewByANestedClickItHearsEachOfTheTwoOnce) {
    list.connect(a);
    a.react = [&](const QString& tool) {
        if (tool != "cmdDelete")
            return;
        list.release(a);
        list.connect(b);
        list.deliver("cmdLogs", {});
        list.release(b);
        list.connect(a);
        list.deliver("cmdFormulas", {});
    };
    EXPECT_FALSE(list.isDelivering());
    b.react = [&](const QString&) { EXPECT_TRUE(list.isDelivering()); };
    list.deliver("cmdDelete", {});
    EXPECT_FALSE(list.isDelivering());
    EXPECT_EQ(heard, (QStringList{"a cmdDelete", "b cmdLogs", "a cmdFormulas"}));
}

TEST_F(ListenerListTest, AFailingListenerLeavesTheListInOrder) {
    list.connect(a);
    a.react = [&](const QString&) {
        list.release(a);
        throw std::runtime_error("broken");
    };
    EXPECT_THROW(list.deliver("cmdNext", {}), std::runtime_error);
    list.connect(a);
    a.react = nullptr;
    list.deliver("cmdNext", {});
    EXPECT_EQ(heard.size(), 2);
}

}  // namespace
