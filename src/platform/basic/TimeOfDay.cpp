// Times of day within a sentence.
#include "platform/basic/TimeOfDay.h"

#include "platform/basic/DateStyle.h"
#include "platform/basic/SystemLocale.h"

namespace platform {

QString timeOfDay(QTime time) { return DateStyle(systemLocale()).shortTimeText(time); }

}  // namespace platform
