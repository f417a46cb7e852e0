// What the parts of the program share: made once, handed down by constructor to whoever needs some of it.
#pragma once

#include "platform/data/Connection.h"
#include "shared/ServerWait.h"
#include "shared/StandIn.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

namespace sorvanto {

class clsOptions;
class clsSearch;
class ErrorReporter;
class MainWindow;
class Translator;
struct Happening;

/// Its members are filled and exchanged while the program runs (another database can be opened, a language is borrowed
/// before the program's own), so they are looked up at each use and never kept. Outlives whoever it is handed to.
struct Context {
    Context() = default;
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    /// No destructors run, so that nothing is left to be saved at exit.
    static void endAtOnce();
    /// The same, and the program begins anew with the arguments that it was begun with, but for the one for the copy.
    static void restartAtOnce(bool onCopy);

    std::shared_ptr<ErrorReporter> reporter;
    std::shared_ptr<clsOptions> options;
    /// Not there before the start has come so far; texts are then shown in English.
    std::shared_ptr<Translator> language;
    /// The shared record search, created on first use.
    std::shared_ptr<clsSearch> search;
    /// The main window; not owned.
    MainWindow* window = nullptr;

    /// The shared connection, which may be closed; openDB opens it.
    platform::ConnectionPtr connection;
    QString connectionString;
    /// For a server that could not be opened.
    ServerWait serverWait;
    /// The copy that openDB opens in place of the server, to be read alone. Stays to the end of the program, so that no record
    /// on show is ever of another store than the next one.
    std::optional<StandIn> standIn;
    /// Asked for at the start, without looking for the server first.
    bool startsOnCopy = false;

    /// Type names by code from 0, jar names by code from 1 (element 0 is empty), 256 time texts.
    QStringList mixTypes, jarSizes, mixTimes;

    /// True when nothing is to be shown.
    bool labelsCancelled = false, reportCancelled = false;

    /// The location of the records in the options, a file or a server, and the dialog that edits it; set by those who have
    /// them.
    std::function<QString()> databaseLocation;
    std::function<void()> editOptions;
    /// Asked before the user is told that the database at a path is missing or can't be opened; true when it is to be
    /// opened once more. May be empty.
    std::function<bool(const QString& path)> rescueDatabase;
    /// Called by openDB after each opening; set by the main window once it knows whether another program runs.
    std::function<void()> databaseOpened;
    /// Ends the process at once; tests put their own in its place.
    std::function<void()> endProgram = endAtOnce;
    /// Ends the process and begins it anew in its place, on the server's copy or as ever; tests put their own in its place.
    std::function<void(bool onCopy)> restartProgram = restartAtOnce;
    /// Hears what is announced; empty where nobody does.
    std::function<void(const Happening&)> announced;
};

/// The shared connection, opened on first need. A missing file shows its message and gives the connection
/// closed; a file that can't be opened asks for another location as often as the user answers Yes. A server that can't be
/// opened is reported and gives the connection closed; it is tried again once it answers.
platform::ConnectionPtr openDB(Context& context);

/// Element of one of the tables; throws subscriptOutOfRange.
QString tableEntry(const QStringList& table, int index);

}  // namespace sorvanto
