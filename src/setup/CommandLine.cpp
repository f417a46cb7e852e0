#include "setup/CommandLine.h"

#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Version.h"
#include "setup/LayOut.h"
#include "setup/ProgramFolder.h"

#include <QCommandLineParser>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

enum ExitCode { done, failed, wrongUse };

const char usage[] =
    "The control panel of the Sorvanto compounding mixer.\n"
    "\n"
    "  sorvanto [--folder DIR] [--copy]    starts the program\n"
    "  sorvanto --lay-out [--folder DIR]   makes its folder, or brings it up to date, and ends\n"
    "  sorvanto --help | --version\n"
    "\n"
    "  --folder DIR   the program's folder: database, options and languages. Without it that of the\n"
    "                 executable where the program's files lie there, else SORVANTO_FOLDER, else\n"
    "                 \"sorvanto\" in the user's data folder (XDG_DATA_HOME, ~/.local/share).\n"
    "  --copy         where the records lie on a server: reads their newest checked copy in its place\n"
    "\n"
    "Exit code of --lay-out: 0 done, 1 something could not be done. 2: the command line is wrong.\n";

int layOutNow(const QString& argument, QTextStream& err) {
    const Surroundings surroundings = Surroundings::ofProcess(argument);
    const ProgramFolder folder = chooseProgramFolder(surroundings);
    QStringList problems;
    if (folder.fromDelivered)
        problems = layOut(surroundings.delivered, folder.path, surroundings.executable);
    else
        problems << u"There are no delivered files to lay out %1 from."_s.arg(folder.path);
    for (const QString& problem : problems)
        err << "sorvanto: " << problem << '\n';
    return problems.isEmpty() ? done : failed;
}

}  // namespace

StartOrder readStart(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({{u"folder"_s, QString(), u"DIR"_s},
                       {u"copy"_s, QString()},
                       {u"lay-out"_s, QString()},
                       {u"version"_s, QString()},
                       {{u"help"_s, u"h"_s}, QString()}});
    StartOrder order;
    if (!parser.parse(QStringList{QString()} + arguments))
        order.mistake = parser.errorText();
    else if (const QStringList words = parser.positionalArguments(); !words.isEmpty())
        order.mistake = u"\"%1\" is not understood."_s.arg(words.constFirst());
    else if (parser.isSet(u"folder"_s) && parser.value(u"folder"_s).isEmpty())
        order.mistake = u"--folder has no value."_s;
    else if (parser.values(u"folder"_s).size() > 1)
        order.mistake = u"--folder is given more than once."_s;
    order.folder = parser.value(u"folder"_s);
    order.copy = parser.isSet(u"copy"_s);
    order.help = parser.isSet(u"help"_s);
    order.version = parser.isSet(u"version"_s);
    order.layOut = parser.isSet(u"lay-out"_s);
    return order;
}

bool needsNoWindow(const QStringList& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const QString& argument) {
        return QStringList{u"--help"_s, u"-h"_s, u"--version"_s, u"--lay-out"_s}.contains(argument);
    });
}

int runWithoutWindow(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const StartOrder order = readStart(arguments);
    if (!order.mistake.isEmpty()) {
        err << "sorvanto: " << order.mistake << "\n\n" << usage;
        return wrongUse;
    }
    if (order.help || order.version) {
        out << (order.help ? QString::fromUtf8(usage) : u"sorvanto %1\n"_s.arg(platform::programVersion()));
        return done;
    }
    try {
        return layOutNow(order.folder, err);
    } catch (const platform::RuntimeError& failure) {
        err << "sorvanto: " << failure.description() << '\n';
        return failed;
    }
}

QStringList enterProgramFolder(const QString& argument) {
    const Surroundings surroundings = Surroundings::ofProcess(argument);
    const ProgramFolder folder = chooseProgramFolder(surroundings);
    if (folder.path != surroundings.executable)
        makeProgramFolder(folder.path);
    platform::setProgramFolder(folder.path);
    if (folder.fromDelivered)
        return keepUpToDate(surroundings.delivered, folder.path, surroundings.executable);
    return {};
}

}  // namespace sorvanto
