// Which window a question belongs to.
#pragma once

class QWidget;

namespace platform {

/// The window that the user is looking at: the modal one on top; else the one that is in use, or was last, while
/// another program is in front. nullptr where there is none, as before the first window. A window with the property
/// "ownsNoQuestion" is passed over: it may go at any moment.
QWidget* ownerWindow();

}  // namespace platform
