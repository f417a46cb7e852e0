// Opening of the one shared connection on first need, with the questions to the user where the file
// is missing or can't be opened.
#include "history/HistorySeal.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Paths.h"
#include "platform/basic/RuntimeError.h"
#include "platform/data/DataLocation.h"
#include "platform/data/Engine.h"
#include "shared/Guard.h"
#include "shared/RecordsVersion.h"
#include "shared/ServerWatch.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

namespace {

platform::RuntimeError notSet() { return {platform::error::objectNotSet, u"Object variable not set"_s}; }

/// A server that was brought up to date meanwhile is opened anew, so that the user is told what is to be done.
bool isOpen(const Context& context) {
    const platform::Connection& connection = platform::deref(context.connection);
    return connection.state() == 1 && !connection.engine().isRefused();
}

QString dataLocation(const Context& context) {
    if (!context.databaseLocation)
        throw notSet();
    return context.databaseLocation();
}

bool meansInvalidLocation(const platform::RuntimeError& failure) {
    return failure.number() == platform::error::cannotOpen || failure.number() == platform::error::general;
}

void connect(Context& context, const QString& location) {
    context.connection = std::make_shared<platform::Connection>();
    watchServer(context, location);
    context.connectionString =
        u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + location + u";Persist Security Info=False"_s;
    context.connection->open(context.connectionString);
}

/// One of the copies from which the records may have to come back one day, so nothing is ever written into it.
void connectStandIn(Context& context, const QString& file) {
    context.connection = std::make_shared<platform::Connection>();
    context.connectionString = u"Data Source="_s + file + u";Persist Security Info=False"_s;
    context.connection->openForReading(file);
    keepHistory(*context.connection);
}

/// Throws general for records that this program does not work on.
void connectServer(Context& context, const QString& address) {
    connect(context, address);
    try {
        if (const QString why = versionRefused(*context.connection); !why.isEmpty())
            throw platform::RuntimeError(platform::error::general, why, u"Database"_s);
        keepRefusingVersions(*context.connection);
        keepHistory(*context.connection);
    } catch (const platform::RuntimeError&) {
        context.connection->close();
        throw;
    }
}

void connected(Context& context) {
    context.serverWait.end();
    if (context.databaseOpened)
        context.databaseOpened();
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

void tellNotFound() {
    platform::MsgBox(u"Database file not found. Please set in options"_s,
                     {platform::Buttons::Ok, platform::Icon::Information}, u"DATABASE NOT FOUND"_s);
}

/// True when the file is to be looked for once more.
bool openFile(Context& context, const QString& path, const ResumeNext& step) {
    if (!platform::fileExists(path)) {
        const bool again = isRescued(context, path);
        if (!again)
            tellNotFound();
        return again;
    }
    try {
        connect(context, path);
    } catch (const platform::RuntimeError& failure) {
        if (!meansInvalidLocation(failure))
            throw;
        return isRescued(context, path) || askNewLocation(context, step);
    }
    keepHistory(*context.connection);
    connected(context);
    return false;
}

/// A server that is not there is like a file that is not there: the program goes on without records. True when it is to be
/// asked once more.
bool openServer(Context& context, const QString& address) {
    const platform::DataLocation location(address);  // refuses a password
    if (context.standIn && context.standIn->server == location.text()) {
        connectStandIn(context, context.standIn->file);
        connected(context);
        return false;
    }
    if (!context.serverWait.isOver(location.text()))
        return false;
    try {
        connectServer(context, location.text());
    } catch (const platform::RuntimeError& failure) {
        if (!meansInvalidLocation(failure))
            throw;
        if (isRescued(context, location.text()))
            return true;
        context.serverWait.begin(location.text());
        throw;
    }
    connected(context);
    return false;
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
        QString place;
        step([&] { place = dataLocation(context); });
        step([&] {
            again = platform::DataLocation::namesServer(place) ? openServer(context, place)
                                                               : openFile(context, place, step);
        });
    }
    return context.connection;
}

platform::ConnectionPtr openDB() { return openDB(basMain::context()); }

}  // namespace sorvanto
