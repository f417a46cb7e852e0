// The program-wide values by their names in the system: each is a member of the one Context, which lives to the end of
// the process. The start hands the Context down; the names are for the start, the statements of the record classes
// and tests.
#pragma once

#include "shared/Context.h"

namespace sorvanto {

namespace basMain {

/// The program's own.
Context& context();

extern std::shared_ptr<sorvanto::ErrorReporter>& ErrorReporter;
extern std::shared_ptr<clsOptions>& Options;
extern std::shared_ptr<Translator>& Language;
extern std::shared_ptr<clsSearch>& Search;
extern MainWindow*& Main;

extern platform::ConnectionPtr& gConnection;
extern QString& gConnectionString;

extern QStringList &MixTypes, &JarSizes, &MixTimes;

extern bool &labelsCancelled, &reportCancelled;

extern std::function<QString()>& databaseLocation;
extern std::function<void()>& editOptions;
extern std::function<bool(const QString& path)>& rescueDatabase;
extern std::function<void()>& databaseOpened;
extern std::function<void()>& endProgram;
extern std::function<void(const Happening&)>& announced;

/// Drops everything and restores the defaults, for tests.
void reset();

}  // namespace basMain

/// That of the program's own context.
platform::ConnectionPtr openDB();

/// Major, minor and revision of the program joined by ".".
QString programVersion();

}  // namespace sorvanto
