#include "platform/widgets/FocusLoss.h"

#include <QAbstractButton>
#include <QWidget>
#include <algorithm>

namespace platform {

namespace {

bool canTake(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget.isEnabled() &&
           widget.isVisible() && !widget.focusProxy() && !qobject_cast<const QAbstractButton*>(&widget);
}

}  // namespace

bool hasLostFocus(const QWidget& window) {
    const QWidget* owner = window.focusWidget();
    return owner && !(owner->isEnabled() && owner->isVisible());
}

bool passFocusOn(QWidget& window) {
    QWidget* const lost = window.focusWidget();
    for (QWidget* around = lost->parentWidget(); around && around != &window;
         around = around->parentWidget()) {
        if (canTake(*around)) {
            around->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    for (QWidget* next = lost->nextInFocusChain(); next != lost; next = next->nextInFocusChain()) {
        if (canTake(*next)) {
            next->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return false;
}

bool giveFocusInto(QWidget& area) {
    const QList<QWidget*> all = area.findChildren<QWidget*>();
    const auto first = std::find_if(all.begin(), all.end(), [](const QWidget* one) { return canTake(*one); });
    if (first == all.end())
        return false;
    (*first)->setFocus(Qt::OtherFocusReason);
    return true;
}

}  // namespace platform
