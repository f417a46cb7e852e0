#include "platform/widgets/Spoken.h"

#include <QAccessible>
#include <QWidget>
#include <utility>

namespace platform {

namespace {

SpokenListener& listenerNow() {
    static SpokenListener listener;
    return listener;
}

}  // namespace

void sayAloud(QWidget& part) {
    QAccessibleEvent event(&part, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    if (!listenerNow())
        return;
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&part);
    listenerNow()(spoken ? spoken->text(QAccessible::Name) : QString());
}

void setSpokenListener(SpokenListener listener) { listenerNow() = std::move(listener); }

}  // namespace platform
