// The letter that presses a button together with Alt, for buttons whose captions come without one.
#pragma once

#include <QString>

class QWidget;

namespace platform {

/// The caption with "&" before its first letter that is not taken yet, which is taken then; as it is where there is none.
QString withAccessKey(const QString& caption, QString& taken);

/// Each button that lies on the window itself gets a key that no other of them has. Keys that are there stay: to be called
/// again when a caption has changed.
void giveAccessKeys(const QWidget& window);

}  // namespace platform
