#include "records/WidestText.h"

#include <QHash>
#include <algorithm>
#include <vector>

namespace sorvanto {

namespace {

constexpr std::size_t candidates = 16;  // kerning changes a sum of single signs by a few pixels

/// Sums of the widths of single signs.
class RoughWidth {
public:
    explicit RoughWidth(const QFontMetrics& metrics) : m_metrics(metrics) {}

    int of(const QString& text) {
        int sum = 0;
        for (const QChar sign : text) {
            auto known = m_signs.constFind(sign.unicode());
            if (known == m_signs.constEnd())
                known = m_signs.insert(sign.unicode(), m_metrics.horizontalAdvance(sign));
            sum += *known;
        }
        return sum;
    }

private:
    const QFontMetrics& m_metrics;
    QHash<char16_t, int> m_signs;
};

}  // namespace

int widestText(const QStringList& texts, const QFontMetrics& metrics) {
    RoughWidth rough(metrics);
    std::vector<std::pair<int, QString>> all;
    for (const QString& text : texts)
        all.emplace_back(rough.of(text), text);
    std::sort(all.begin(), all.end(), std::greater<>());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    all.resize(std::min(all.size(), candidates));
    int widest = 0;
    for (const auto& [width, text] : all)
        widest = std::max(widest, metrics.horizontalAdvance(text));
    return widest;
}

}  // namespace sorvanto
