// The pieces of a binary workbook that an office program seldom writes.
#include "prices/BiffRecords.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using namespace sorvanto;

QByteArray word(int value) {
    return QByteArray(1, static_cast<char>(value & 0xFF)) + static_cast<char>(value >> 8 & 0xFF);
}

QByteArray longWord(int value) { return word(value) + word(value >> 16); }

/// As it stands among the shared ones: count, flags, characters of one byte.
QByteArray sharedString(const QByteArray& text) { return word(static_cast<int>(text.size())) + '\0' + text; }

TEST(BiffRecordsTest, SharedStringsAreCountedBeyondSixteenBits) {
    constexpr int count = 0x10002;
    const QByteArray bytes = longWord(count) + longWord(count) + sharedString("a").repeated(count + 3);
    const QStringList strings = sharedStringsIn({{Biff::sharedStrings, bytes}});
    EXPECT_EQ(strings.size(), count) << "and none of what follows";
    EXPECT_EQ(strings.back(), u"a"_s);
}

TEST(BiffRecordsTest, CharactersAreAsManyAsTheRecordSaysAndHas) {
    const BiffRecord narrow{Biff::label, QByteArrayView("\0zinc!", 6)};
    EXPECT_EQ(narrow.characters(0, 4), u"zinc"_s);
    EXPECT_EQ(narrow.characters(0, 0), QString());
    EXPECT_EQ(narrow.characters(0, 99), u"zinc!"_s);
    const BiffRecord wide{Biff::label, QByteArrayView("\1\x26\x04", 3)};
    EXPECT_EQ(wide.characters(0, 1), u"\u0426"_s);
}

TEST(BiffRecordsTest, FormattedRunsAndPronunciationsAreSkipped) {
    constexpr char runsAndPhonetics = 8 | 4;
    const QByteArray bytes = longWord(2) + longWord(2) + word(2) + runsAndPhonetics + word(1) + longWord(3) +
                             "ab" + QByteArray(4 + 3, 'x') + sharedString("cd");
    EXPECT_EQ(sharedStringsIn({{Biff::sharedStrings, bytes}}), (QStringList{u"ab"_s, u"cd"_s}));
}

}  // namespace
