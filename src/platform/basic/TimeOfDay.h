// Times of day within a sentence, in the system's customs: "2:05 PM" in US English, which also serves C and POSIX,
// "14:05" in German. Digits are 0 to 9 in every language, blanks are U+0020.
#pragma once

#include <QString>
#include <QTime>

namespace platform {

/// Hours and minutes.
QString timeOfDay(QTime time);

}  // namespace platform
