// Field values as text, and the rules by which NULL is read.
#include "platform/basic/Values.h"

#include "Raises.h"
#include "platform/basic/Dates.h"
#include "platform/basic/SystemLocale.h"

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

QVariant money(const char* text) { return QVariant::fromValue(Currency::fromText(text)); }

const QVariant null;

}  // namespace

TEST(Values, DefaultText) {
    setSystemLocale(QLocale::c());
    EXPECT_EQ(valueText(QVariant(qint64{12})), u"12"_s);
    EXPECT_EQ(valueText(QVariant(-3)), u"-3"_s);
    EXPECT_EQ(valueText(QVariant(0.1 + 0.2)), u"0.3"_s);
    EXPECT_EQ(valueText(QVariant(1e15)), u"1E+15"_s);
    EXPECT_EQ(valueText(money("12.50")), u"12.5"_s);
    EXPECT_EQ(valueText(money("0")), u"0"_s);
    EXPECT_EQ(valueText(QVariant(true)), u"True"_s);
    EXPECT_EQ(valueText(QVariant(false)), u"False"_s);
    EXPECT_EQ(valueText(QVariant(QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC))),
              u"3/7/2026 2:05:09 PM"_s);
    EXPECT_EQ(valueText(QVariant(u" O'Neill "_s)), u" O'Neill "_s);
    EXPECT_RAISES(valueText(null), error::invalidUseOfNull);
    EXPECT_RAISES(valueText(QVariant(QVariantMap())), error::typeMismatch);
    setSystemLocale(std::nullopt);
}

TEST(Values, NullReadsAsNothing) {
    EXPECT_EQ(nullText(null), u""_s);
    EXPECT_EQ(nullText(QVariant("x")), u"x"_s);
    EXPECT_EQ(nullInt16(null), 0);
    EXPECT_EQ(nullInt32(null), 0);
    EXPECT_EQ(nullCurrency(null), Currency());
    EXPECT_EQ(zeroText(null), u"0"_s);
}

TEST(Values, TheDigitInFront) {
    EXPECT_EQ(zeroText(QVariant(12.5)), u"012.5"_s);
    EXPECT_EQ(zeroText(QVariant(qint64{-3})), u"0-3"_s);
    EXPECT_EQ(zeroText(money("-0.5")), u"0-0.5"_s);
    EXPECT_EQ(zeroText(QVariant("abc")), u"0abc"_s);
}

TEST(Values, NumbersBehindTheDigit) {
    EXPECT_EQ(nullInt16(QVariant(qint64{32767})), 32767);
    EXPECT_EQ(nullInt16(QVariant("7")), 7);
    EXPECT_EQ(nullInt16(QVariant(2.5)), 2);
    EXPECT_EQ(nullInt16(QVariant("")), 0);
    EXPECT_EQ(nullInt32(QVariant(qint64{70000})), 70000);
    EXPECT_EQ(nullCurrency(money("922337203685477.5807")).toText(), u"922337203685477.5807"_s);
    EXPECT_EQ(nullCurrency(QVariant(12.34567)).toText(), u"12.3457"_s);
    EXPECT_EQ(nullCurrency(QVariant("12.5")).toText(), u"12.5"_s);
}

TEST(Values, ANegativeValueReadsAsZero) {
    EXPECT_EQ(nullInt16(QVariant(qint64{-1})), 0);
    EXPECT_EQ(nullInt32(QVariant(qint64{-70000})), 0);
    EXPECT_EQ(nullCurrency(QVariant(-0.5)), Currency());
    EXPECT_EQ(nullCurrency(money("-3")), Currency());
    EXPECT_EQ(nullInt16(QVariant("-3")), 0);
}

TEST(Values, WhatDoesNotFitFails) {
    EXPECT_RAISES(nullInt16(QVariant(qint64{32768})), error::overflow);
    EXPECT_RAISES(nullInt16(QVariant("abc")), error::typeMismatch);
    EXPECT_RAISES(nullInt16(QVariant("-abc")), error::typeMismatch);
    EXPECT_RAISES(nullCurrency(QVariant("1,5")), error::typeMismatch);
    EXPECT_RAISES(nullCurrency(QVariant("$1")), error::typeMismatch);
}

TEST(Values, AnyValueAsMoney) {
    EXPECT_EQ(toCurrency(money("1.5")).toText(), u"1.5"_s);
    EXPECT_EQ(toCurrency(QVariant("100.00")).toText(), u"100"_s);
    EXPECT_EQ(toCurrency(QVariant("12.50")).toText(), u"12.5"_s);
    EXPECT_EQ(toCurrency(QVariant(0.00015)).toText(), u"0.0002"_s);
    EXPECT_EQ(toCurrency(QVariant(qint64{922337203685477})).toText(), u"922337203685477"_s);
    EXPECT_EQ(toCurrency(QVariant(true)).toText(), u"-1"_s);
    EXPECT_RAISES(toCurrency(null), error::invalidUseOfNull);
    EXPECT_RAISES(toCurrency(QVariant("x")), error::typeMismatch);
    EXPECT_RAISES(toCurrency(QVariant(qint64{922337203685478})), error::overflow);
}
