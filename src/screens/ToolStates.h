// The states of the record tools as each screen wants them.
#pragma once

namespace sorvanto {

struct Context;

/// On while the form is locked, while it is unlocked, always or never.
enum class ToolRule { Off, On, Locked, Unlocked };

/// One screen's column of the table of tool states.
struct ScreenTools {
    ToolRule edit = ToolRule::Off;
    ToolRule add = ToolRule::Off;
    ToolRule cancelAndSave = ToolRule::Off;
    ToolRule copy = ToolRule::Off;
    ToolRule remove = ToolRule::Off;
    ToolRule moves = ToolRule::Off;
    ToolRule search = ToolRule::Off;
    ToolRule make = ToolRule::Off;
    ToolRule printAndExport = ToolRule::Off;
    ToolRule trace = ToolRule::Off;
    ToolRule newLot = ToolRule::Off;
    ToolRule prices = ToolRule::Off;
    // Entries of the print and export menus; not tied to the lock.
    bool worksheet = false;
    bool formulaLog = false;
    bool label = false;
    bool report = false;
    bool jarReport = false;
};

/// Sets the tools of the bands "MainBar", "mnuPrint" and "mnuExport" on the main window's bar.
void setToolStates(const Context& context, const ScreenTools& tools, bool locked);

/// The state without records: all off but "cmdNew", and that too where rows are not made on the screen.
void setEmptyToolStates(const Context& context, bool canAdd);

}  // namespace sorvanto
