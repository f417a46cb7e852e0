// The caption beside a box in a window that is laid out in code.
#pragma once

class QLabel;
class QString;
class QWidget;

namespace platform {

/// A quiet label beside the control, and the control's name for screen readers.
QLabel* captionFor(QWidget& control, const QString& text);

}  // namespace platform
