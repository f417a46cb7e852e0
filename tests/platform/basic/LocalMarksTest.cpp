// The marks of a formatted number as the user's system writes them.
#include "platform/basic/LocalMarks.h"

#include "platform/basic/SystemLocale.h"

#include <gtest/gtest.h>

namespace {

using namespace platform;

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale german(QLocale::German, QLocale::Germany);
const QLocale french(QLocale::French, QLocale::France);
const QLocale swiss(QLocale::French, QLocale::Switzerland);

TEST(LocalMarks, StandBetweenTheDigitsOnly) {
    EXPECT_EQ(withLocalMarks("$ 1,234.50", german), "$ 1.234,50");
    EXPECT_EQ(withLocalMarks("Fr. 1,234.50", german), "Fr. 1.234,50");
    EXPECT_EQ(withLocalMarks("1,234.50 a.m., x", german), "1.234,50 a.m., x");
    EXPECT_EQ(withLocalMarks("Null", german), "Null");
    EXPECT_EQ(withLocalMarks(".50", german), ",50");
    EXPECT_EQ(withLocalMarks("", german), "");
    EXPECT_EQ(withLocalMarks("1,234.50", english), "1,234.50");
}

TEST(LocalMarks, GroupAsTheSystemDoes) {
    EXPECT_EQ(withLocalMarks("1,234.50", french), QString("1\u202f234,50"));
    EXPECT_EQ(withLocalMarks("18.104 GMS", german), "18,104 GMS");
    EXPECT_EQ(withLocalMarks("-0.007", swiss), "-0,007");
}

TEST(LocalMarks, ShownNumbersFollowTheSystem) {
    setSystemLocale(german);
    EXPECT_EQ(shownNumber("18.104"), "18,104");
    setSystemLocale(QLocale::c());
    EXPECT_EQ(shownNumber("18.104"), "18.104");
    setSystemLocale(std::nullopt);
}

}  // namespace
