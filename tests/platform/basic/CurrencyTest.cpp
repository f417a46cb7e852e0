// Money: exact sums, half to even at the fourth decimal, texts without trailing zeros.
#include "platform/basic/Currency.h"

#include "Raises.h"

#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

TEST(Currency, AmountsAtTheLimitAreReadBack) {
    for (const char* text :
         {"922337203685477.5807", "-922337203685477.5808", "922337203685477.5", "922337203685477",
          "922337203685476.25", "-922337203685477.125", "0.07", "123456789012.1234"}) {
        const Currency amount = Currency::fromText(QString::fromLatin1(text));
        EXPECT_EQ(Currency::fromStored(amount.toDouble()).toText().toStdString(), text);
    }
    EXPECT_EQ(Currency::fromDouble(922337203685477.5807).toText(), u"922337203685477.5807"_s);
    EXPECT_RAISES(Currency::fromDouble(922337203685478.0), error::overflow);
    EXPECT_RAISES(Currency::fromStored(-922337203685478.0), error::overflow);
}

}  // namespace

TEST(Currency, FromDoubleTakesATieToEven) {
    struct Row {
        double value;
        std::int64_t count;
    };
    const Row rows[] = {
        {0, 0},           {12.5, 125000},   {0.00005, 0},
        {0.00015, 2},     {0.00025, 2},     {2.00005, 20000},
        {2.00015, 20002}, {-0.00015, -2},   {-0.00025, -2},
        {0.000051, 1},    {0.00004999, 0},  {0.1 + 0.2, 3000},
        {1.23455, 12346}, {1.23445, 12344}, {99999999999.9999, 999999999999999},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Currency::fromDouble(row.value).tenThousandths(), row.count) << row.value;
}

TEST(Currency, ANumberNearAnAmountReadsAsItsDigitsDo) {
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int64_t> counts(-200'000'000'000, 200'000'000'000);
    const double parts[] = {0, 0.01, 0.2, 0.2499, 0.25, 0.2501, 0.49, 0.499999, 0.5, 0.500001, 0.75, 0.99};
    for (int i = 0; i < 5'000; ++i) {
        for (const double part : parts) {
            const double value = (static_cast<double>(counts(random)) + part) / 10000;
            ASSERT_EQ(Currency::fromDouble(value), Currency::fromText(QString::number(value, 'e', 14)))
                << value;
            ASSERT_EQ(Currency::fromStored(value), Currency::fromText(QString::number(value, 'f', 6)))
                << value;
        }
    }
}

TEST(Currency, FromTextIsExact) {
    struct Row {
        const char* text;
        std::int64_t count;
    };
    const Row rows[] = {
        {"12.5", 125000},
        {" 3 ", 30000},
        {"-0.07", -700},
        {"0", 0},
        {"012.5", 125000},
        {"1E-04", 1},
        {"1E+3", 10000000},
        {".5", 5000},
        {"0.00005", 0},
        {"0.00015", 2},
        {"0.000150000000000000001", 2},
        {"0.000250000000000000001", 3},
        {"922337203685477.5807", most},
        {"-922337203685477.5808", least},
        {"1e-99999", 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Currency::fromText(row.text).tenThousandths(), row.count) << row.text;
    for (const char* text : {"", " ", "abc", "1,5", "$5", "0-3", "1 2"})
        EXPECT_RAISES(Currency::fromText(text), error::typeMismatch);
}

TEST(Currency, OutsideTheRangeOverflows) {
    EXPECT_RAISES(Currency::fromText("922337203685477.5808"), error::overflow);
    EXPECT_RAISES(Currency::fromText("-922337203685477.5809"), error::overflow);
    EXPECT_RAISES(Currency::fromText("1e400"), error::overflow);
    EXPECT_RAISES(Currency::fromDouble(1e15), error::overflow);
    EXPECT_RAISES(Currency::fromDouble(std::nan("")), error::overflow);
    EXPECT_RAISES(Currency::fromDouble(9e14) * 2, error::overflow);
}

TEST(Currency, TextHasNoTrailingZeros) {
    struct Row {
        std::int64_t count;
        const char* text;
    };
    const Row rows[] = {{0, "0"},
                        {125000, "12.5"},
                        {1000000, "100"},
                        {-700, "-0.07"},
                        {1, "0.0001"},
                        {-1, "-0.0001"},
                        {10, "0.001"},
                        {123456, "12.3456"},
                        {most, "922337203685477.5807"},
                        {least, "-922337203685477.5808"}};
    for (const Row& row : rows)
        EXPECT_EQ(Currency::fromTenThousandths(row.count).toText(), QString(row.text));
}

TEST(Currency, TextReadsBackExactly) {
    std::mt19937_64 random(42);
    for (int i = 0; i < 50000; ++i) {
        const auto count = static_cast<std::int64_t>(random()) >> (i % 64);
        const Currency money = Currency::fromTenThousandths(count);
        ASSERT_EQ(Currency::fromText(money.toText()), money) << count;
    }
}

TEST(Currency, DoubleReadsBackWithinFifteenDigits) {
    std::mt19937_64 random(43);
    std::uniform_int_distribution<std::int64_t> counts(-999999999999999, 999999999999999);
    for (int i = 0; i < 50000; ++i) {
        const Currency money = Currency::fromTenThousandths(counts(random));
        ASSERT_EQ(Currency::fromDouble(money.toDouble()), money) << money.tenThousandths();
    }
}

TEST(Currency, ProductIsFloatingPointThenRounded) {
    EXPECT_EQ((Currency::fromText("12.3457") * 2.5).toText(), u"30.8642"_s);  // 30.86425, tie to even
    EXPECT_EQ((Currency::fromText("0.0001") * 0.5).toText(), u"0"_s);         // 0.00005
    EXPECT_EQ((Currency::fromText("0.0003") * 0.5).toText(), u"0.0002"_s);    // 0.00015
    EXPECT_EQ((Currency::fromText("19.99") * 0).toText(), u"0"_s);
    EXPECT_EQ((Currency::fromText("-19.99") * 2.5).toText(), u"-49.975"_s);
}

TEST(Currency, Orders) {
    EXPECT_LT(Currency::fromText("-1"), Currency());
    EXPECT_GT(Currency::fromText("0.0002"), Currency::fromText("0.0001"));
}
