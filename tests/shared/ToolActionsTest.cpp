// A screen's actions by the names of the tools.
#include "shared/ToolActions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

TEST(ToolActions, RunTheActionOfTheNameAndNoOther) {
    ToolActions actions;
    QStringList done;
    actions.on({"cmdSearch"_L1, "txtSearch"_L1}, [&](const QString& text) { done << u"search "_s + text; });
    actions.on({"cmdEdit"_L1}, [&] { done << u"edit"_s; });
    EXPECT_TRUE(actions.run(u"txtSearch"_s, u"Borax"_s));
    EXPECT_TRUE(actions.run(u"cmdEdit"_s, {}));
    EXPECT_TRUE(actions.run(u"cmdSave"_s, {}));
    EXPECT_EQ(done, QStringList({u"search Borax"_s, u"edit"_s}));
}

TEST(ToolActions, SayWhetherTheScreensWorkGoesOn) {
    ToolActions actions;
    actions.on({"cmdMake"_L1}, [] { return false; });
    EXPECT_FALSE(actions.run(u"cmdMake"_s, {}));
    actions.on({"cmdMake"_L1}, [] { return true; });
    EXPECT_TRUE(actions.run(u"cmdMake"_s, {})) << "the later action holds";
}

TEST(ToolActions, AReportHasAToolToPreviewAndOneToExport) {
    ToolActions actions;
    QStringList done;
    actions.onReport("mnuLabel"_L1, [&](bool exportIt) { done << (exportIt ? u"export"_s : u"preview"_s); });
    EXPECT_TRUE(actions.run(u"mnuLabelx"_s, {}));
    EXPECT_TRUE(actions.run(u"mnuLabel"_s, {}));
    EXPECT_EQ(done, QStringList({u"export"_s, u"preview"_s}));
}

TEST(ToolActions, ANameThatNoBandHasIsAnError) {
    platform::CommandBar bar;
    bar.addBand(u"MainBar"_s, platform::BandKind::ToolBar).addTool(platform::ToolKind::Button, u"cmdSave"_s);
    ToolActions actions;
    actions.on({"cmdSave"_L1}, [] {});
    actions.expectOn(bar);
    actions.on({"cmdSafe"_L1}, [] {});
    try {
        actions.expectOn(bar);
        FAIL();
    } catch (const platform::RuntimeError& error) {
        EXPECT_EQ(error.number(), platform::error::itemNotFound);
        EXPECT_TRUE(error.description().contains(u"cmdSafe"_s));
    }
}

}  // namespace
