// How columns share the width of their list.
#include "platform/widgets/ColumnRoom.h"

#include <gtest/gtest.h>
#include <numeric>

namespace {

using platform::ColumnWish;
using platform::sharedWidths;
using Widths = std::vector<int>;

TEST(ColumnRoom, AreAsDesignedWhereAllTextsHaveTheirRoom) {
    EXPECT_EQ(sharedWidths({{0, 50, 150}, {100, 40, 60}, {80, 40, 80}}, 500, 70, 200),
              (Widths{320, 100, 80}));
}

TEST(ColumnRoom, GiveWhatTheirTextsLeaveEmptyBeforeANameIsCut) {
    EXPECT_EQ(sharedWidths({{0, 50, 150}, {100, 40, 60}, {120, 40, 80}}, 300, 70, 200),
              (Widths{150, 65, 85}));
    EXPECT_EQ(sharedWidths({{0, 50, 190}, {100, 40, 60}, {120, 90, 80}}, 300, 70, 200), (Widths{150, 60, 90}))
        << "never less than their texts and headings";
}

TEST(ColumnRoom, ANameTakesNoMoreThanEnoughFromTheOthers) {
    EXPECT_EQ(sharedWidths({{0, 50, 900}, {100, 40, 60}}, 300, 70, 200), (Widths{200, 100}));
}

TEST(ColumnRoom, HeadingsAreCutBeforeANameHasLessThanTheLeast) {
    EXPECT_EQ(sharedWidths({{0, 50, 150}, {60, 130, 60}}, 200, 100, 200), (Widths{100, 100}));
    EXPECT_EQ(sharedWidths({{0, 50, 150}, {60, 90, 60}}, 200, 100, 200), (Widths{110, 90}));
}

TEST(ColumnRoom, WhatIsLeftOverGoesToTextsThatWouldBeCut) {
    EXPECT_EQ(sharedWidths({{0, 50, 100}, {80, 40, 140}}, 300, 70, 200), (Widths{160, 140}));
    EXPECT_EQ(sharedWidths({{0, 50, 100}, {80, 40, 140}}, 200, 70, 200), (Widths{100, 100}));
    EXPECT_EQ(sharedWidths({{0, 50, 100}, {80, 40, 140}, {200, 40, 60}}, 380, 70, 200),
              (Widths{100, 140, 140}))
        << "as does what another leaves empty";
    EXPECT_EQ(sharedWidths({{0, 50, 100}, {80, 40, 900}}, 600, 70, 200), (Widths{440, 160}))
        << "up to twice its width";
}

TEST(ColumnRoom, TwoOpenColumnsShareByTheirTexts) {
    EXPECT_EQ(sharedWidths({{0, 50, 180}, {100, 40, 100}, {0, 50, 90}}, 370, 70, 200),
              (Widths{180, 100, 90}));
    EXPECT_EQ(sharedWidths({{0, 50, 180}, {100, 40, 100}, {0, 50, 90}}, 235, 60, 200), (Widths{72, 100, 63}))
        << "each has the least";
}

}  // namespace
