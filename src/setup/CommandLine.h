// The program's command line. Started plainly from a laid-out folder it has none.
#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace sorvanto {

/// What the program is started with. "mistake" says what can't be understood; the rest doesn't count then.
struct StartOrder {
    QString folder;     ///< --folder; empty when not given
    bool copy = false;  ///< --copy: the newest copy is read in place of the server
    bool help = false, version = false, layOut = false;
    QString mistake;
};

/// Reads the arguments, without the program's name and without those of the toolkit.
StartOrder readStart(const QStringList& arguments);

/// Whether the arguments ask for something that is answered without a window, and without a display.
bool needsNoWindow(const QStringList& arguments);

/// Answers --help, --version and --lay-out. Gives the exit code: 0 done, 1 it failed, 2 the line is wrong.
int runWithoutWindow(const QStringList& arguments, QTextStream& out, QTextStream& err);

/// Chooses the program's folder, lays it out or brings it up to date, and makes it platform::programFolder().
/// Gives what could not be brought up to date, a sentence each; the program can start all the same. Throws
/// RuntimeError when there is no folder to work in.
QStringList enterProgramFolder(const QString& argument);

}  // namespace sorvanto
