// What screen readers are told to say: the names that they read, in their order.
#pragma once

#include "platform/widgets/Spoken.h"

#include <QStringList>

namespace support {

class Heard {
public:
    Heard() {
        platform::setSpokenListener([this](const QString& said) { m_all << said; });
    }
    ~Heard() { platform::setSpokenListener({}); }
    Heard(const Heard&) = delete;
    Heard& operator=(const Heard&) = delete;

    const QStringList& all() const { return m_all; }

private:
    QStringList m_all;
};

}  // namespace support
