// Line ends, word wrap, cutting, alignment and tabs, measured with made-up widths and with real fonts.
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

struct Fitted {
    QStringList lines;
    std::vector<TextRun> runs;
    bool whole = false;
};

Fitted fitted(Control control, const QString& text) {
    EvenMeasure measure;
    TextFitting fitting(measure);
    control.text = text;
    Fitted result;
    result.whole = fitting.fit(control, 1000, 2000, result.runs);
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
    const Fitted result = fitted(label("c", 0, 0, width, height), text);
    EXPECT_EQ(result.lines.join('|').toStdString(), lines.join('|').toStdString()) << text;
    EXPECT_EQ(result.whole, whole) << text;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, TextFittingTable,
    testing::Values(
        FittingCase{"", 500, 200, {}, true}, FittingCase{"abcde", 500, 200, {"abcde"}, true},
        FittingCase{"abcdef", 500, 200, {"abcde"}, false},
        FittingCase{"abcde   ", 500, 200, {"abcde"}, true},   // only blanks are lost
        FittingCase{"ab cd ef", 500, 200, {"ab cd"}, false},  // one line does not wrap, it is cut
        FittingCase{"ab cd ef", 500, 400, {"ab cd", "ef"}, true},
        FittingCase{"ab cde fg", 500, 400, {"ab", "cde f"}, false},  // the last line is cut
        FittingCase{
            "abcdefgh", 500, 400, {"abcde", "fgh"}, true},  // a word longer than the line breaks inside
        FittingCase{"ab\ncd", 500, 400, {"ab", "cd"}, true},
        FittingCase{"ab\r\ncd\r\n", 500, 400, {"ab", "cd"}, true},  // the last line end starts no line
        FittingCase{"ab\rcd", 500, 400, {"ab", "cd"}, true},
        FittingCase{"ab\n\ncd", 500, 600, {"ab", "cd"}, true},  // an empty line takes room, draws nothing
        FittingCase{"ab\ncd", 500, 200, {"ab"}, false},         // a field of one line shows the first
        FittingCase{"ab\ncd", 500, 360, {"ab", "cd"}, true},    // a fifth of a line may be missing
        FittingCase{"ab\ncd", 500, 350, {"ab"}, false},
        FittingCase{"ab", 500, 90, {"ab"}, true},  // a control lower than its font shows its line
        FittingCase{"abc", 50, 200, {}, false}, FittingCase{"abc", 50, 900, {}, false}));

TEST(TextFitting, CutsNeverSplitACharacterAsTheReaderSeesIt) {
    // An e with a combining accent, then a face outside the basic plane: both are two units long.
    const QString text = u"abcd"_s + QChar('e') + QChar(0x0301) + "f";
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 200), text).lines, QStringList("abcd"));
    const QString face = u"abcd"_s + QString::fromUcs4(U"\U0001F600", 1);
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 200), face).lines, QStringList("abcd"));
}

TEST(TextFitting, AlignsEachLine) {
    const Fitted right = fitted(label("c", 0, 0, 500, 400).right(), "ab\ncde");
    EXPECT_EQ(right.runs[0].x, 1300);
    EXPECT_EQ(right.runs[1].x, 1200);
    EXPECT_EQ(right.runs[0].baseline, 2150);
    EXPECT_EQ(right.runs[1].baseline, 2350);
    const Fitted centre = fitted(label("c", 0, 0, 500, 200).centre(), "ab");
    EXPECT_EQ(centre.runs[0].x, 1150);
}

TEST(TextFitting, ALineHigherThanItsControlHangsOverEvenly) {
    EXPECT_EQ(fitted(label("c", 0, 0, 500, 180), "ab").runs[0].baseline, 2000 - 10 + 150);
}

TEST(TextFitting, TabsGoToTheNextHalfInch) {
    const Fitted tabs = fitted(label("c", 0, 0, 9000, 200), "ab\tcdefghi\tj\t");
    ASSERT_EQ(tabs.lines, QStringList({"ab", "cdefghi", "j"}));
    EXPECT_EQ(tabs.runs[1].x, 1000 + 720);
    EXPECT_EQ(tabs.runs[2].x, 1000 + 2160) << "720 + 700 is too near to the second stop";
    EXPECT_TRUE(tabs.whole);
    EXPECT_FALSE(fitted(label("c", 0, 0, 1000, 200), "ab\tcdefghi").whole);
}

TEST(TextFitting, VeryLongTextsCostNoMoreThanTheirStart) {
    const Fitted result = fitted(label("c", 0, 0, 500, 200), QString(1'000'000, 'x'));
    EXPECT_EQ(result.lines, QStringList("xxxxx"));
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
