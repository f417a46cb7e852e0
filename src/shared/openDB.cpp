// Opening of the one shared connection on first need, with the questions to the user where the file
// is missing or can't be opened.
#include "history/HistorySeal.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "shared/Guard.h"
#include "shared/ServerLocation.h"
#include "shared/ServerWatch.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

enum class Outcome { Done, LocationInvalid };

platform::RuntimeError notSet() { return {platform::error::objectNotSet, u"Object variable not set"_s}; }

bool isOpen(const Context& context) { return platform::deref(context.connection).state() == 1; }

QString databasePath(const Context& context) {
    if (!context.databaseLocation)
        throw notSet();
    return context.databaseLocation();
}

bool meansInvalidLocation(const platform::RuntimeError& failure) {
    return failure.number() == platform::error::cannotOpen || failure.number() == platform::error::general;
}

Outcome openFile(Context& context, const QString& path) {
    context.connection = std::make_shared<platform::Connection>();
    watchServer(context, path);
    context.connectionString =
        u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + path + u";Persist Security Info=False"_s;
    try {
        context.connection->open(context.connectionString);
    } catch (const platform::RuntimeError& failure) {
        if (!meansInvalidLocation(failure))
            throw;
        return Outcome::LocationInvalid;
    }
    keepHistory(*context.connection);
    if (context.databaseOpened)
        context.databaseOpened();
    return Outcome::Done;
}

/// True when another location is to be tried; otherwise the program has been ended.
bool askNewLocation(const Context& context, const ResumeNext& step) {
    const auto question = translated(u"Database location invalid, please select new location."_s);
    if (platform::MsgBox(question, {platform::Buttons::YesNoCancel}) != platform::Answer::Yes) {
        context.endProgram();
        return false;
    }
    step([&] {
        if (!context.editOptions)
            throw notSet();
        context.editOptions();
    });
    return true;
}

bool isRescued(const Context& context, const QString& path) {
    return context.rescueDatabase && context.rescueDatabase(path);
}

void tellServer() { platform::MsgBox(serverNotYet(), {platform::Buttons::Ok, platform::Icon::Information}); }

void tellNotFound() {
    platform::MsgBox(u"Database file not found. Please set in options"_s,
                     {platform::Buttons::Ok, platform::Icon::Information}, u"DATABASE NOT FOUND"_s);
}

}  // namespace

platform::ConnectionPtr openDB(Context& context) {
    const ResumeNext step(u"frmMain:openDB"_s);
    bool again = true;
    while (again) {
        again = false;
        bool open = false;
        step([&] { open = isOpen(context); });
        if (open)
            break;
        QString path;
        step([&] { path = databasePath(context); });
        step([&] {
            if (isServerLocation(path)) {
                tellServer();  // never by its address: a password may stand in it
            } else if (!platform::fileExists(path)) {
                again = isRescued(context, path);
                if (!again)
                    tellNotFound();
            } else if (openFile(context, path) == Outcome::LocationInvalid) {
                again = isRescued(context, path) || askNewLocation(context, step);
            }
        });
    }
    return context.connection;
}

platform::ConnectionPtr openDB() { return openDB(basMain::context()); }

}  // namespace sorvanto
