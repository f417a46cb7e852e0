// Quitting during a mix is asked first, and before anything is closed.
#include "DeskTest.h"

#include "mixer/ctlSorvanto.h"
#include "platform/widgets/LongWork.h"
#include "screens/BrowsingScreen.h"

#include <QApplication>

using namespace Qt::StringLiterals;
using namespace sorvanto;

namespace {

class QuitTest : public DeskTest {
protected:
    bool isLinked() {
        const auto before = line.transcript.size();
        return test::waitFor([&] { return line.transcript.size() > before + 2; });
    }
    /// As the desktop announces it; nobody looks at the manager, which only Qt can make.
    static void endSession() {
        alignas(std::max_align_t) static std::byte unread[64];
        emit qApp->commitDataRequest(reinterpret_cast<QSessionManager&>(unread));
    }
    const QString mixing =
        u"\"Cooling Gel\" is being mixed, 00:20 left. The mixer goes on without this "
        "program.\r\n\r\nThe results will be offered for the log at the next start. Quit?"_s;
};

TEST_F(QuitTest, NoLeavesTheMixerAndTheTypedTextAlone) {
    click(u"cmdChemicals"_s);
    ASSERT_FALSE(screen<BrowsingScreen>(chemicals).formLocked());
    startMix();
    answerNo(mixing);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(shown, QStringList{u"AskDialog"_s}) << "nothing about the chemical";
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(isLinked());
    EXPECT_EQ(programEnds, 0);
}

TEST_F(QuitTest, NoIsTheDefault) {
    startMix();
    whileOpen(u"AskDialog"_s, [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(isLinked());
}

TEST_F(QuitTest, YesRunsTheToldOrder) {
    click(u"cmdFormulas"_s);
    click(u"cmdEdit"_s);
    startMix();
    answerYes(u"is being mixed"_s);
    whileOpen(u"AskDialog"_s, [](QWidget& box) { support::child<QPushButton>(box, "Cancel")->click(); });
    EXPECT_FALSE(window->close()) << "refused by the formula";
    EXPECT_FALSE(panelButton("mixerConnect")->isHidden()) << "the mixer was closed first";
    EXPECT_EQ(shown.size(), 2);
}

TEST_F(QuitTest, APausedMixAndOneThatCantBeSeenAreNamed) {
    startMix();
    panelButton("mixerPause")->click();
    ASSERT_TRUE(test::waitFor([&] { return panelButton("mixerResume")->isVisible(); }));
    answerNo(u"The mix of \"Cooling Gel\" is paused, 00:20 left. The mixer stays paused."_s);
    EXPECT_FALSE(window->close());
    line.cut();
    ASSERT_TRUE(
        test::waitFor([&] { return window->mixer().mixUnderWay()->course == MixUnderWay::Course::Unseen; }));
    answerNo(u"The mixer does not answer. It may still be mixing \"Cooling Gel\"."_s);
    EXPECT_FALSE(window->close());
}

TEST_F(QuitTest, NothingIsAskedWithoutAMix) {
    EXPECT_FALSE(window->mixer().mixUnderWay());
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(QuitTest, NothingIsAskedWhenTheSessionEnds) {
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    startMix();
    endSession();
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(shown.isEmpty());
}

TEST_F(QuitTest, AWindowThatIsClosedDuringLongWorkClosesAtItsEnd) {
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    {
        const platform::LongWork work(u"Taking prices"_s);
        EXPECT_FALSE(window->close());
        QCoreApplication::processEvents();
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(programEnds, 0);
    }
    EXPECT_TRUE(test::waitFor([&] { return programEnds == 1; }));
}

TEST_F(QuitTest, AStartAnewWaitsForTheEndOfLongWork) {
    click(u"cmdChemicals"_s);
    click(u"cmdCancel"_s);
    {
        const platform::LongWork work(u"Taking prices"_s);
        serverWays.readCopy();
        QCoreApplication::processEvents();
        EXPECT_TRUE(restarts.empty());
    }
    EXPECT_TRUE(test::waitFor([&] { return restarts.size() == 1; }));
}

TEST_F(QuitTest, ASessionEndThatWasCalledOffIsForgotten) {
    startMix();
    endSession();
    QTest::keyClick(window.get(), Qt::Key_Shift);
    answerNo(u"is being mixed"_s);
    EXPECT_FALSE(window->close());
}

}  // namespace
