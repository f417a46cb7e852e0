// Neighbours by their places: beside one another are controls whose upper edges lie within half a line.
#include "platform/report/Clearance.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

constexpr int leastGap = 30;  // a point and a half, the better part of a blank in the rows' type
constexpr int sameLine = 90;

bool follows(const Control& control, const Control& other) {
    return other.isText() && std::abs(other.top - control.top) <= sameLine && other.left > control.left &&
           other.left + other.indent >= control.left + control.width;
}

}  // namespace

std::vector<int> clearances(const Section& section) {
    std::vector<int> clear(section.controls.size(), 0);
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        const Control& control = section.controls[i];
        if (!control.isText() || control.style.align == TextAlign::Right)
            continue;  // a text at the right edge ends where it was designed to
        for (const Control& other : section.controls) {
            if (follows(control, other))
                clear[i] =
                    std::max(clear[i], control.left + control.width + leastGap - (other.left + other.indent));
        }
    }
    return clear;
}

}  // namespace platform
