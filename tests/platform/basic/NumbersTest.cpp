// Numbers from text, text from numbers, checked integers.
#include "platform/basic/Numbers.h"

#include "Raises.h"
#include "platform/basic/Currency.h"
#include "platform/basic/Dates.h"

#include <QLocale>
#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

using namespace platform;

TEST(Numbers, LeadingNumber) {
    struct Row {
        const char* text;
        double value;
    };
    const Row rows[] = {
        {"", 0},       {"abc", 0},     {"12 ml", 12},  {"1.5e3x", 1500}, {"  -7", -7},
        {"+4", 4},     {"3,5", 3},     {".25", 0.25},  {"2", 2},         {"2e", 2},
        {"1 2", 12},   {"\t5\r\n", 5}, {"- 3", -3},    {"--3", 0},       {"1.2.3", 1.2},
        {"\u0665", 0}, {"5\u00A0", 5}, {"\u00A05", 0}, {"1e-400", 0},    {"German", 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(leadingNumber(QString(row.text)), row.value) << row.text;
    EXPECT_EQ(leadingNumber("1e999"), std::numeric_limits<double>::max());
    EXPECT_EQ(leadingNumber("-1e999"), -std::numeric_limits<double>::max());
}

TEST(Numbers, WholeTextAsNumber) {
    struct Row {
        const char* text;
        double value;
    };
    const Row rows[] = {{"12.5", 12.5}, {" 12.5 ", 12.5}, {"-0.07", -0.07}, {"1E+15", 1e15},
                        {".5", 0.5},    {"5.", 5},        {"+3", 3},        {"01.5E-05", 1.5e-5},
                        {"0012", 12},   {"1e-999", 0}};
    for (const Row& row : rows)
        EXPECT_EQ(toDouble(QString(row.text)), row.value) << row.text;
}

TEST(Numbers, NoNumberIsATypeMismatch) {
    for (const char* text : {"", " ", "abc", "12 ml", "1,5", "1,000", "0-1.5", "1 2", "--1", "0x10", "inf",
                             "nan", "\t1", "1e", "$5", "٣"})
        EXPECT_RAISES(toDouble(QString(text)), error::typeMismatch);
    EXPECT_RAISES(toDouble(u"1e999"_s), error::overflow);
}

TEST(Numbers, FieldValuesAsNumbers) {
    EXPECT_EQ(toDouble(QVariant(qint64{12})), 12);
    EXPECT_EQ(toDouble(QVariant(1.25)), 1.25);
    EXPECT_EQ(toDouble(QVariant("1.25")), 1.25);
    EXPECT_EQ(toDouble(QVariant(true)), -1);
    EXPECT_EQ(toDouble(QVariant(false)), 0);
    EXPECT_EQ(toDouble(QVariant::fromValue(Currency::fromTenThousandths(12500))), 1.25);
    EXPECT_EQ(toDouble(QVariant(fromSerial(46347.5))), 46347.5);
    EXPECT_RAISES(toDouble(QVariant()), error::invalidUseOfNull);
    EXPECT_RAISES(toDouble(QVariant("x")), error::typeMismatch);
    EXPECT_RAISES(toDouble(QVariant(QStringList{"a", "b"})), error::typeMismatch);
}

TEST(Numbers, IntegersTakeAHalfToEven) {
    struct Row {
        double value;
        int rounded;
    };
    const Row rows[] = {{0.5, 0},   {1.5, 2},    {2.5, 2},     {-0.5, 0},        {-1.5, -2},
                        {-2.5, -2}, {2.4999, 2}, {2.50001, 3}, {32767.4, 32767}, {-32768.5, -32768}};
    for (const Row& row : rows) {
        EXPECT_EQ(toInt16(row.value), row.rounded) << row.value;
        EXPECT_EQ(toInt32(row.value), row.rounded) << row.value;
    }
    EXPECT_EQ(toInt16(u" 2.5 "_s), 2);
    EXPECT_EQ(toInt16(QVariant(3.5)), 4);
    EXPECT_EQ(toInt32(QVariant(qint64{70000})), 70000);
    EXPECT_EQ(toInt32(u"1E5"_s), 100000);
}

TEST(Numbers, IntegersOutsideTheirRangeOverflow) {
    EXPECT_RAISES(toInt16(32767.5), error::overflow);
    EXPECT_RAISES(toInt16(-32769.0), error::overflow);
    EXPECT_RAISES(toInt16(u"32768"_s), error::overflow);
    EXPECT_RAISES(toInt16(QVariant(qint64{40000})), error::overflow);
    EXPECT_RAISES(toInt32(2147483648.0), error::overflow);
    EXPECT_EQ(toInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
    EXPECT_RAISES(toInt32(std::nan("")), error::overflow);
    EXPECT_RAISES(toInt16(QVariant()), error::invalidUseOfNull);
    EXPECT_RAISES(toInt16(u"COM1"_s), error::typeMismatch);
}

TEST(Numbers, DefaultText) {
    struct Row {
        double value;
        const char* text;
    };
    const Row rows[] = {
        {0, "0"},
        {-0.0, "0"},
        {0.1, "0.1"},
        {1200, "1200"},
        {-2.5, "-2.5"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {3.08625, "3.08625"},
        {999999999999999, "999999999999999"},
        {1e15, "1E+15"},
        {1.5e15, "1.5E+15"},
        {-1e100, "-1E+100"},
        {123456789.123, "123456789.123"},
        {0.0001, "0.0001"},
        {0.000123456789012345, "0.000123456789012345"},
        {0.00001, "1E-05"},
        {1.5e-7, "1.5E-07"},
        {-1e-120, "-1E-120"},
        {9999999999999999.0, "1E+16"},
        {100, "100"},
        {1e14, "100000000000000"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(numberText(row.value), QString(row.text));
}

TEST(Numbers, DefaultTextKeepsThePointUnderAForeignLocale) {
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(numberText(2.5), u"2.5"_s);
    EXPECT_EQ(toDouble(u"2.5"_s), 2.5);
    EXPECT_RAISES(toDouble(u"2,5"_s), error::typeMismatch);
    QLocale::setDefault(QLocale::c());
}

TEST(Numbers, DefaultTextReadsBackToFifteenDigits) {
    std::mt19937_64 random(20260307);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> exponent(-30, 30);
    for (int i = 0; i < 20000; ++i) {
        const double value = mantissa(random) * std::pow(10.0, exponent(random));
        const QString text = numberText(value);
        const double back = toDouble(text);
        ASSERT_NEAR(back, value, std::abs(value) * 1e-14) << text.toStdString();
        ASSERT_EQ(numberText(back), text);
    }
}

TEST(Numbers, Quotient) {
    EXPECT_EQ(quotient(25, 10), 2.5);
    EXPECT_RAISES(quotient(25, 0), error::divisionByZero);
    EXPECT_RAISES(quotient(0, 0), error::divisionByZero);
    EXPECT_RAISES(quotient(1e308, 1e-10), error::overflow);
}

TEST(Numbers, HexText) {
    EXPECT_EQ(hexText(0), u"0"_s);
    EXPECT_EQ(hexText(10), u"A"_s);
    EXPECT_EQ(hexText(0xDEADBEEF), u"DEADBEEF"_s);
}
