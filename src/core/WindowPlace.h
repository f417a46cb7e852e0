// Size and place of the main window, remembered in window.ini beside the program.
#pragma once

class QWidget;

namespace sorvanto {

/// Puts the window where it was last, or in a first size that fits the screen.
void restoreWindowPlace(QWidget& window);
/// A folder that can't be written is no failure: the place is just not remembered.
void saveWindowPlace(const QWidget& window);

/// What else the window remembers of itself, in the same file and as quietly.
bool windowSetting(const char* key, bool unset);
void saveWindowSetting(const char* key, bool value);

}  // namespace sorvanto
