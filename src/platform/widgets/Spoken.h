// Words for those who can't see the screen.
#pragma once

class QWidget;

namespace platform {

/// What has come up without a key or a click of the user: screen readers say the name of that part, wherever the keys
/// are. To be called when the name stands.
void sayAloud(QWidget& part);

}  // namespace platform
