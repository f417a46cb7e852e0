// A box of one line takes no line breaks: where a pasted or dropped text has some, blanks take their place.
#pragma once

#include <QString>

class QLineEdit;

namespace platform {

/// Each line break (of any system) and each tab as one blank; none at the ends of what had some there.
QString onOneLine(const QString& text);

/// From now on the box pastes and takes dropped texts on one line, by keys, menu and mouse. What is taken can be
/// undone as ever.
void keepOneLine(QLineEdit& box);

}  // namespace platform
