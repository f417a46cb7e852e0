// What people type as a number in several languages, and what is made of it.
#include "platform/widgets/NumberInput.h"

#include "platform/basic/LocalMarks.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;
using Kind = TypedNumber::Kind;

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale german(QLocale::German, QLocale::Germany);
const QLocale french(QLocale::French, QLocale::France);
const QLocale portuguese(QLocale::Portuguese, QLocale::Portugal);
const QLocale russian(QLocale::Russian, QLocale::Russia);
const QLocale swiss(QLocale::German, QLocale::Switzerland);

struct Case {
    const QLocale& locale;
    const char* typed;
    Kind kind;
    const char* number;
};

class Typed : public testing::TestWithParam<Case> {};

TEST_P(Typed, IsReadInOneWayOrRefused) {
    const Case& c = GetParam();
    const TypedNumber read = readTypedNumber(QString::fromUtf8(c.typed), c.locale);
    EXPECT_EQ(static_cast<int>(read.kind), static_cast<int>(c.kind)) << c.typed;
    EXPECT_EQ(read.number.toStdString(), c.number) << c.typed;
}

INSTANTIATE_TEST_SUITE_P(
    English, Typed,
    testing::Values(
        Case{english, "", Kind::Empty, ""}, Case{english, "  ", Kind::Empty, ""},
        Case{english, "12", Kind::Number, "12"}, Case{english, "12.5", Kind::Number, "12.5"},
        Case{english, " 12.50 ", Kind::Number, "12.50"}, Case{english, ".5", Kind::Number, "0.5"},
        Case{english, "5.", Kind::Number, "5"}, Case{english, "-3.25", Kind::Number, "-3.25"},
        Case{english, "+7", Kind::Number, "7"}, Case{english, "1,234", Kind::Ambiguous, ""},
        Case{english, "2.125", Kind::Number, "2.125"}, Case{english, "-1,000", Kind::Ambiguous, ""},
        Case{english, "12 345", Kind::Number, "12345"}, Case{english, "12\t345", Kind::NotANumber, ""},
        Case{english, "12\n345", Kind::NotANumber, ""}, Case{english, "12\u2003345", Kind::NotANumber, ""},
        Case{english, "12\n", Kind::Number, "12"}, Case{english, "1 234,567", Kind::Ambiguous, ""},
        Case{english, "1'234", Kind::NotANumber, ""}, Case{english, "1,234.5", Kind::Number, "1234.5"},
        Case{english, "12,345,678.9", Kind::Number, "12345678.9"},
        Case{english, "1.234,5", Kind::Ambiguous, ""}, Case{english, "1,5", Kind::Incomplete, ""},
        Case{english, "12,3456", Kind::NotANumber, ""}, Case{english, "0,123", Kind::Ambiguous, ""},
        Case{english, "1,23,456", Kind::NotANumber, ""}, Case{english, "1.2.3", Kind::NotANumber, ""},
        Case{english, "-", Kind::Incomplete, ""}, Case{english, ".", Kind::Incomplete, ""},
        Case{english, "12 ml", Kind::NotANumber, ""}, Case{english, "1e5", Kind::NotANumber, ""},
        Case{english, "abc", Kind::NotANumber, ""}, Case{english, "--2", Kind::NotANumber, ""}));

INSTANTIATE_TEST_SUITE_P(
    German, Typed,
    testing::Values(
        Case{german, "12,5", Kind::Number, "12.5"}, Case{german, "12.5", Kind::Number, "12.5"},
        Case{german, "1.234,5", Kind::Number, "1234.5"}, Case{german, "1.234.567", Kind::Number, "1234567"},
        Case{german, "1234.567", Kind::Ambiguous, ""}, Case{german, "0.125", Kind::Ambiguous, ""},
        Case{german, "2,125", Kind::Number, "2.125"}, Case{german, "1.2345", Kind::Number, "1.2345"},
        Case{german, "1.", Kind::Number, "1"}, Case{german, "1.250,5", Kind::Number, "1250.5"},
        Case{german, "1 250,5", Kind::Number, "1250.5"}, Case{german, "1 250.567,5", Kind::NotANumber, ""},
        Case{german, "0,125", Kind::Number, "0.125"}, Case{german, "1,234", Kind::Number, "1.234"},
        Case{german, "1.234", Kind::Ambiguous, ""}, Case{german, "100.000", Kind::Ambiguous, ""},
        Case{german, "1,234.5", Kind::Ambiguous, ""}, Case{german, "1,2,3", Kind::NotANumber, ""},
        Case{german, "1.2.3", Kind::NotANumber, ""}, Case{german, "-1,5", Kind::Number, "-1.5"}));

INSTANTIATE_TEST_SUITE_P(
    FrenchAndSwiss, Typed,
    testing::Values(
        Case{french, "1 234,5", Kind::Number, "1234.5"}, Case{french, "1\u202f234,5", Kind::Number, "1234.5"},
        Case{french, "1\u00a0234", Kind::Number, "1234"}, Case{french, "1.234", Kind::Ambiguous, ""},
        Case{french, "12\t345", Kind::NotANumber, ""}, Case{french, "12\n345", Kind::NotANumber, ""},
        Case{french, "12\r\n345", Kind::NotANumber, ""}, Case{french, "1\u2009234", Kind::Number, "1234"},
        Case{french, "12 34", Kind::Incomplete, ""}, Case{french, "1.234.567", Kind::NotANumber, ""},
        Case{portuguese, "1.234", Kind::Ambiguous, ""}, Case{russian, "1.234", Kind::Ambiguous, ""},
        Case{russian, "12\t345", Kind::NotANumber, ""}, Case{swiss, "1,250", Kind::Ambiguous, ""},
        Case{french, "12.5", Kind::Number, "12.5"}, Case{swiss, "1'234.5", Kind::Number, "1234.5"},
        Case{swiss, "1\u2019234.5", Kind::Number, "1234.5"}, Case{swiss, "1,5", Kind::NotANumber, ""}));

TEST(TypedNumber, CountsDecimalsAsTyped) {
    EXPECT_EQ(readTypedNumber("1.500", english).decimals, 3);
    EXPECT_EQ(readTypedNumber("15", english).decimals, 0);
}

TEST(TypedNumber, TellsBothReadings) {
    EXPECT_EQ(readTypedNumber("1,250", english).readings, (QStringList{"1250", "1.25"}));
    EXPECT_EQ(readTypedNumber("-1.250", german).readings, (QStringList{"-1250", "-1.25"}));
    EXPECT_EQ(readTypedNumber("1.000", french).readings, (QStringList{"1000", "1"}));
    EXPECT_EQ(readTypedNumber("0.125", german).readings, QStringList{"0.125"});
    EXPECT_EQ(readTypedNumber(".125", german).readings, QStringList{"0.125"});
    EXPECT_TRUE(readTypedNumber("1.234,5", english).readings.isEmpty());
}

TEST(TypedNumber, DiffersByTens) {
    for (const auto& [one, other] : {std::pair{"1.25", "12.5"},
                                     {"1.25", "125"},
                                     {"1.25", "1250"},
                                     {"1250", "1.25"},
                                     {"0.5", "0.05"},
                                     {"-2", "-20"}})
        EXPECT_TRUE(differByTens(one, other)) << one << " " << other;
    for (const auto& [one, other] : {std::pair{"1.25", "1.25"},
                                     {"1.25", "12500"},
                                     {"0", "0"},
                                     {"", "10"},
                                     {"1.25", "12.6"},
                                     {"2", "-20"},
                                     {"0", "10"}})
        EXPECT_FALSE(differByTens(one, other)) << one << " " << other;
}

TEST(TypedNumber, WhatIsShownReadsBack) {
    for (const QLocale& locale : {english, german, french, swiss})
        for (const QString number : {"0", "0.5", "12.25", "1234.5", "1234567.125", "-0.07"}) {
            // A box shows its number without thousands marks while it is edited.
            const QString shown = withLocalMarks(number, locale);
            EXPECT_EQ(readTypedNumber(shown, locale).number, number) << shown.toStdString();
        }
}

}  // namespace
