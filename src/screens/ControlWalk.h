// A form's controls are locked and emptied by what their names contain: "txt", "cbo", "grd", "upd", "cmd",
// tested anywhere in the name, with regard to case, in this order; the first hit wins.
#pragma once

#include <QString>

class QWidget;

namespace sorvanto {

/// Which of the name pieces beyond "txt" and "cbo" a screen locks.
struct LockRules {
    bool grids = false;
    bool upDowns = false;
    bool buttons = false;
};

/// Boxes and choices become read-only, grids refuse edits, up-downs and buttons are switched off;
/// unlocking is the opposite.
void lockControls(QWidget& form, LockRules rules, bool locked);

/// Empties every control whose name contains "txt"; a choice named after cbochm_Units or cbochm_Form
/// gets its prompt, untranslated.
void clearControls(QWidget& form);

/// Sets the text of a text, number, memo or date box; a date box is emptied by an empty text.
void setControlText(QWidget& control, const QString& text);

}  // namespace sorvanto
