// A program killed in the midst of its work: a child runs the real control against the real simulator and
// is killed; the control started next in the same folder still knows the mix.
#include "MemoryLine.h"
#include "SimulatorProcess.h"
#include "support/Child.h"

#include "mixer/MixerLink.h"
#include "mixer/ctlSorvanto.h"
#include "platform/serial/QtSerialPort.h"

#include <QLabel>
#include <QPushButton>
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;
using support::child;

namespace {

constexpr const char* folderVariable = "SORVANTO_TEST_KILLED_IN";

void tell(const char* word) {
    std::puts(word);
    std::fflush(stdout);
}

class KilledControl : public testing::Test {
protected:
    KilledControl() {
        // As in a run that is shared out, where the child alone would fall to another share.
        if (!m_shared) {
            qputenv("GTEST_TOTAL_SHARDS", "2");
            qputenv("GTEST_SHARD_INDEX", "1");
        }
    }
    ~KilledControl() override {
        if (!m_shared) {
            qunsetenv("GTEST_TOTAL_SHARDS");
            qunsetenv("GTEST_SHARD_INDEX");
        }
    }

    support::TempProgramFolder folder;
    test::SimulatorProcess simulator{folder};
    QProcess victim;

    /// Without what tells this run its own share of the tests and the place of its report.
    QProcessEnvironment childEnvironment() const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : environment.keys()) {
            if (name.startsWith("GTEST_"_L1))
                environment.remove(name);
        }
        environment.insert(folderVariable, folder.path());
        return environment;
    }
    /// Starts the child and kills it as soon as it has said the word.
    void killAt(const char* word) {
        victim.setProcessEnvironment(childEnvironment());
        victim.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=KilledControlChild.*"});
        QByteArray said;
        while (!said.contains(word) && victim.waitForReadyRead(20'000))
            said += victim.readAllStandardOutput();
        ASSERT_TRUE(said.contains(word)) << said.constData();
        victim.kill();
        victim.waitForFinished();
        ASSERT_EQ(victim.exitStatus(), QProcess::CrashExit);
    }
    /// The control of the next start of the program, with one mix on offer; logs it.
    void logTheOffer(int preparation) {
        ctlSorvanto control;
        control.setSettings(1, 0, 0, folder.path("EnglishTranslation.xml"));
        QString formula, results;
        QObject::connect(&control, &ctlSorvanto::mixDone, &control, [&](const auto& f, const auto& r) {
            formula = f->xml();
            results = r->xml();
            control.mixerInitialsClosed();
            control.mixLogged();
        });
        control.StartControl();
        const auto offered = [&] {
            const auto* button = control.findChild<QPushButton*>("mixerLogMix");
            return button && button->isEnabled();
        };
        ASSERT_TRUE(QTest::qWaitFor(offered, 20'000));
        EXPECT_EQ(
            child<QLabel>(control, "mixerOffer")->text(),
            u"Hydrocortisone 1% Cream · 250 in 300 ml · lot SV0426%1"_s.arg(preparation, 4, 10, QChar('0')));
        child<QPushButton>(control, "mixerLogMix")->click();
        ASSERT_TRUE(test::waitFor([&] { return !results.isEmpty(); }));
        EXPECT_EQ(formula, test::shortFormula()->xml());
        EXPECT_TRUE(results.contains("<TotalMixingRevolutions Value=\"532\"/>")) << results.toStdString();
        EXPECT_TRUE(
            test::waitFor([&] { return QDir(folder.path("mixes")).entryList(QDir::Files).isEmpty(); }));
    }
    /// Until the mixer, asked over its line, says that its mix is done.
    bool mixEndsAlone() {
        MixerLink link(std::make_unique<platform::QtSerialPort>(), [this] { return simulator.link(); }, {});
        bool ended = false;
        QObject::connect(&link, &MixerLink::status, [&](const protocol::Status& status) {
            ended = status.state == protocol::MixerState::Done;
        });
        link.open();
        return QTest::qWaitFor([&] { return ended; }, 20'000);
    }

private:
    const bool m_shared = qEnvironmentVariableIsSet("GTEST_TOTAL_SHARDS");
};

}  // namespace

TEST_F(KilledControl, AfterTheMixBeforeTheLog) {
    ASSERT_TRUE(simulator.start({"--speed", "20"}));
    killAt("finished");
    logTheOffer(1);
}

TEST_F(KilledControl, InTheMidstOfTheMix) {
    ASSERT_TRUE(simulator.start({"--speed", "20"}));
    killAt("mixing");
    ASSERT_TRUE(mixEndsAlone());
    logTheOffer(1);
}

// The child's part; without the variable there is nothing to do.
TEST(KilledControlChild, MixesAndWaitsToBeKilled) {
    const QString folder = qEnvironmentVariable(folderVariable);
    if (folder.isEmpty())
        return;
    platform::setProgramFolder(folder);
    ctlSorvanto control;
    control.setSettings(1, 0, 0, folder + "/EnglishTranslation.xml");
    QObject::connect(&control, &ctlSorvanto::mixDone, &control, [] {
        tell("finished");
        pause();
    });
    control.StartControl();
    control.loadFormula(test::shortFormula());
    auto* start = child<QPushButton>(control, "mixerStart");
    ASSERT_TRUE(test::waitFor([&] { return start->isEnabled(); }));
    start->click();
    auto* stop = child<QPushButton>(control, "mixerStop");
    ASSERT_TRUE(test::waitFor([&] { return !stop->isHidden(); }));
    tell("mixing");
    ADD_FAILURE() << "not killed" << QTest::qWaitFor([] { return false; }, 20'000);
}
