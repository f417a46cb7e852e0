// Program-wide values, from start to the end of the process: the shared objects, the one database
// connection, the tables read from the mixer control, the two report flags.
#pragma once

#include "platform/data/Connection.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace sorvanto {

class clsOptions;
class clsSearch;
class ErrorReporter;
class MainWindow;
class Translator;

namespace basMain {

extern std::shared_ptr<sorvanto::ErrorReporter> ErrorReporter;
extern std::shared_ptr<clsOptions> Options;
extern std::shared_ptr<Translator> Language;
/// The shared record search, created on first use.
extern std::shared_ptr<clsSearch> Search;
/// The main window; not owned.
extern MainWindow* Main;

extern platform::ConnectionPtr gConnection;
extern QString gConnectionString;

/// Type names by code from 0, jar names by code from 1 (element 0 is empty), 256 time texts.
extern QStringList MixTypes, JarSizes, MixTimes;

/// True when nothing is to be shown.
extern bool labelsCancelled, reportCancelled;

/// The database path of the options and the dialog that edits it; set by those who have them.
extern std::function<QString()> databaseLocation;
extern std::function<void()> editOptions;
/// Asked before the user is told that the database at a path is missing or can't be opened; true when it is to be
/// opened once more. May be empty.
extern std::function<bool(const QString& path)> rescueDatabase;
/// Ends the process at once; tests put their own in its place.
extern std::function<void()> endProgram;

/// Element of one of the tables; throws subscriptOutOfRange.
QString tableEntry(const QStringList& table, int index);

/// Drops everything and restores the defaults, for tests.
void reset();

}  // namespace basMain

/// The shared connection, opened on first need. A missing file shows its message and gives the connection
/// closed; a file that can't be opened asks for another location as often as the user answers Yes.
platform::ConnectionPtr openDB();

/// Major, minor and revision of the program joined by ".".
QString programVersion();

}  // namespace sorvanto
