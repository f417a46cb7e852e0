// The dot that marks a tool's picture on the side bar.
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/Theme.h"

#include <QMainWindow>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(BarMark, AMarkedToolShowsADotAndSaysWhatItMeans) {
    platform::CommandBar bar;
    bar.addBand(u"FormBar"_s, platform::BandKind::SideBar)
        .addTool(platform::ToolKind::Button, u"cmdFormulas"_s, {}, u"formulas"_s);
    QMainWindow window;
    bar.attach(window, {});
    platform::Tool& tool = bar.band(u"FormBar"_s).tool(u"cmdFormulas"_s);
    auto* button = window.findChild<QToolButton*>(u"cmdFormulas"_s);
    ASSERT_TRUE(button);
    const QImage plain = button->grab().toImage();
    tool.setMark(u"Unsaved text"_s);
    EXPECT_EQ(button->accessibleDescription(), u"Unsaved text"_s);
    const QImage marked = button->grab().toImage();
    EXPECT_NE(plain, marked);
    EXPECT_EQ(marked.pixelColor(button->width() - 13, 13), platform::theme().warning);
    tool.setMark({});
    EXPECT_EQ(button->accessibleDescription(), QString());
    EXPECT_EQ(button->grab().toImage(), plain);
}

}  // namespace
