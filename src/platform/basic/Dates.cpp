// Dates and times of day without a zone: serial numbers, default texts, the stored form, the clock.
#include "platform/basic/Dates.h"

#include "platform/basic/DateStyle.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

constexpr double secondsADay = 86400;

/// Dates go from the year 100 to the year 9999, as the stored ones do.
bool inRange(const QDateTime& date) {
    return date.isValid() && date.date().year() >= 100 && date.date().year() <= 9999;
}

const Clock*& chosenClock() {
    static const Clock* clock = nullptr;
    return clock;
}

bool isNumber(const QString& text) {
    try {
        toDouble(text);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

/// One style is kept: building it from the locale's patterns costs more than a text does.
const DateStyle& currentStyle() {
    static QLocale locale = systemLocale();
    static DateStyle style(locale);
    if (locale != systemLocale()) {
        locale = systemLocale();
        style = DateStyle(locale);
    }
    return style;
}

/// Read by hand: parsing by picture would go through the local time zone, in which some hours don't exist.
template <class Text>
QDateTime readStored(Text text) {
    constexpr QStringView pattern = u"0000-00-00 00:00:00";
    if (text.size() != pattern.size())
        return {};
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (pattern[i] == u'0' ? c < u'0' || c > u'9' : c != pattern[i])
            return {};
    }
    const auto number = [text](qsizetype start, qsizetype length) {
        int sum = 0;
        for (qsizetype i = start; i < start + length; ++i)
            sum = sum * 10 + (text[i].unicode() - u'0');
        return sum;
    };
    const QDate date(number(0, 4), number(5, 2), number(8, 2));
    const QTime time(number(11, 2), number(14, 2), number(17, 2));
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

}  // namespace

QDateTime zeroDate() { return QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC); }

double toSerial(const QDateTime& date) {
    static const QDate zero = zeroDate().date();
    if (!date.isValid())
        throwTypeMismatch();
    const double days = static_cast<double>(zero.daysTo(date.date()));
    return days + QTime(0, 0).secsTo(date.time()) / secondsADay;
}

QDateTime fromSerial(double days) {
    constexpr double farthest = 3000000;  // beyond the year 9999
    if (!(std::abs(days) < farthest))
        throw RuntimeError(error::overflow, u"Overflow"_s);
    const QDateTime date = zeroDate().addSecs(std::llround(days * secondsADay));
    if (!inRange(date))
        throw RuntimeError(error::overflow, u"Overflow"_s);
    return date;
}

QString dateText(const QDateTime& date) {
    if (!date.isValid())
        throwTypeMismatch();
    static const QDate zero = zeroDate().date();
    const DateStyle& style = currentStyle();
    const QDate day = date.date();
    const QTime exact = date.time();
    const QTime time(exact.hour(), exact.minute(), exact.second());
    if (day == zero)
        return style.timeText(time);
    if (time == QTime(0, 0))
        return style.dateText(day);
    return style.dateText(day) + u' ' + style.timeText(time);
}

QDateTime toDate(const QString& text) {
    const QString plain = trimmed(text);
    if (isNumber(plain))
        return fromSerial(toDouble(plain));
    const auto date = currentStyle().read(plain);
    if (!date || !inRange(*date))
        throwTypeMismatch();
    return *date;
}

QDateTime typedDate(const QString& text, int pivot) {
    return currentStyle().readTyped(trimmed(text), pivot).value_or(QDateTime());
}

QDateTime nullDate(const QVariant& value) {
    // A date with the digit in front always reads as itself, in whatever way the locale writes it.
    if (value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid()) {
        const QDateTime date = value.toDateTime();
        return QDateTime(date.date(), QTime(date.time().hour(), date.time().minute(), date.time().second()),
                         Qt::UTC);
    }
    return toDate(zeroText(value));
}

QString storedDate(const QDateTime& date) { return date.toString(u"yyyy-MM-dd HH:mm:ss"); }

QDateTime fromStoredDate(const QString& text) { return readStored(QStringView(text)); }

QDateTime fromStoredDate(QLatin1StringView text) { return readStored(text); }

QDateTime Clock::now() const {
    const QDateTime local = QDateTime::currentDateTime();
    const QTime time(local.time().hour(), local.time().minute(), local.time().second());
    return QDateTime(local.date(), time, Qt::UTC);
}

void setClock(const Clock* clock) { chosenClock() = clock; }

QDateTime now() {
    static const Clock system;
    return chosenClock() ? chosenClock()->now() : system.now();
}

QDateTime today() { return QDateTime(now().date(), QTime(0, 0), Qt::UTC); }

}  // namespace platform
