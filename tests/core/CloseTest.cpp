// The end of the program: who is asked, who may refuse, what is dropped.
#include "MainWindowTest.h"

#include "config/clsOptions.h"

namespace {

using namespace core_test;

class CloseTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        createDatabase();
        load();
        taken();
    }
};

const QStringList allAsked{"mixer:closeForm", "formulas:closeForm", "chemicals:closeForm", "logs:closeForm",
                           "patients:closeForm"};

TEST_F(CloseTest, AsksTheScreensDropsThemAndEndsTheProcess) {
    window->show();
    window->close();
    EXPECT_EQ(programEnds, 1);
    const QStringList dropped{"patients:drop",  "logs:drop",     "current:drop",
                              "chemicals:drop", "formulas:drop", "mixer:drop"};
    EXPECT_EQ(taken(), allAsked + dropped);
}

TEST_F(CloseTest, TheMixersAnswerIsNotLookedAt) {
    mixerScreen->closeAnswer = 2;
    EXPECT_FALSE(window->Form_QueryUnload());
}

TEST_F(CloseTest, AnswersOtherThanTwoConsent) {
    stub(formulas).closeAnswer = 6;
    stub(chemicals).closeAnswer = 7;
    EXPECT_FALSE(window->Form_QueryUnload());
}

struct Refusal {
    int screen;
    int asked;
};
class Refusals : public CloseTest, public testing::WithParamInterface<Refusal> {};

TEST_P(Refusals, KeepTheWindowAndTheNextAttemptAsksAllAgain) {
    window->show();
    stub(GetParam().screen).closeAnswer = 2;
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_FALSE(window->close());
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(taken({"closeForm"}), allAsked.mid(0, GetParam().asked));
    }
    EXPECT_EQ(programEnds, 0);
}
INSTANTIATE_TEST_SUITE_P(Each, Refusals,
                         testing::Values(Refusal{formulas, 2}, Refusal{chemicals, 3}, Refusal{logs, 4},
                                         Refusal{patients, 5}));

TEST_F(CloseTest, ExitIsTheSameWay) {
    window->show();
    click("mnuFile", "mnuExit");
    EXPECT_EQ(programEnds, 1);
    EXPECT_TRUE(taken({"btnClick"}).isEmpty());
}

TEST_F(CloseTest, AfterARefusedExitTheEventStillGoesOut) {
    window->show();
    stub(formulas).closeAnswer = 2;
    click("mnuFile", "mnuExit");
    EXPECT_EQ(programEnds, 0);
    EXPECT_EQ(taken({"formulas:btnClick"}), QStringList{"formulas:btnClick mnuExit \"\""});
}

TEST_F(CloseTest, AFailureOnTheWayKeepsTheWindow) {
    window->show();
    stub(chemicals).failsToClose = true;
    EXPECT_FALSE(window->close());
    expectReport("frmMain:Form_QueryUnload");
    EXPECT_EQ(programEnds, 0);
}

TEST_F(CloseTest, AFailureAtTheEndIsReported) {
    basMain::endProgram = [] { throw platform::RuntimeError(5, "can't end"); };
    window->Form_Unload();
    EXPECT_EQ(expectReport("frmMain:Form_Unload").description, "can't end");
}

TEST_F(CloseTest, NothingIsSavedAtTheEnd) {
    const QByteArray before = folder.read("options.xml");
    basMain::Options->StoreName("Other");
    window->close();
    EXPECT_EQ(folder.read("options.xml"), before);
}

TEST_F(NoPatientsTest, ClosingSkipsThePatientScreen) {
    createDatabase();
    load();
    dropReports();
    taken();
    EXPECT_FALSE(window->Form_QueryUnload());
    EXPECT_EQ(taken(), allAsked.mid(0, 4));
}

}  // namespace
