// A clock that stands still until told otherwise: Saturday 7 March 2026, 2:05:09 PM.
#pragma once

#include "platform/basic/Dates.h"

#include <QDateTime>

namespace support {

class FixedClock : public platform::Clock {
public:
    FixedClock() { platform::setClock(this); }
    ~FixedClock() override { platform::setClock(nullptr); }
    FixedClock(const FixedClock&) = delete;
    FixedClock& operator=(const FixedClock&) = delete;

    QDateTime now() const override { return m_now; }
    void set(const QDateTime& now) { m_now = now; }
    void advance(int seconds) { m_now = m_now.addSecs(seconds); }

private:
    QDateTime m_now{QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC};
};

}  // namespace support
