// Dates between number signs: month first, with an optional time of 12 or 24 hours.
#include "platform/data/DateLiteral.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"

#include <QRegularExpression>

namespace platform {

namespace {

int fullYear(const QString& digits) {
    const int year = digits.toInt();
    if (digits.size() > 2)
        return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

QDate monthFirst(const QRegularExpressionMatch& match) {
    int month = match.captured(QStringLiteral("first")).toInt();
    int day = match.captured(QStringLiteral("second")).toInt();
    if (month > 12)
        std::swap(month, day);
    return QDate(fullYear(match.captured(QStringLiteral("year"))), month, day);
}

QTime timeOfDay(const QRegularExpressionMatch& match) {
    int hour = match.captured(QStringLiteral("hour")).toInt();
    const QString half = match.captured(QStringLiteral("half")).toUpper();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > 12)
            return {};
        hour = hour % 12 + (half == QLatin1String("PM") ? 12 : 0);
    }
    return QTime(hour, match.captured(QStringLiteral("minute")).toInt(),
                 match.captured(QStringLiteral("seconds")).toInt());
}

}  // namespace

QDateTime dateLiteral(const QString& text) {
    static const QRegularExpression pattern(QStringLiteral(
        "^\\s*(?:(?<first>\\d{1,2})[-/](?<second>\\d{1,2})[-/](?<year>\\d{4}|\\d{2}))?"
        "\\s*(?:(?<hour>\\d{1,2}):(?<minute>\\d{2})(?::(?<seconds>\\d{2}))?\\s*(?<half>[AaPp][Mm])?)?\\s*$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const bool hasDate = !match.captured(QStringLiteral("year")).isEmpty();
    const bool hasTime = !match.captured(QStringLiteral("hour")).isEmpty();
    if (match.hasMatch() && (hasDate || hasTime)) {
        const QDate date = hasDate ? monthFirst(match) : zeroDate().date();
        const QTime time = hasTime ? timeOfDay(match) : QTime(0, 0);
        if (date.isValid() && time.isValid())
            return QDateTime(date, time, Qt::UTC);
    } else {
        try {
            return toDate(text);
        } catch (const RuntimeError&) {
            // told below, with the number of a faulty statement
        }
    }
    throw RuntimeError(error::statement, QStringLiteral("No date: #%1#").arg(text));
}

}  // namespace platform
