// Opening of the one shared connection on first need, with the questions to the user where the file
// is missing or can't be opened.
#include "history/HistorySeal.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "shared/databaseOpened.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

std::function<void()> basMain::databaseOpened;

namespace {

enum class Outcome { Done, LocationInvalid };

platform::RuntimeError notSet() { return {platform::error::objectNotSet, u"Object variable not set"_s}; }

bool isOpen() { return platform::deref(basMain::gConnection).state() == 1; }

QString databasePath() {
    if (!basMain::databaseLocation)
        throw notSet();
    return basMain::databaseLocation();
}

bool meansInvalidLocation(const platform::RuntimeError& failure) {
    return failure.number() == platform::error::cannotOpen || failure.number() == platform::error::general;
}

Outcome openFile(const QString& path) {
    basMain::gConnection = std::make_shared<platform::Connection>();
    basMain::gConnectionString =
        u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + path + u";Persist Security Info=False"_s;
    try {
        basMain::gConnection->open(basMain::gConnectionString);
    } catch (const platform::RuntimeError& failure) {
        if (!meansInvalidLocation(failure))
            throw;
        return Outcome::LocationInvalid;
    }
    keepHistory(*basMain::gConnection);
    if (basMain::databaseOpened)
        basMain::databaseOpened();
    return Outcome::Done;
}

/// True when another location is to be tried; otherwise the program has been ended.
bool askNewLocation(const ResumeNext& step) {
    const auto question = translated(u"Database location invalid, please select new location."_s);
    if (platform::MsgBox(question, {platform::Buttons::YesNoCancel}) != platform::Answer::Yes) {
        basMain::endProgram();
        return false;
    }
    step([] {
        if (!basMain::editOptions)
            throw notSet();
        basMain::editOptions();
    });
    return true;
}

bool isRescued(const QString& path) { return basMain::rescueDatabase && basMain::rescueDatabase(path); }

void tellNotFound() {
    platform::MsgBox(u"Database file not found. Please set in options"_s,
                     {platform::Buttons::Ok, platform::Icon::Information}, u"DATABASE NOT FOUND"_s);
}

}  // namespace

platform::ConnectionPtr openDB() {
    const ResumeNext step(u"frmMain:openDB"_s);
    bool again = true;
    while (again) {
        again = false;
        bool open = false;
        step([&] { open = isOpen(); });
        if (open)
            break;
        QString path;
        step([&] { path = databasePath(); });
        step([&] {
            if (!platform::fileExists(path)) {
                again = isRescued(path);
                if (!again)
                    tellNotFound();
            } else if (openFile(path) == Outcome::LocationInvalid) {
                again = isRescued(path) || askNewLocation(step);
            }
        });
    }
    return basMain::gConnection;
}

}  // namespace sorvanto
