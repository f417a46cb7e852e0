#include "platform/widgets/Spoken.h"

#include <QAccessibleWidget>
#include <QWidget>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

SpokenListener& listenerNow() {
    static SpokenListener listener;
    return listener;
}

/// An alert of a part does not get as far as the screen readers of every desktop; a notification that comes up does. It has
/// no size, and is the same for all that a window says.
class Notification : public QWidget {
public:
    explicit Notification(QWidget& window) : QWidget(&window) {
        setFocusPolicy(Qt::NoFocus);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(0, 0);
        hide();
    }
    static Notification& of(QWidget& window) {
        for (QObject* child : window.children()) {
            if (auto* known = dynamic_cast<Notification*>(child))
                return *known;
        }
        return *new Notification(window);
    }
    static QAccessibleInterface* interfaceOf(const QString& kind, QObject* object) {
        auto* made = kind == "QWidget"_L1 ? dynamic_cast<Notification*>(object) : nullptr;
        return made ? new QAccessibleWidget(made, QAccessible::Notification) : nullptr;
    }
};

void notify(QWidget& window, const QString& said) {
    if (!QAccessible::isActive())
        return;
    static std::once_flag made;
    std::call_once(made, [] { QAccessible::installFactory(&Notification::interfaceOf); });
    Notification& part = Notification::of(window);
    part.hide();
    part.setAccessibleName(said);
    part.show();  // coming up is what is heard
}

}  // namespace

void sayAloud(QWidget& part) {
    QAccessibleEvent event(&part, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&part);
    const QString said = spoken ? spoken->text(QAccessible::Name) : QString();
    notify(*part.window(), said);
    if (listenerNow())
        listenerNow()(said);
}

void setSpokenName(QWidget& part, const QString& name) {
    if (part.accessibleName() != name)
        part.setAccessibleName(name);
}

void setSpokenListener(SpokenListener listener) { listenerNow() = std::move(listener); }

}  // namespace platform
