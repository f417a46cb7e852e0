// Words for those who can't see the screen.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace platform {

/// What has come up without a key or a click of the user: screen readers say the name of that part, wherever the keys
/// are. To be called when the name stands.
void sayAloud(QWidget& part);

/// Hears the same, also on a platform without screen readers. An empty one: nobody.
using SpokenListener = std::function<void(const QString& said)>;
void setSpokenListener(SpokenListener listener);

/// The accessible name, where it is another one than now: screen readers are told each time that one is set.
void setSpokenName(QWidget& part, const QString& name);

}  // namespace platform
