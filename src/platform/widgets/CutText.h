// A value that is longer than its box: while the box is not being edited it shows the beginning and "…", and the
// whole as a tip.
#pragma once

class QHelpEvent;
class QLineEdit;
class QPaintEvent;

namespace platform {

/// Whether the text has no room in its box.
bool isCut(const QLineEdit& box);
/// Paints the box with its text cut. False when there is nothing to cut, or the box is being edited: the box then
/// paints itself.
bool paintCut(QLineEdit& box);
/// Shows the whole text at the mouse. False where nothing is cut, or the box has a tip of its own.
bool tellCut(QLineEdit& box, const QHelpEvent& event);

}  // namespace platform
