// Tool clicks, keys in the search box, and the switching of screens.
#include "BrokenTranslator.h"
#include "MainWindowTest.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

using namespace core_test;

class SwitchTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        createDatabase();
        load();
        taken();
    }
    QStringList clicks() { return taken({"btnClick"}).filter(QRegularExpression("^(?!mixer)")); }
};

struct ScreenCase {
    const char *button, *menuEntry, *band, *tool, *text;
    int number;
    const char* caption;
};

class EachScreen : public SwitchTest, public testing::WithParamInterface<ScreenCase> {};

TEST_P(EachScreen, IsReachedByItsButtonAndItsMenuEntry) {
    const ScreenCase& row = GetParam();
    for (const auto& [band, name] :
         {std::pair{"FormBar", row.button}, std::pair{"mnuForms", row.menuEntry}}) {
        window->SetCurrentForm(row.number == logs ? formulas : logs);
        taken();
        click(band, name);
        EXPECT_EQ(window->current(), row.number);
        EXPECT_EQ(taken({"btnClick"}).filter(QRegularExpression("^(?!mixer)")).size(), 1);
        EXPECT_EQ(stub(row.number).captionAtClick, row.caption);
        auto& hosting = tool(row.band, row.tool);
        EXPECT_EQ(hosting.form(), window->screen(row.number));
        EXPECT_EQ(hosting.description(), row.text);
        EXPECT_EQ(hosting.toolTip(), row.text);
        EXPECT_TRUE(hosting.enabled());
        for (const char* other : {"CurrentFormula", "Formulas", "Chemicals", "Logs", "Patients"})
            EXPECT_EQ(window->bar().band(other).visible(), QString(other) == row.band) << other;
        for (const char* button : {"cmdCurrent", "cmdFormulas", "cmdChemicals", "cmdLogs", "cmdPatients"})
            EXPECT_EQ(tool("FormBar", button).checked(), QString(button) == row.button) << button;
        for (int number = 0; number < screenCount; ++number)
            EXPECT_EQ(window->screen(number)->Listener(), number == row.number ? -1 : 0);
        EXPECT_TRUE(window->bar().band("Sorvanto").visible());
        EXPECT_EQ(mixerScreen->Listener(), -1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, EachScreen,
    testing::Values(ScreenCase{"cmdCurrent", "mnuCurrentFormula", "CurrentFormula", "frmCurrent",
                               "Current Formula", currentFormula, "Sorvanto Control Panel: Current Formula"},
                    ScreenCase{"cmdFormulas", "mnuFormulas", "Formulas", "frmFormula", "Formulas", formulas,
                               "Sorvanto Control Panel: Formulas  :  Cold Cream"},
                    ScreenCase{"cmdChemicals", "mnuChemicals", "Chemicals", "frmChemical", "Chemicals",
                               chemicals, "Sorvanto Control Panel: Chemicals  :  txtchm_Name of 2"},
                    ScreenCase{"cmdLogs", "mnuLogs", "Logs", "frmLog", "Logs", logs,
                               "Sorvanto Control Panel: Logs  :  txtlog_Name of 2"},
                    ScreenCase{"cmdPatients", "mnuPatients", "Patients", "frmPatient", "Patients", patients,
                               "Sorvanto Control Panel: Patients  :  txtpat_LName of 2, txtpat_FName of 2"}),
    [](const auto& row) { return row.param.button; });

TEST_F(SwitchTest, TheOrderOfASwitch) {
    click("FormBar", "cmdLogs");
    EXPECT_EQ(taken().join('\n'),
              "current:Listener 0\n"
              "formulas:Listener 0\n"
              "chemicals:Listener 0\n"
              "logs:Listener -1\n"
              "logs:setMenuOptions\n"
              "patients:Listener 0\n"
              "logs:create\n"  // a second one, for its caption alone
              "logs:load\n"
              "mixer:btnClick cmdLogs \"\"\n"
              "logs:btnClick cmdLogs \"\"");
}

TEST_F(SwitchTest, TheCaptionsInstanceIsMadeOnceNeverListensAndIsNeverHosted) {
    click("FormBar", "cmdChemicals");
    EXPECT_EQ(taken({"chemicals:create", "chemicals:load"}).size(), 2);
    click("FormBar", "cmdFormulas");
    click("FormBar", "cmdChemicals");
    EXPECT_TRUE(taken({"create", "load"}).isEmpty());
    EXPECT_EQ(tool("Chemicals", "frmChemical").form(), window->screen(chemicals));
    click("MainBar", "cmdNext");
    EXPECT_EQ(clicks(), QStringList{"chemicals:btnClick cmdNext \"\""});
}

TEST_F(SwitchTest, TheCurrentScreensOwnToolGoesThroughTheWholeSwitchAgain) {
    click("FormBar", "cmdFormulas");
    click("FormBar", "cmdFormulas");
    const QStringList done = taken();
    EXPECT_EQ(done.count("formulas:Listener -1"), 2);
    EXPECT_EQ(done.count("formulas:btnClick cmdFormulas \"\""), 2) << "connected twice would hear it twice";
}

TEST_F(SwitchTest, MakeReachesTheScreenThatTakesOverInTheSameClickOnce) {
    stub(formulas).onClick = [&](const QString& name) {
        if (name == "cmdMake")
            click("FormBar", "cmdCurrent");
    };
    click("MainBar", "cmdMake");
    EXPECT_EQ(clicks().join('\n'), "formulas:btnClick cmdMake \"\"\n"
                                   "current:btnClick cmdCurrent \"\"\n"
                                   "current:btnClick cmdMake \"\"");
}

TEST_F(SwitchTest, TheFindButtonHandsOverAnEmptyTextAndLeavesTheBox) {
    tool("MainBar", "txtSearch").setText("zinc");
    click("MainBar", "cmdSearch");
    EXPECT_EQ(clicks(), QStringList{"formulas:btnClick cmdSearch \"\""});
    EXPECT_EQ(tool("MainBar", "txtSearch").text(), "zinc");
}

TEST_F(SwitchTest, EnterInTheBoxHandsOverItsTextAndThenEmptiesIt) {
    auto& box = tool("MainBar", "txtSearch");
    box.setText("zinc");
    QString boxAtClick;
    stub(formulas).onClick = [&](const QString&) { boxAtClick = box.text(); };
    window->ActiveBar_ToolKeyPress(box, 13);
    EXPECT_EQ(clicks(), QStringList{"formulas:btnClick txtSearch \"zinc\""});
    EXPECT_EQ(boxAtClick, "zinc");
    EXPECT_EQ(box.text(), "");
}

TEST_F(SwitchTest, EnterInAnEmptyBoxIsASearchToo) {
    window->ActiveBar_ToolKeyPress(tool("MainBar", "txtSearch"), 13);
    EXPECT_EQ(clicks(), QStringList{"formulas:btnClick txtSearch \"\""});
}

TEST_F(SwitchTest, OtherKeysAndOtherToolsRaiseNothing) {
    auto& box = tool("MainBar", "txtSearch");
    box.setText("zinc");
    for (const int key : {27, 65, 9, 10, 0})
        window->ActiveBar_ToolKeyPress(box, key);
    window->ActiveBar_ToolKeyPress(tool("MainBar", "cmdSearch"), 13);
    EXPECT_TRUE(taken().isEmpty());
    EXPECT_EQ(box.text(), "zinc");
}

struct PassedOn {
    const char *band, *name;
};
class OtherTools : public SwitchTest, public testing::WithParamInterface<PassedOn> {};

TEST_P(OtherTools, OnlyRaiseTheEvent) {
    click(GetParam().band, GetParam().name);
    EXPECT_EQ(taken().filter(QRegularExpression("^(?!mixer)")),
              QStringList{u"formulas:btnClick %1 \"\""_s.arg(GetParam().name)});
    EXPECT_EQ(window->current(), formulas);
}
INSTANTIATE_TEST_SUITE_P(All, OtherTools,
                         testing::Values(PassedOn{"mnuFile", "mnuPrint"}, PassedOn{"mnuFile", "mnuExport"},
                                         PassedOn{"mnuHelp", "mnuUpdate"}, PassedOn{"MainBar", "cmdFirst"},
                                         PassedOn{"MainBar", "cmdPrint"}, PassedOn{"mnuPrint", "mnuLabel"},
                                         PassedOn{"mnuExport", "mnuLabelx"}),
                         [](const auto& row) { return row.param.name; });

class OptionsTools : public SwitchTest, public testing::WithParamInterface<PassedOn> {};

TEST_P(OptionsTools, ShowTheDialogToItsEndBeforeTheEvent) {
    click(GetParam().band, GetParam().name);
    EXPECT_EQ(taken().filter(QRegularExpression("^(?!mixer)")),
              (QStringList{"editOptions", u"formulas:btnClick %1 \"\""_s.arg(GetParam().name)}));
}
INSTANTIATE_TEST_SUITE_P(All, OptionsTools,
                         testing::Values(PassedOn{"MainBar", "cmdOptions"},
                                         PassedOn{"mnuFile", "mnuOptions"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(SwitchTest, TheAboutBoxIsShownModallyAndThenTheEventGoesOut) {
    asker.expectModal("frmAbout", [this](QWidget& about) {
        EXPECT_TRUE(clicks().isEmpty());
        about.close();
    });
    click("mnuHelp", "mnuAbout");
    EXPECT_EQ(clicks(), QStringList{"formulas:btnClick mnuAbout \"\""});
}

TEST_F(SwitchTest, AClickOfTheUserArrives) {
    window->bar().click(tool("MainBar", "cmdNext"));
    EXPECT_EQ(clicks(), QStringList{"formulas:btnClick cmdNext \"\""});
    tool("MainBar", "cmdNext").setEnabled(false);
    window->bar().click(tool("MainBar", "cmdNext"));
    EXPECT_TRUE(clicks().isEmpty());
}

TEST_F(SwitchTest, AFailureEndsTheClickUnderItsTag) {
    stub(formulas).onClick = [](const QString&) { throw platform::RuntimeError(5, "broken"); };
    click("MainBar", "cmdNext");
    EXPECT_EQ(expectReport("frmMain:ActiveBar_ToolClick").description, "broken");
    window->ActiveBar_ToolKeyPress(tool("MainBar", "txtSearch"), 13);
    expectReport("frmMain:ActiveBar_ToolKeyPress");
}

TEST_F(SwitchTest, AFailingTextEndsTheTranslationUnderItsTag) {
    const support::BrokenTranslator broken;
    window->translateForm();
    EXPECT_EQ(expectReport("frmMain:translateForm").description, "no language");
}

TEST_F(SwitchTest, EnablingNeverDisablesAndReachesListenersAlone) {
    for (int number = 0; number < screenCount; ++number)
        window->screen(number)->setEnabled(false);
    mixerScreen->setEnabled(false);
    window->enableForm();
    for (int number = 0; number < screenCount; ++number)
        EXPECT_EQ(window->screen(number)->isEnabled(), number == formulas);
    EXPECT_TRUE(mixerScreen->isEnabled());
}

TEST_F(SwitchTest, ActivatingTheWindowEnablesAllScreens) {
    for (int number = 0; number < screenCount; ++number)
        window->screen(number)->setEnabled(false);
    mixerScreen->setEnabled(false);
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window.get(), &activate);
    for (int number = 0; number < screenCount; ++number)
        EXPECT_TRUE(window->screen(number)->isEnabled()) << number;
    EXPECT_TRUE(mixerScreen->isEnabled());
}

TEST_F(SwitchTest, AChangeOfChildBandDoesNothing) {
    window->ActiveBar_ChildBandChange(window->bar().band("Forms").childBand("Logs"));
    EXPECT_TRUE(taken().isEmpty());
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(SwitchTest, TheScreensReachEachOtherThroughTheWindow) {
    EXPECT_EQ(&window->batchLog(), dynamic_cast<BatchLog*>(window->screen(logs)));
    EXPECT_EQ(window->mixer().parent(), mixerScreen);
    window->setCaption("A [*] of its own");
    EXPECT_EQ(window->windowTitle(), "A [*][*] of its own");
}

TEST_F(NoPatientsTest, EachClickMeetsTheAbsentScreen) {
    createDatabase();
    load();
    dropReports();
    taken();
    mixerScreen->setEnabled(false);
    click("FormBar", "cmdLogs");
    expectReport("frmMain:SetCurrentForm");
    expectReport("frmMain:enableForm_Error");
    EXPECT_EQ(window->current(), logs);
    EXPECT_TRUE(taken().contains("logs:btnClick cmdLogs \"\"")) << "the click itself goes on";
    EXPECT_FALSE(mixerScreen->isEnabled()) << "enableForm ended before it";
    QEvent activate(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window.get(), &activate);
    expectReport("frmMain:Form_Activate");
    EXPECT_TRUE(mixerScreen->isEnabled());
}

}  // namespace
