// A short list of candidates, widest sums first.
#include "platform/widgets/WidestText.h"

#include <algorithm>

namespace platform {

namespace {
constexpr std::size_t mostCandidates = 16;  // kerning changes a sum of single signs by a few pixels
}

void WidestText::add(const QString& text) {
    int sum = 0;
    for (const QChar sign : text)
        sum += signWidth(sign);
    const bool full = m_candidates.size() == mostCandidates;
    if (full && sum <= m_candidates.back().first)
        return;
    const auto place = std::find_if(m_candidates.begin(), m_candidates.end(),
                                    [&](const auto& known) { return known.first <= sum; });
    for (auto same = place; same != m_candidates.end() && same->first == sum; ++same)
        if (same->second == text)
            return;
    m_candidates.insert(place, {sum, text});
    if (full)
        m_candidates.pop_back();
}

int WidestText::width() const {
    int widest = 0;
    for (const auto& [sum, text] : m_candidates)
        widest = std::max(widest, m_metrics.horizontalAdvance(text));
    return widest;
}

int WidestText::signWidth(QChar sign) {
    const char16_t code = sign.unicode();
    if (code < m_common.size()) {
        short& width = m_common[code];
        if (width == 0)
            width = static_cast<short>(m_metrics.horizontalAdvance(sign));
        return width;
    }
    const auto known = m_others.constFind(code);
    return known != m_others.constEnd() ? *known : *m_others.insert(code, m_metrics.horizontalAdvance(sign));
}

}  // namespace platform
