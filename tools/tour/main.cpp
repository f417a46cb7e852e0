// sorvanto-tour: drives the real program like a user and takes pictures on the way. Ends with 0 only if
// everything that was made is in the database; else with 1 and a sentence.
#include "EmptyTour.h"
#include "RecoveryTour.h"
#include "SampleTour.h"
#include "Stages.h"

#include "platform/ask/Ask.h"
#include "platform/widgets/Theme.h"
#include "shared/basMain.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>
#include <QTextStream>

namespace {

const QString name = QStringLiteral("Sorvanto Control Panel");

void setUpApplication() {
    QApplication::setApplicationName(name);
    QApplication::setOrganizationName(name);
    QApplication::setApplicationVersion(sorvanto::programVersion());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/app/sorvanto.svg")));
    platform::setApplicationTitle(name);
}

void setUpOptions(QCommandLineParser& parser) {
    parser.setApplicationDescription(QStringLiteral("Drives the program like a user through batches and reports."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("The program's folder, laid out, with a mixer at ports/COM1."));
    QCommandLineOption empty(QStringLiteral("empty"), QStringLiteral("Begin with an empty database file in a folder without one."));
    QCommandLineOption pictures(QStringLiteral("pictures"), QStringLiteral("Where pictures go (FOLDER/tour)."), QStringLiteral("FOLDER"));
    QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Only pictures in the dark theme."));
    QCommandLineOption language(QStringLiteral("language"), QStringLiteral("Only pictures in a language."), QStringLiteral("NUMBER"));
    QCommandLineOption stop(QStringLiteral("stop-after"), QStringLiteral("Die at mixdone."), QStringLiteral("mixdone"));
    QCommandLineOption recover(QStringLiteral("recover"), QStringLiteral("Log the mix on offer."));
    QCommandLineOption vain(QStringLiteral("sign-in-vain"), QStringLiteral("Initials to be refused."), QStringLiteral("INITIALS"));
    QCommandLineOption second(QStringLiteral("second-instance"), QStringLiteral("Expect the start to be refused."));
    for (QCommandLineOption* hidden : {&dark, &language, &stop, &recover, &vain, &second})
        hidden->setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOptions({empty, pictures, dark, language, stop, recover, vain, second});
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
    QTextStream(stdout) << "The tour is over: two batches and a prescription from an empty file, one batch of the sample "
                           "pharmacy, all in their databases.\n";
    tell(sample.files(), folder);
}

void tourOneStage(const QCommandLineParser& parser, const QString& folder) {
    const auto isSet = [&](const char* option) { return parser.isSet(QLatin1String(option)); };
    const QString pictures = isSet("pictures") ? parser.value(QStringLiteral("pictures"))
                                               : QDir(folder).filePath(QStringLiteral("tour"));
    if (isSet("empty")) {
        tour::EmptyTour empty(folder, pictures);
        empty.run();
        tell(empty.files(), folder);
    } else if (isSet("language")) {
        tour::runLanguage(folder, pictures, parser.value(QStringLiteral("language")).toInt());
    } else if (isSet("dark")) {
        tour::runDark(folder);
    } else if (isSet("stop-after")) {
        tour::RecoveryTour(folder).dieBeforeLogging();
    } else if (isSet("recover")) {
        tour::RecoveryTour(folder).logOffer();
    } else if (isSet("sign-in-vain")) {
        tour::RecoveryTour(folder).signInVain(parser.value(QStringLiteral("sign-in-vain")));
    } else if (isSet("second-instance")) {
        tour::RecoveryTour(folder).startSecond();
    } else {
        tourEverything(folder);
    }
}

}  // namespace

int main(int argc, char** argv) {
    // The dialogs of a desktop environment could not be found by name.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication application(argc, argv);
    setUpApplication();
    QCommandLineParser parser;
    setUpOptions(parser);
    parser.process(application);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    const QFileInfo folder(parser.positionalArguments().constFirst());
    tour::require(folder.isDir(), QStringLiteral("there is no folder %1.").arg(folder.filePath()));
    platform::applyTheme(application, parser.isSet(QStringLiteral("dark")));
    QApplication::setQuitOnLastWindowClosed(false);
    tourOneStage(parser, folder.absoluteFilePath());
    return 0;
}
