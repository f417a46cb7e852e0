// Digits of a number: taken from doubles and texts, rounded, written.
#include "platform/basic/Decimal.h"

#include "Raises.h"

#include <limits>

using platform::Decimal;

TEST(Decimal, NumberAtTheStart) {
    struct Row {
        const char* text;
        qsizetype length;
    };
    const Row rows[] = {{"", 0},      {"abc", 0},  {"1", 1},   {"12x", 2},    {"-3.5 ", 4},
                        {"+.5", 3},   {"5.", 2},   {".", 0},   {"-", 0},      {"1.2.3", 3},
                        {"1e5", 3},   {"1e", 1},   {"1e+", 1}, {"1E-07z", 5}, {"--1", 0},
                        {"1,000", 1}, {"0x10", 1}, {"inf", 0}, {"nan", 0}};
    for (const Row& row : rows)
        EXPECT_EQ(Decimal::numberLength(row.text), row.length) << row.text;
}

TEST(Decimal, TextsKeepAllTheirDigits) {
    EXPECT_EQ(Decimal::fromText("123456789012345678901.5")->fixed(1), "123456789012345678901.5");
    EXPECT_EQ(Decimal::fromText("-000.0100")->fixed(4), "-0.0100");
    EXPECT_EQ(Decimal::fromText("12e-3")->fixed(3), "0.012");
    EXPECT_EQ(Decimal::fromText("12E3")->fixed(0), "12000");
    EXPECT_EQ(Decimal::fromText("-0")->fixed(2), "0.00");
    EXPECT_TRUE(Decimal::fromText("0e99999999999")->isZero());
    EXPECT_FALSE(Decimal::fromText("1 "));
    EXPECT_FALSE(Decimal::fromText(""));
}

TEST(Decimal, DoublesGiveFifteenDigits) {
    EXPECT_EQ(Decimal::fromDouble(0.1 + 0.2).digits, "3");
    EXPECT_EQ(Decimal::fromDouble(1.0005).digits, "10005");
    EXPECT_EQ(Decimal::fromDouble(1e300).point, 301);
    EXPECT_EQ(Decimal::fromDouble(2.0 / 3).digits, "666666666666667");
    EXPECT_TRUE(Decimal::fromDouble(-0.0).isZero());
    EXPECT_FALSE(Decimal::fromDouble(-0.0).negative);
    EXPECT_RAISES(Decimal::fromDouble(std::numeric_limits<double>::infinity()), platform::error::overflow);
    EXPECT_RAISES(Decimal::fromDouble(std::numeric_limits<double>::quiet_NaN()), platform::error::overflow);
}

TEST(Decimal, RoundsByTheDigits) {
    struct Row {
        const char* text;
        int decimals;
        const char* away;
        const char* even;
    };
    const Row rows[] = {
        {"0.5", 0, "1", "0"},
        {"1.5", 0, "2", "2"},
        {"2.5", 0, "3", "2"},
        {"-2.5", 0, "-3", "-2"},
        {"0.25", 1, "0.3", "0.2"},
        {"0.250001", 1, "0.3", "0.3"},
        {"9.995", 2, "10.00", "10.00"},
        {"99.985", 2, "99.99", "99.98"},
        {"0.004", 2, "0.00", "0.00"},
        {"-0.004", 2, "0.00", "0.00"},
        {"0.0005", 3, "0.001", "0.000"},
        {"0.00005", 3, "0.000", "0.000"},
        {"999", 2, "999.00", "999.00"},
        {"0.9", 0, "1", "1"},
        {"0.05", 0, "0", "0"},
    };
    for (const Row& row : rows) {
        Decimal away = *Decimal::fromText(row.text);
        away.round(row.decimals, Decimal::Tie::away);
        EXPECT_EQ(away.fixed(row.decimals), row.away) << row.text;
        Decimal even = *Decimal::fromText(row.text);
        even.round(row.decimals, Decimal::Tie::even);
        EXPECT_EQ(even.fixed(row.decimals), row.even) << row.text;
    }
}

TEST(Decimal, RoundingAgreesWithIntegerArithmetic) {
    for (int thousandths = -12000; thousandths <= 12000; ++thousandths) {
        const int magnitude = (std::abs(thousandths) + 5) / 10;
        QByteArray expected = thousandths < 0 && magnitude > 0 ? "-" : "";
        expected += QByteArray::number(magnitude / 100) + '.' +
                    QByteArray::number(magnitude % 100).rightJustified(2, '0');
        Decimal decimal = Decimal::fromDouble(thousandths / 1000.0);
        decimal.round(2, Decimal::Tie::away);
        ASSERT_EQ(decimal.fixed(2), expected) << thousandths;
    }
}
