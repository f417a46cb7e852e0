// The real control against the real simulator on a real pseudo-terminal, once for each fault there is:
// every one ends in a stated state, with a stated text on the panel, and never with a false result.
#include "MemoryLine.h"
#include "SimulatorProcess.h"
#include "support/Child.h"
#include "support/TempProgramFolder.h"
#include "support/WarningTrap.h"

#include "mixer/LinkRow.h"
#include "mixer/NoticeCard.h"
#include "mixer/ProgressRing.h"
#include "mixer/ctlSorvanto.h"
#include "platform/serial/PortProbe.h"
#include "platform/serial/QtSerialPort.h"

#include <QPushButton>
#include <gtest/gtest.h>

using namespace sorvanto;

namespace {

struct Expectation {
    const char* fault;     ///< with its step
    int results;           ///< mixes handed out
    const char* ring;      ///< below the time, in the end; empty: whatever stands there
    const char* problem;   ///< text that the panel shows in the end, or has shown; empty: none ever
    const char* recovery;  ///< button pressed when the problem shows
    bool stays;            ///< the problem still shows in the end
};

void PrintTo(const Expectation& expectation, std::ostream* out) { *out << expectation.fault; }

const char* const lostInMix =
    "The mixer is gone in the midst of the mix. Look after it: it may go on mixing by itself. "
    "When it answers again, its results are fetched.";
const char* const powerGone = "The mixer lost its power or restarted, and the mix has ended without results. "
                              "Press OK, and decide what becomes of the jar.";

const Expectation expectations[] = {
    {"noise", 1, "nothing loaded", "", "", false},
    {"dropped", 1, "nothing loaded", "", "", false},
    {"doubled", 1, "nothing loaded", "", "", false},
    {"repeated", 1, "nothing loaded", "", "", false},
    {"late", 1, "nothing loaded", "", "", false},
    {"wrongcrc", 1, "nothing loaded", "", "", false},
    {"garbled", 0, "not connected",
     "The mixer on COM1 does not answer. Check its power and the cable, or choose another port in the "
     "options.",
     "", true},
    {"silent@2", 0, "not connected", lostInMix, "", true},
    {"misstored", 1, "nothing loaded",
     "The mixer has stored another programme than it was sent. Press Load again.", "mixerLoadAgain", false},
    {"unplug@2", 1, "nothing loaded", lostInMix, "", false},
    {"gone@2", 0, "not connected", lostInMix, "", true},
    {"powerloss@2", 0, "nothing loaded", powerGone, "mixerOk", false},
    {"reboot@2", 0, "nothing loaded", powerGone, "mixerOk", false},
    {"estop@2", 0, "nothing loaded",
     "The emergency stop was pressed and the mix has ended without results. Release it, press OK, and decide "
     "what "
     "becomes of the jar.",
     "mixerOk", false},
    {"lid@2", 1, "nothing loaded", "The lid was opened. Close it and press Resume, or press Stop.",
     "mixerResume", false},
    {"overload@2", 0, "nothing loaded",
     "The motor was overloaded and the mix has ended without results. Take the jar out, look for lumps, and "
     "press OK.",
     "mixerOk", false},
};

/// What has come over the line since the start, and how often the port was opened.
struct LineUse {
    int words = 0, openings = 0;
};

MixerEnvironment quickEnvironment(LineUse& use) {
    MixerEnvironment environment = MixerEnvironment::real();
    environment.makePort = [&use] {
        auto port = std::make_unique<platform::QtSerialPort>();
        QObject::connect(port.get(), &platform::SerialPort::bytesRead, port.get(), [&use] { ++use.words; });
        return port;
    };
    environment.portPath = [&use](int port) {
        ++use.openings;
        return platform::portPath(port);
    };
    environment.timing.idlePoll = 60;
    environment.timing.mixPoll = 30;
    environment.timing.reopen = 200;
    return environment;
}

class FaultTest : public testing::TestWithParam<Expectation> {
protected:
    FaultTest() : control(quickEnvironment(use)), simulator(folder) {
        control.setSettings(1, 0, 0, folder.path("EnglishTranslation.xml"));
        QObject::connect(&control, &ctlSorvanto::mixDone, &control, [this](const auto&, const auto& results) {
            ++done;
            lastResults = results->xml();
            control.mixLogged();
        });
    }

    /// Until the mixer has said a few words more, or was looked for in vain once more.
    bool goesOn() const {
        const LineUse before = use;
        return QTest::qWaitFor(
            [&] { return use.words >= before.words + 6 || use.openings > before.openings + 1; }, 20'000);
    }
    QString problem() const { return support::child<NoticeCard>(control, "mixerProblem")->text(); }
    QString ring() const { return support::child<ProgressRing>(control, "mixerRing")->below(); }
    QPushButton* button(const char* name) const { return support::child<QPushButton>(control, name); }
    bool canPress(const char* name) const { return !button(name)->isHidden() && button(name)->isEnabled(); }

    support::TempProgramFolder folder;
    support::WarningTrap warnings;
    LineUse use;
    ctlSorvanto control;
    test::SimulatorProcess simulator;
    int done = 0;
    QString lastResults;
};

}  // namespace

TEST_P(FaultTest, EndsInAStatedState) {
    const Expectation& expected = GetParam();
    ASSERT_TRUE(simulator.start({"--speed", "20", "--fault", expected.fault}));
    control.StartControl();
    control.loadFormula(test::shortFormula());
    bool problemSeen = false, anyProblem = false, started = false;
    const auto settled = [&] {
        if (!started && canPress("mixerStart")) {
            button("mixerStart")->click();
            started = true;
        }
        if (!problem().isEmpty())
            anyProblem = true;
        if (*expected.problem && problem() == expected.problem) {
            problemSeen = true;
            if (*expected.recovery && canPress(expected.recovery)) {
                button(expected.recovery)->click();
                started = started && qstrcmp(expected.recovery, "mixerLoadAgain") != 0;
            }
        } else if (*expected.recovery && canPress(expected.recovery) && problemSeen) {
            button(expected.recovery)->click();  // a first press came too early for the device
        }
        const bool quiet = expected.stays == problemSeen || problem().isEmpty();
        return done == expected.results && ring() == expected.ring && quiet &&
               problemSeen == (*expected.problem != 0) && (started || !expected.results);
    };
    EXPECT_TRUE(QTest::qWaitFor(settled, 30'000))
        << "ring: " << ring().toStdString() << "\nproblem: " << problem().toStdString()
        << "\nmixes: " << done;
    EXPECT_TRUE(goesOn());
    EXPECT_EQ(done, expected.results);
    EXPECT_EQ(problem(), expected.stays ? QLatin1String(expected.problem) : QLatin1String());
    if (!*expected.problem) {
        EXPECT_FALSE(anyProblem) << "a disturbance that is mended is no concern of the user's";
    }
    if (expected.results) {
        EXPECT_EQ(lastResults, "<Results Value=\"SV0426\"><Size Value=\"300 ml\"/><Type Value=\"Custom\"/>"
                               "<LiftingCycles Value=\"3\"/><Interuption Value=\"A\"/><PreGrind Value=\"2\"/>"
                               "<PreparationNumber Value=\"0001\"/><TotalMixingRevolutions Value=\"532\"/>"
                               "<HardwareVersion Value=\"SIM-2.1\"/></Results>");
    }
    control.CloseControl();
    EXPECT_EQ(simulator.end(), 0);
}

INSTANTIATE_TEST_SUITE_P(Each, FaultTest, testing::ValuesIn(expectations), [](const auto& instance) {
    return std::string(instance.param.fault).substr(0, std::string(instance.param.fault).find('@'));
});

TEST(FaultList, IsTestedInWhole) {
    QProcess list;
    list.start(test::SimulatorProcess::program(), {"--list-faults"});
    ASSERT_TRUE(list.waitForFinished());
    QStringList tested;
    for (const Expectation& expected : expectations)
        tested << QString::fromLatin1(expected.fault).section('@', 0, 0);
    EXPECT_EQ(QString::fromLatin1(list.readAll()).trimmed().split('\n'), tested);
}
