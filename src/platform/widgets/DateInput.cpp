// The reading is that of the system's dates; here is what a field makes of it.
#include "platform/widgets/DateInput.h"

#include "platform/basic/Dates.h"
#include "platform/widgets/Texts.h"

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int firstYear = 1850;
constexpr int yearsAhead = 50;
constexpr int pivotOfAny = 1930;

/// A year of two digits is the last one that lies in the past.
QDateTime pastDate(const QString& text) {
    const int year = today().date().year();
    const QDateTime date = typedDate(text, year - 99);
    return date.isValid() && date.date() > today().date() ? typedDate(text, year - 100) : date;
}

QString example() { return dateText(QDateTime(QDate(1965, 3, 27), QTime(0, 0), Qt::UTC)); }

}  // namespace

TypedDate readTypedDate(const QString& text, bool withTime, DateRange range) {
    const bool past = range == DateRange::Past;
    QDateTime date = past ? pastDate(text) : typedDate(text, pivotOfAny);
    if (!date.isValid())
        return {{}, widgetText(u"Please type a date, such as %1."_s).arg(example())};
    const int year = date.date().year();
    if (past && date.date() > today().date())
        return {{}, widgetText(u"A birth date lies in the past."_s)};
    if (year < firstYear || year > today().date().year() + yearsAhead)
        return {{}, widgetText(u"Please check the year %1."_s).arg(year)};
    if (!withTime)
        date.setTime(QTime(0, 0));
    return {date, {}};
}

}  // namespace platform
