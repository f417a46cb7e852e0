// The program-wide values and how they are dropped together.
#include "shared/basMain.h"

#include "platform/basic/RuntimeError.h"
#include "shared/ErrorReporter.h"
#include "shared/Happening.h"
#include "shared/Translator.h"

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace basMain {
namespace {

/// No destructors run, so that nothing is left to be saved at exit.
void endAtOnce() {
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace

std::shared_ptr<sorvanto::ErrorReporter> ErrorReporter;
std::shared_ptr<clsOptions> Options;
std::shared_ptr<Translator> Language;
std::shared_ptr<clsSearch> Search;
MainWindow* Main = nullptr;

platform::ConnectionPtr gConnection;
QString gConnectionString;

QStringList MixTypes, JarSizes, MixTimes;

bool labelsCancelled = false;
bool reportCancelled = false;

std::function<QString()> databaseLocation;
std::function<void()> editOptions;
std::function<bool(const QString& path)> rescueDatabase;
std::function<void()> endProgram = endAtOnce;

QString tableEntry(const QStringList& table, int index) {
    if (index < 0 || index >= table.size())
        throw platform::RuntimeError(platform::error::subscriptOutOfRange, u"Subscript out of range"_s);
    return table.at(index);
}

void reset() {
    Main = nullptr;
    Search.reset();
    Language.reset();
    Options.reset();
    gConnection.reset();
    gConnectionString.clear();
    MixTypes.clear();
    JarSizes.clear();
    MixTimes.clear();
    labelsCancelled = false;
    reportCancelled = false;
    databaseLocation = nullptr;
    editOptions = nullptr;
    rescueDatabase = nullptr;
    endProgram = endAtOnce;
    announced = nullptr;
    ErrorReporter.reset();
}

}  // namespace basMain

}  // namespace sorvanto
