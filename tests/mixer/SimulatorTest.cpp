// The simulator as a program: its options, its link, its counter, and that it always ends.
#include "MemoryLine.h"
#include "SimulatorProcess.h"

#include "mixer/protocol/FrameDecoder.h"
#include "platform/serial/PortProbe.h"
#include "platform/serial/QtSerialPort.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>

using namespace sorvanto;
using namespace sorvanto::protocol;

namespace {

class SimulatorTest : public testing::Test {
protected:
    support::TempProgramFolder folder;
    test::SimulatorProcess simulator{folder};

    /// One command over a real port; the reply, or nothing.
    std::optional<Frame> ask(platform::SerialPort& port, Frame command) {
        command.sequence = ++sequence;
        FrameDecoder decoder(Direction::ToProgram);
        std::vector<Frame> replies;
        const auto connection =
            QObject::connect(&port, &platform::SerialPort::bytesRead, &port, [&](const QByteArray& bytes) {
                for (const Frame& reply : decoder.feed(bytes))
                    replies.push_back(reply);
            });
        port.write(encode(command));
        const bool came = test::waitFor([&] { return !replies.empty(); });
        QObject::disconnect(connection);
        return came ? std::optional(replies.front()) : std::nullopt;
    }
    /// A whole mix of a second of the device's time; the number of its preparation.
    int mixOnce(const char* id) {
        platform::QtSerialPort port;
        EXPECT_TRUE(port.open(platform::portPath(1), 57600)) << port.errorText().toStdString();
        const Programme programme{id, 9, 1, 10, 0, 1, {{1200, 1200, 1, 0}}};
        for (const Frame& command : {helloCommand("TEST"), clearCommand(), loadCommand(programme),
                                     stepCommand(1, programme.steps[0]), startCommand(id)})
            EXPECT_TRUE(ask(port, command));
        std::optional<MixResults> results;
        test::waitFor([&] {
            const auto reply = ask(port, resultCommand(id));
            results = reply ? readResults(*reply) : std::nullopt;
            return results.has_value();
        });
        return results ? results->preparation : -1;
    }
    std::uint8_t sequence = 0;
};

}  // namespace

TEST_F(SimulatorTest, LinkAppearsAndGoes) {
    ASSERT_TRUE(simulator.start({}));
    EXPECT_EQ(QFileInfo(simulator.link()).symLinkTarget(), simulator.terminal());
    EXPECT_EQ(platform::portPath(1), simulator.link());
    EXPECT_TRUE(platform::portPresent(1));
    EXPECT_EQ(simulator.end(), 0) << "ends in good order when told to";
    EXPECT_FALSE(QFileInfo(simulator.link()).isSymLink());
}

TEST_F(SimulatorTest, StaleLinkIsTakenOverAFileIsNot) {
    QFile::link("/nowhere", simulator.link());
    ASSERT_TRUE(simulator.start({}));
    simulator.end();
    folder.write("ports/COM1", "a user's own");
    QProcess refused;
    refused.start(test::SimulatorProcess::program(), {"--link", simulator.link()});
    ASSERT_TRUE(refused.waitForFinished());
    EXPECT_EQ(refused.exitCode(), 1);
    EXPECT_TRUE(refused.readAllStandardError().contains("is there and is no link"));
    EXPECT_EQ(folder.read("ports/COM1"), "a user's own");
}

TEST_F(SimulatorTest, CounterGoesOnAfterARestart) {
    ASSERT_TRUE(simulator.start({"--speed", "100"}));
    EXPECT_EQ(mixOnce("00000001"), 1);
    EXPECT_EQ(mixOnce("00000002"), 2);
    simulator.end();
    ASSERT_TRUE(simulator.start({"--speed", "100"}));
    EXPECT_EQ(mixOnce("00000003"), 3);
}

TEST_F(SimulatorTest, WrongOptionsAreSaid) {
    for (const QStringList& options : {QStringList{"--speed", "0"},
                                       {"--speed", "fast"},
                                       {"--fault", "flood"},
                                       {"--fault", "estop@17"},
                                       {"--serial", "4711"},
                                       {"--unknown"}}) {
        QProcess refused;
        refused.start(test::SimulatorProcess::program(), options);
        ASSERT_TRUE(refused.waitForFinished());
        EXPECT_NE(refused.exitCode(), 0) << options.join(' ').toStdString();
        EXPECT_FALSE(refused.readAllStandardError().isEmpty());
    }
}

TEST_F(SimulatorTest, EndsWithItsParent) {
    const pid_t parent = fork();
    if (parent == 0) {
        pause();
        _exit(0);
    }
    QProcess orphan;
    orphan.start(test::SimulatorProcess::program(), {"--parent-pid", QString::number(parent)});
    ASSERT_TRUE(orphan.waitForReadyRead());
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    EXPECT_TRUE(orphan.waitForFinished(support::patience));
    EXPECT_EQ(orphan.exitCode(), 0);
}

// A program that is killed leaves its "for me alone" on the terminal; the next one gets in all the same.
TEST_F(SimulatorTest, ProgramKilledWithThePortOpenDoesNotShutOutTheNext) {
    ASSERT_TRUE(simulator.start({"--speed", "100"}));
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        platform::QtSerialPort port;
        const char opened = port.open(platform::portPath(1), 57600) ? 'y' : 'n';
        [[maybe_unused]] const auto written = write(ready[1], &opened, 1);
        pause();
        _exit(0);
    }
    char opened = 0;
    ASSERT_EQ(read(ready[0], &opened, 1), 1);
    EXPECT_EQ(opened, 'y');
    EXPECT_FALSE(platform::portPresent(1)) << "held by the other program";
    EXPECT_EQ(platform::portState(platform::portPath(1)), platform::PortState::Held);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    EXPECT_TRUE(test::waitFor([] { return platform::portPresent(1); }));
    EXPECT_EQ(mixOnce("00000001"), 1);
}
