// The comparison Like: case ignored in every script, % any run of characters, _ one character,
// [a-z] one of a set, [!a-z] one outside it. The engine's own folds case in English letters alone and knows no sets.
#pragma once

#include <QString>
#include <string_view>
#include <vector>

namespace platform {

class LikePattern {
public:
    /// UTF-8. isValid is false when a set is not closed.
    explicit LikePattern(std::string_view pattern);
    bool isValid() const { return m_valid; }
    bool matches(std::string_view text) const;

private:
    struct Range {
        char32_t first;
        char32_t last;
    };
    struct Element {
        enum class Kind { Character, One, Any, Set } kind = Kind::Character;
        char32_t character = 0;
        bool negated = false;
        std::vector<Range> ranges;
        bool accepts(char32_t folded) const;
    };

    void addSet(const std::u32string& inside);

    std::vector<Element> m_elements;
    bool m_valid = true;
};

}  // namespace platform
