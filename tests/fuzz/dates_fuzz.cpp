// Feeds any text to the reading of dates, the first byte choosing the customs of a country. A text is a date
// with all of its numbers or is refused; each date read is written and read again as itself, in every form.
#include "Fuzz.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/Values.h"

#include <QLocale>
#include <QSet>
#include <array>
#include <cmath>
#include <cstring>

using namespace Qt::StringLiterals;

using fuzz::require;
using namespace platform;

namespace {

const std::array<QLocale, 14>& locales() {
    static const std::array<QLocale, 14> all{QLocale(u"en_US"_s), QLocale(u"en_GB"_s), QLocale(u"de_DE"_s),
                                             QLocale(u"de_CH"_s), QLocale(u"fr_FR"_s), QLocale(u"es_ES"_s),
                                             QLocale(u"ru_RU"_s), QLocale(u"pt_BR"_s), QLocale(u"it_IT"_s),
                                             QLocale(u"hu_HU"_s), QLocale(u"ko_KR"_s), QLocale(u"ar_EG"_s),
                                             QLocale(u"fi_FI"_s), QLocale(u"lt_LT"_s)};
    return all;
}

bool isNumber(const QString& text) {
    return fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { toDouble(text); });
}

/// No number of the text is left out or made up: each is the year, month, day, hour, minute or second.
bool usesAllNumbers(const QString& text, const QDateTime& date) {
    const QTime time = date.time();
    const QSet<int> parts{
        date.date().year(), date.date().year() % 100,    date.date().month(), date.date().day(),
        time.hour(),        (time.hour() + 11) % 12 + 1, time.hour() % 12,    time.minute(),
        time.second()};
    QString digits;
    for (const QChar mark : text + u' ') {
        if (mark >= u'0' && mark <= u'9')
            digits += mark;
        else if (!digits.isEmpty()) {
            if (!parts.contains(digits.toInt()))
                return false;
            digits.clear();
        }
    }
    return true;
}

void checkDate(const QDateTime& date) {
    require(date.isValid() && date.timeSpec() == Qt::UTC, "a date is valid and without a zone");
    require(date.date().year() >= 100 && date.date().year() <= 9999, "a year is between 100 and 9999");
    QDateTime again;
    require(fuzz::succeeds({}, [&] { again = toDate(dateText(date)); }) && again == date,
            "a written date reads back");
    require(fromStoredDate(storedDate(date)) == date, "a stored date reads back");
    require(fromSerial(toSerial(date)) == date, "a date as days is the same date");
    require(nullDate(QVariant(date)) == date, "a date as a value is the same date");
    require(formatDate(date, u"MM-DD-YYYY"_s) == date.date().toString(u"MM-dd-yyyy"), "the picture shows it");
}

void tryText(const QString& text) {
    QDateTime date;
    const bool read = fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { date = toDate(text); });
    if (read) {
        checkDate(date);
        require(isNumber(text) || usesAllNumbers(text, date),
                "each number of the text is a part of the date");
    }
    const QDateTime stored = fromStoredDate(text);
    require(!stored.isValid() || storedDate(stored) == text, "a stored date is written as it was");
    fuzz::succeeds({error::typeMismatch, error::overflow}, [&] { nullDate(QVariant(text)); });
    formatDate(QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC), text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    setSystemLocale(locales()[data[0] % locales().size()]);
    tryText(QString::fromUtf8(fuzz::bytes(data + 1, size - 1)));
    double days = 0;
    if (size > sizeof days) {
        std::memcpy(&days, data + 1, sizeof days);
        QDateTime date;
        if (fuzz::succeeds({error::overflow}, [&] { date = fromSerial(days); })) {
            checkDate(date);
            require(std::abs(toSerial(date) - days) <= 0.5001 / 86400, "days give the nearest second");
        }
    }
    return 0;
}
