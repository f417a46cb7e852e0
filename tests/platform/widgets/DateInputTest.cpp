// What people type as a date in several systems, and what is made of it.
#include "platform/widgets/DateInput.h"

#include "FixedClock.h"
#include "platform/basic/Dates.h"
#include "platform/basic/SystemLocale.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

struct DateCase {
    const char* locale;
    const char* typed;
    const char* date;  ///< empty: refused
};

class DateInput : public ::testing::Test {
protected:
    DateInput() { clock.set(QDateTime(QDate(2026, 11, 22), QTime(10, 0), Qt::UTC)); }
    ~DateInput() override { setSystemLocale(std::nullopt); }
    static void expect(const DateCase& c, DateRange range = DateRange::Any) {
        setSystemLocale(QLocale(c.locale));
        const TypedDate read = readTypedDate(QString::fromUtf8(c.typed), false, range);
        EXPECT_EQ(read.value.toString("yyyy-MM-dd").toStdString(), c.date) << c.locale << " " << c.typed;
        EXPECT_EQ(read.problem.isEmpty(), *c.date != 0) << c.locale << " " << c.typed;
    }
    support::FixedClock clock;
};

TEST_F(DateInput, TheOrderIsTheSystemsWithAnyMark) {
    for (const DateCase& c :
         {DateCase{"de_DE", "3.7.2026", "2026-07-03"}, DateCase{"de_DE", "3/7/2026", "2026-07-03"},
          DateCase{"de_DE", "03-07-26", "2026-07-03"}, DateCase{"fr_FR", "03-07-2026", "2026-07-03"},
          DateCase{"fr_FR", "03.07.2026", "2026-07-03"}, DateCase{"fr_FR", "3/7/26", "2026-07-03"},
          DateCase{"en_US", "3/7/2026", "2026-03-07"}, DateCase{"en_US", "3.7.2026", "2026-03-07"},
          DateCase{"en_US", "03-07-26", "2026-03-07"}, DateCase{"fr_CH", "03.07.26", "2026-07-03"},
          DateCase{"da_DK", "03.07.26", "2026-07-03"}, DateCase{"ru_RU", "03.07.26", "2026-07-03"},
          DateCase{"sv_SE", "2026-07-03", "2026-07-03"}, DateCase{"sv_SE", "26-07-03", "2026-07-03"}})
        expect(c);
}

TEST_F(DateInput, YearMonthAndDayAreAlwaysRead) {
    for (const char* locale :
         {"de_DE", "fr_FR", "fr_CH", "it_IT", "es_ES", "pt_PT", "pt_BR", "ru_RU", "en_US", "da_DK"})
        expect({locale, "2026-03-07", "2026-03-07"});
}

TEST_F(DateInput, WhatFitsAnotherOrderOnlyIsRefused) {
    for (const DateCase& c :
         {DateCase{"de_DE", "3/27/2026", ""}, DateCase{"en_US", "27.3.2026", ""},
          DateCase{"fr_FR", "03-27-2026", ""}, DateCase{"de_DE", "31.2.2026", ""},
          DateCase{"de_DE", "3.7-2026", ""}, DateCase{"de_DE", "3 7 2026", ""},
          DateCase{"de_DE", "3:7:2026", ""}, DateCase{"de_DE", "3.7.202", ""}, DateCase{"de_DE", "3.7.6", ""},
          DateCase{"de_DE", "2026-27-03", ""}, DateCase{"de_DE", "14:05:09", ""},
          DateCase{"da_DK", "14.05", ""}, DateCase{"de_DE", "46000", ""}, DateCase{"de_DE", "2026-7", ""},
          DateCase{"en_US", "3.7.2026\n3.8.2026", ""}})
        expect(c);
}

TEST_F(DateInput, YearsAreSensible) {
    for (const DateCase& c :
         {DateCase{"de_DE", "3.7.2999", ""}, DateCase{"de_DE", "3.7.2076", "2076-07-03"},
          DateCase{"de_DE", "3.7.2077", ""}, DateCase{"de_DE", "3.7.1849", ""},
          DateCase{"de_DE", "3.7.29", "2029-07-03"}, DateCase{"de_DE", "3.7.30", "1930-07-03"}})
        expect(c);
    setSystemLocale(QLocale("de_DE"));
    EXPECT_EQ(readTypedDate("3.7.2999", false).problem, "Please check the year 2999.");
}

TEST_F(DateInput, BirthDatesLieInThePast) {
    for (const DateCase& c :
         {DateCase{"en_US", "1/2/29", "1929-01-02"}, DateCase{"en_US", "1/2/27", "1927-01-02"},
          DateCase{"en_US", "1/2/26", "2026-01-02"}, DateCase{"en_US", "11/22/26", "2026-11-22"},
          DateCase{"en_US", "11/23/26", "1926-11-23"}, DateCase{"en_US", "11/23/2026", ""},
          DateCase{"en_US", "1/2/2999", ""}, DateCase{"de_DE", "2.1.1899", "1899-01-02"}})
        expect(c, DateRange::Past);
    setSystemLocale(QLocale::c());
    EXPECT_EQ(readTypedDate("11/23/2026", false, DateRange::Past).problem, "A birth date lies in the past.");
}

TEST_F(DateInput, ATimeMayFollow) {
    setSystemLocale(QLocale("da_DK"));
    EXPECT_EQ(storedDate(readTypedDate("03.07.2026 14.05.09", true).value), "2026-07-03 14:05:09");
    EXPECT_EQ(storedDate(readTypedDate("03.07.2026 14.05.09", false).value), "2026-07-03 00:00:00");
    setSystemLocale(QLocale("fr_CH"));
    EXPECT_EQ(storedDate(readTypedDate("03.07.2026 14:05:09", true).value), "2026-07-03 14:05:09");
}

TEST_F(DateInput, OwnDefaultTextsAreReadAgain) {
    const QDateTime date(QDate(2026, 7, 3), QTime(14, 5, 9), Qt::UTC);
    for (const char* locale : {"de_DE", "fr_FR", "fr_CH", "it_IT", "es_ES", "pt_PT", "pt_BR", "ru_RU",
                               "en_US", "da_DK", "sv_SE", "ja_JP", "hu_HU", "ko_KR"}) {
        setSystemLocale(QLocale(locale));
        EXPECT_EQ(readTypedDate(dateText(date), true).value, date)
            << locale << " " << qPrintable(dateText(date));
        EXPECT_EQ(toDate(dateText(date)), date) << locale;
    }
}

}  // namespace
