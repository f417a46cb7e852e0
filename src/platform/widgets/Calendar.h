// The look of a calendar, the same in a date box and in a date picker.
#pragma once

class QCalendarWidget;

namespace platform {

/// Names of days and months in the program's language, the week as the user's system begins it, weekends
/// like other days, arrows of our own.
void dressCalendar(QCalendarWidget& calendar);

}  // namespace platform
