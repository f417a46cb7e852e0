#include "platform/widgets/Spoken.h"

#include <QAccessible>
#include <QWidget>

namespace platform {

void sayAloud(QWidget& part) {
    QAccessibleEvent event(&part, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

}  // namespace platform
