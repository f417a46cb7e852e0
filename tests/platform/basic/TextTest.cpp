// Blanks alone are trimmed, and apostrophes doubled.
#include "platform/basic/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace platform;

TEST(Text, TrimTakesBlanksAtBothEndsOnly) {
    struct Row {
        const char* text;
        const char* trimmed;
    };
    const Row rows[] = {{"", ""},
                        {"   ", ""},
                        {" a b ", "a b"},
                        {"a", "a"},
                        {"\tx\n", "\tx\n"},
                        {" \t x ", "\t x"},
                        {"\u00A0x\u00A0", "\u00A0x\u00A0"}};
    for (const Row& row : rows)
        EXPECT_EQ(trimmed(QString(row.text)), QString(row.trimmed));
}

TEST(Text, EveryApostropheComesTwice) {
    EXPECT_EQ(doubledApostrophes("St John's 'wort'"), u"St John''s ''wort''"_s);
    EXPECT_EQ(doubledApostrophes("''"), u"''''"_s);
    EXPECT_EQ(doubledApostrophes("\"plain\""), u"\"plain\""_s);
    EXPECT_EQ(doubledApostrophes(""), u""_s);
}
