// The runs beside the main one, their folders and their processes.
#include "Stages.h"

#include "Program.h"
#include "Stop.h"
#include "Visitor.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace tour {
namespace {

const QString database = u"sorvanto.mdb"_s;
const QString port = u"ports/COM1"_s;
constexpr int germanNumber = 2;

QDir tourFolder(const QString& programFolder) { return QDir(QDir(programFolder).filePath("tour")); }

/// A new folder below "tour" with the languages and the port of the program's own.
QDir scratchFolder(const QString& programFolder, const QString& name) {
    QDir folder(tourFolder(programFolder).filePath(name));
    require(folder.removeRecursively() && folder.mkpath("ports"),
            u"%1 can't be made anew."_s.arg(folder.path()));
    const QDir program(programFolder);
    for (const QString& language : program.entryList({"*Translation.xml"}, QDir::Files))
        QFile::copy(program.filePath(language), folder.filePath(language));
    require(QFile::link(program.absoluteFilePath(port), folder.filePath(port)),
            u"the port can't be linked into %1."_s.arg(folder.path()));
    return folder;
}

void runStage(const QStringList& arguments) {
    QProcess stage;
    stage.setProcessChannelMode(QProcess::ForwardedChannels);
    stage.start(QCoreApplication::applicationFilePath(), arguments);
    require(stage.waitForStarted() && stage.waitForFinished(-1), "a part of the tour does not run.");
    require(stage.exitStatus() == QProcess::NormalExit && stage.exitCode() == 0,
            u"the part %1 failed."_s.arg(arguments.join(' '_L1)));
}

}  // namespace

void prepareFolder(const QString& programFolder) {
    require(QFile::exists(QDir(programFolder).filePath(database)),
            u"there is no database in %1."_s.arg(programFolder));
    require(QFile::exists(QDir(programFolder).filePath(port)),
            u"there is no mixer at ports/COM1 in %1."_s.arg(programFolder));
    const QDir folder = tourFolder(programFolder);
    require(folder.mkpath("."), u"%1 can't be made."_s.arg(folder.path()));
    for (const QString& name : folder.entryList({"*.png", "*.pdf"}, QDir::Files))
        QFile::remove(folder.filePath(name));
}

void runDark(const QString& programFolder) {
    Visitor visitor(tourFolder(programFolder).path(), "dark-");
    Program program(visitor, programFolder);
    program.start();
    visitor.search("Cold");
    visitor.picture("formula");
    visitor.openTab(2);
    visitor.picture("mix-options");
    visitor.tool("cmdPatients");
    visitor.openTab(1);
    visitor.picture("prescriptions");
    visitor.requireNoReport();
    program.leave();
}

void runLanguage(const QString& programFolder, const QString& pictureFolder, int language) {
    Visitor visitor(pictureFolder, u"language%1-"_s.arg(language));
    Program program(visitor, programFolder);
    program.start(language);
    const auto showTabs = [&](const QString& name, int count) {
        for (int tab = 0; tab < count; ++tab) {
            visitor.openTab(tab);
            visitor.picture(u"%1-%2"_s.arg(name).arg(tab + 1));
        }
    };
    visitor.search("Cold");
    showTabs("formula", 3);
    visitor.robot().expectDialog("frmMake", [&](QWidget& dialog) {
        visitor.picture("quantity", &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, "CancelButton"));
    });
    visitor.tool("cmdMake");
    visitor.picture("current");
    visitor.tool("cmdChemicals");
    visitor.tool("cmdCancel");
    visitor.picture("chemical");
    visitor.tool("cmdLogs");
    showTabs("log", 4);
    visitor.tool("cmdPatients");
    showTabs("patient", 2);
    visitor.robot().expectDialog("frmOptions", [&](QWidget& dialog) {
        visitor.picture("options", &dialog);
        Visitor::click(Visitor::find<QWidget>(dialog, "cmdCancel"));
    });
    visitor.tool("cmdOptions");
    visitor.requireNoReport();
    program.leave();
}

void runDarkStage(const QString& programFolder) { runStage({programFolder, "--dark"}); }

void runEmptyStage(const QString& programFolder) {
    const QDir empty = scratchFolder(programFolder, "empty");
    runStage({empty.path(), "--empty", "--pictures", tourFolder(programFolder).path()});
}

void runGermanStage(const QString& programFolder) {
    const QDir german = scratchFolder(programFolder, "german");
    require(QFile::copy(QDir(programFolder).filePath(database), german.filePath(database)),
            u"the database can't be copied to %1."_s.arg(german.path()));
    runStage({german.path(), "--language", QString::number(germanNumber), "--pictures",
              tourFolder(programFolder).path()});
}

}  // namespace tour
