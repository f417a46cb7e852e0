// Whether each text on a window has the room that it needs.
#pragma once

#include <QStringList>

class QWidget;

namespace languages {

/// One line for each text that is cut off, and for each box that lies on another.
QStringList misfits(const QWidget& window);

}  // namespace languages
