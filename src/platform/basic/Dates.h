// Dates and times of day without a zone: what the user's clock on the wall says.
// By convention every QDateTime of the program has the time spec UTC, so that no hour is ever
// skipped or repeated by daylight saving. Resolution is one second.
#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace platform {

/// 30 December 1899, midnight: the date that stands for none.
QDateTime zeroDate();

/// Days since the zero date, the time as fraction; and back.
double toSerial(const QDateTime& date);
QDateTime fromSerial(double days);

/// Default text: the system's short date with a four-digit year and long time ("3/7/2026 2:05:09 PM" in
/// US English, which also serves C and POSIX). Date alone at midnight; time alone on the zero date
/// (and the zero date itself reads as the time "12:00:00 AM"). Digits are 0 to 9 in every language, months
/// are numbers, blanks are U+0020. Throws typeMismatch for an invalid date.
QString dateText(const QDateTime& date);

/// A text back to a date: default text, the stored form, "MM-DD-YYYY", a time alone and a plain number
/// (days). A date with the system's own separator is read in the system's order where that gives a date,
/// any other one month first; a year of three digits or more in front makes it year, month, day. Years of
/// two digits: 00 to 29 are 20xx, 30 to 99 19xx. Throws typeMismatch on anything else, the empty text
/// included, and overflow for a number of days outside the years 100 to 9999.
QDateTime toDate(const QString& text);

/// A date as a person types it, by DateStyle::readTyped in the system's customs; invalid when it is none.
QDateTime typedDate(const QString& text, int pivot);

/// The digit 0 (as text) joined in front of the value, then read as a date; NULL gives the zero date.
QDateTime nullDate(const QVariant& value);

/// "YYYY-MM-DD HH:MM:SS", the form in the database file, and back (invalid date when it is not that).
QString storedDate(const QDateTime& date);
QDateTime fromStoredDate(const QString& text);
QDateTime fromStoredDate(QLatin1StringView text);

/// Where "now" comes from; tests put a fixed clock in its place.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const;
};
/// Replaces the clock; nullptr restores the system's. Not owned.
void setClock(const Clock* clock);
/// The wall clock, cut to the second.
QDateTime now();
/// Today at midnight.
QDateTime today();

}  // namespace platform
