#include "platform/widgets/Caption.h"

#include "platform/widgets/Theme.h"

#include <QLabel>

namespace platform {

QLabel* captionFor(QWidget& control, const QString& text) {
    auto* caption = new QLabel(text, control.parentWidget());
    setLook(*caption, "quiet");
    caption->setBuddy(&control);
    (control.focusProxy() ? control.focusProxy() : &control)->setAccessibleName(text);
    return caption;
}

}  // namespace platform
