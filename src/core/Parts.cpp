#include "core/Parts.h"

#include "config/ServerTexts.h"
#include "config/frmOptions.h"
#include "core/DailyBackup.h"
#include "core/DatabaseRescue.h"
#include "core/DatabaseUpdater.h"
#include "core/InstanceLock.h"
#include "core/OptionsRescue.h"
#include "core/ServerCopy.h"
#include "mixing/frmSorvanto.h"
#include "platform/basic/Paths.h"
#include "platform/data/Connection.h"
#include "screens/frmChemical.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmFormula.h"
#include "screens/frmLog.h"
#include "screens/frmPatient.h"
#include "shared/Context.h"
#include "shared/ErrorReporter.h"
#include "shared/FileIdentity.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

template <class Screen>
Parts::ScreenMaker make(Context& context) {
    return [&context] { return std::make_unique<Screen>(context); };
}

void setScreens(Parts& parts) {
    parts.screens[currentFormula] = make<frmCurrFormula>(parts.context);
    parts.currentFormula = [](RecordScreen& screen) -> frmCurrFormula& {
        return dynamic_cast<frmCurrFormula&>(screen);
    };
    parts.screens[formulas] = make<frmFormula>(parts.context);
    parts.formName = [](RecordScreen& screen) { return dynamic_cast<frmFormula&>(screen).formName(); };
    parts.screens[chemicals] = make<frmChemical>(parts.context);
    parts.screens[logs] = make<frmLog>(parts.context);
    parts.screens[patients] = make<frmPatient>(parts.context);
    parts.mixerScreen = make<frmSorvanto>(parts.context);
    parts.mixerControl = [](RecordScreen& screen) -> ctlSorvanto& {
        return dynamic_cast<frmSorvanto&>(screen).control();
    };
}

/// What findOtherPrograms asks for.
void beginLocks(const Context& context, InstanceLock& lock) {
    const auto connection = context.connection;
    const bool open = connection && connection->state() == 1 && !context.standIn;
    const QString file = open ? connection->file() : QString();
    const auto identity = file.isEmpty() ? std::nullopt : knownFileIdentity(*connection);
    lock.begin(platform::programFolder(), file, identity ? identity->identity : QString());
}

/// The folder first, then the database that is open. Records on a server are there for several programs.
InstanceState findOtherPrograms(const Context& context, InstanceLock& lock) {
    InstanceState state = lock.takeFolder(platform::programFolder());
    const auto connection = context.connection;
    if (state.runs || !connection || connection->state() != 1)
        return state;
    if (context.standIn) {  // without a lock beside it: a copy stays as it is, and so does its folder
        state.readingOnly = standInText(*context.standIn);
        return state;
    }
    const auto identity = knownFileIdentity(*connection);
    InstanceState ofDatabase, ofCopies;
    if (const QString file = connection->file(); !file.isEmpty()) {
        ofDatabase = lock.takeDatabase(file);
        ofCopies = lock.takeIdentity(identity ? identity->identity : QString());
    }
    state.runs = ofDatabase.runs;
    const QString place =
        connection->isServer() ? shortLocation(connection->location()) : connection->location();
    if (connection->isReadOnly())
        state.readingOnly = translated(u"%1 can not be written."_s).replace(u"%1"_s, place);
    else if (identity && !identity->parent.isEmpty())
        state.readingOnly = translated(u"%1 is an archive."_s).replace(u"%1"_s, place);
    else if (state.readingOnly.isEmpty())
        state.readingOnly = ofDatabase.readingOnly.isEmpty() ? ofCopies.readingOnly : ofDatabase.readingOnly;
    return state;
}

}  // namespace

Parts realParts(Context& context) {
    Parts parts(context);
    setScreens(parts);
    parts.reporter = [] { return std::make_shared<ErrorReporter>(); };
    parts.copies = [&context] { return std::make_unique<DailyBackup>(context); };
    parts.updater = [] { return std::make_unique<DatabaseUpdater>(); };
    parts.bringOptionsBack = [&context] { bringOptionsBack(context); };
    parts.rescueOptions = [&context](clsOptions& options) { offerOptions(context, options); };
    parts.databaseRescue = [&context](bool firstStart) {
        return [rescue = std::make_shared<DatabaseRescue>(context, firstStart)](const QString& path) {
            return rescue->offer(path);
        };
    };
    // Held as long as the window lives.
    const auto lock = std::make_shared<InstanceLock>();
    parts.seekPreviousInstance = [&context, lock] { beginLocks(context, *lock); };
    parts.previousInstance = [&context, lock] { return findOtherPrograms(context, *lock); };
    parts.serverLook = [&context](ServerLook::Ways ways) {
        return std::make_unique<ServerLook>(context, std::move(ways), ServerLook::Times{});
    };
    parts.editOptions = [&context] { frmOptions::edit(context); };
    return parts;
}

}  // namespace sorvanto
