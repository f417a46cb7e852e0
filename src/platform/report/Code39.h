// Code 39: the bars of a text, with their start and stop marks, as alternating dark and light modules.
#pragma once

#include <QString>
#include <vector>

namespace platform {

class Code39 {
public:
    /// Widths of bars and gaps in modules, a bar first; empty when the text has a character that Code 39
    /// lacks. Letters are read as upper case.
    static std::vector<int> pattern(const QString& text);
    /// Whole width in modules without quiet zones.
    static int modules(const std::vector<int>& pattern);

    /// Light modules needed before the first and after the last bar.
    static constexpr int quietZone = 10;
    /// Twips of a dot of a 300 dpi printer; bars are whole dots there, and so at 600 and 1200.
    static constexpr double dot = 4.8;
    /// The narrowest module that desk readers take: two dots, a sixth of a millimetre.
    static constexpr int leastDots = 2;

    /// Whether the bars with their quiet zones have room in so many twips.
    static bool fits(const QString& text, int width);
};

}  // namespace platform
