// What the panel shows in each state, in which language, and which buttons it offers.
#include "MemoryLine.h"
#include "support/Child.h"
#include "support/FixedClock.h"
#include "support/Heard.h"
#include "support/ScriptedAsker.h"
#include "support/Settle.h"
#include "support/TempProgramFolder.h"
#include "support/WarningTrap.h"

#include "mixer/LinkRow.h"
#include "mixer/MixerPanel.h"
#include "mixer/NoticeCard.h"
#include "mixer/OfferList.h"
#include "mixer/ProgressRing.h"
#include "mixer/StepsTable.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Theme.h"
#include "platform/widgets/UnderWay.h"

#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <cmath>
#include <gtest/gtest.h>

using namespace sorvanto;
using support::child;

namespace {

/// Somebody is in the midst of something.
class BusyDesk : public Desk {
public:
    bool isFree() const override { return false; }
    bool canOpenDialog() const override { return false; }
    void keepTypedText() override {}
    void callAttention() override {}
};

class MixerPanelTest : public testing::Test {
protected:
    MixerPanelTest() {
        platform::applyTheme(*qApp, false);
        control = std::make_unique<ctlSorvanto>(line.environment());
        control->setSettings(1, 0, 0, folder.path("EnglishTranslation.xml"));
        control->resize(311, 640);
        control->show();
    }

    QStringList buttons() const {
        QStringList captions;
        for (const QPushButton* button : control->findChildren<QPushButton*>()) {
            if (!button->isHidden())
                captions << button->text() + (button->isEnabled() ? "" : " (off)");
        }
        return captions;
    }
    QPushButton* button(const char* name) const { return child<QPushButton>(*control, name); }
    const ProgressRing& ring() const { return *child<ProgressRing>(*control, "mixerRing"); }
    QString label(const char* name) const { return child<QLabel>(*control, name)->text(); }
    QString notice(const char* name) const { return child<NoticeCard>(*control, name)->text(); }
    QString link() const { return child<LinkRow>(*control, "mixerLink")->text(); }
    QString badge() const { return child<LinkRow>(*control, "mixerLink")->badge(); }
    bool ringSays(const char* below) {
        return test::waitFor([&] { return ring().below() == below; });
    }
    void startShort() {
        control->StartControl();
        control->loadFormula(test::shortFormula());
        ASSERT_TRUE(ringSays("ready to start"));
        button("mixerStart")->click();
        ASSERT_TRUE(ringSays("step 1 of 2"));
    }
    /// For looking at, where a folder is given in the environment.
    void picture(const char* name) {
        const QString target = qEnvironmentVariable("SORVANTO_PICTURES");
        if (target.isEmpty())
            return;
        support::settle();
        control->grab().save(target + '/' + name + ".png");
    }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    support::ScriptedAsker asker;
    support::WarningTrap warnings;
    test::MemoryLine line;
    std::unique_ptr<ctlSorvanto> control;
};

TEST(StepsTables, StartAtTheTopAndFollowTheRunningStep) {
    QWidget window;
    StepsTable table;
    table.setParent(&window);
    const PanelTexts texts;
    const auto inSight = [&](int step) {
        return table.viewport()->rect().contains(table.visualItemRect(table.item(step - 1, 0)));
    };
    table.resize(260, 140);
    window.resize(300, 600);
    window.show();
    support::settle();
    const std::vector<protocol::Step> steps(16, {1200, 1800, 10, 0});
    table.show(steps, 12, false, texts);
    EXPECT_TRUE(inSight(12));
    table.resize(260, 400);
    table.resize(260, 140);
    EXPECT_TRUE(inSight(12)) << "the panel had room for a moment, and takes it back";
    table.show(std::vector<protocol::Step>(15, {1200, 1800, 10, 0}), 0, false, texts);
    EXPECT_TRUE(inSight(1)) << "another programme is read from its beginning";
}

}  // namespace

TEST_F(MixerPanelTest, BeforeTheStart) {
    EXPECT_EQ(link(), "COM1 · not connected");
    EXPECT_EQ(badge(), "");
    EXPECT_EQ(ring().middle(), "--:--");
    EXPECT_EQ(buttons(), QStringList{"Connect"});
    EXPECT_EQ(label("mixerFootnote"), "Stop here is not the emergency stop of the mixer.");
}

TEST_F(MixerPanelTest, NothingLoaded) {
    control->StartControl();
    ASSERT_TRUE(ringSays("nothing loaded"));
    EXPECT_EQ(link(), "COM1 · firmware SIM-2.1");
    EXPECT_EQ(badge(), "simulated");
    EXPECT_EQ(label("mixerFormula"), "Choose a formula and press Make.");
    EXPECT_EQ(buttons(), QStringList{"Start (off)"});
    EXPECT_EQ(control->findChild<StepsTable*>(), nullptr)
        << "a start would wait for a table that nobody sees";
    EXPECT_EQ(child<LinkRow>(*control, "mixerLink")->toolTip(), "Mixer SV0426\n/memory/COM1");
    picture("idle");
}

TEST_F(MixerPanelTest, ARealMixerHasNoBadge) {
    line.mixer = mixersim::SimulatedMixer({protocol::version, "2.1", "SV0426"}, 0);
    control->StartControl();
    ASSERT_TRUE(ringSays("nothing loaded"));
    EXPECT_EQ(link(), "COM1 · firmware 2.1");
    EXPECT_EQ(badge(), "");
}

TEST_F(MixerPanelTest, Loaded) {
    control->StartControl();
    control->loadFormula(test::shortFormula());
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_TRUE(test::waitFor([&] { return ring().middle() == "00:20"; }));
    EXPECT_EQ(label("mixerFormula"), "Hydrocortisone 1% Cream");
    EXPECT_EQ(label("mixerQuantity"), "Quantity 250 in 300 ml");
    EXPECT_EQ(buttons(), QStringList{"Start"});
    const auto& steps = *child<StepsTable>(*control, "mixerSteps");
    ASSERT_EQ(steps.rowCount(), 2);
    QStringList cells;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 4; ++column)
            cells << steps.item(row, column)->text();
    }
    EXPECT_EQ(cells, (QStringList{"1", "1200", "1200", "00:00:10", "2", "1440", "1992", "2 x"}));
    for (int column = 0; column < 4; ++column)
        EXPECT_EQ(steps.item(0, column)->textAlignment(),
                  Qt::AlignVCenter | (column == 0 ? Qt::AlignLeft : Qt::AlignRight))
            << column;
    EXPECT_EQ(steps.horizontalHeaderItem(1)->text(), "Lift RPM") << "on one line where there is room";
    EXPECT_TRUE(child<QLabel>(*control, "mixerSpeeds")->isHidden()) << "nothing turns yet";
    EXPECT_TRUE(button("mixerStart")->property("primary").toBool());
    EXPECT_TRUE(button("mixerStop")->property("danger").toBool());
    picture("loaded");
}

TEST_F(MixerPanelTest, NeverSaysTwoThingsAtOnce) {
    MixSession session(line.environment());
    session.setPort(1, false);
    const PanelTexts texts;
    MixerPanel panel(session, texts);
    QStringList seen;
    QObject::connect(&session, &MixSession::changed, &panel, [&] {
        const auto* link = child<LinkRow>(panel, "mixerLink");
        const auto* ring = child<ProgressRing>(panel, "mixerRing");
        const QString now = link->text() + " | " + ring->middle() + " | " + ring->below() +
                            (child<QPushButton>(panel, "mixerStart")->isEnabled() ? " | Start" : "");
        if (seen.value(seen.size() - 1) != now)
            seen << now;
    });
    session.open();
    ASSERT_TRUE(test::waitFor([&] { return session.run().state() == RunState::Ready; }));
    session.loadFormula(test::shortFormula());
    ASSERT_TRUE(test::waitFor([&] { return seen.last().endsWith("Start"); }));
    EXPECT_EQ(seen, (QStringList{"COM1 · looking for the mixer | --:-- | not connected",
                                 "COM1 · firmware SIM-2.1 | --:-- | nothing loaded",
                                 "COM1 · firmware SIM-2.1 | --:-- | sending the programme",
                                 "COM1 · firmware SIM-2.1 | 00:20 | ready to start | Start"}))
        << seen.join('\n').toStdString();
}

TEST_F(MixerPanelTest, TheStepsTakeNoFocus) {
    startShort();
    EXPECT_EQ(child<StepsTable>(*control, "mixerSteps")->focusPolicy(), Qt::NoFocus);
    EXPECT_FALSE(child<StepsTable>(*control, "mixerSteps")->hasFocus());
}

TEST_F(MixerPanelTest, MixingPausedAndDone) {
    bool inHandler = false;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [&] {
        inHandler = true;
        EXPECT_EQ(ring().below(), "stopped");
        EXPECT_EQ(notice("mixerNotice"), "This batch is marked as interrupted.");
        EXPECT_EQ(buttons(), QStringList{"Start (off)"});
        picture("done");
        control->mixerInitialsClosed();
        EXPECT_EQ(notice("mixerNotice"), "");
        EXPECT_EQ(buttons(), QStringList{"Start (off)"});
        control->mixLogged();
    });
    startShort();
    EXPECT_EQ(buttons(), (QStringList{"Pause", "Stop"}));
    line.run(12'000);
    ASSERT_TRUE(ringSays("step 2 of 2"));
    EXPECT_EQ(ring().middle(), "00:08");
    EXPECT_DOUBLE_EQ(ring().fraction(), 0.6);
    EXPECT_EQ(label("mixerSpeeds"), "Lift 1440  ·  Mix 1992  ·  Cycles 1");
    EXPECT_FALSE(child<QLabel>(*control, "mixerSpeeds")->isHidden());
    const auto& steps = *child<StepsTable>(*control, "mixerSteps");
    EXPECT_TRUE(steps.item(1, 0)->font().bold() || steps.item(1, 0)->font().weight() == QFont::DemiBold);
    EXPECT_EQ(steps.item(1, 2)->background().color(), platform::theme().softAccent);
    EXPECT_EQ(steps.item(0, 2)->background(), QBrush()) << "the running step alone";
    EXPECT_EQ(steps.item(0, 2)->foreground().color(), platform::theme().secondaryText) << "done";
    EXPECT_EQ(steps.item(1, 2)->foreground().color(), platform::theme().text);
    button("mixerPause")->click();
    ASSERT_TRUE(ringSays("paused"));
    EXPECT_EQ(steps.item(1, 2)->background().color(), platform::theme().softAccent) << "it stands there";
    EXPECT_EQ(label("mixerSpeeds"), "Lift 0  ·  Mix 0  ·  Cycles 1");
    EXPECT_FALSE(child<QLabel>(*control, "mixerSpeeds")->isHidden());
    EXPECT_EQ(buttons(), (QStringList{"Resume", "Stop"}));
    button("mixerResume")->click();
    ASSERT_TRUE(ringSays("step 2 of 2"));
    button("mixerStop")->click();
    EXPECT_TRUE(test::waitFor([&] { return inHandler && ring().below() == "nothing loaded"; }));
}

TEST_F(MixerPanelTest, StaleLinkShowsTheTimeOfTheLastWord) {
    startShort();
    line.answers = false;
    ASSERT_TRUE(test::waitFor([&] { return link() == "COM1 · no word since 2:05 PM"; }));
    EXPECT_EQ(badge(), "simulated");
    EXPECT_EQ(ring().below(), "step 1 of 2") << "shown as stale, not as gone";
    ASSERT_TRUE(ringSays("not connected"));
    EXPECT_EQ(link(), "COM1 · no word since 2:05 PM");
    EXPECT_EQ(badge(), "");
    EXPECT_TRUE(notice("mixerProblem").startsWith("The mixer is gone in the midst of the mix."));
    picture("lost");
}

TEST_F(MixerPanelTest, PortThatIsNotThere) {
    line.present = false;
    control->StartControl();
    EXPECT_EQ(link(), "COM1 · looking for the mixer");
    EXPECT_EQ(notice("mixerProblem"), "No mixer on COM1. Check the cable and the power of the mixer.");
    EXPECT_EQ(buttons(), QStringList{"Start (off)"});
}

TEST_F(MixerPanelTest, WarningNamesStepAndLimitAndLeavesTheStart) {
    control->StartControl();
    control->loadFormula(test::formulaDocument(
        R"(<CustomMix PreGrind="0" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="3000" MixTime="00:00:10" Cycles="0"/></CustomMix>)",
        9, 9, 1000));
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_EQ(notice("mixerWarnings"),
              "Step 1 mixes with 3000 RPM. Up to 1992 are recommended for this jar.");
    EXPECT_EQ(buttons(), QStringList{"Start"});
    picture("warning");
    control->setSettings(1, 0, 1, {});
    control->loadFormula(test::formulaDocument(
        R"(<CustomMix PreGrind="0" FreeSpin="1"><Mix LiftRPM="1200" MixRPM="3000" MixTime="00:00:10" Cycles="0"/></CustomMix>)",
        9, 9, 1000));
    EXPECT_EQ(notice("mixerWarnings"), "");
}

TEST_F(MixerPanelTest, FormulaWhileMixing) {
    startShort();
    control->loadFormula(test::formulaDocument("", 3));
    EXPECT_EQ(notice("mixerNotice"), "A mix is under way. Load the formula again when it has ended.");
    EXPECT_EQ(buttons(), (QStringList{"Pause", "Stop"}));
}

TEST_F(MixerPanelTest, Fault) {
    startShort();
    line.mixer.pressEmergencyStop();
    ASSERT_TRUE(ringSays("stopped"));
    EXPECT_EQ(buttons(), QStringList{"OK"});
    picture("fault");
    button("mixerOk")->click();
    ASSERT_TRUE(test::waitFor([&] {
        return notice("mixerProblem") == "The emergency stop is still pressed. Release it and press OK.";
    }));
    line.mixer.releaseEmergencyStop();
    button("mixerOk")->click();
    ASSERT_TRUE(ringSays("nothing loaded"));
    EXPECT_EQ(buttons(), (QStringList{"Load again", "Start (off)"}));
}

TEST_F(MixerPanelTest, ScreenReadersSayEachNoticeOnce) {
    const support::Heard heard;
    NoticeCard card;
    card.show(NoticeCard::Kind::Warning, "The lid is open.");
    card.show(NoticeCard::Kind::Warning, "The lid is open.");
    card.show(NoticeCard::Kind::Problem, "The mixer is gone.");
    card.show(NoticeCard::Kind::Problem, {});
    EXPECT_EQ(heard.all(), (QStringList{"The lid is open.", "The mixer is gone."}));
    card.show(NoticeCard::Kind::Problem, "The mixer is gone.");
    EXPECT_EQ(heard.all().size(), 3) << "it is gone again";
}

TEST_F(MixerPanelTest, AStoppedMixLooksStopped) {
    QStringList seen;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [&] {
        const auto* steps = child<StepsTable>(*control, "mixerSteps");
        const int last = steps->rowCount() - 1;
        seen << ring().below() << notice("mixerNotice") << label("mixerSpeeds").left(11)
             << steps->item(last, 3)->text() << (ring().fraction() < 1 ? "open" : "closed");
        ASSERT_TRUE(control->reached());
        EXPECT_EQ(control->reached()->step, 1);
        picture("stopped");
        control->mixerInitialsClosed();
    });
    startShort();
    button("mixerStop")->click();
    ASSERT_TRUE(test::waitFor([&] { return !seen.isEmpty(); }));
    EXPECT_EQ(seen, (QStringList{"stopped", "This batch is marked as interrupted.", "stopped at ", "not run",
                                 "open"}));
    ASSERT_TRUE(ringSays("nothing loaded"));
    EXPECT_FALSE(control->reached()) << "of the mix being signed only";
}

TEST_F(MixerPanelTest, AStopBeforeAnyWordOfTheMixLooksStoppedToo) {
    QStringList seen;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [&] {
        seen << ring().middle() << ring().below() << ring().accessibleName() << notice("mixerNotice")
             << (child<QLabel>(*control, "mixerSpeeds")->isVisible() ? "speeds" : "no speeds");
        EXPECT_LT(ring().fraction(), 0);
        EXPECT_FALSE(control->reached()) << "nothing is worked out from what was not seen";
        const QImage image = child<ProgressRing>(*control, "mixerRing")->grab().toImage();
        EXPECT_EQ(image.pixelColor(image.width() / 2, 8), platform::theme().warning) << "amber";
        const auto* steps = child<StepsTable>(*control, "mixerSteps");
        EXPECT_EQ(steps->item(1, 3)->text(), "2 x") << "what ran is not known";
        picture("stopped-unseen");
        control->mixerInitialsClosed();
    });
    startShort();
    line.answers = false;
    ASSERT_TRUE(ringSays("not connected"));
    line.mixer.receive(protocol::stopCommand());
    line.answers = true;
    ASSERT_TRUE(test::waitFor([&] { return !seen.isEmpty(); }));
    EXPECT_EQ(seen,
              (QStringList{"stopped", "", "stopped", "This batch is marked as interrupted.", "no speeds"}));
}

TEST_F(MixerPanelTest, AStoppedMixThatWaitsForItsSignatureLooksStopped) {
    BusyDesk desk;
    control->setDesk(&desk);
    startShort();
    line.run(6'000);
    ASSERT_TRUE(test::waitFor([&] { return ring().middle() == "00:14"; }));
    button("mixerStop")->click();
    ASSERT_TRUE(ringSays("stopped"));
    ASSERT_TRUE(test::waitFor([&] { return !notice("mixerWaiting").isEmpty(); }));
    EXPECT_EQ(ring().middle(), "00:06");
    EXPECT_DOUBLE_EQ(ring().fraction(), 0.3);
    EXPECT_EQ(label("mixerSpeeds"), "stopped at 00:06 in step 1 of 2");
    EXPECT_EQ(notice("mixerWaiting"),
              "The mix has ended. Sign it when you are ready. This batch is marked as interrupted.");
    EXPECT_EQ(buttons(), QStringList{"&Sign now"});
    picture("stopped-waiting");
    line.cut();
    ASSERT_TRUE(test::waitFor([&] { return badge().isEmpty(); }));
    EXPECT_EQ(ring().below(), "stopped") << "also when the mixer is gone meanwhile";
    EXPECT_DOUBLE_EQ(ring().fraction(), 0.3);
}

TEST_F(MixerPanelTest, AUnitIsNotAskedForInAWaitAndNotTakenForNone) {
    QList<int> asked;
    control->setUnitSource([&](int formula) {
        asked << formula;
        return platform::UnderWay::any() ? QString() : QString("MLS");
    });
    control->StartControl();
    {
        const platform::UnderWay wait;
        control->loadFormula(test::formulaDocument(test::shortMix, 9, 7, 240));
        ASSERT_TRUE(ringSays("ready to start"));
        EXPECT_EQ(label("mixerQuantity"), "Quantity 240 in 300 ml");
    }
    EXPECT_TRUE(test::waitFor([&] { return label("mixerQuantity") == "Quantity 240 MLS in 300 ml"; }));
    EXPECT_EQ(asked, QList<int>{5});
}

TEST_F(MixerPanelTest, TheQuantityHasItsUnit) {
    QList<int> asked;
    control->setUnitSource([&](int formula) {
        asked << formula;
        return QString("MLS");
    });
    control->StartControl();
    const platform::XmlDocumentPtr formula = test::formulaDocument(test::shortMix, 9, 7, 240);
    control->loadFormula(formula);
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_EQ(label("mixerQuantity"), "Quantity 240 MLS in 300 ml");
    EXPECT_EQ(asked, QList<int>{5}) << "of the formula of the document, once for each mix";
    formula->selectSingleNode("//Formula/ID").setText("0");
    control->loadFormula(formula);
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_EQ(label("mixerQuantity"), "Quantity 240 in 300 ml") << "a mix of no stored formula has no unit";
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(MixerPanelTest, OffersAreLoggedOrPutAsideByAQuestion) {
    int done = 0;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [&] {
        ++done;
        control->mixerInitialsClosed();
    });
    startShort();
    line.run(20'000);
    ASSERT_TRUE(test::waitFor([&] { return done == 1 && ring().below() == "nothing loaded"; }));
    EXPECT_EQ(label("mixerOffer"), "Hydrocortisone 1% Cream · 250 in 300 ml · lot SV04260012");
    EXPECT_EQ(buttons(), (QStringList{"Start (off)", "Log this mix", "Put aside"}));
    picture("offer");
    button("mixerLogMix")->click();
    ASSERT_TRUE(test::waitFor([&] { return done == 2 && buttons().contains("Log this mix"); }))
        << "not logged, still on offer";

    const platform::BoxStyle style{platform::Buttons::YesNo, platform::Icon::Exclamation, true, false};
    const QString question = "Put aside the mix of Hydrocortisone 1% Cream, lot SV04260012? It will not be "
                             "offered for the log again.";
    asker.expectMsgBox(question, style, "Put aside", platform::Answer::No);
    button("mixerPutAside")->click();
    EXPECT_TRUE(buttons().contains("Put aside"));
    asker.expectMsgBox(question, style, "Put aside", platform::Answer::Yes);
    button("mixerPutAside")->click();
    EXPECT_FALSE(buttons().contains("Put aside"));
}

TEST_F(MixerPanelTest, OfferIsNotLoggedDuringAMix) {
    int done = 0;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [&] { ++done; });
    startShort();
    line.run(20'000);
    ASSERT_TRUE(test::waitFor([&] { return done == 1 && ring().below() == "nothing loaded"; }));
    control->loadFormula(test::shortFormula());
    ASSERT_TRUE(ringSays("ready to start"));
    button("mixerStart")->click();
    ASSERT_TRUE(ringSays("step 1 of 2"));
    EXPECT_TRUE(buttons().contains("Log this mix (off)")) << "a dialog would stand before the Stop button";
    EXPECT_TRUE(buttons().contains("Stop"));
}

TEST_F(MixerPanelTest, SpeaksTheUsersLanguageAndNeverWritesTheFile) {
    const QByteArray file =
        R"(<Translations Language="German"><Translate English="Start" Translated="Anfangen"/>)"
        R"(<Translate English="Quantity %1 in %2" Translated="In %2: %1"/>)"
        R"(<Translate English="Stop" Translated=""/><Translate English="Pause"/></Translations>)";
    folder.write("GermanTranslation.xml", file);
    control->setSettings(1, 2, 0, folder.path() + "\\GermanTranslation.xml");
    control->StartControl();
    control->loadFormula(test::shortFormula());
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_EQ(buttons(), QStringList{"Anfangen"});
    EXPECT_EQ(label("mixerQuantity"), "In 300 ml: 250");
    button("mixerStart")->click();
    ASSERT_TRUE(ringSays("step 1 of 2"));
    EXPECT_EQ(buttons(), (QStringList{"Pause", "Stop"}));
    EXPECT_EQ(folder.read("GermanTranslation.xml"), file);
}

TEST_F(MixerPanelTest, SpeaksWhatTheProgramHasReadOfTheFile) {
    const QByteArray file =
        R"(<Translations><Translate English="Start" Translated="Aus der Datei"/></Translations>)";
    folder.write("GermanTranslation.xml", file);
    control->setTextSource(
        [](const QString& english) { return english == "Start" ? QString("Anfangen") : QString(); });
    control->setSettings(1, 2, 0, folder.path() + "\\GermanTranslation.xml");
    control->StartControl();
    control->loadFormula(test::shortFormula());
    ASSERT_TRUE(ringSays("ready to start"));
    EXPECT_EQ(buttons(), QStringList{"Anfangen"});
    EXPECT_EQ(label("mixerQuantity"), "Quantity 250 in 300 ml");
}

TEST_F(MixerPanelTest, SixteenStepsFitTheSmallestWindow) {
    QString steps;
    for (int step = 0; step < 16; ++step)
        steps += R"(<Mix LiftRPM="1200" MixRPM="1800" MixTime="00:00:10" Cycles="0"/>)";
    control->StartControl();
    control->loadFormula(
        test::formulaDocument("<CustomMix PreGrind=\"0\" FreeSpin=\"1\">" + steps + "</CustomMix>"));
    ASSERT_TRUE(ringSays("ready to start"));
    button("mixerStart")->click();
    ASSERT_TRUE(ringSays("step 1 of 16"));
    line.run(125'000);
    ASSERT_TRUE(ringSays("step 13 of 16"));
    support::settle();
    const auto& table = *child<StepsTable>(*control, "mixerSteps");
    EXPECT_TRUE(table.viewport()->rect().contains(table.visualItemRect(table.item(12, 1)).center()))
        << "the running step is in sight";
    EXPECT_LE(button("mixerStop")->mapTo(control.get(), QPoint(0, button("mixerStop")->height())).y(),
              control->height());
    picture("sixteen");
}

TEST_F(MixerPanelTest, DarkToo) {
    platform::applyTheme(*qApp, true);
    startShort();
    line.run(12'000);
    ASSERT_TRUE(ringSays("step 2 of 2"));
    picture("mixing-dark");
    platform::applyTheme(*qApp, false);
    support::settle();
    picture("mixing");
    EXPECT_EQ(child<StepsTable>(*control, "mixerSteps")->item(1, 0)->background().color(),
              platform::themeOf(false).softAccent);
}

// Pictures of the ring are looked at where the arc is and is not, clockwise from the top.
TEST(ProgressRingTest, TheArcShowsThePartThatIsDone) {
    platform::applyTheme(*qApp, false);
    ProgressRing ring;
    ring.resize(ring.sizeHint());
    const auto colorAt = [&](double turn) {
        const double angle = turn * 2 * M_PI, radius = ring.width() / 2.0 - 7;
        return ring.grab().toImage().pixelColor(qRound(ring.width() / 2.0 + radius * std::sin(angle)),
                                                qRound(ring.height() / 2.0 - radius * std::cos(angle)));
    };
    using Tone = ProgressRing::Tone;
    const platform::Theme& theme = platform::theme();
    ring.show(-1, Tone::Running, "--:--", "nothing loaded");
    const QColor track = colorAt(0.1);
    EXPECT_NE(track, theme.accent);
    ring.show(0.5, Tone::Running, "--:--", "nothing loaded");
    EXPECT_EQ(colorAt(0.1), theme.accent) << "a change of the part alone is drawn";
    EXPECT_EQ(colorAt(0.4), theme.accent);
    EXPECT_EQ(colorAt(0.6), track);
    EXPECT_EQ(colorAt(0.9), track);
    for (const auto& [tone, color] :
         {std::pair{Tone::Held, theme.warning}, std::pair{Tone::Good, theme.good},
          std::pair{Tone::Problem, theme.danger}, std::pair{Tone::Running, theme.accent}}) {
        ring.show(1, tone, "00:00", "finished");
        EXPECT_EQ(colorAt(0.25), color);
        EXPECT_EQ(colorAt(0.75), color);
    }
    ring.show(2, Tone::Good, "00:00", "finished");
    EXPECT_EQ(colorAt(0.75), theme.good) << "never more than the whole";
    EXPECT_EQ(ring.accessibleName(), "00:00, finished");
}

TEST(PanelTexts, KeysAreFitForTheLanguageFiles) {
    const QStringList keys = PanelTexts::keys();
    EXPECT_GT(keys.size(), 60);
    for (const QString& key : keys) {
        EXPECT_EQ(key.trimmed(), key);
        EXPECT_FALSE(key.isEmpty());
        EXPECT_FALSE(key.contains('\'')) << key.toStdString();
    }
    EXPECT_TRUE(keys.contains("Stop here is not the emergency stop of the mixer."));
}

TEST(PanelTexts, PartsAreFilledInOnce) {
    const PanelTexts texts;
    EXPECT_EQ(texts(PanelText::QuantityInJar, {"%2", "100% %1"}), "Quantity %2 in 100% %1");
    EXPECT_EQ(texts(PanelText::StepOf, {"2"}), "step 2 of ");
    EXPECT_EQ(texts(PanelMessage{}), "");
}

TEST(PanelTexts, BrokenFileIsEnglish) {
    support::TempProgramFolder folder;
    PanelTexts texts;
    for (const char* content :
         {"", "<Translations>", "garbage", "<Translations><Translate/></Translations>"}) {
        folder.write("T.xml", content);
        texts.load(folder.path("T.xml"));
        EXPECT_EQ(texts(PanelText::Start), "Start");
    }
    texts.load(folder.path("missing.xml"));
    EXPECT_EQ(texts(PanelText::Start), "Start");
}
