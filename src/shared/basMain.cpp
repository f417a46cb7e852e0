// The program-wide values and how they are dropped together.
#include "shared/basMain.h"

#include "shared/ErrorReporter.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

namespace sorvanto {
namespace basMain {
namespace {

Context program;

}  // namespace

Context& context() { return program; }

// Bound before any code runs, so that no order of initialisation matters.
constinit std::shared_ptr<sorvanto::ErrorReporter>& ErrorReporter = program.reporter;
constinit std::shared_ptr<clsOptions>& Options = program.options;
constinit std::shared_ptr<Translator>& Language = program.language;
constinit std::shared_ptr<clsSearch>& Search = program.search;
constinit MainWindow*& Main = program.window;

constinit platform::ConnectionPtr& gConnection = program.connection;
constinit QString& gConnectionString = program.connectionString;

constinit QStringList& MixTypes = program.mixTypes;
constinit QStringList& JarSizes = program.jarSizes;
constinit QStringList& MixTimes = program.mixTimes;

constinit bool& labelsCancelled = program.labelsCancelled;
constinit bool& reportCancelled = program.reportCancelled;

constinit std::function<QString()>& databaseLocation = program.databaseLocation;
constinit std::function<void()>& editOptions = program.editOptions;
constinit std::function<bool(const QString& path)>& rescueDatabase = program.rescueDatabase;
constinit std::function<void()>& databaseOpened = program.databaseOpened;
constinit std::function<void()>& endProgram = program.endProgram;
constinit std::function<void(const Happening&)>& announced = program.announced;

void reset() {
    Main = nullptr;
    Search.reset();
    Language.reset();
    Options.reset();
    gConnection.reset();
    gConnectionString.clear();
    program.serverWait.end();
    program.standIn.reset();
    program.startsOnCopy = false;
    program.restartProgram = Context::restartAtOnce;
    MixTypes.clear();
    JarSizes.clear();
    MixTimes.clear();
    labelsCancelled = false;
    reportCancelled = false;
    databaseLocation = nullptr;
    editOptions = nullptr;
    rescueDatabase = nullptr;
    endProgram = Context::endAtOnce;
    announced = nullptr;
    ErrorReporter.reset();
}

}  // namespace basMain

}  // namespace sorvanto
