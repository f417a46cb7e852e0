// Like: the pattern is taken apart once a statement, the text compared character by character.
#include "platform/data/LikePattern.h"

#include <QChar>

namespace platform {

namespace {

/// The character at the front, case folded; takes it off. A broken sequence gives its first byte.
char32_t takeFolded(std::string_view& text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        text.remove_prefix(1);
        return lead >= 'A' && lead <= 'Z' ? lead + ('a' - 'A') : lead;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length == 1 || text.size() < length) {
        text.remove_prefix(1);
        return lead;
    }
    char32_t code = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i)
        code = (code << 6) | (byte(i) & 0x3Fu);
    text.remove_prefix(length);
    return code > 0x10FFFF ? 0xFFFD : QChar::toCaseFolded(code);
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
    while (!pattern.empty()) {
        const char32_t c = takeFolded(pattern);
        Element element;
        if (c == U'%') {
            element.kind = Element::Kind::Any;
        } else if (c == U'_') {
            element.kind = Element::Kind::One;
        } else if (c == U'[') {
            std::u32string inside;
            char32_t next = 0;
            while (!pattern.empty() && (next = takeFolded(pattern)) != U']')
                inside += next;
            m_valid = m_valid && next == U']';
            addSet(inside);
            continue;
        } else {
            element.character = c;
        }
        m_elements.push_back(element);
    }
}

void LikePattern::addSet(const std::u32string& inside) {
    if (inside.empty())
        return;
    Element element;
    element.kind = Element::Kind::Set;
    element.negated = inside.size() > 1 && inside.front() == U'!';
    for (std::size_t i = element.negated ? 1 : 0; i < inside.size(); ++i) {
        const bool range = i + 2 < inside.size() && inside[i + 1] == U'-';
        element.ranges.push_back({inside[i], inside[range ? i + 2 : i]});
        i += range ? 2 : 0;
    }
    m_elements.push_back(std::move(element));
}

bool LikePattern::Element::accepts(char32_t folded) const {
    if (kind != Kind::Set)
        return kind == Kind::One || folded == character;
    for (const Range& range : ranges) {
        if (folded >= range.first && folded <= range.last)
            return !negated;
    }
    return negated;
}

bool LikePattern::matches(std::string_view text) const {
    std::size_t at = 0;
    std::size_t afterAny = m_elements.size() + 1;  // no % met yet
    std::string_view retry;
    for (;;) {
        if (at < m_elements.size() && m_elements[at].kind == Element::Kind::Any) {
            afterAny = ++at;
            if (afterAny == m_elements.size())
                return true;
            retry = text;
            continue;
        }
        if (text.empty())
            return at == m_elements.size();
        if (at < m_elements.size() && m_elements[at].accepts(takeFolded(text))) {
            ++at;
            continue;
        }
        if (afterAny > m_elements.size() || retry.empty())
            return false;
        takeFolded(retry);
        text = retry;
        at = afterAny;
    }
}

}  // namespace platform
