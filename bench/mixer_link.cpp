// One command over the real serial class and a pseudo-terminal to the simulator's process and back; beside
// it the baseline: the same bytes echoed by a bare thread with poll, read and write.
#include "mixer/protocol/FrameDecoder.h"
#include "mixer/protocol/Messages.h"
#include "platform/serial/QtSerialPort.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

using namespace sorvanto::protocol;

namespace {

int openTerminal(QByteArray& slave) {
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ::grantpt(master);
    ::unlockpt(master);
    char name[128];
    ::ptsname_r(master, name, sizeof name);
    slave = name;
    termios settings;
    ::tcgetattr(master, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(master, TCSANOW, &settings);
    return master;
}

void bareEcho(benchmark::State& state) {
    QByteArray name;
    const int master = openTerminal(name), slave = ::open(name.constData(), O_RDWR | O_NOCTTY);
    std::atomic<bool> ended = false;
    std::thread echo([&] {
        char buffer[256];
        pollfd wanted{master, POLLIN, 0};
        while (!ended) {
            if (::poll(&wanted, 1, 20) > 0) {
                const auto count = ::read(master, buffer, sizeof buffer);
                if (count > 0 && ::write(master, buffer, static_cast<std::size_t>(count)) != count)
                    break;
            }
        }
    });
    const QByteArray command = encode(statusCommand());
    char buffer[256];
    for (auto _ : state) {
        if (::write(slave, command.constData(), static_cast<std::size_t>(command.size())) != command.size())
            state.SkipWithError("write");
        for (qsizetype got = 0; got < command.size();)
            got += ::read(slave, buffer, sizeof buffer);
    }
    ended = true;
    echo.join();
    ::close(slave);
    ::close(master);
}
BENCHMARK(bareEcho)->UseRealTime();

void statusRoundTrip(benchmark::State& state) {
    QProcess simulator;
    simulator.start(QString::fromUtf8(SORVANTO_BIN_DIR "/sorvanto-mixersim"),
                    {"--parent-pid", QString::number(::getpid())});
    simulator.waitForReadyRead();
    platform::QtSerialPort port;
    if (!port.open(QString::fromLatin1(simulator.readLine()).trimmed(), 57600)) {
        state.SkipWithError("no simulator");
        return;
    }
    FrameDecoder decoder(Direction::ToProgram);
    QEventLoop loop;
    QObject::connect(&port, &platform::SerialPort::bytesRead, &loop, [&](const QByteArray& bytes) {
        if (!decoder.feed(bytes).empty())
            loop.quit();
    });
    Frame command = helloCommand("BENCH");
    for (auto _ : state) {
        port.write(encode(command));
        loop.exec();
        const auto next = static_cast<std::uint8_t>(command.sequence + 1);
        command = statusCommand();
        command.sequence = next;
    }
    port.close();
    simulator.terminate();
    simulator.waitForFinished();
}
BENCHMARK(statusRoundTrip)->UseRealTime();

void encodeAndDecodeStatus(benchmark::State& state) {
    const Status status{MixerState::Mixing, "3FA21C09", 2, 4, 228, 540, 61, 1440, 1992, Reason::None};
    FrameDecoder decoder(Direction::ToProgram);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            readStatus(decoder.feed(encode(statusReply(statusCommand(), status))).front()));
}
BENCHMARK(encodeAndDecodeStatus);

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
