// The screens on a file that keeps no history, as those from before version 1.2.
#include "Announced.h"
#include "ScreenTest.h"

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class NoHistoryTest : public ScreenTest {
protected:
    void seed() override { seedLogs(); }
};

TEST_F(NoHistoryTest, NothingIsOfferedAfterADeletion) {
    load();
    const support::Announced heard;
    const QString name = text(formulas, u"txtfrm_Name"_s);
    asker.expectMsgBox(u"Delete %1?"_s.arg(name), platform::deletionStyle, platform::Answer::Yes);
    click(u"cmdDelete"_s);
    EXPECT_EQ(str(heard.last().text), str(name) + " deleted");
    EXPECT_TRUE(heard.last().actions.empty());
}

}  // namespace
