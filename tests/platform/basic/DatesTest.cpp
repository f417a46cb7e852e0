// Dates and times: default text by the system's customs, reading back, serial numbers, stored form.
#include "platform/basic/Dates.h"

#include "Raises.h"
#include "platform/basic/SystemLocale.h"
#include "platform/basic/Values.h"

#include <QLocale>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

QDateTime moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

class Dates : public testing::Test {
protected:
    void SetUp() override { setSystemLocale(QLocale::c()); }
    void TearDown() override { setSystemLocale(std::nullopt); }
};

}  // namespace

TEST_F(Dates, DefaultText) {
    EXPECT_EQ(dateText(moment(2026, 3, 7, 14, 5, 9)), u"3/7/2026 2:05:09 PM"_s);
    EXPECT_EQ(dateText(moment(2026, 11, 21)), u"11/21/2026"_s);
    EXPECT_EQ(dateText(moment(1980, 3, 7)), u"3/7/1980"_s);
    EXPECT_EQ(dateText(moment(2026, 1, 31, 0, 0, 1)), u"1/31/2026 12:00:01 AM"_s);
    EXPECT_EQ(dateText(moment(2026, 1, 31, 12, 0, 0)), u"1/31/2026 12:00:00 PM"_s);
    EXPECT_EQ(dateText(moment(1899, 12, 30, 13, 30, 0)), u"1:30:00 PM"_s);
    EXPECT_EQ(dateText(zeroDate()), u"12:00:00 AM"_s);
    EXPECT_EQ(dateText(moment(2026, 3, 7).addMSecs(999)), u"3/7/2026"_s);
    EXPECT_RAISES(dateText(QDateTime()), error::typeMismatch);
}

TEST_F(Dates, ReadsWhatIsWrittenAndWhatIsStored) {
    struct Row {
        const char* text;
        QDateTime date;
    };
    const Row rows[] = {
        {"3/7/2026 2:05:09 PM", moment(2026, 3, 7, 14, 5, 9)},
        {"3/7/2026", moment(2026, 3, 7)},
        {"03/07/2026", moment(2026, 3, 7)},
        {" 3/7/2026 ", moment(2026, 3, 7)},
        {"11-21-2026", moment(2026, 11, 21)},
        {"03-07-26", moment(2026, 3, 7)},
        {"3/7/80", moment(1980, 3, 7)},
        {"3/7/29", moment(2029, 3, 7)},
        {"3/7/30", moment(1930, 3, 7)},
        {"2026-03-07 14:05:09", moment(2026, 3, 7, 14, 5, 9)},
        {"2026-03-07", moment(2026, 3, 7)},
        {"3/7/2026 14:05", moment(2026, 3, 7, 14, 5)},
        {"3/7/2026 2:05 pm", moment(2026, 3, 7, 14, 5)},
        {"12:00:00 AM", zeroDate()},
        {"13:30", moment(1899, 12, 30, 13, 30)},
        {"1:30:00 PM", moment(1899, 12, 30, 13, 30)},
        {"0", zeroDate()},
        {"46088", moment(2026, 3, 7)},
        {"46088.5", moment(2026, 3, 7, 12)},
        {"-1", moment(1899, 12, 29)},
        {"2/29/2024", moment(2024, 2, 29)},
    };
    for (const Row& row : rows)
        EXPECT_EQ(toDate(row.text), row.date) << row.text;
    EXPECT_EQ(toDate("3/7/2026").timeSpec(), Qt::UTC);
}

TEST_F(Dates, RefusesWhatIsNoDate) {
    for (const char* text : {"",
                             " ",
                             "abc",
                             "3/7",
                             "13/1/2026",
                             "2/29/2025",
                             "3/7/2026 25:00",
                             "14:60",
                             "3/7/2026 PM",
                             "3-7/2026",
                             "March 7, 2026",
                             "2026-13-01",
                             "1/2/3/4",
                             "14:05 PM",
                             "3/7/2026 1:2:3:4",
                             "1234567/1/1",
                             "-3/7/2026x",
                             "3/7/2026'",
                             "0/0/0",
                             "/3/7/2026",
                             "3/7/2026/",
                             "3/7/2026 2/05/09",
                             "3/7/2026-2:05",
                             "14:05:",
                             "3 7 2026"})
        EXPECT_RAISES(toDate(text), error::typeMismatch);
    EXPECT_RAISES(toDate("99999999"), error::overflow);
    EXPECT_RAISES(toDate("-800000"), error::overflow);
}

TEST_F(Dates, SerialNumbers) {
    EXPECT_EQ(toSerial(zeroDate()), 0);
    EXPECT_EQ(toSerial(moment(1900, 1, 1)), 2);
    EXPECT_EQ(toSerial(moment(2026, 3, 7, 12)), 46088.5);
    EXPECT_EQ(fromSerial(46088.25), moment(2026, 3, 7, 6));
    for (int i = 0; i < 86400; i += 7) {
        const QDateTime date = moment(2026, 11, 21).addSecs(i);
        ASSERT_EQ(fromSerial(toSerial(date)), date);
    }
    EXPECT_RAISES(toSerial(QDateTime()), error::typeMismatch);
    EXPECT_RAISES(fromSerial(1e9), error::overflow);
}

TEST_F(Dates, NullReadsAsTheZeroDateAndValuesAsThemselves) {
    EXPECT_EQ(nullDate(QVariant()), zeroDate());
    EXPECT_EQ(nullDate(QVariant(zeroDate())), zeroDate());
    EXPECT_EQ(nullDate(QVariant(moment(1980, 3, 7))), moment(1980, 3, 7));
    EXPECT_EQ(nullDate(QVariant("3/7/1980")), moment(1980, 3, 7));
    EXPECT_EQ(nullDate(QVariant("12/7/1980 2:05:09 PM")), moment(1980, 12, 7, 14, 5, 9));
    EXPECT_EQ(nullDate(QVariant("1980-03-07 00:00:00")), moment(1980, 3, 7));
    EXPECT_EQ(nullDate(QVariant("")), zeroDate());
    EXPECT_EQ(nullDate(QVariant(29287.0)), moment(1980, 3, 7));
    EXPECT_RAISES(nullDate(QVariant("never")), error::typeMismatch);
}

TEST_F(Dates, TheDigitInFrontNeverChangesADate) {
    for (int days = -20000; days < 60000; days += 13) {
        const QDateTime date = fromSerial(days + 0.25);
        ASSERT_EQ(toDate(zeroText(QVariant(date))), date) << dateText(date).toStdString();
    }
}

TEST_F(Dates, ZeroDateSurvivesTextAndStoredForm) {
    EXPECT_EQ(toDate(dateText(zeroDate())), zeroDate());
    EXPECT_EQ(fromStoredDate(storedDate(zeroDate())), zeroDate());
    EXPECT_EQ(storedDate(zeroDate()), u"1899-12-30 00:00:00"_s);
}

TEST_F(Dates, StoredForm) {
    EXPECT_EQ(storedDate(moment(2026, 3, 7, 14, 5, 9)), u"2026-03-07 14:05:09"_s);
    EXPECT_EQ(fromStoredDate("2026-03-07 14:05:09"), moment(2026, 3, 7, 14, 5, 9));
    EXPECT_EQ(fromStoredDate("2026-03-07 14:05:09").timeSpec(), Qt::UTC);
    for (const char* text :
         {"", "2026-03-07", "2026-3-7 14:05:09", "2026-02-30 00:00:00", "3/7/2026", " 2026-03-07 14:05:09"})
        EXPECT_FALSE(fromStoredDate(text).isValid()) << text;
}

TEST_F(Dates, CustomsOfSomeSystems) {
    setSystemLocale(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(dateText(moment(2026, 3, 7, 14, 5, 9)), u"07.03.2026 14:05:09"_s);
    EXPECT_EQ(toDate("07.03.2026"), moment(2026, 3, 7));
    EXPECT_EQ(toDate("03-07-2026"), moment(2026, 3, 7));  // the form of the statements, month first
    setSystemLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
    EXPECT_EQ(dateText(moment(2026, 3, 7, 14, 5, 9)), u"07/03/2026 14:05:09"_s);
    EXPECT_EQ(toDate("07/03/2026"), moment(2026, 3, 7));
    setSystemLocale(QLocale(QLocale::Swedish, QLocale::Sweden));
    EXPECT_EQ(dateText(moment(2026, 3, 7)), u"2026-03-07"_s);
}

TEST_F(Dates, EveryLocaleReadsBackItsOwnTexts) {
    const QDateTime dates[] = {moment(2026, 3, 7, 14, 5, 9),  moment(2026, 11, 21),
                               moment(1980, 12, 31, 0, 0, 1), moment(2005, 6, 5, 12, 0, 0),
                               moment(1899, 12, 30, 9, 8, 7), zeroDate()};
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale& locale : locales) {
        setSystemLocale(locale);
        for (const QDateTime& date : dates) {
            const QString text = dateText(date);
            SCOPED_TRACE(locale.name().toStdString() + ": " + text.toStdString());
            EXPECT_NO_THROW({ EXPECT_EQ(toDate(text), date); });
            for (const QChar mark : text)
                EXPECT_FALSE(mark.isDigit() && mark.unicode() > 127) << "foreign digits";
        }
    }
}

TEST_F(Dates, ClockCanBeReplaced) {
    struct Fixed : Clock {
        QDateTime now() const override { return moment(2026, 3, 7, 14, 5, 9); }
    } const fixed;
    setClock(&fixed);
    EXPECT_EQ(now(), moment(2026, 3, 7, 14, 5, 9));
    EXPECT_EQ(today(), moment(2026, 3, 7));
    setClock(nullptr);
    const QDateTime real = now();
    EXPECT_EQ(real.timeSpec(), Qt::UTC);
    EXPECT_EQ(real.time().msec(), 0);
    EXPECT_EQ(real.date(), QDateTime::currentDateTime().date());
}
