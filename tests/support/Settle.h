// Letting the event loop come to rest, before a look at a layout or at what must not have happened.
#pragma once

#include <QCoreApplication>
#include <QEvent>

namespace support {

/// Some turns of the loop without a pause between them: what was posted and every timer without a delay has
/// had its turn, and what those have posted again.
inline void settle() {
    constexpr int turns = 10;
    for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

}  // namespace support
