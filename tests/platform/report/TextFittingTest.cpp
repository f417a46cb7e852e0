// Line ends, word wrap, shortening, smaller type, alignment and tabs, measured with made-up widths and with real fonts.
#include "platform/report/TextFitting.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;

namespace {

/// Every character is 100 twips wide and a line 200 high.
class EvenMeasure : public TextMeasure {
public:
    FontExtent extent(const TextStyle&) override { return {150, 50}; }
    int width(const TextStyle&, const QString& text) override { return static_cast<int>(text.size()) * 100; }
    bool surelyFits(const TextStyle&, const QString&, int) override { return false; }
};

/// Every character is ten times the points wide: 100 twips in ten point type.
class ScaledMeasure : public EvenMeasure {
public:
    int width(const TextStyle& style, const QString& text) override {
        return static_cast<int>(static_cast<double>(text.size()) * style.points * 10);
    }
};

struct Shown {
    QStringList lines;
    std::vector<TextRun> runs;
    bool whole = false;
    Fitted::Result how = Fitted::Result::Whole;
    double points = 0;
};

Shown fitted(Control control, const QString& text, int clear = 0) {
    ScaledMeasure measure;
    TextFitting fitting(measure);
    control.text = text;
    if (control.style.points == 0)
        control.points(10);
    Shown result;
    const Fitted out = fitting.fit(control, 1000, 2000, clear, result.runs);
    result.how = out.result;
    result.points = out.points;
    result.whole = out.result == Fitted::Result::Whole;
    for (const TextRun& run : result.runs)
        result.lines << run.text;
    return result;
}

}  // namespace

struct FittingCase {
    const char* text;
    int width, height;
    QStringList lines;
    bool whole;
};

class TextFittingTable : public testing::TestWithParam<FittingCase> {};

TEST_P(TextFittingTable, Fits) {
    const auto& [text, width, height, lines, whole] = GetParam();
    const Shown result = fitted(label("c", 0, 0, width, height), text);
    EXPECT_EQ(result.lines.join('|').toStdString(), lines.join('|').toStdString()) << text;
    EXPECT_EQ(result.whole, whole) << text;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TextFittingTable,
    testing::Values(
        FittingCase{"", 500, 200, {}, true}, FittingCase{"abcde", 500, 200, {"abcde"}, true},
        FittingCase{"abcdef", 500, 200, {"abcd…"}, false},
        FittingCase{"abcde   ", 500, 200, {"abcde"}, true},   // only blanks are lost
        FittingCase{"ab cd ef", 500, 200, {"ab c…"}, false},  // one line does not wrap, it is shortened
        FittingCase{"ab cd ef", 500, 400, {"ab cd", "ef"}, true},
        FittingCase{"ab cde fg", 500, 400, {"ab", "cde…"}, false},  // the last line is shortened
        FittingCase{
            "abcdefgh", 500, 400, {"abcde", "fgh"}, true},  // a word longer than the line breaks inside
        FittingCase{"ab\ncd", 500, 400, {"ab", "cd"}, true},
        FittingCase{"ab\r\ncd\r\n", 500, 400, {"ab", "cd"}, true},  // the last line end starts no line
        FittingCase{"ab\rcd", 500, 400, {"ab", "cd"}, true},
        FittingCase{"ab\n\ncd", 500, 600, {"ab", "cd"}, true},  // an empty line takes room, draws nothing
        FittingCase{"ab\ncd", 500, 200, {"ab…"}, false},        // a field of one line shows the first
        FittingCase{"ab\ncd", 500, 360, {"ab", "cd"}, true},    // a fifth of a line may be missing
        FittingCase{"ab\ncd", 500, 350, {"ab…"}, false},
        FittingCase{"ab", 500, 90, {"ab"}, true},  // a control lower than its font shows its line
        FittingCase{"abc", 50, 200, {}, false}, FittingCase{"abc", 50, 900, {}, false}));

TEST(TextFitting, CutsNeverSplitACharacterAsTheReaderSeesIt) {
    // An e with a combining accent, then a face outside the basic plane: both are two units long.
    const QString text = u"abcd"_s + QChar('e') + QChar(0x0301) + "fg";
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 200), text).lines, QStringList("abcd…"));
    const QString face = u"abcd"_s + QString::fromUcs4(U"\U0001F600", 1) + "g";
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 200), face).lines, QStringList("abcd…"));
}

TEST(TextFitting, AlignsEachLine) {
    const Shown right = fitted(label("c", 0, 0, 500, 400).right(), "ab\ncde");
    EXPECT_EQ(right.runs[0].x, 1300);
    EXPECT_EQ(right.runs[1].x, 1200);
    EXPECT_EQ(right.runs[0].baseline, 2150);
    EXPECT_EQ(right.runs[1].baseline, 2350);
    const Shown centre = fitted(label("c", 0, 0, 500, 200).centre(), "ab");
    EXPECT_EQ(centre.runs[0].x, 1150);
}

TEST(TextFitting, ALineHigherThanItsControlHangsOverEvenly) {
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 180), "ab").runs[0].baseline, 2000 - 10 + 150);
}

TEST(TextFitting, TabsGoToTheNextHalfInch) {
    const Shown tabs = fitted(label("c", 0, 0, 9000, 200), "ab\tcdefghi\tj\t");
    ASSERT_EQ(tabs.lines, QStringList({"ab", "cdefghi", "j"}));
    EXPECT_EQ(tabs.runs[1].x, 1000 + 720);
    EXPECT_EQ(tabs.runs[2].x, 1000 + 2160) << "720 + 700 is too near to the second stop";
    EXPECT_TRUE(tabs.whole);
    EXPECT_FALSE(fitted(label("c", 0, 0, 1000, 200), "ab\tcdefghi").whole);
}

TEST(TextFitting, VeryLongTextsCostNoMoreThanTheirStart) {
    const Shown result = fitted(label("c", 0, 0, 500, 200), QString(1'000'000, 'x'));
    EXPECT_EQ(result.lines, QStringList(u"xxxx…"_s));
    EXPECT_FALSE(result.whole);
}

TEST(TextFitting, TheQuickAnswerOfTheRealMeasureIsNeverWrong) {
    const auto measure = fontMeasure();
    for (const char* family : {"Arial", "Times New Roman"}) {
        for (const double points : {6.0, 8.5, 10.0, 15.75}) {
            for (const char* text :
                 {"AVATAR To. Ya", "fi ffl office", "Zürich 100 %", "Формула", "1234567890.00", "W"}) {
                const TextStyle style{family, points};
                const int width = measure->width(style, QString::fromUtf8(text));
                EXPECT_GT(width, 0);
                for (const int room : {width - 1, width, width + 1, width * 2})
                    EXPECT_TRUE(!measure->surelyFits(style, QString::fromUtf8(text), room) || width <= room)
                        << text;
                EXPECT_TRUE(measure->surelyFits(style, QString::fromUtf8(text), width * 2)) << text;
            }
        }
    }
}

TEST(TextFitting, FontsMeasureTheirPointsAtTwentyTwips) {
    const auto measure = fontMeasure();
    // Arial's line is 1.15 of its size by its ascent and descent; Times New Roman's about the same.
    EXPECT_NEAR(measure->extent({"Arial", 10}).line(), 10 * 20 * 1.117, 4);
    EXPECT_NEAR(measure->extent({"Times New Roman", 9}).line(), 9 * 20 * 1.107, 4);
}

TEST(TextFitting, ValuesAreSetInSmallerTypeAndNeverCut) {
    const Control place = field("c", 0, 0, 500, 200).asValue("Lot");
    const Shown told = fitted(place, "12345");
    EXPECT_TRUE(told.whole);
    EXPECT_EQ(told.points, 10);
    const Shown smaller = fitted(place, "123456");
    EXPECT_EQ(smaller.lines, QStringList("123456"));
    EXPECT_EQ(smaller.how, Fitted::Result::Smaller);
    EXPECT_EQ(smaller.points, 8.25) << "the largest quarter of a point that fits";
    EXPECT_EQ(smaller.runs[0].baseline, told.runs[0].baseline) << "on the line of its neighbours";
    EXPECT_EQ(fitted(place, "1234567890").points, leastPoints);
    const Shown hidden = fitted(place, "12345678901");
    EXPECT_EQ(hidden.lines, QStringList("####"));
    EXPECT_EQ(hidden.how, Fitted::Result::Hidden);
    EXPECT_EQ(fitted(place, QString(1'000'000, '1')).lines, QStringList("####"));
    EXPECT_EQ(fitted(field("c", 0, 0, 120, 200).asValue("Lot"), "12345").lines, QStringList("##"));
    EXPECT_EQ(fitted(place, "AB\r\n12\t3").lines, QStringList("AB 12 3")) << "no line of a value is lost";
}

TEST(TextFitting, NumbersAreValuesWhateverTheControlSays) {
    Control place = field("c", 0, 0, 500, 200);
    place.value = 123456.0;
    EXPECT_EQ(fitted(place, "123456").lines, QStringList("123456"));
    place.value = u"123456"_s;
    EXPECT_EQ(fitted(place, "123456").lines, QStringList(u"…"_s)) << "a text of digits is not shortened";
}

TEST(TextFitting, SmallerTypeKeepsTheAlignment) {
    const Shown right = fitted(field("c", 0, 0, 500, 200).right().asValue("Cost"), "1234567890");
    EXPECT_EQ(right.runs[0].x, 1000);
    const Shown nine = fitted(field("c", 0, 0, 500, 200).right().asValue("Cost"), "12345678");
    EXPECT_EQ(nine.points, 6.25);
    EXPECT_EQ(nine.runs[0].x, 1000);
}

TEST(TextFitting, ASingleLineKeepsClearOfItsNeighbour) {
    const Control words = field("c", 0, 0, 500, 200);
    EXPECT_EQ(fitted(words, "abcde", 40).lines, QStringList(u"abc…"_s));
    EXPECT_EQ(fitted(words, "abcdefg", 80).lines, QStringList(u"ab…"_s))
        << "and some more once it is shortened";
    EXPECT_EQ(fitted(words, "abcd", 40).lines, QStringList("abcd"));
    EXPECT_EQ(fitted(field("c", 0, 0, 500, 200).asValue("Lot"), "12345", 40).points, 9);
    EXPECT_EQ(fitted(field("c", 0, 0, 500, 200).centre().asValue("Lot"), "12345", 40).points, 8.25)
        << "on both sides";
}

TEST(TextFitting, NoNumberIsTornInWords) {
    const auto shown = [](const char* text, int width) {
        return fitted(label("c", 0, 0, width, 200), QString::fromUtf8(text)).lines.join('|').toStdString();
    };
    EXPECT_EQ(shown("Take 1000 drops", 800), "Take…") << "never \"Take 10…\"";
    EXPECT_EQ(shown("Take 1000 drops", 1000), "Take 1000…");
    EXPECT_EQ(shown("Take 100 mcg now", 1100), "Take…") << "no number without its unit";
    EXPECT_EQ(shown("Take 100 mcg now", 1300), "Take 100 mcg…");
    EXPECT_EQ(shown("Dissolve in B12", 1000), "Dissolve…");
}

TEST(TextFitting, NamesAreShortenedInFrontOfTheirStrength) {
    const auto shown = [](const char* text, int width) {
        return fitted(field("c", 0, 0, width, 200).asName("Name"), QString::fromUtf8(text))
            .lines.join('|')
            .toStdString();
    };
    EXPECT_EQ(shown("Suspension 1000 mcg/ml", 2200), "Suspension 1000 mcg/ml");
    EXPECT_EQ(shown("Suspension 1000 mcg/ml", 2000), "Suspens… 1000 mcg/ml");
    EXPECT_EQ(shown("Lidocaine 2% Prilocaine 2.5 % Cream", 2500), "Lido… 2% Prilocaine 2.5 %…")
        << "four characters of a name stay, in smaller type";
    EXPECT_EQ(shown("Drug 5 mg in a base", 1400), "Drug 5 mg in…");
    EXPECT_EQ(shown("Without any strength", 1000), "Without a…");
    EXPECT_EQ(shown("Suspension 1000 mcg/ml", 300), "####") << "not even in the smallest type";
}

TEST(TextFitting, WhatANameIsToldToKeepStaysWhole) {
    Control place = field("c", 0, 0, 1500, 200).asName("Name");
    place.tail = 9;  // " extra 2x"
    EXPECT_EQ(fitted(place, "Hydrocortisone extra 2x").lines, QStringList(u"Hydro… extra 2x"_s));
    place.tail = 1;  // nothing but the blank
    EXPECT_EQ(fitted(place, "Hydrocortisone in a base ").lines, QStringList(u"Hydrocortisone…"_s));
}

TEST(TextFitting, LinesOfAVeryLongTextAreFoundInTime) {
    ScaledMeasure measure;
    TextFitting fitting(measure);
    Control place = field("c", 0, 0, 10000, 200).points(10);
    place.text = u"word 12 "_s.repeated(50'000);
    const QStringList lines = fitting.lines(place);
    EXPECT_EQ(lines.join(' ').trimmed().toStdString(), place.text.trimmed().toStdString());
}
