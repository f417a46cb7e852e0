// Where the focus goes when its widget has been switched off or hidden.
#pragma once

class QWidget;

namespace platform {

/// Whether the widget of the window that has the focus can no longer have it. Asked inside focusNextPrevChild, tells
/// such a loss from the Tab key.
bool hasLostFocus(const QWidget& window);
/// Gives the focus to what lies around the widget that lost it, else to the next one in the order of the Tab key, but
/// never to a button: the next key, meant for something else, would press it. False when there is none.
bool passFocusOn(QWidget& window);
/// Gives the focus to the first in the area that takes the Tab key, never to a button. False when there is none.
bool giveFocusInto(QWidget& area);

}  // namespace platform
