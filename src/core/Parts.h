// What the main window is put together from: the makers of its screens and of its helpers.
// The program takes realParts(); a test may put others in their place.
#pragma once

#include "core/InstanceLock.h"
#include "core/ScreenTable.h"
#include "core/ServerLook.h"

#include <QString>
#include <array>
#include <functional>
#include <memory>

class QWidget;

namespace sorvanto {

class ctlSorvanto;
class DailyBackup;
class DatabaseUpdater;
class clsOptions;
class ErrorReporter;
class frmCurrFormula;
class RecordScreen;
struct Context;

struct Parts {
    explicit Parts(Context& shared) : context(shared) {}

    /// Handed to whatever is made.
    Context& context;
    using ScreenMaker = std::function<std::unique_ptr<RecordScreen>()>;

    std::function<std::shared_ptr<ErrorReporter>()> reporter;
    /// By screen number.
    std::array<ScreenMaker, screenCount> screens;
    ScreenMaker mixerScreen;
    /// The mixer control on a screen that mixerScreen made.
    std::function<ctlSorvanto&(RecordScreen&)> mixerControl;
    std::function<frmCurrFormula&(RecordScreen&)> currentFormula;
    /// The text for the title bar that the formula screen offers.
    std::function<QString(RecordScreen&)> formName;
    /// Of the database, from time to time.
    std::function<std::unique_ptr<DailyBackup>()> copies;
    std::function<std::unique_ptr<DatabaseUpdater>()> updater;
    /// Asked before the options are read; may be empty.
    std::function<void()> bringOptionsBack;
    /// Asked about options that may not have been read; may be empty.
    std::function<void(clsOptions&)> rescueOptions;
    /// Makes what is asked about a database that is missing or can't be opened; may be empty. firstStart: there
    /// were no options yet.
    std::function<std::function<bool(const QString& path)>(bool firstStart)> databaseRescue;
    /// Begins to find out what previousInstance tells, as soon as the database is open; may be empty.
    std::function<void()> seekPreviousInstance;
    /// Whether the program already runs; asked once, and again for each database that is opened later.
    std::function<InstanceState()> previousInstance;
    /// Watches whether the server is there; may be empty.
    std::function<std::unique_ptr<ServerLook>(ServerLook::Ways ways)> serverLook;
    /// Shows the options dialog to its end.
    std::function<void()> editOptions;
};

Parts realParts(Context& context);

}  // namespace sorvanto
