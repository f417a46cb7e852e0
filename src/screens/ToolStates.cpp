#include "screens/ToolStates.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"
#include "shared/Context.h"
#include "shared/MainWindow.h"

#include <initializer_list>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

bool isOn(ToolRule rule, bool locked) {
    switch (rule) {
    case ToolRule::On:
        return true;
    case ToolRule::Locked:
        return locked;
    case ToolRule::Unlocked:
        return !locked;
    case ToolRule::Off:
        break;
    }
    return false;
}

void enable(platform::Band& band, std::initializer_list<const char*> names, bool on) {
    for (const char* name : names)
        band.tool(QLatin1String(name)).setEnabled(on);
}

// Each entry stands in the print menu and, with an "x" behind its name, in the export menu.
void enableEntry(platform::CommandBar& bar, const QString& name, bool on) {
    bar.band(u"mnuPrint"_s).tool(name).setEnabled(on);
    bar.band(u"mnuExport"_s).tool(name + u"x"_s).setEnabled(on);
}

}  // namespace

void setToolStates(const Context& context, const ScreenTools& tools, bool locked) {
    platform::CommandBar& bar = platform::deref(context.window).bar();
    platform::Band& main = bar.band(u"MainBar"_s);
    enable(main, {"cmdEdit"}, isOn(tools.edit, locked));
    enable(main, {"cmdNew"}, isOn(tools.add, locked));
    enable(main, {"cmdCancel", "cmdSave"}, isOn(tools.cancelAndSave, locked));
    enable(main, {"cmdCopy"}, isOn(tools.copy, locked));
    enable(main, {"cmdDelete"}, isOn(tools.remove, locked));
    enable(main, {"cmdFirst", "cmdPrevious", "cmdNext", "cmdLast"}, isOn(tools.moves, locked));
    enable(main, {"cmdSearch", "txtSearch"}, isOn(tools.search, locked));
    enable(main, {"cmdMake"}, isOn(tools.make, locked));
    enable(main, {"cmdPrint", "cmdExport"}, isOn(tools.printAndExport, locked));
    enable(main, {"cmdTrace"}, isOn(tools.trace, locked));
    enable(main, {"cmdNewLot"}, isOn(tools.newLot, locked));
    enable(main, {"cmdImport"}, isOn(tools.prices, locked));
    enableEntry(bar, u"mnuWorksheet"_s, tools.worksheet);
    enableEntry(bar, u"mnuFormulaLog"_s, tools.formulaLog);
    enableEntry(bar, u"mnuLabel"_s, tools.label);
    enableEntry(bar, u"mnuReport"_s, tools.report);
    enableEntry(bar, u"mnuJarReport"_s, tools.jarReport);
}

void setEmptyToolStates(const Context& context, bool canAdd) {
    ScreenTools none;
    none.add = canAdd ? ToolRule::On : ToolRule::Off;
    setToolStates(context, none, true);
}

}  // namespace sorvanto
