// Field values as text, and the rules by which NULL is read.
#include "platform/basic/Values.h"

#include "Raises.h"
#include "platform/basic/Dates.h"
#include "platform/basic/SystemLocale.h"

using namespace platform;

namespace {

QVariant money(const char* text) { return QVariant::fromValue(Currency::fromText(text)); }

const QVariant null;

}  // namespace

TEST(Values, DefaultText) {
    setSystemLocale(QLocale::c());
    EXPECT_EQ(valueText(QVariant(qint64{12})), QString("12"));
    EXPECT_EQ(valueText(QVariant(-3)), QString("-3"));
    EXPECT_EQ(valueText(QVariant(0.1 + 0.2)), QString("0.3"));
    EXPECT_EQ(valueText(QVariant(1e15)), QString("1E+15"));
    EXPECT_EQ(valueText(money("12.50")), QString("12.5"));
    EXPECT_EQ(valueText(money("0")), QString("0"));
    EXPECT_EQ(valueText(QVariant(true)), QString("True"));
    EXPECT_EQ(valueText(QVariant(false)), QString("False"));
    EXPECT_EQ(valueText(QVariant(QDateTime(QDate(2026, 3, 7), QTime(14, 5, 9), Qt::UTC))),
              QString("3/7/2026 2:05:09 PM"));
    EXPECT_EQ(valueText(QVariant(QString(" O'Neill "))), QString(" O'Neill "));
    EXPECT_RAISES(valueText(null), error::invalidUseOfNull);
    EXPECT_RAISES(valueText(QVariant(QVariantMap())), error::typeMismatch);
    setSystemLocale(std::nullopt);
}

TEST(Values, NullReadsAsNothing) {
    EXPECT_EQ(nullText(null), QString(""));
    EXPECT_EQ(nullText(QVariant("x")), QString("x"));
    EXPECT_EQ(nullInt16(null), 0);
    EXPECT_EQ(nullInt32(null), 0);
    EXPECT_EQ(nullDouble(null), 0);
    EXPECT_EQ(nullCurrency(null), Currency());
    EXPECT_EQ(zeroText(null), QString("0"));
}

TEST(Values, TheDigitInFront) {
    EXPECT_EQ(zeroText(QVariant(12.5)), QString("012.5"));
    EXPECT_EQ(zeroText(QVariant(qint64{-3})), QString("0-3"));
    EXPECT_EQ(zeroText(money("-0.5")), QString("0-0.5"));
    EXPECT_EQ(zeroText(QVariant("abc")), QString("0abc"));
}

TEST(Values, NumbersBehindTheDigit) {
    EXPECT_EQ(nullInt16(QVariant(qint64{32767})), 32767);
    EXPECT_EQ(nullInt16(QVariant("7")), 7);
    EXPECT_EQ(nullInt16(QVariant(2.5)), 2);
    EXPECT_EQ(nullInt16(QVariant("")), 0);
    EXPECT_EQ(nullInt32(QVariant(qint64{70000})), 70000);
    EXPECT_EQ(nullDouble(QVariant(1.25)), 1.25);
    EXPECT_EQ(nullDouble(QVariant(1.5e-5)), 1.5e-5);
    EXPECT_EQ(nullDouble(QVariant(0.1 + 0.2)), 0.3);
    EXPECT_EQ(nullCurrency(money("922337203685477.5807")).toText(), QString("922337203685477.5807"));
    EXPECT_EQ(nullCurrency(QVariant(12.34567)).toText(), QString("12.3457"));
    EXPECT_EQ(nullCurrency(QVariant("12.5")).toText(), QString("12.5"));
}

TEST(Values, ANegativeValueReadsAsZero) {
    EXPECT_EQ(nullInt16(QVariant(qint64{-1})), 0);
    EXPECT_EQ(nullInt32(QVariant(qint64{-70000})), 0);
    EXPECT_EQ(nullDouble(QVariant(-0.5)), 0);
    EXPECT_EQ(nullCurrency(money("-3")), Currency());
    EXPECT_EQ(nullInt16(QVariant("-3")), 0);
}

TEST(Values, WhatDoesNotFitFails) {
    EXPECT_RAISES(nullInt16(QVariant(qint64{32768})), error::overflow);
    EXPECT_RAISES(nullInt16(QVariant("abc")), error::typeMismatch);
    EXPECT_RAISES(nullInt16(QVariant("-abc")), error::typeMismatch);
    EXPECT_RAISES(nullDouble(QVariant("1,5")), error::typeMismatch);
    EXPECT_RAISES(nullCurrency(QVariant("$1")), error::typeMismatch);
}

TEST(Values, AnyValueAsMoney) {
    EXPECT_EQ(toCurrency(money("1.5")).toText(), QString("1.5"));
    EXPECT_EQ(toCurrency(QVariant("100.00")).toText(), QString("100"));
    EXPECT_EQ(toCurrency(QVariant("12.50")).toText(), QString("12.5"));
    EXPECT_EQ(toCurrency(QVariant(0.00015)).toText(), QString("0.0002"));
    EXPECT_EQ(toCurrency(QVariant(qint64{922337203685477})).toText(), QString("922337203685477"));
    EXPECT_EQ(toCurrency(QVariant(true)).toText(), QString("-1"));
    EXPECT_RAISES(toCurrency(null), error::invalidUseOfNull);
    EXPECT_RAISES(toCurrency(QVariant("x")), error::typeMismatch);
    EXPECT_RAISES(toCurrency(QVariant(qint64{922337203685478})), error::overflow);
}
