// The end of a tour at the first thing that isn't as it should be: one sentence, and exit code 1.
#pragma once

#include <QString>
#include <functional>

namespace tour {

/// Says the sentence and ends the process at once, also from inside nested dialogs.
[[noreturn]] void stopTour(const QString& sentence);

/// Run once before the process ends, for a last picture.
void beforeStop(std::function<void()> last);

/// Stops with the sentence unless it holds.
inline void require(bool holds, const QString& sentence) {
    if (!holds)
        stopTour(sentence);
}

/// Stops unless both are the same, naming both.
void requireSame(const QString& what, const QString& found, const QString& expected);

}  // namespace tour
