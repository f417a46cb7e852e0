// What a screen reader is told to say. On a platform without one nothing is told unless somebody listens.
#pragma once

#include <QAccessible>
#include <QStringList>

namespace support {

class Heard {
public:
    Heard() {
        all().clear();
        QAccessible::setActive(true);
        m_before = QAccessible::installUpdateHandler(&Heard::hear);
    }
    ~Heard() { QAccessible::installUpdateHandler(m_before); }
    Heard(const Heard&) = delete;
    Heard& operator=(const Heard&) = delete;

    /// The names of all parts that called for attention, in their order.
    static QStringList& all() {
        static QStringList names;
        return names;
    }

private:
    static void hear(QAccessibleEvent* event) {
        if (event->type() != QAccessible::Alert)
            return;
        QAccessibleInterface* part = event->accessibleInterface();
        all() << (part ? part->text(QAccessible::Name) : QString());
    }

    QAccessible::UpdateHandler m_before = nullptr;
};

}  // namespace support
