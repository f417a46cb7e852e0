// What is announced, as the status line, its list and the card show it.
#include "core/News.h"
#include "Child.h"
#include "Heard.h"
#include "Settle.h"
#include "TestProgram.h"
#include "Waiting.h"
#include "core/NewsCard.h"
#include "core/NewsLine.h"
#include "core/NewsList.h"
#include "platform/basic/RuntimeError.h"

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;
using namespace std::chrono_literals;
using support::child;
using support::settle;

class NewsTest : public support::TestProgram {
protected:
    void SetUp() override {
        TestProgram::SetUp();
        startConfiguration();
        news = std::make_unique<News>(context);
        window = std::make_unique<QWidget>();
        line = new NewsLine(*news, window.get());
        window->resize(900, 40);
        line->setGeometry(0, 0, 900, 30);
        auto* typing = new QLineEdit(window.get());
        window->show();
        typing->setFocus();
    }
    void TearDown() override {
        window.reset();
        news.reset();
        TestProgram::TearDown();
    }
    QPushButton& text() { return *child<QPushButton>(*line, u"cmdNews"_s); }
    QPushButton* action(const QWidget& where, int number) {
        return where.findChild<QPushButton*>(u"cmdNewsAction%1"_s.arg(number));
    }
    HappeningAction counted(const QString& name, bool once = false) {
        return {name, [this] { ++run; }, once};
    }
    QWidget* openList() {
        text().click();
        return QApplication::activePopupWidget();
    }

    std::unique_ptr<QWidget> window;
    std::unique_ptr<News> news;
    NewsLine* line = nullptr;
    int run = 0;
};

TEST_F(NewsTest, SaysTheNewestForAWhileAndThenOnlyThatThereIsSome) {
    EXPECT_FALSE(text().isVisible());
    line->setTimes({1ms, 1h});
    announce(u"Saved 14:05"_s);
    EXPECT_EQ(text().text(), u"Saved 14:05"_s);
    EXPECT_TRUE(support::waitFor([this] { return text().text().isEmpty(); }));
    EXPECT_TRUE(text().isVisible());
    EXPECT_EQ(text().accessibleName(), u"Recent messages"_s);
}

TEST_F(NewsTest, WhatHasSomethingToDoStaysLonger) {
    line->setTimes({1h, 1ms});
    announce(u"Saved"_s);
    announce({u"Thrown away"_s, {counted(u"Bring back"_s)}, false});
    EXPECT_TRUE(support::waitFor([this] { return text().text().isEmpty(); })) << "its own time counts";
    EXPECT_FALSE(action(*line, 0)) << "its button goes with it";
}

TEST_F(NewsTest, ItStaysWhileTheKeysAreOnIt) {
    line->setTimes({1ms, 1ms});
    announce({u"Thrown away"_s, {counted(u"Bring back"_s)}, false});
    ASSERT_TRUE(support::becomesActive(window.get()));
    action(*line, 0)->setFocus();
    int timeouts = 0;
    QObject::connect(line->findChild<QTimer*>(), &QTimer::timeout, [&timeouts] { ++timeouts; });
    ASSERT_TRUE(support::waitFor([&timeouts] { return timeouts > 2; }));
    EXPECT_EQ(text().text(), u"Thrown away"_s);
    window->findChild<QLineEdit*>()->setFocus();
    EXPECT_TRUE(support::waitFor([this] { return text().text().isEmpty(); }));
}

TEST_F(NewsTest, AButtonRunsItsActionAsOftenAsItIsPressed) {
    announce({u"Exported"_s, {counted(u"Open"_s), {u"Show"_s, {}, false}}, false});
    ASSERT_TRUE(action(*line, 0));
    EXPECT_EQ(action(*line, 1)->text(), u"Show"_s);
    action(*line, 0)->click();
    action(*line, 0)->click();
    action(*line, 1)->click();
    EXPECT_EQ(run, 2);
}

TEST_F(NewsTest, WhatCanBeDoneOnceIsGoneEverywhereAfterwards) {
    announce({u"Thrown away"_s, {counted(u"Bring back"_s, true)}, true});
    NewsCard card(*news);
    announce({u"Thrown away"_s, {counted(u"Bring back"_s, true)}, true});
    action(*line, 0)->click();
    EXPECT_EQ(run, 1);
    EXPECT_FALSE(action(*line, 0));
    EXPECT_FALSE(action(card, 0));
    QWidget* list = openList();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->findChildren<QPushButton*>().size(), 1) << "that of the earlier one";
    list->close();
}

TEST_F(NewsTest, AnActionThatFailsIsReported) {
    announce({u"Exported"_s, {{u"Open"_s, [] { throw platform::RuntimeError(5, u"no"_s); }, false}}, false});
    action(*line, 0)->click();
    expectReport(u"News:act"_s);
}

TEST_F(NewsTest, AClickListsTheLastTenNewestFirstWithTheirTimes) {
    for (int i = 1; i <= 12; ++i)
        announce({u"No. %1"_s.arg(i), {counted(u"Open"_s)}, false});
    QWidget* list = openList();
    ASSERT_TRUE(list);
    EXPECT_EQ(child<QLabel>(*list, u"lblNews0"_s)->text(), u"No. 12"_s);
    EXPECT_EQ(child<QLabel>(*list, u"lblNews9"_s)->text(), u"No. 3"_s);
    EXPECT_FALSE(list->findChild<QLabel*>(u"lblNews10"_s));
    EXPECT_EQ(child<QLabel>(*list, u"lblNewsTime0"_s)->text(), u"2:05 PM"_s);
    list->findChildren<QPushButton*>().last()->click();
    EXPECT_EQ(run, 1);
    EXPECT_FALSE(list->isVisible()) << "the list goes before the action is run";
    settle();
}

TEST_F(NewsTest, EscClosesTheList) {
    announce(u"Saved"_s);
    QWidget* list = openList();
    ASSERT_TRUE(list);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(QApplication::activePopupWidget());
    settle();
}

TEST_F(NewsTest, ALongTextIsCutInItsMiddleAndWholeAsTip) {
    const QString name = u"Hydroquinone "_s.repeated(20);
    announce(name);
    EXPECT_TRUE(text().text().contains(u'…'));
    EXPECT_EQ(text().toolTip(), name);
    EXPECT_EQ(text().accessibleName(), name);
}

TEST_F(NewsTest, AnAmpersandIsNoKey) {
    announce({u"A & B"_s, {counted(u"C & D"_s)}, false});
    EXPECT_EQ(text().text(), u"A && B"_s);
    EXPECT_EQ(action(*line, 0)->text(), u"C && D"_s);
}

TEST_F(NewsTest, ACardStaysUntilItIsClosedOrAnswered) {
    NewsCard card(*news);
    announce(u"Saved"_s);
    EXPECT_TRUE(card.isHidden()) << "not everything is a card";
    announce({u"Batch A logged"_s, {counted(u"Labels"_s)}, true});
    announce(u"Saved"_s);
    EXPECT_FALSE(card.isHidden());
    EXPECT_EQ(child<QLabel>(card, u"lblNewsCard"_s)->text(), u"Batch A logged"_s);
    child<QToolButton>(card, u"cmdCloseNews"_s)->click();
    EXPECT_TRUE(card.isHidden());
    announce({u"Batch B logged"_s, {counted(u"Labels"_s)}, true});
    EXPECT_FALSE(card.isHidden());
    action(card, 0)->click();
    EXPECT_EQ(run, 1);
    EXPECT_TRUE(card.isHidden());
}

TEST_F(NewsTest, ScreenReadersSayEachWhole) {
    const support::Heard heard;
    const QString name = u"Hydroquinone "_s.repeated(20);
    announce(name);
    announce(u"Saved"_s);
    EXPECT_EQ(heard.all(), (QStringList{name, u"Saved"_s}));
}

TEST_F(NewsTest, ScreenReadersFindItAsTheNameOfTheLine) {
    line->setTimes({1ms, 1h});
    const QString name = u"Hydroquinone "_s.repeated(20);
    announce(name);
    const auto* told = QAccessible::queryAccessibleInterface(&text());
    ASSERT_TRUE(told);
    EXPECT_EQ(told->text(QAccessible::Name), name) << "whole, though it is shown cut";
    EXPECT_TRUE(support::waitFor([this] { return text().text().isEmpty(); }));
    EXPECT_EQ(told->text(QAccessible::Name), u"Recent messages"_s);
}

}  // namespace
