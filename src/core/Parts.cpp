#include "core/Parts.h"

#include "config/frmOptions.h"
#include "core/DatabaseRescue.h"
#include "core/DatabaseUpdater.h"
#include "core/InstanceLock.h"
#include "core/OptionsRescue.h"
#include "mixing/frmSorvanto.h"
#include "platform/basic/Paths.h"
#include "screens/frmChemical.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmFormula.h"
#include "screens/frmLog.h"
#include "screens/frmPatient.h"
#include "shared/ErrorReporter.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

template <class Screen>
std::unique_ptr<RecordScreen> make() {
    return std::make_unique<Screen>();
}

void setScreens(Parts& parts) {
    parts.screens[currentFormula] = make<frmCurrFormula>;
    parts.currentFormula = [](RecordScreen& screen) -> frmCurrFormula& {
        return dynamic_cast<frmCurrFormula&>(screen);
    };
    parts.screens[formulas] = make<frmFormula>;
    parts.formName = [](RecordScreen& screen) { return dynamic_cast<frmFormula&>(screen).formName(); };
    parts.screens[chemicals] = make<frmChemical>;
    parts.screens[logs] = make<frmLog>;
    parts.screens[patients] = make<frmPatient>;
    parts.mixerScreen = make<frmSorvanto>;
    parts.mixerControl = [](RecordScreen& screen) -> ctlSorvanto& {
        return dynamic_cast<frmSorvanto&>(screen).control();
    };
}

}  // namespace

Parts realParts() {
    Parts parts;
    setScreens(parts);
    parts.reporter = [] { return std::make_shared<ErrorReporter>(); };
    parts.updater = [] { return std::make_unique<DatabaseUpdater>(); };
    parts.rescueOptions = offerOptions;
    parts.databaseRescue = [](bool firstStart) {
        return [rescue = std::make_shared<DatabaseRescue>(firstStart)](const QString& path) {
            return rescue->offer(path);
        };
    };
    parts.previousInstance = [] {
        // Held to the end of the process.
        static InstanceLock lock(platform::programFolder() + u"\\sorvanto.lock"_s);
        return lock.heldByAnother();
    };
    parts.editOptions = frmOptions::edit;
    return parts;
}

}  // namespace sorvanto
