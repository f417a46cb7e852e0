// The height of tabs follows the page on show.
#include "platform/widgets/TabBox.h"
#include "Settle.h"
#include "Waiting.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

using namespace platform;

QWidget* pageOf(int height) {
    auto* page = new QWidget;
    auto* content = new QWidget;
    content->setMinimumSize(100, height);
    (new QVBoxLayout(page))->addWidget(content);
    return page;
}

TEST(TabBoxes, ALowPageDoesNotScrollForTheSakeOfAHighOne) {
    QScrollArea area;
    area.setWidgetResizable(true);
    auto* tabs = new TabBox;
    area.setWidget(tabs);
    tabs->addTab(pageOf(80), "Low");
    tabs->addTab(pageOf(600), "High");
    area.resize(400, 300);
    area.show();
    ASSERT_TRUE(support::becomesExposed(&area));
    const auto scrolls = [&] { return area.verticalScrollBar()->maximum() > 0; };
    support::settle();
    EXPECT_FALSE(scrolls());
    tabs->setCurrentIndex(1);
    EXPECT_TRUE(support::waitFor(scrolls));
    EXPECT_GE(tabs->widget(1)->height(), 600);
    tabs->setCurrentIndex(0);
    EXPECT_TRUE(support::waitFor([&] { return !scrolls(); }));
    delete tabs->widget(0);
    EXPECT_TRUE(support::waitFor(scrolls)) << "the page that remains is the high one";
}

}  // namespace
