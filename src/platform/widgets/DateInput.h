// Reads a date as a person types it; what may be meant otherwise is never guessed at.
#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// A date of the calendar, in UTC by convention; without time: midnight. Invalid for a count of days, a time
/// alone, and everything that is no date.
QDateTime readTypedDate(const QString& text, bool withTime);

/// What to say about a text that is no date.
QString typedDateProblem();

}  // namespace platform
