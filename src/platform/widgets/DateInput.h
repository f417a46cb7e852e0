// Reads a date as a person types it; what may be meant otherwise is never guessed at.
#pragma once

#include <QDateTime>
#include <QString>

namespace platform {

/// Which dates a field can hold.
enum class DateRange {
    Any,   ///< from a good hundred years ago to half a century ahead
    Past,  ///< a birth date: not after today
};

struct TypedDate {
    QDateTime value{};  ///< UTC by convention; valid when there is no problem
    QString problem{};  ///< why the text can't be taken
};

/// A date of the calendar in the system's order with any of "." "-" "/", or year, month and day; without time:
/// midnight. Years of two digits: 00 to 29 are 20xx, 30 to 99 19xx; in the past the last such year.
TypedDate readTypedDate(const QString& text, bool withTime, DateRange range = DateRange::Any);

}  // namespace platform
