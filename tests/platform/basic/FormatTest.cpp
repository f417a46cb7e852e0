// Pictures for numbers, dates, texts and the money of the user's system.
#include "platform/basic/Format.h"

#include "Raises.h"
#include "platform/basic/SystemLocale.h"

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

QDateTime day(int year, int month, int dayOfMonth) {
    return QDateTime(QDate(year, month, dayOfMonth), QTime(14, 5, 9), Qt::UTC);
}

struct RestoredLocale {
    ~RestoredLocale() { setSystemLocale(std::nullopt); }
};

}  // namespace

TEST(Format, Numbers) {
    struct Row {
        double value;
        const char* picture;
        const char* text;
    };
    const Row rows[] = {
        {3.08625, "#0.000", "3.086"},
        {1.0005, "#0.000", "1.001"},
        {0, "#0.000", "0.000"},
        {-1.5, "#0.000", "-1.500"},
        {10, "#0.000", "10.000"},
        {-0.0004, "#0.000", "0.000"},
        {6.172, "#0.00", "6.17"},
        {12.345, "0.00", "12.35"},
        {0.005, "0.00", "0.01"},
        {1234567.891, "###,##0.00", "1,234,567.89"},
        {123.4, "###,##0.00", "123.40"},
        {1000, "###,##0.00", "1,000.00"},
        {999.995, "###,##0.00", "1,000.00"},
        {-1234.5, "###,##0.00", "-1,234.50"},
        {0, "###,##0.00", "0.00"},
        {0, "####0;;Null", "0"},
        {250, "####0;;Null", "250"},
        {-3, "####0;;Null", "-3"},
        {2.5, "####0", "3"},
        {12345678, "####0", "12345678"},
        {5, "00", "05"},
        {0, "00", "00"},
        {123, "00", "123"},
        {-5, "00", "-05"},
        {0.5, "#.00", ".50"},
        {0.5, ".00", ".50"},
        {1.5, "0.##", "1.5"},
        {2, "0.##", "2."},
        {1e15, "#0.00", "1000000000000000.00"},
        {5, "0.00;(0.00)", "5.00"},
        {-5, "0.00;(0.00)", "(5.00)"},
        {7, "text", "text"},
        {7, "", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(format(row.value, row.picture), QString(row.text)) << row.value << " " << row.picture;
    EXPECT_RAISES(format(std::nan(""), "0"), error::overflow);
}

TEST(Format, RoundsHalfAwayFromZeroOnTheDecimalText) {
    struct Row {
        double value;
        const char* picture;
        const char* text;
    };
    const Row rows[] = {
        {1.0005, "0.000", "1.001"},
        {1.2345 * 2.5, "0.000", "3.086"},
        {3.086 * 2.0, "0.00", "6.17"},
        {2.675, "0.00", "2.68"},
        {-2.675, "0.00", "-2.68"},
        {1.005, "0.00", "1.01"},
        {0.5, "0", "1"},
        {1e21, "0.0", "1000000000000000000000.0"},
        {10, "0.0000000000", "10.0000000000"},
        {0.285, "0.00", "0.29"},
        {1.115, "0.00", "1.12"},
        {5 * 2.0, "0.000", "10.000"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(format(row.value, QString(row.picture)), QString(row.text));
    EXPECT_RAISES(format(std::nan(""), u"0.00"_s), error::overflow);
}

TEST(Format, TextAroundTheDigits) {
    struct Row {
        double value;
        const char* picture;
        const char* text;
    };
    const Row rows[] = {
        {1234.5, "$ ###,##0.00", "$ 1,234.50"},
        {1234.5, "$###,##0.00", "$1,234.50"},
        {-5, "$ ###,##0.00", "-$ 5.00"},
        {0, "€ ###,##0.00", "€ 0.00"},
        {5, "€###,##0.00", "€5.00"},
        {5, "CHF ###,##0.00", "CHF 5.00"},
        {5, "Fr. ###,##0.00", "Fr. 5.00"},
        {5, "Fr.###,##0.00", "Fr.5.00"},
        {1234, "kr, ###,##0.00", "kr, 1,234.00"},
        {5, "0.00 ml", "5.00 ml"},
        {5, "0, or so", "5, or so"},
        {1000, "#,##0 E", "1,000 E"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(format(row.value, row.picture), QString(row.text)) << row.picture;
}

TEST(Format, TextsOnlyWhenTheWholeIsANumber) {
    EXPECT_EQ(format(u"0-1.5"_s, "#0.000"), u"0-1.5"_s);
    EXPECT_EQ(format(u"03.08625"_s, "#0.000"), u"3.086"_s);
    EXPECT_EQ(format(u"01.5E-05"_s, "#0.000"), u"0.000"_s);
    EXPECT_EQ(format(u"0"_s, "#0.00"), u"0.00"_s);
    EXPECT_EQ(format(u"A"_s, "00"), u"A"_s);
    EXPECT_EQ(format(u"1A"_s, "00"), u"1A"_s);
    EXPECT_EQ(format(u"5"_s, "00"), u"05"_s);
    EXPECT_EQ(format(u"FF"_s, "00"), u"FF"_s);
    EXPECT_EQ(format(u""_s, "00"), u""_s);
}

TEST(Format, BytesAsHexadecimalTexts) {
    // A text of digits is padded or already full; a text with a letter stays, and so does the one that
    // an exponent would make a number of: two digits have no room for it.
    for (unsigned int byte = 0; byte < 256; ++byte) {
        const QString text = QString::number(byte, 16).toUpper();
        bool digitsOnly = false;
        const int number = text.toInt(&digitsOnly);
        const QString expected = digitsOnly ? QString::number(number).rightJustified(2, u'0') : text;
        EXPECT_EQ(format(text, "00"), expected);
    }
}

TEST(Format, FieldValues) {
    EXPECT_EQ(format(QVariant(2.5), "#0.000"), u"2.500"_s);
    EXPECT_EQ(format(QVariant(qint64{7}), "00"), u"07"_s);
    EXPECT_EQ(format(QVariant("7.5"), "#0.00"), u"7.50"_s);
    EXPECT_EQ(format(QVariant(u"n/a"_s), "#0.00"), u"n/a"_s);
    EXPECT_EQ(format(QVariant::fromValue(Currency::fromText("1234.5")), "###,##0.00"), u"1,234.50"_s);
    EXPECT_EQ(format(QVariant(), "#0.00"), u""_s);
    EXPECT_EQ(format(QVariant(), "####0;;Null"), u"Null"_s);
    EXPECT_EQ(format(QVariant(qint64{0}), "####0;;Null"), u"0"_s);
}

TEST(Format, MoneyIsExactBeyondFifteenDigits) {
    EXPECT_EQ(format(Currency::fromText("922337203685477.5807"), "###,##0.0000"),
              u"922,337,203,685,477.5807"_s);
    EXPECT_EQ(format(Currency::fromText("0.005"), "0.00"), u"0.01"_s);
    EXPECT_EQ(format(Currency::fromText("-0.004"), "0.00"), u"0.00"_s);
}

TEST(Format, AgreesWithIntegerArithmetic) {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<std::int64_t> counts(-99999999999, 99999999999);
    for (int i = 0; i < 20000; ++i) {
        const std::int64_t count = counts(random);
        const std::int64_t cents = (std::abs(count) + 50) / 100;
        QString whole = QString::number(cents / 100);
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, u',');
        const QString expected = (count < 0 && cents > 0 ? "-" : "") + whole + '.' +
                                 QString::number(cents % 100).rightJustified(2, u'0');
        ASSERT_EQ(format(Currency::fromTenThousandths(count), "###,##0.00"), expected) << count;
        ASSERT_EQ(format(static_cast<double>(count) / 10000, "###,##0.00"), expected) << count;
    }
}

TEST(Format, Dates) {
    EXPECT_EQ(formatDate(day(2026, 3, 7), "MM-DD-YY"), u"03-07-26"_s);
    EXPECT_EQ(formatDate(day(2026, 3, 7), "MM-DD-YYYY"), u"03-07-2026"_s);
    EXPECT_EQ(formatDate(day(2026, 11, 21), "M/D/YYYY"), u"11/21/2026"_s);
    EXPECT_EQ(formatDate(day(1899, 12, 30), "MM-DD-YYYY"), u"12-30-1899"_s);
    EXPECT_EQ(formatDate(day(2005, 1, 2), "YY.MM"), u"05.01"_s);
    EXPECT_RAISES(formatDate(QDateTime(), "MM-DD-YY"), error::typeMismatch);
}

TEST(Format, PlacesFillFromTheRight) {
    EXPECT_EQ(formatPlaces("ABCDEF", "@@@@-@@"), u"ABCD-EF"_s);
    EXPECT_EQ(formatPlaces("ABC", "@@@@-@@"), u"   A-BC"_s);
    EXPECT_EQ(formatPlaces("", "@@-@"), u"  - "_s);
    EXPECT_EQ(formatPlaces("ABCDE", "@@"), u"ABCDE"_s);
    EXPECT_EQ(formatPlaces("ABCDE", "@-@"), u"ABCD-E"_s);
    const QString picture = "@@@@@@@@-@@@@-@@@@-@@@@-@@@@@@@@@@@@";
    EXPECT_EQ(formatPlaces("0123456789ABCDEF0123456789ABCDEF", picture),
              u"01234567-89AB-CDEF-0123-456789ABCDEF"_s);
    EXPECT_EQ(formatPlaces("123456789ABCDEF0123456789ABCDEF", picture),
              u" 1234567-89AB-CDEF-0123-456789ABCDEF"_s);
    EXPECT_EQ(formatPlaces("00000000", picture), u"        -    -    -    -    00000000"_s);
}

TEST(Format, MoneyOfTheSystem) {
    const RestoredLocale restored;
    setSystemLocale(QLocale::c());
    EXPECT_EQ(formatCurrency(Currency::fromText("1234.5")), u"$1,234.50"_s);
    EXPECT_EQ(formatCurrency(Currency()), u"$0.00"_s);
    EXPECT_EQ(formatCurrency(Currency::fromText("0.125")), u"$0.13"_s);
    EXPECT_EQ(formatCurrency(Currency::fromText("0.285")), u"$0.29"_s);
    EXPECT_EQ(formatCurrency(Currency::fromText("-5")), u"($5.00)"_s);
    setSystemLocale(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(formatCurrency(Currency::fromText("1234.5")), u"1.234,50\u00A0€"_s);
    setSystemLocale(QLocale(QLocale::Japanese, QLocale::Japan));
    EXPECT_TRUE(formatCurrency(Currency::fromText("1234.5")).endsWith("1,235"));
    EXPECT_TRUE(formatCurrency(Currency::fromText("1234.565"), 2).endsWith("1,234.57"));
}
