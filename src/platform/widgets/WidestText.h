// The width of the widest of many texts. To lay a text out takes long, so only those are laid out that may be it:
// the ones whose single signs are widest together.
#pragma once

#include <QFontMetrics>
#include <QHash>
#include <QString>
#include <array>
#include <utility>
#include <vector>

namespace platform {

class WidestText {
public:
    explicit WidestText(const QFontMetrics& metrics) : m_metrics(metrics) {}

    void add(const QString& text);
    /// In pixels; 0 without texts.
    int width() const;

private:
    int signWidth(QChar sign);

    QFontMetrics m_metrics;
    std::array<short, 0x500> m_common{};  ///< widths of Latin, Greek and Cyrillic signs; 0: not measured yet
    QHash<char16_t, int> m_others;
    std::vector<std::pair<int, QString>> m_candidates;  ///< the widest sums, each text once
};

}  // namespace platform
