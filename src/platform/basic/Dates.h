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
/// (and the zero date itself reads as the time "12:00:00 AM").
QString dateText(const QDateTime& date);

/// A text back to a date: default text, the stored form, "MM-DD-YYYY" and a plain number (days).
/// Throws typeMismatch on anything else, the empty text included.
QDateTime toDate(const QString& text);

/// The digit 0 (as text) joined in front of the value, then read as a date; NULL gives the zero date.
QDateTime nullDate(const QVariant& value);

/// "YYYY-MM-DD HH:MM:SS", the form in the database file, and back (invalid date when it is not that).
QString storedDate(const QDateTime& date);
QDateTime fromStoredDate(const QString& text);

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
