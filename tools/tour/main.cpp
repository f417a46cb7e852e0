// sorvanto-tour: drives the real program like a user and takes pictures on the way. Ends with 0 only if
// everything that was made is in the database; else with 1 and a sentence.
#include "BenchTour.h"
#include "BusyTour.h"
#include "EmptyTour.h"
#include "ManualTour.h"
#include "PrinterTour.h"
#include "RecoveryTour.h"
#include "SampleTour.h"
#include "ServerlessTour.h"
#include "Stages.h"
#include "StoppedTour.h"

#include "core/Application.h"
#include "platform/ask/Ask.h"
#include "platform/widgets/Theme.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

const QString name = u"Sorvanto Control Panel"_s;

void setUpApplication() {
    QApplication::setApplicationName(name);
    QApplication::setOrganizationName(name);
    QApplication::setApplicationVersion(sorvanto::programVersion());
    platform::setApplicationTitle(name);
}

void setUpOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription("Drives the program like a user through batches and reports.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("FOLDER", "The program's folder, laid out, with a mixer at ports/COM1.");
    QCommandLineOption empty("empty", "Begin with an empty database file in a folder without one.");
    QCommandLineOption pictures("pictures", "Where pictures go (FOLDER/tour).", "FOLDER");
    QCommandLineOption dark("dark", "Only pictures in the dark theme.");
    QCommandLineOption language("language", "Only pictures in a language.", "NUMBER");
    QCommandLineOption stop("stop-after", "Die at mixdone.", "mixdone");
    QCommandLineOption stopped("stopped", "Only pictures of a mix of the formula that is stopped.", "NAME");
    QCommandLineOption manual("manual", "Only the manual's pictures, from an empty folder on.");
    QCommandLineOption broken("broken-start", "Only the manual's picture of a start.", "PICTURE");
    QCommandLineOption prefix("prefix", "In front of the name of each of these pictures.", "TEXT");
    QCommandLineOption busy("busy", "Let a mix end in the midst of a list, a deletion or a note.", "SCENE");
    QCommandLineOption bench("bench", "Make so many batches on the records of the options.", "BATCHES");
    QCommandLineOption serverless("serverless", "Start while the server gives no records.");
    QCommandLineOption onCopy("bench-on-copy", "Make a batch on the newest copy of a server that is away.");
    QCommandLineOption later("bench-offer", "Sign the batch that waits for its server.");
    QCommandLineOption description("description", "What the bench writes into the formula.", "TEXT");
    QCommandLineOption ofAll("batches-of-all", "How many batches the bench's log lists at the end.", "COUNT");
    QCommandLineOption watch("watch",
                             "Then wait for another bench that changes the formula and one that mixes.");
    QCommandLineOption recover("recover", "Log the mix on offer.");
    QCommandLineOption vain("sign-in-vain", "Initials to be refused.", "INITIALS");
    QCommandLineOption second("second-instance", "Expect the start to be refused.");
    QCommandLineOption failing("fail-in-an-event", "Let the handler of an event fail.");
    QCommandLineOption printers("printers", "The queues that the options must offer.", "NAME,NAME");
    QCommandLineOption print("print-on", "Print on the queue, chosen in the options.", "NAME");
    QCommandLineOption missing("print-on-missing", "Print while the chosen queue is missing.", "NAME");
    QCommandLineOption none("print-without-printer", "Print while there is no queue.");
    QCommandLineOption refusing("print-on-refusing", "Print on a queue that takes no jobs.", "NAME");
    for (QCommandLineOption* hidden :
         {&dark,   &language, &stop,     &stopped,     &manual,  &broken, &prefix,   &busy,
          &bench,  &onCopy,   &later,    &description, &ofAll,   &watch,  &recover,  &vain,
          &second, &failing,  &printers, &print,       &missing, &none,   &refusing, &serverless})
        hidden->setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({empty,  pictures, dark,    language, stop,      stopped, manual,
                       broken, prefix,   busy,    bench,    onCopy,    later,   description,
                       ofAll,  watch,    recover, vain,     second,    failing, printers,
                       print,  missing,  none,    refusing, serverless});
}

void tell(const QStringList& files, const QString& folder) {
    QTextStream out(stdout);
    const QDir from(folder);
    for (const QString& file : files)
        out << "  " << from.relativeFilePath(file) << '\n';
}

void tourEverything(const QString& folder) {
    tour::prepareFolder(folder);
    tour::runDarkStage(folder);
    tour::runGermanStage(folder);
    tour::runEmptyStage(folder);
    tour::SampleTour sample(folder);
    sample.run();
    QTextStream(stdout)
        << "The tour is over: two batches and a prescription from an empty file, one batch of the sample "
           "pharmacy, all in their databases.\n";
    tell(sample.files(), folder);
}

/// False when none of the options asks for it.
bool tourPrinters(const QCommandLineParser& parser, const QString& folder) {
    if (parser.isSet("print-on"))
        tour::PrinterTour(folder).printOn(parser.value("print-on"), parser.value("printers").split(','));
    else if (parser.isSet("print-on-missing"))
        tour::PrinterTour(folder).printOnMissing(parser.value("print-on-missing"));
    else if (parser.isSet("print-without-printer"))
        tour::PrinterTour(folder).printWithoutPrinter();
    else if (parser.isSet("print-on-refusing"))
        tour::PrinterTour(folder).printOnRefusing(parser.value("print-on-refusing"));
    else
        return false;
    return true;
}

void tourOneStage(const QCommandLineParser& parser, const QString& folder) {
    const auto isSet = [&](const char* option) { return parser.isSet(QLatin1String(option)); };
    const QString pictures = isSet("pictures") ? parser.value("pictures") : QDir(folder).filePath("tour");
    if (isSet("empty")) {
        tour::EmptyTour empty(folder, pictures);
        empty.run();
        tell(empty.files(), folder);
    } else if (isSet("stopped")) {
        tour::runStopped(folder, pictures, parser.value("prefix"), parser.value("stopped"),
                         parser.value("language").toInt());
    } else if (isSet("manual")) {
        tour::runManual(folder, pictures, parser.value("language").toInt());
    } else if (isSet("broken-start")) {
        tour::runBrokenStart(folder, pictures, parser.value("broken-start"));
    } else if (isSet("busy")) {
        tour::runBusy(folder, parser.value("busy"));
    } else if (isSet("bench")) {
        tour::runBench(folder, pictures,
                       {parser.value("description"), parser.value("bench").toInt(),
                        parser.value("batches-of-all").toInt(), isSet("watch")});
    } else if (isSet("serverless")) {
        tour::runServerless(folder);
    } else if (isSet("bench-on-copy")) {
        tour::runBenchOnCopy(folder, pictures);
    } else if (isSet("bench-offer")) {
        tour::runBenchOffer(folder, pictures);
    } else if (isSet("language")) {
        tour::runLanguage(folder, pictures, parser.value("language").toInt());
    } else if (isSet("dark")) {
        tour::runDark(folder);
    } else if (isSet("stop-after")) {
        tour::RecoveryTour(folder).dieBeforeLogging();
    } else if (isSet("recover")) {
        tour::RecoveryTour(folder).logOffer();
    } else if (isSet("sign-in-vain")) {
        tour::RecoveryTour(folder).signInVain(parser.value("sign-in-vain"));
    } else if (isSet("second-instance")) {
        tour::RecoveryTour(folder).startSecond();
    } else if (isSet("fail-in-an-event")) {
        tour::RecoveryTour(folder).failInAnEvent();
    } else if (!tourPrinters(parser, folder)) {
        tourEverything(folder);
    }
}

}  // namespace

int main(int argc, char** argv) {
    // The dialogs of a desktop environment could not be found by name.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    sorvanto::Application application(argc, argv);
    setUpApplication();
    QCommandLineParser parser;
    setUpOptions(parser);
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    const QFileInfo folder(parser.positionalArguments().constFirst());
    tour::require(folder.isDir(), u"there is no folder %1."_s.arg(folder.filePath()));
    platform::applyTheme(application, parser.isSet("dark"));
    QApplication::setQuitOnLastWindowClosed(false);
    tourOneStage(parser, folder.absoluteFilePath());
    return 0;
}
