// A time within a sentence reads as the system writes times.
#include "platform/basic/TimeOfDay.h"

#include "platform/basic/SystemLocale.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace platform {
namespace {

struct Case {
    QLocale locale;
    QString text;
};

class TimeOfDayTest : public testing::TestWithParam<Case> {
protected:
    TimeOfDayTest() { setSystemLocale(GetParam().locale); }
    ~TimeOfDayTest() override { setSystemLocale(std::nullopt); }
};

TEST_P(TimeOfDayTest, FollowsTheSystem) { EXPECT_EQ(timeOfDay(QTime(14, 5, 9)), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Systems, TimeOfDayTest,
                         testing::Values(Case{QLocale::c(), u"2:05 PM"_s},
                                         Case{QLocale(QLocale::English, QLocale::UnitedStates), u"2:05 PM"_s},
                                         Case{QLocale(QLocale::German, QLocale::Germany), u"14:05"_s},
                                         Case{QLocale(QLocale::Finnish, QLocale::Finland), u"14.05"_s},
                                         Case{QLocale(QLocale::Spanish, QLocale::Spain), u"14:05"_s},
                                         Case{QLocale(QLocale::Korean, QLocale::SouthKorea),
                                              u"오후 2:05"_s}));

TEST(TimeOfDay, OfTheNightAndTheMorning) {
    setSystemLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(timeOfDay(QTime(0, 7)), u"12:07 AM"_s);
    EXPECT_EQ(timeOfDay(QTime(12, 0)), u"12:00 PM"_s);
    setSystemLocale(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(timeOfDay(QTime(8, 7)), u"08:07"_s);
    setSystemLocale(std::nullopt);
}

}  // namespace
}  // namespace platform
