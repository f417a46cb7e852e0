// sorvanto-mixersim: a mixer on a pseudo-terminal, in real time or faster, with faults on request.
// It shares nothing with the program but the protocol.
#include "SimulatorLoop.h"
#include "platform/basic/Version.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>
#include <cerrno>
#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;

namespace {

volatile std::sig_atomic_t ended = 0;

void endLoop(int) { ended = 1; }

bool isAlive(pid_t process) { return process <= 0 || ::kill(process, 0) == 0 || errno == EPERM; }

int readCounter(const QString& file) {
    QFile state(file);
    return !file.isEmpty() && state.open(QIODevice::ReadOnly) ? state.readAll().trimmed().toInt() : 0;
}

bool writeCounter(const QString& file, int preparations) {
    QSaveFile state(file);
    return state.open(QIODevice::WriteOnly) && state.write(QByteArray::number(preparations) + '\n') > 0 &&
           state.commit();
}

struct Options {
    QString link, stateFile;
    double speed = 1;
    mixersim::FaultPlan fault;
    QByteArray serial;
    pid_t parent = 0;
};

void addOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(u"A simulated mixer on a pseudo-terminal."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {u"link"_s, u"Keep a symbolic link at PATH, as ports/COM1."_s, u"PATH"_s},
        {u"speed"_s, u"N times as fast as real (1)."_s, u"N"_s, u"1"_s},
        {u"fault"_s, u"One of --list-faults, with @step where it begins."_s, u"NAME[@step]"_s},
        {u"list-faults"_s, u"Name the faults and end."_s},
        {u"state"_s, u"Keep the number of the last preparation in FILE."_s, u"FILE"_s},
        {u"serial"_s, u"Serial number of the device (SV0426)."_s, u"XX0000"_s, u"SV0426"_s},
        {u"parent-pid"_s, u"End when this process has ended."_s, u"PID"_s},
    });
}

/// Nothing, with a word on what is wrong, when an option can't be used.
std::optional<Options> readOptions(const QCommandLineParser& parser, QTextStream& complaint) {
    Options options;
    options.link = parser.value(u"link"_s);
    options.stateFile = parser.value(u"state"_s);
    options.serial = parser.value(u"serial"_s).toLatin1();
    options.parent = parser.value(u"parent-pid"_s).toInt();
    options.speed = parser.value(u"speed"_s).toDouble();
    if (options.speed < 1 || options.speed > 100'000) {
        complaint << "--speed takes a number from 1 to 100000\n";
        return std::nullopt;
    }
    protocol::Frame probe = protocol::identityReply({}, {protocol::version, "SIM-2.1", options.serial});
    if (!protocol::readIdentity(probe)) {
        complaint << "--serial takes two capital letters and four digits\n";
        return std::nullopt;
    }
    if (parser.isSet(u"fault"_s)) {
        const auto fault = mixersim::parseFault(parser.value(u"fault"_s).toLatin1());
        if (!fault) {
            complaint << "--fault takes one of: " << mixersim::faultNames().join(' ') << '\n';
            return std::nullopt;
        }
        options.fault = *fault;
    }
    return options;
}

int run(const Options& options, QTextStream& out, QTextStream& complaint) {
    mixersim::SimulatedMixer mixer({protocol::version, "SIM-2.1", options.serial},
                                   readCounter(options.stateFile));
    mixer.onPreparation = [&](int preparations) {
        if (!options.stateFile.isEmpty() && !writeCounter(options.stateFile, preparations))
            complaint << "can't write " << options.stateFile << Qt::endl;
    };
    mixersim::PseudoTerminal terminal(options.link);
    if (!terminal.open()) {
        complaint << terminal.errorText() << Qt::endl;
        return 1;
    }
    mixersim::SimulatorLoop loop(mixer, terminal, options.fault, options.speed);
    QString announced;
    while (!ended && isAlive(options.parent)) {
        if (terminal.isOpen() && terminal.path() != announced) {
            announced = terminal.path();
            out << announced << Qt::endl;
        }
        if (!loop.turn()) {
            complaint << terminal.errorText() << Qt::endl;
            return 1;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(platform::programVersion());
    QTextStream out(stdout), complaint(stderr);
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);
    if (parser.isSet(u"list-faults"_s)) {
        out << mixersim::faultNames().join('\n') << Qt::endl;
        return 0;
    }
    const std::optional<Options> options = readOptions(parser, complaint);
    if (!options)
        return 2;

    struct sigaction action = {};
    action.sa_handler = endLoop;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        ::sigaction(signal, &action, nullptr);
    return run(*options, out, complaint);
}
