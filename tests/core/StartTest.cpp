// The start of the program, step by step.
#include "MainWindowTest.h"

#include "config/clsLanguage.h"
#include "config/clsOptions.h"
#include "core/CopySettings.h"
#include "core/DailyBackup.h"
#include "platform/widgets/CommandBar.h"
#include "support/Child.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <sys/stat.h>

namespace {

using namespace core_test;
using platform::Answer;

class StartTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        createDatabase();
    }
};

TEST_F(StartTest, GoesThroughItsStepsInOneOrder) {
    load();
    EXPECT_EQ(taken().join('\n'),
              "reporter:create\n"
              "updater:create\n"
              "updater:IdentifyStore \"\" \"\" \"Kelmar Systems\" \"(555)010-0188\"\n"
              "updater:ApplyUpdates open=1 \"<folder>\\dbupdate.xml\" \"1\"\n"
              "previousInstance\n"
              "mixer:create\n"
              "mixer:load\n"
              "control\n"  // the store
              "control\n"  // the settings
              "control\n"  // three tables
              "control\n"
              "control\n"
              "current:create\n"
              "current:load\n"
              "formulas:create\n"
              "formulas:load\n"
              "chemicals:create\n"
              "chemicals:load\n"
              "logs:create\n"
              "logs:load\n"
              "patients:create\n"
              "patients:load\n"
              "mixer:Listener -1\n"
              "mixer:setMenuOptions\n"
              "current:Listener 0\n"
              "formulas:Listener -1\n"
              "formulas:setMenuOptions\n"
              "chemicals:Listener 0\n"
              "logs:Listener 0\n"
              "patients:Listener 0\n"
              "mixer:btnClick cmdFormulas \"\"\n"
              "formulas:btnClick cmdFormulas \"\"\n"
              "control");  // StartControl, last of all
}

TEST_F(StartTest, FillsTheSharedObjectsAndTables) {
    load();
    EXPECT_TRUE(basMain::Options);
    EXPECT_TRUE(basMain::Language);
    EXPECT_EQ(basMain::Main, window.get());
    EXPECT_EQ(basMain::MixTypes.size(), 10);
    EXPECT_EQ(basMain::JarSizes.value(0), QString());
    EXPECT_EQ(basMain::MixTimes.size(), 256);
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(basMain::gConnectionString, "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + databasePath() +
                                              ";Persist Security Info=False");
}

TEST_F(StartTest, HostsEachScreenWithUntranslatedTexts) {
    load();
    auto& bar = window->bar();
    const auto& mixer = bar.band("Sorvanto").tool("frmSorvanto");
    EXPECT_EQ(mixer.form(), mixerScreen);
    EXPECT_EQ(mixer.description(), "Sorvanto Control Panel");
    EXPECT_EQ(mixer.toolTip(), "Sorvanto");

    struct Row {
        const char *child, *tool, *text;
        int number;
    };
    for (const Row& row :
         {Row{"Current", "frmCurrent", "Current Formula", currentFormula},
          Row{"Formulas", "frmFormula", "Formulas", formulas},
          Row{"Chemicals", "frmChemical", "Chemicals", chemicals}, Row{"Logs", "frmLog", "Logs", logs},
          Row{"Patients", "frmPatient", "Patients", patients}}) {
        const auto& tool = bar.band("Forms").childBand(row.child).tool(row.tool);
        EXPECT_EQ(tool.description(), row.text);
        EXPECT_EQ(tool.toolTip(), row.text);
        // The formulas screen has moved on to the band that shows it.
        EXPECT_EQ(tool.form(), row.number == formulas ? nullptr : window->screen(row.number)) << row.child;
    }
    EXPECT_EQ(bar.band("Formulas").tool("frmFormula").form(), window->screen(formulas));
}

TEST_F(StartTest, AnAppliedUpdateIsWrittenToTheDatabase) {
    prepareUpdater = [](StubUpdater& updater) {
        updater.onApply = [](QString& version, bool& applied) {
            version = "1.5";
            applied = true;
        };
    };
    load();
    EXPECT_EQ(sqlText("SELECT opt_Version FROM Options"), "1.5");
}

TEST_F(StartTest, AnUpdateThatWasNotAppliedWritesNothingWhateverItSaysOfTheVersion) {
    prepareUpdater = [this](StubUpdater& updater) {
        updater.onApply = [this](QString& version, bool&) {
            basMain::gConnection->setTrace([this](const QString& statement) { statements << statement; });
            version = "9";
        };
    };
    load();
    EXPECT_EQ(sqlText("SELECT opt_Version FROM Options"), "1.0");
    EXPECT_TRUE(statements.filter("UPDATE").isEmpty());
}

TEST_F(StartTest, ALaterStartWritesNothingAndAsksNothing) {
    load();
    window.reset();
    const QByteArray options = folder.read("options.xml");
    const QByteArray database = folder.read("sorvanto.mdb");
    const QByteArray language = folder.read("EnglishTranslation.xml");
    basMain::gConnection.reset();
    load();
    EXPECT_TRUE(asker.asked().isEmpty());
    EXPECT_EQ(folder.read("options.xml"), options);
    EXPECT_EQ(folder.read("sorvanto.mdb"), database);
    EXPECT_EQ(folder.read("EnglishTranslation.xml"), language);
}

TEST_F(StartTest, ASecondInstanceEndsAfterTheUpdateAndBeforeTheScreens) {
    parts.previousInstance = [this] {
        trace << "previousInstance";
        return true;
    };
    asker.expectMsgBox("Sorvanto control panel is already running, only one instance allowed.",
                       {platform::Buttons::Ok, platform::Icon::Critical});
    load();
    EXPECT_EQ(programEnds, 1);
    EXPECT_TRUE(window->ended());
    const QStringList done = taken();
    EXPECT_EQ(done.last(), "previousInstance");
    EXPECT_TRUE(done.join('\n').contains("ApplyUpdates open=1"));
    EXPECT_FALSE(done.contains("mixer:create"));
}

TEST_F(StartTest, TheRefusalOfASecondInstanceIsTranslated) {
    folder.write(
        "EnglishTranslation.xml",
        "<Translations Language=\"English\"><Translate English=\"Sorvanto control panel is already running, "
        "only one instance allowed.\" Translated=\"Once is enough.\"/></Translations>");
    parts.previousInstance = [] { return true; };
    asker.expectMsgBox("Once is enough.", {platform::Buttons::Ok, platform::Icon::Critical});
    load();
    EXPECT_EQ(programEnds, 1);
}

TEST_F(StartTest, WhatCantBeLockedIsOpenForReadingOnly) {
    parts.previousInstance = [] {
        InstanceState state;
        state.readingOnly = "/media/stick can not be locked.";
        return state;
    };
    load();
    const QString sentence = "Open for reading only: /media/stick can not be locked.";
    const auto* banner = support::child<QLabel>(*window, "lblReadingOnly");
    EXPECT_FALSE(banner->isHidden());
    EXPECT_EQ(banner->text(), sentence);
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_THROW(openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('x')"), platform::RuntimeError);
    taken();
    for (const char* tool : {"cmdEdit", "cmdNew", "cmdCopy", "cmdSave", "cmdDelete", "cmdMake"}) {
        asker.expectMsgBox(sentence, {platform::Buttons::Ok, platform::Icon::Information});
        window->ActiveBar_ToolClick(window->bar().band("MainBar").tool(tool));
        EXPECT_FALSE(taken().join('\n').contains("btnClick")) << tool;
    }
    window->ActiveBar_ToolClick(window->bar().band("MainBar").tool("cmdNext"));
    EXPECT_TRUE(taken().join('\n').contains("btnClick")) << "browsing works";
}

TEST_F(StartTest, KeysThatRunOutAreSaidAndAClickShowsTheWayOut) {
    sql("INSERT INTO Log (LogID, log_Name) VALUES (30000, 'Gel')");
    load();
    auto* keys = support::child<QPushButton>(*window, "cmdKeysLeft");
    EXPECT_FALSE(keys->isHidden());
    EXPECT_EQ(keys->text(), "Keys left: 2,767 in Logs");
    asker.expectModal("HealthPage", [](QWidget& page) {
        QStringList texts;
        for (const auto* label : page.findChildren<QLabel*>())
            texts << label->text();
        EXPECT_TRUE(texts.join('\n').contains("sorvanto-db archive")) << texts.join('\n').toStdString();
        support::child<QPushButton>(page, "cmdClose")->click();
    });
    keys->click();
}

TEST_F(StartTest, KeysThatRunOutWhileTheProgramIsOpenAreSaidWithTheNextCopy) {
    parts.copies = [] { return std::make_unique<DailyBackup>(context, 0, 1); };
    load();
    const auto* keys = support::child<QPushButton>(*window, "cmdKeysLeft");
    EXPECT_TRUE(keys->isHidden());
    sql("INSERT INTO Log (LogID, log_Name) VALUES (30000, 'Gel')");
    window->show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !keys->isHidden(); }, 20000));
}

TEST_F(StartTest, WhatKilledWritesHaveLeftIsTidiedUp) {
    folder.write("options.xml.a1B2c3", "half");
    load();
    EXPECT_FALSE(folder.has("options.xml.a1B2c3"));
}

TEST_F(StartTest, WhatAnotherComputerMayStillBeWritingStays) {
    parts.previousInstance = [] {
        InstanceState state;
        state.readingOnly = "Another computer has locked the database.";
        return state;
    };
    folder.write("sorvanto.mdb.restored.part", "half");
    load();
    EXPECT_TRUE(folder.has("sorvanto.mdb.restored.part"));
}

TEST_F(StartTest, AWindowFileThatIsNoneIsTold) {
    ASSERT_EQ(::mkfifo(folder.path("window.ini").toLocal8Bit().constData(), 0600), 0);
    load();
    EXPECT_TRUE(
        expectReport("frmMain:Form_Load").description.contains("window.ini can't be read: it is no regular"));
}

TEST_F(StartTest, ADatabaseOpenedLaterIsAskedAboutToo) {
    bool another = false;
    parts.previousInstance = [&] { return another; };
    load();
    EXPECT_TRUE(support::child<QLabel>(*window, "lblReadingOnly")->isHidden());
    basMain::gConnection = std::make_shared<platform::Connection>();
    another = true;
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_EQ(support::child<QLabel>(*window, "lblReadingOnly")->text(),
              "Open for reading only: The database is in use by another program.");
    EXPECT_THROW(openDB()->execute("INSERT INTO Chemical (chm_Name) VALUES ('x')"), platform::RuntimeError);
}

TEST_F(StartTest, ADatabaseOpenedLaterIsRememberedAndItsKeysAreCounted) {
    load();
    sql("CREATE TABLE FileIdentity (fid_Identity TEXT(32), fid_Parent TEXT(32), fid_Changes INTEGER)");
    sql("INSERT INTO FileIdentity VALUES ('0123456789abcdef0123456789abcdef', NULL, 0)");
    sql("INSERT INTO Log (LogID, log_Name) VALUES (30000, 'Gel')");
    basMain::gConnection = std::make_shared<platform::Connection>();
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_FALSE(support::child<QPushButton>(*window, "cmdKeysLeft")->isHidden());
    EXPECT_EQ(CopySettings::identityOf(databasePath()), "0123456789abcdef0123456789abcdef");
}

TEST_F(StartTest, AFailedStepIsReportedAndTheRestGoesOn) {
    prepareUpdater = [](StubUpdater& updater) {
        updater.onApply = [](QString&, bool&) { throw platform::RuntimeError(5, "no update today"); };
    };
    load();
    EXPECT_EQ(expectReport("frmMain:Form_Load").description, "no update today");
    EXPECT_EQ(window->current(), formulas);
    EXPECT_EQ(taken().last(), "control");
}

TEST_F(StartTest, AScreenThatFailsToLoadLeavesTheOthersStanding) {
    auto makeChemicals = parts.screens[chemicals];
    parts.screens[chemicals] = [makeChemicals] {
        auto screen = makeChemicals();
        dynamic_cast<StubScreen&>(*screen).failsToLoad = true;
        return screen;
    };
    load();
    expectReport("frmMain:Form_Load");
    EXPECT_EQ(window->bar().band("Forms").childBand("Chemicals").tool("frmChemical").form(),
              window->screen(chemicals));
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(StartTest, AScreenThatActsOnAToolOfNoBandIsReported) {
    auto makeLogs = parts.screens[logs];
    parts.screens[logs] = [makeLogs] {
        auto screen = makeLogs();
        dynamic_cast<StubScreen&>(*screen).actOn("cmdSafe"_L1);
        return screen;
    };
    load();
    EXPECT_EQ(expectReport("frmMain:Form_Load").description, "The command bar has no tool \"cmdSafe\"");
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(NoPatientsTest, ThereIsNoPatientScreenAndNoWayToIt) {
    createDatabase();
    load();
    EXPECT_EQ(window->screen(patients), nullptr);
    EXPECT_FALSE(tool("FormBar", "cmdPatients").visible());
    EXPECT_FALSE(tool("mnuForms", "mnuPatients").visible());
    EXPECT_TRUE(taken({"patients"}).isEmpty());
    // The absent screen is met where the clicks go through all screens.
    expectReport("frmMain:SetCurrentForm");
    expectReport("frmMain:enableForm_Error");
    expectReport("frmMain:enableForm_Error");
    EXPECT_FALSE(tool("FormBar", "cmdFormulas").checked()) << "SetCurrentForm ended before the buttons";
    EXPECT_EQ(window->screen(formulas)->Listener(), -1);
}

class ShowPatientsTest : public MainWindowTest, public testing::WithParamInterface<const char*> {
protected:
    QByteArray optionsXml() const override {
        return MainWindowTest::optionsXml().replace("<ShowPatients>1<",
                                                    QByteArray("<ShowPatients>") + GetParam() + "<");
    }
};

TEST_P(ShowPatientsTest, AnythingButZeroShowsThem) {
    createDatabase();
    load();
    EXPECT_TRUE(window->screen(patients));
    EXPECT_TRUE(tool("FormBar", "cmdPatients").visible());
    EXPECT_TRUE(tool("mnuForms", "mnuPatients").visible());
}
INSTANTIATE_TEST_SUITE_P(Values, ShowPatientsTest, testing::Values("1", "2", "-1"));

TEST_F(StartTest, TheOptionTakesEffectAtTheNextStartAlone) {
    load();
    basMain::Options->ShowPatients(0);
    window->refreshForm();
    EXPECT_TRUE(tool("FormBar", "cmdPatients").visible());
    EXPECT_TRUE(window->screen(patients));
}

/// A file that is no database stands where the options point to.
class UnreadableDatabaseTest : public MainWindowTest {
protected:
    const QString question = "Database location invalid, please select new location.";
    const platform::BoxStyle yesNoCancel{platform::Buttons::YesNoCancel};
    void SetUp() override {
        MainWindowTest::SetUp();
        folder.write("sorvanto.mdb", QByteArray(4096, 'x'));
    }
};

TEST_F(UnreadableDatabaseTest, TheStartGoesOnWithTheFileChosenInTheOptions) {
    support::createDatabaseFile(folder.path("good.mdb"));
    parts.editOptions = [this] {
        trace << "editOptions";
        basMain::Options->DBLocation(folder.path("good.mdb"));
    };
    asker.expectMsgBox(question, yesNoCancel, Answer::Yes);
    load();
    EXPECT_EQ(taken({"editOptions", "ApplyUpdates"}),
              (QStringList{"editOptions", "updater:ApplyUpdates open=1 \"<folder>\\dbupdate.xml\" \"1\""}));
    EXPECT_EQ(window->current(), formulas);
}

TEST_F(UnreadableDatabaseTest, AFileChosenLaterIsNamedInTheWindow) {
    support::createDatabaseFile(folder.path("good.mdb"));
    QFile::remove(databasePath());
    parts.editOptions = [this] { basMain::Options->DBLocation(folder.path("good.mdb")); };
    asker.alwaysAnswer("Database file not found. Please set in options");
    load();
    dropReports();
    const auto* name = window->findChild<QLabel*>("lblDatabase");
    EXPECT_EQ(name->text(), "sorvanto.mdb");
    folder.write("sorvanto.mdb", QByteArray(4096, 'x'));
    asker.expectMsgBox(question, yesNoCancel, Answer::Yes);
    EXPECT_EQ(openDB()->state(), 1);
    EXPECT_EQ(name->text(), "good.mdb");
}

/// Neither options.xml nor a database.
class FirstStartTest : public MainWindowTest {
protected:
    QByteArray optionsXml() const override { return {}; }
};

TEST_F(FirstStartTest, AsksTheLanguageThenMissesTheDatabaseTwice) {
    bool wizardCameFirst = false;
    asker.expectModal("frmWizard", [&](QWidget& wizard) {
        wizardCameFirst = !basMain::Language && basMain::gConnection && basMain::gConnection->state() != 1 &&
                          !folder.has("PolishTranslation.xml");
        for (auto* button : wizard.findChildren<QAbstractButton*>()) {
            if (button->text() == "Polish")
                return button->click();
        }
        FAIL() << "no such language";
    });
    const platform::BoxStyle information{platform::Buttons::Ok, platform::Icon::Information};
    asker.expectMsgBox("Database file not found. Please set in options", information, "DATABASE NOT FOUND");
    asker.expectMsgBox("Database file not found. Please set in options", information, "DATABASE NOT FOUND");
    load();
    EXPECT_TRUE(wizardCameFirst);
    expectReport("clsOptions:DBVersion");
    EXPECT_EQ(basMain::Options->Language(), 7);
    EXPECT_TRUE(folder.has("options.xml"));
    EXPECT_FALSE(folder.has("sorvanto.mdb")) << "opening creates nothing";
    EXPECT_TRUE(platform::deref(basMain::Language).translationPath().contains("Swiss"));
    EXPECT_EQ(taken({"ApplyUpdates"}),
              QStringList{"updater:ApplyUpdates open=0 \"<folder>\\dbupdate.xml\" \"\""});
    EXPECT_EQ(window->current(), formulas);
    EXPECT_FALSE(QString(folder.read("options.xml")).isEmpty());
    // None of the two texts goes through the language.
    QFile language(platform::platformPath(basMain::Language->translationPath()));
    ASSERT_TRUE(language.open(QIODevice::ReadOnly));
    EXPECT_FALSE(language.readAll().contains("Database file not found"));
}

}  // namespace
