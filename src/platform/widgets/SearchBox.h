// The pictures in a box that is searched or filtered by: a magnifier before the text, a cross behind it. Each is a button
// with a name, told to screen readers and shown as its tip.
#pragma once

class QAction;
class QLineEdit;

namespace platform {

/// A press on it takes the keys to the box. Named like the box; where that gets its name later, the action's text is to follow.
QAction* addMagnifier(QLineEdit& box);
/// A press on it empties the box as its user would, so that it can be undone. It is there while the box holds something.
void addClearButton(QLineEdit& box);

}  // namespace platform
