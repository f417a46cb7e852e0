// Dates between number signs: month first, with an optional time of 12 or 24 hours.
#include "platform/data/DateLiteral.h"

#include "platform/basic/DateStyle.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

QDate monthFirst(const QRegularExpressionMatch& match) {
    int month = match.captured(u"first"_s).toInt();
    int day = match.captured(u"second"_s).toInt();
    if (month > 12)
        std::swap(month, day);
    const QString year = match.captured(u"year"_s);
    return QDate(fullYear(year.toInt(), static_cast<int>(year.size())), month, day);
}

QTime timeOfDay(const QRegularExpressionMatch& match) {
    int hour = match.captured(u"hour"_s).toInt();
    const QString half = match.captured(u"half"_s).toUpper();
    if (!half.isEmpty()) {
        if (hour < 1 || hour > 12)
            return {};
        hour = hour % 12 + (half == "PM"_L1 ? 12 : 0);
    }
    return QTime(hour, match.captured(u"minute"_s).toInt(), match.captured(u"seconds"_s).toInt());
}

}  // namespace

QDateTime dateLiteral(const QString& text) {
    static const QRegularExpression pattern(
        u"^\\s*(?:(?<first>\\d{1,2})[-/](?<second>\\d{1,2})[-/](?<year>\\d{4}|\\d{2}))?"
        u"\\s*(?:(?<hour>\\d{1,2}):(?<minute>\\d{2})(?::(?<seconds>\\d{2}))?\\s*(?<half>[AaPp][Mm])?)?\\s*$"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    const bool hasDate = !match.captured(u"year"_s).isEmpty();
    const bool hasTime = !match.captured(u"hour"_s).isEmpty();
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
    throw RuntimeError(error::statement, u"No date: #%1#"_s.arg(text));
}

}  // namespace platform
