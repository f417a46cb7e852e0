#include "Stages.h"

#include "Program.h"
#include "Stop.h"
#include "Visitor.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

namespace tour {
namespace {

const QString database = QStringLiteral("sorvanto.mdb");
const QString port = QStringLiteral("ports/COM1");
constexpr int germanNumber = 2;

QDir tourFolder(const QString& programFolder) {
    return QDir(QDir(programFolder).filePath(QStringLiteral("tour")));
}

/// A new folder below "tour" with the languages and the port of the program's own.
QDir scratchFolder(const QString& programFolder, const QString& name) {
    QDir folder(tourFolder(programFolder).filePath(name));
    require(folder.removeRecursively() && folder.mkpath(QStringLiteral("ports")),
            QStringLiteral("%1 can't be made anew.").arg(folder.path()));
    const QDir program(programFolder);
    for (const QString& language : program.entryList({QStringLiteral("*Translation.xml")}, QDir::Files))
        QFile::copy(program.filePath(language), folder.filePath(language));
    require(QFile::link(program.absoluteFilePath(port), folder.filePath(port)),
            QStringLiteral("the port can't be linked into %1.").arg(folder.path()));
    return folder;
}

void runStage(const QStringList& arguments) {
    QProcess stage;
    stage.setProcessChannelMode(QProcess::ForwardedChannels);
    stage.start(QCoreApplication::applicationFilePath(), arguments);
    require(stage.waitForStarted() && stage.waitForFinished(-1), QStringLiteral("a part of the tour does not run."));
    require(stage.exitStatus() == QProcess::NormalExit && stage.exitCode() == 0,
            QStringLiteral("the part %1 failed.").arg(arguments.join(QLatin1Char(' '))));
}

}  // namespace

void prepareFolder(const QString& programFolder) {
    require(QFile::exists(QDir(programFolder).filePath(database)),
            QStringLiteral("there is no database in %1.").arg(programFolder));
    require(QFile::exists(QDir(programFolder).filePath(port)),
            QStringLiteral("there is no mixer at ports/COM1 in %1.").arg(programFolder));
    const QDir folder = tourFolder(programFolder);
    require(folder.mkpath(QStringLiteral(".")), QStringLiteral("%1 can't be made.").arg(folder.path()));
    for (const QString& name : folder.entryList({QStringLiteral("*.png"), QStringLiteral("*.pdf")}, QDir::Files))
        QFile::remove(folder.filePath(name));
}

void runDark(const QString& programFolder) {
    Visitor visitor(tourFolder(programFolder).path(), QStringLiteral("dark-"));
    Program program(visitor, programFolder);
    program.start();
    visitor.search(QStringLiteral("Cold"));
    visitor.picture(QStringLiteral("formula"));
    visitor.openTab(2);
    visitor.picture(QStringLiteral("mix-options"));
    visitor.tool(QStringLiteral("cmdPatients"));
    visitor.openTab(1);
    visitor.picture(QStringLiteral("prescriptions"));
    visitor.requireNoReport();
    program.leave();
}

void runLanguage(const QString& programFolder, const QString& pictureFolder, int language) {
    Visitor visitor(pictureFolder, QStringLiteral("language%1-").arg(language));
    Program program(visitor, programFolder);
    program.start(language);
    const auto showTabs = [&](const QString& name, int count) {
        for (int tab = 0; tab < count; ++tab) {
            visitor.openTab(tab);
            visitor.picture(QStringLiteral("%1-%2").arg(name).arg(tab + 1));
        }
    };
    visitor.search(QStringLiteral("Cold"));
    showTabs(QStringLiteral("formula"), 3);
    visitor.robot().expectDialog(QStringLiteral("frmMake"), [&](QWidget& dialog) {
        visitor.picture(QStringLiteral("quantity"), &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, QStringLiteral("CancelButton")));
    });
    visitor.tool(QStringLiteral("cmdMake"));
    visitor.picture(QStringLiteral("current"));
    visitor.tool(QStringLiteral("cmdChemicals"));
    visitor.tool(QStringLiteral("cmdCancel"));
    visitor.picture(QStringLiteral("chemical"));
    visitor.tool(QStringLiteral("cmdLogs"));
    showTabs(QStringLiteral("log"), 4);
    visitor.tool(QStringLiteral("cmdPatients"));
    showTabs(QStringLiteral("patient"), 2);
    visitor.robot().expectDialog(QStringLiteral("frmOptions"), [&](QWidget& dialog) {
        visitor.picture(QStringLiteral("options"), &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, QStringLiteral("cmdCancel")));
    });
    visitor.tool(QStringLiteral("cmdOptions"));
    visitor.requireNoReport();
    program.leave();
}

void runDarkStage(const QString& programFolder) {
    runStage({programFolder, QStringLiteral("--dark")});
}

void runEmptyStage(const QString& programFolder) {
    const QDir empty = scratchFolder(programFolder, QStringLiteral("empty"));
    runStage({empty.path(), QStringLiteral("--empty"), QStringLiteral("--pictures"), tourFolder(programFolder).path()});
}

void runGermanStage(const QString& programFolder) {
    const QDir german = scratchFolder(programFolder, QStringLiteral("german"));
    require(QFile::copy(QDir(programFolder).filePath(database), german.filePath(database)),
            QStringLiteral("the database can't be copied to %1.").arg(german.path()));
    runStage({german.path(), QStringLiteral("--language"), QString::number(germanNumber), QStringLiteral("--pictures"),
              tourFolder(programFolder).path()});
}

}  // namespace tour
