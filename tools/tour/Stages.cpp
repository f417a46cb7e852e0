#include "Stages.h"

#include "Program.h"
#include "Stop.h"
#include "Visitor.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

namespace tour {
namespace {

QDir tourFolder(const QString& programFolder) {
    return QDir(QDir(programFolder).filePath(QStringLiteral("tour")));
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
    require(QFile::exists(QDir(programFolder).filePath(QStringLiteral("sorvanto.mdb"))),
            QStringLiteral("there is no database in %1.").arg(programFolder));
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

void runDarkStage(const QString& programFolder) {
    runStage({programFolder, QStringLiteral("--dark")});
}

void runEmptyStage(const QString& programFolder) {
    const QDir folder = tourFolder(programFolder);
    QDir empty(folder.filePath(QStringLiteral("empty")));
    require(empty.removeRecursively() && empty.mkpath(QStringLiteral("ports")),
            QStringLiteral("%1 can't be made anew.").arg(empty.path()));
    const QDir program(programFolder);
    for (const QString& name : program.entryList({QStringLiteral("*Translation.xml")}, QDir::Files))
        QFile::copy(program.filePath(name), empty.filePath(name));
    require(QFile::link(program.absoluteFilePath(QStringLiteral("ports/COM1")), empty.filePath(QStringLiteral("ports/COM1"))),
            QStringLiteral("the port can't be linked into %1.").arg(empty.path()));
    runStage({empty.path(), QStringLiteral("--empty"), QStringLiteral("--pictures"), folder.path()});
}

}  // namespace tour
