// One start of a program, watched from outside: a strip of the screen is looked at every millisecond until
// it has rested; the start is over with the first picture that is the one it rests at.
#pragma once

#include <QString>

namespace bench {

struct Start {
    double wall = 0;       ///< milliseconds from the fork to the picture
    double processor = 0;  ///< milliseconds of all threads up to then
    double peak = 0;       ///< most resident memory up to the rest, in MB
    double own = 0;        ///< resident at rest without the pages of files, in MB
    double resident = 0;   ///< resident at rest, in MB
};

/// Starts the program, measures and ends it. Throws std::runtime_error when nothing is shown.
/// rest: how long the picture must stay as it is, in milliseconds.
Start watchStart(const QString& program, int rest = 500);

}  // namespace bench
