// How much room a text leaves for the one beside it.
#include "platform/report/Clearance.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

std::vector<int> roomLeft(std::vector<Control> controls) {
    Section section;
    section.controls = std::move(controls);
    return clearances(section);
}

}  // namespace

TEST(Clearance, ATextKeepsAPointAndAHalfFromTheNextOne) {
    const Control one = field("a", 0, 0, 500, 200);
    using Room = std::vector<int>;
    EXPECT_EQ(roomLeft({one, field("b", 500, 0, 500, 200)}), (Room{30, 0}));
    EXPECT_EQ(roomLeft({one, field("b", 510, 0, 500, 200), field("c", 1020, 0, 500, 200)}),
              (Room{20, 20, 0}));
    EXPECT_EQ(roomLeft({one, field("b", 530, 0, 500, 200)}), (Room{0, 0})) << "far enough away";
    EXPECT_EQ(roomLeft({one, field("b", 490, 0, 500, 200)}), (Room{0, 0})) << "over it, not beside it";
    EXPECT_EQ(roomLeft({one, field("b", 490, 0, 500, 200).indented(20)}), (Room{20, 0}));
}

TEST(Clearance, OnlyTextsOfOneLineAreNeighbours) {
    const Control one = field("a", 0, 0, 500, 200);
    using Room = std::vector<int>;
    EXPECT_EQ(roomLeft({one, field("b", 500, 90, 500, 200)}), (Room{30, 0}));
    EXPECT_EQ(roomLeft({one, field("b", 500, 91, 500, 200)}), (Room{0, 0}));
    EXPECT_EQ(roomLeft({field("a", 0, 0, 500, 200).right(), field("b", 500, 0, 500, 200)}), (Room{0, 0}));
}
