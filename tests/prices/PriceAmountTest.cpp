// Decimal marks of a column, and numbers by them.
#include "prices/PriceAmount.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

std::string number(const QString& text, DecimalMark mark) {
    const auto amount = amountIn(text, mark);
    return amount ? amount->fixed(4).toStdString() : "no number";
}

PriceTable column(const QStringList& texts, bool numbers = false) {
    PriceTable table;
    for (const QString& text : texts)
        table.rows.push_back({{text, numbers}});
    return table;
}

std::string mark(const QStringList& texts, bool isPack = false) {
    const MarkFinding finding = detectedMark(column(texts), 0, 0, isPack);
    if (!finding.mark)
        return "in doubt: " + finding.example.toStdString();
    return *finding.mark == DecimalMark::point ? "point" : "comma";
}

TEST(PriceAmountTest, ANumberIsReadWholeOrNotAtAll) {
    const auto point = DecimalMark::point, comma = DecimalMark::comma;
    EXPECT_EQ(number(u"28.50"_s, point), "28.5000");
    EXPECT_EQ(number(u"28,50"_s, comma), "28.5000");
    EXPECT_EQ(number(u"28,50"_s, point), "no number") << "two digits are no group";
    EXPECT_EQ(number(u"1,234.5"_s, point), "1234.5000");
    EXPECT_EQ(number(u"1.234,5"_s, comma), "1234.5000");
    EXPECT_EQ(number(u"1.234"_s, point), "1.2340");
    EXPECT_EQ(number(u"1.234"_s, comma), "1234.0000");
    EXPECT_EQ(number(u"1'234.50"_s, point), "1234.5000");
    EXPECT_EQ(number(u"1’234.50"_s, point), "1234.5000");
    EXPECT_EQ(number(u"1 234,50"_s, comma), "1234.5000");
    EXPECT_EQ(number(u"1\u00A0234\u202F567,50"_s, comma), "no number") << "one mark between all groups";
    EXPECT_EQ(number(u"1\u202F234\u202F567,50"_s, comma), "1234567.5000");
    EXPECT_EQ(number(u".5"_s, point), "0.5000");
    EXPECT_EQ(number(u"5."_s, point), "5.0000");
    EXPECT_EQ(number(u"-3"_s, point), "-3.0000");
    EXPECT_EQ(number(u"0.0001"_s, point), "0.0001");
    for (const QString& text : {u""_s, u"."_s, u"-"_s, u"1.2.3"_s, u"12a"_s, u"1e5"_s, u"1,2345"_s,
                                u"0,123"_s, u"1,,234"_s, u"1,234,5"_s, u"1 23"_s, u"28.50 or 30"_s, u"n/a"_s})
        EXPECT_EQ(number(text, point), "no number") << text.toStdString();
}

TEST(PriceAmountTest, CurrenciesAreLeftOutAndNothingElse) {
    for (const QString& text : {u"€ 28,50"_s, u"28,50 €"_s, u"EUR 28,50"_s, u"Fr. 28,50"_s, u"28,50 руб."_s,
                                u"R$28,50"_s, u"28,50 chf"_s, u"  28,50 "_s})
        EXPECT_EQ(priceText(text).toStdString(), "28,50") << text.toStdString();
    EXPECT_EQ(priceText(u"28,50 per kg"_s).toStdString(), "28,50 per kg");
}

TEST(PriceAmountTest, APackIsANumberAUnitOrBoth) {
    const auto parts = [](const QString& text) {
        const auto pack = packText(text);
        return pack ? (pack->number + u'/' + pack->unit).toStdString() : "unreadable";
    };
    EXPECT_EQ(parts(u"100 g"_s), "100/g");
    EXPECT_EQ(parts(u"2,5kg"_s), "2,5/kg");
    EXPECT_EQ(parts(u"1 000 ml"_s), "1 000/ml");
    EXPECT_EQ(parts(u"250"_s), "250/");
    EXPECT_EQ(parts(u"г"_s), "/г");
    EXPECT_EQ(parts(u"кг."_s), "/кг.");
    EXPECT_EQ(parts(u""_s), "/");
    for (const QString& text : {u"6 x 10 ml"_s, u"10x5"_s, u"100 g jar"_s, u"ca. 5 g"_s, u"5 g/10 ml"_s})
        EXPECT_EQ(parts(text), "unreadable") << text.toStdString() << ": nobody guesses how much that is";
}

TEST(PriceAmountTest, TheMarkIsThatOfTheWholeColumn) {
    EXPECT_EQ(mark({u"1.50"_s, u"1.234"_s}), "point");
    EXPECT_EQ(mark({u"1,50"_s, u"1,234"_s}), "comma");
    EXPECT_EQ(mark({u"1.234,50"_s, u"3"_s}), "comma");
    EXPECT_EQ(mark({u"1,234.50"_s}), "point");
    EXPECT_EQ(mark({u"0.285"_s}), "point") << "no group begins with 0";
    EXPECT_EQ(mark({u"1.234.567"_s}), "comma") << "two of them part groups";
    EXPECT_EQ(mark({u"3"_s, u"12"_s, u"n/a"_s, u""_s}), "point") << "none is needed";
    EXPECT_EQ(mark({u"€ 1,50"_s}), "comma");
    EXPECT_EQ(mark({u"2,5 kg"_s, u"100 g"_s}, true), "comma");
}

TEST(PriceAmountTest, WhatReadsBothWaysIsAskedNeverGuessed) {
    EXPECT_EQ(mark({u"1.234"_s, u"2"_s}), "in doubt: 1.234");
    EXPECT_EQ(mark({u"3"_s, u"12,500"_s}), "in doubt: 12,500");
    EXPECT_EQ(mark({u"1.000 g"_s}, true), "in doubt: 1.000");
    EXPECT_EQ(mark({u"1.5"_s, u"2,5"_s}), "in doubt: 1.5 / 2,5");
}

TEST(PriceAmountTest, NumbersOfASpreadsheetHaveTheirPointAndNoSay) {
    EXPECT_EQ(detectedMark(column({u"1.234"_s}, true), 0, 0, false).mark, DecimalMark::point);
    PriceTable mixed = column({u"1.5"_s}, true);
    mixed.rows.push_back({{u"2,5"_s, false}});
    EXPECT_EQ(detectedMark(mixed, 0, 0, false).mark, DecimalMark::comma) << "of what is text in it";
    EXPECT_EQ(amountIn(u"1.234"_s)->fixed(3), "1.234");
}

TEST(PriceAmountTest, ARowThatEndsBeforeTheColumnHasNoSay) {
    PriceTable ragged = column({u"x"_s, u"y"_s});
    ragged.rows[1].push_back({u"1,5"_s, false});
    EXPECT_EQ(detectedMark(ragged, 0, 1, false).mark, DecimalMark::comma);
}

}  // namespace
