#include "core/Parts.h"

#include "config/frmOptions.h"
#include "core/DatabaseUpdater.h"
#include "core/InstanceLock.h"
#include "mixing/frmSorvanto.h"
#include "platform/basic/Paths.h"
#include "shared/ErrorReporter.h"
#if __has_include("screens/frmCurrFormula.h")
#include "screens/frmCurrFormula.h"
#define HAS_CURRENT
#endif
#if __has_include("screens/frmFormula.h")
#include "screens/frmFormula.h"
#define HAS_FORMULA
#endif
#if __has_include("screens/frmChemical.h")
#include "screens/frmChemical.h"
#define HAS_CHEMICAL
#endif
#if __has_include("screens/frmLog.h")
#include "screens/frmLog.h"
#define HAS_LOG
#endif
#if __has_include("screens/frmPatient.h")
#include "screens/frmPatient.h"
#define HAS_PATIENT
#endif

namespace sorvanto {
namespace {

template <class Screen>
std::unique_ptr<RecordScreen> make() {
    return std::make_unique<Screen>();
}

void setScreens(Parts& parts) {
#ifdef HAS_CURRENT
    parts.screens[currentFormula] = make<frmCurrFormula>;
    parts.currentFormula = [](RecordScreen& screen) -> frmCurrFormula& {
        return dynamic_cast<frmCurrFormula&>(screen);
    };
#endif
#ifdef HAS_FORMULA
    parts.screens[formulas] = make<frmFormula>;
    parts.formName = [](RecordScreen& screen) { return dynamic_cast<frmFormula&>(screen).formName(); };
#endif
#ifdef HAS_CHEMICAL
    parts.screens[chemicals] = make<frmChemical>;
#endif
#ifdef HAS_LOG
    parts.screens[logs] = make<frmLog>;
#endif
#ifdef HAS_PATIENT
    parts.screens[patients] = make<frmPatient>;
#endif
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
    parts.previousInstance = [] {
        // Held to the end of the process.
        static InstanceLock lock(platform::programFolder() + QStringLiteral("\\sorvanto.lock"));
        return lock.heldByAnother();
    };
    parts.editOptions = frmOptions::edit;
    return parts;
}

}  // namespace sorvanto
