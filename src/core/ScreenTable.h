// The five record screens as the main window knows them: number, places in the command bar, buttons, name.
#pragma once

#include <QString>
#include <array>
#include <cstdint>

namespace sorvanto {

enum ScreenNumber : std::int32_t { currentFormula = 0, formulas = 1, chemicals = 2, patients = 3, logs = 4 };
inline constexpr int screenCount = 5;

struct ScreenRow {
    ScreenNumber number;
    const char* childBand;  ///< of the band "Forms", its first place
    const char* band;       ///< where it is shown
    const char* text;       ///< English name
    const char* button;
    const char* menuEntry;
    const char* caption[2];  ///< controls whose texts stand in the window's caption, if any
};

/// In the order in which the screens are created.
inline constexpr std::array<ScreenRow, screenCount> screenTable{{
    {currentFormula, "Current", "CurrentFormula", "Current Formula", "cmdCurrent", "mnuCurrentFormula", {}},
    {formulas, "Formulas", "Formulas", "Formulas", "cmdFormulas", "mnuFormulas", {}},
    {chemicals, "Chemicals", "Chemicals", "Chemicals", "cmdChemicals", "mnuChemicals", {"txtchm_Name"}},
    {logs, "Logs", "Logs", "Logs", "cmdLogs", "mnuLogs", {"txtlog_Name"}},
    {patients,
     "Patients",
     "Patients",
     "Patients",
     "cmdPatients",
     "mnuPatients",
     {"txtpat_LName", "txtpat_FName"}},
}};

/// The screen that a button or menu entry switches to, or nullptr.
inline const ScreenRow* screenOfTool(const QString& toolName) {
    for (const ScreenRow& row : screenTable) {
        if (toolName == QLatin1String(row.button) || toolName == QLatin1String(row.menuEntry))
            return &row;
    }
    return nullptr;
}

}  // namespace sorvanto
