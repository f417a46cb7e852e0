// The mixer's tables, and the preset programmes within them.
#include "mixer/MixTables.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace sorvanto;

TEST(MixTables, TenTypes) {
    const QStringList types = mixTypeNames();
    ASSERT_EQ(types.size(), 10);
    EXPECT_EQ(types[0], "Combination");
    EXPECT_EQ(types[9], "Custom");
    EXPECT_EQ(QStringList(types).removeDuplicates(), 0);
}

TEST(MixTables, JarsFromOne) {
    EXPECT_EQ(jarNames(), (QStringList{"", "15 ml", "20 ml", "30 ml", "50 ml", "100 ml", "200 ml", "300 ml",
                                       "500 ml", "1000 ml"}));
}

TEST(MixTables, Times) {
    const QStringList times = mixTimeTexts();
    ASSERT_EQ(times.size(), 256);
    static const QRegularExpression form(u"^\\d\\d:\\d\\d:\\d\\d$"_s);
    int last = -1;
    for (const QString& time : times) {
        EXPECT_TRUE(form.match(time).hasMatch()) << time.toStdString();
        EXPECT_GT(secondsOfTime(time), last);
        last = secondsOfTime(time);
        EXPECT_EQ(timeText(last), time);
    }
    const std::pair<int, const char*> known[] = {{0, "00:00:00"},   {1, "00:00:01"},   {20, "00:00:20"},
                                                 {21, "00:00:22"},  {70, "00:02:00"},  {71, "00:02:05"},
                                                 {166, "00:10:00"}, {167, "00:10:30"}, {244, "00:49:00"},
                                                 {245, "00:50:00"}, {255, "01:00:00"}};
    for (const auto& [index, text] : known)
        EXPECT_EQ(times[index], text) << index;
}

TEST(MixTables, TimesThatAreNone) {
    EXPECT_EQ(secondsOfTime("99:99:99"), 99 * 3600 + 99 * 60 + 99);
    for (const char* bad : {"", "10", "00:10", "00:10:00:00", "a:b:c", "-1:00:00", "00:00:100", "00: :00"})
        EXPECT_EQ(secondsOfTime(bad), -1) << bad;
}

TEST(MixTables, SpeedByJar) {
    const int recommended[] = {3000, 2496, 2496, 2496, 2292, 2292, 2292, 2100, 2100, 1992, 3000};
    for (int jar = 0; jar <= 10; ++jar)
        EXPECT_EQ(recommendedMixRpm(jar), recommended[jar]) << jar;
}

// As lift RPM/mix RPM, and seconds or cycles ("x"). A change here changes what every pharmacy mixes.
TEST(MixTables, PresetsByType) {
    const char* const presets[] = {"960/900 30, 1200/1800 120, 1440/2196 60, 720/900 30",
                                   "720/840 60, 1200/1596 180, 720/900 60",
                                   "480/600 60, 720/1200 240, 480/480 120",
                                   "1200/1200 30, 1440/1800 90, 960/1200 30",
                                   "1200/1500 6x, 1440/2400 120, 1200/1200 4x",
                                   "480/600 60, 960/1200 240, 960/1500 180, 480/600 60",
                                   "480/480 8x, 720/900 120",
                                   "720/720 45, 960/1200 120, 480/480 45"};
    for (int type = 1; type <= 8; ++type) {
        QStringList steps;
        for (const protocol::Step& step : presetSteps(type, 1))
            steps << u"%1/%2 "_s.arg(step.liftRpm).arg(step.mixRpm) +
                         (step.cycles ? u"%1x"_s.arg(step.cycles) : QString::number(step.seconds));
        EXPECT_EQ(steps.join(", ").toStdString(), presets[type - 1]) << type;
    }
    EXPECT_EQ(presetSteps(1, 9)[2].mixRpm, 1992) << "no faster than the jar allows";
    EXPECT_EQ(presetSteps(1, 9)[1].mixRpm, 1800);
}

TEST(MixTables, PresetsRunInEveryJar) {
    for (int type = 1; type <= 8; ++type) {
        for (int jar = 1; jar <= 9; ++jar) {
            const auto steps = presetSteps(type, jar);
            ASSERT_FALSE(steps.empty()) << type;
            int number = 0;
            for (const protocol::Step& step : steps) {
                EXPECT_LE(step.mixRpm, recommendedMixRpm(jar));
                EXPECT_EQ(step.liftRpm % 24, 0);
                EXPECT_EQ(step.mixRpm % 12, 0);
                const auto command = protocol::stepCommand(++number, step);
                EXPECT_TRUE(protocol::readStep(command)) << type << ' ' << jar;
            }
        }
    }
    for (const int type : {-1, 0, 9, 10})
        EXPECT_TRUE(presetSteps(type, 5).empty());
}
