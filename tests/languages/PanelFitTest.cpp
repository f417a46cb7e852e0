// The mixer panel through a mix, a fault, a lost mixer and an offer, in each language: at its width on a
// small screen no text is cut off and none goes over the edge.
#include "Fit.h"
#include "LanguageFile.h"
#include "mixer/MemoryLine.h"
#include "support/Child.h"
#include "support/FixedClock.h"
#include "support/ScriptedAsker.h"
#include "support/Settle.h"
#include "support/TempProgramFolder.h"
#include "support/WarningTrap.h"

#include "mixer/LinkRow.h"
#include "mixer/NoticeCard.h"
#include "mixer/ProgressRing.h"
#include "mixer/ctlSorvanto.h"
#include "platform/widgets/Theme.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace languages {
namespace {

using namespace sorvanto;
using support::child;

constexpr int panelWidth = 311;
/// The ring's text shrinks to fit; below this it is no longer read at a glance.
constexpr int smallestRingText = 11;

class PanelFitTest : public ::testing::TestWithParam<int> {
protected:
    PanelFitTest() {
        platform::applyTheme(*qApp, false);
        folder.write("Translation.xml", deliveredFile(GetParam()));
        control = std::make_unique<ctlSorvanto>(line.environment());
        control->setSettings(1, static_cast<std::int16_t>(GetParam()), 0, folder.path("Translation.xml"));
        control->resize(panelWidth, 730);
        control->show();
    }

    QPushButton& button(const char* name) const { return *child<QPushButton>(*control, name); }
    bool isOn(const char* name) const { return button(name).isVisible() && button(name).isEnabled(); }
    static bool until(const std::function<bool()>& condition) { return test::waitFor(condition); }

    void look(const char* state) const {
        support::settle();
        for (const QString& misfit : misfits(*control))
            ADD_FAILURE() << names[GetParam()] << ", " << state << ": " << misfit.toStdString();
        for (const auto* widget : control->findChildren<QWidget*>()) {
            const bool worded =
                qobject_cast<const QLabel*>(widget) || qobject_cast<const QPushButton*>(widget);
            if (worded && widget->isVisible()) {
                EXPECT_LE(widget->mapTo(control.get(), QPoint(widget->width(), 0)).x(), panelWidth)
                    << names[GetParam()] << ", " << state << ": " << widget->objectName().toStdString()
                    << " goes over the edge";
            }
        }
        checkRing(state);
        const QString target = qEnvironmentVariable("SORVANTO_PICTURES");
        if (target.isEmpty())
            return;
        const QString place = target + "/" + QString(names[GetParam()]).toLower();
        QDir().mkpath(place);
        if (QWidget* focus = QApplication::focusWidget())
            focus->clearFocus();  // no mark of the keys on the picture
        control->grab().save(u"%1/panel-%2.png"_s.arg(place, state));
    }
    void checkRing(const char* state) const {
        const auto& ring = *child<ProgressRing>(*control, "mixerRing");
        QFont font = ring.font();
        font.setPixelSize(smallestRingText);
        const int room = std::min(ring.width(), ring.height()) - 44;
        EXPECT_LE(QFontMetrics(font).horizontalAdvance(ring.below()), room)
            << names[GetParam()] << ", " << state << ": " << ring.below().toStdString();
    }
    void loadShort() {
        control->StartControl();
        control->loadFormula(test::shortFormula());
        ASSERT_TRUE(until([&] { return isOn("mixerStart"); }));
    }
    void startShort() {
        loadShort();
        button("mixerStart").click();
        ASSERT_TRUE(until([&] { return isOn("mixerPause"); }));
    }

    support::TempProgramFolder folder;
    support::FixedClock clock;
    support::ScriptedAsker asker;
    support::WarningTrap warnings;
    test::MemoryLine line;
    std::unique_ptr<ctlSorvanto> control;
};

TEST_P(PanelFitTest, BeforeAMix) {
    look("closed");
    control->StartControl();
    ASSERT_TRUE(until([&] { return !child<LinkRow>(*control, "mixerLink")->badge().isEmpty(); }));
    look("idle");
    loadShort();
    look("ready");
    line.mixer.openLid();
    const auto* problem = child<NoticeCard>(*control, "mixerProblem");
    ASSERT_TRUE(problem->text().isEmpty());
    button("mixerStart").click();
    ASSERT_TRUE(until([&] { return !problem->text().isEmpty(); }));
    look("lid");
}

TEST_P(PanelFitTest, AMixAndItsOffer) {
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [this] {
        look("finished");
        control->mixerInitialsClosed();
    });
    startShort();
    look("mixing");
    button("mixerPause").click();
    ASSERT_TRUE(until([&] { return isOn("mixerResume"); }));
    look("paused");
    button("mixerResume").click();
    ASSERT_TRUE(until([&] { return isOn("mixerPause"); }));
    line.run(20'000);
    ASSERT_TRUE(until([&] { return control->findChild<QPushButton*>("mixerPutAside") != nullptr; }));
    look("offer");
}

TEST_P(PanelFitTest, AStoppedMix) {
    bool seen = false;
    QObject::connect(control.get(), &ctlSorvanto::mixDone, control.get(), [this, &seen] {
        look("stopped");
        seen = true;
        control->mixerInitialsClosed();
    });
    startShort();
    line.run(4'000);
    button("mixerStop").click();
    ASSERT_TRUE(until([&] { return seen; }));
}

TEST_P(PanelFitTest, Fault) {
    startShort();
    line.mixer.pressEmergencyStop();
    ASSERT_TRUE(until([&] { return isOn("mixerOk"); }));
    look("fault");
    line.mixer.releaseEmergencyStop();
    button("mixerOk").click();
    ASSERT_TRUE(until([&] { return isOn("mixerLoadAgain"); }));
    look("load-again");
}

TEST_P(PanelFitTest, LostMixer) {
    startShort();
    const QString link = child<LinkRow>(*control, "mixerLink")->text();
    line.answers = false;
    ASSERT_TRUE(until([&] { return child<LinkRow>(*control, "mixerLink")->text() != link; }));
    look("stale");
    ASSERT_TRUE(until([&] { return child<LinkRow>(*control, "mixerLink")->badge().isEmpty(); }));
    look("lost");
}

INSTANTIATE_TEST_SUITE_P(Languages, PanelFitTest, ::testing::Range(0, count),
                         [](const auto& row) { return std::string(names[row.param]); });

}  // namespace
}  // namespace languages
