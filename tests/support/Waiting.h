// Waiting for what has to come. A test goes on at once when it does; how long the patience is counts on a busy machine
// alone, and where it never comes.
#pragma once

#include <QTest>

namespace support {

inline constexpr int patience = 60'000;  // milliseconds

/// Lets events happen until the condition holds. False when it never did.
template <class Condition>
[[nodiscard]] bool waitFor(Condition condition) {
    return QTest::qWaitFor(condition, patience);
}

/// The same until the widget's window has the keys, or stands on the screen.
[[nodiscard]] inline bool becomesActive(QWidget* widget) {
    return QTest::qWaitForWindowActive(widget, patience);
}
[[nodiscard]] inline bool becomesExposed(QWidget* widget) {
    return QTest::qWaitForWindowExposed(widget, patience);
}

}  // namespace support
