// Measuring with Qt's font metrics at one pixel a twip, unhinted. Widths of single characters are kept,
// because most texts can be seen to fit from them alone, and those of the latest texts, because lists repeat theirs.
#include "platform/report/TextMeasure.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QStringList>
#include <array>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

/// Families that hold the same metrics or, for the old bitmap face, the nearest shape.
QString replacement(const QString& family) {
    static const QHash<QString, QString> table{
        {u"Arial"_s, u"Liberation Sans"_s},
        {u"Times New Roman"_s, u"Liberation Serif"_s},
        {u"MS Serif"_s, u"Liberation Serif"_s},
    };
    return table.value(family);
}

constexpr qsizetype mostKeptWidths = 4096;

struct MeasuredFont {
    TextStyle style;
    QFontMetricsF metrics;
    FontExtent extent;
    std::array<float, 0x500> advances{};  ///< Latin, Greek and Cyrillic; 0: not measured yet
    QHash<QString, int> widths;           ///< of texts that were measured

    explicit MeasuredFont(const TextStyle& of)
        : style(of), metrics(reportFont(of)), extent{static_cast<int>(std::lround(metrics.ascent())),
                                                     static_cast<int>(std::lround(metrics.descent()))} {}
};

class SystemFontMeasure : public TextMeasure {
public:
    FontExtent extent(const TextStyle& style) override { return fontOf(style).extent; }

    int width(const TextStyle& style, const QString& text) override {
        MeasuredFont& font = fontOf(style);
        const auto known = font.widths.constFind(text);
        if (known != font.widths.constEnd())
            return *known;
        measured();
        if (font.widths.size() == mostKeptWidths)
            font.widths.clear();
        return *font.widths.insert(text,
                                   static_cast<int>(std::ceil(font.metrics.horizontalAdvance(text) - 0.01)));
    }

    bool surelyFits(const TextStyle& style, const QString& text, int room) override {
        measured();
        MeasuredFont& font = fontOf(style);
        float sum = 0;
        for (const QChar character : text) {
            const ushort code = character.unicode();
            if (code < 0x20 || code >= font.advances.size())
                return false;
            float& advance = font.advances[code];
            if (advance == 0)
                advance = static_cast<float>(font.metrics.horizontalAdvance(character));
            sum += advance;
        }
        return sum * 1.02f <= static_cast<float>(room);  // kerning hardly ever widens
    }

private:
    MeasuredFont& fontOf(const TextStyle& style) {
        if (m_last && sameFont(m_last->style, style))
            return *m_last;
        for (const auto& font : m_fonts) {
            if (sameFont(font->style, style))
                return *(m_last = font.get());
        }
        m_fonts.push_back(std::make_unique<MeasuredFont>(style));
        return *(m_last = m_fonts.back().get());
    }

    static bool sameFont(const TextStyle& a, const TextStyle& b) {
        const bool oneText =
            a.family.constData() == b.family.constData();  // as a style and its copies have it
        return a.points == b.points && a.bold == b.bold && a.italic == b.italic &&
               (oneText || a.family == b.family);
    }

    std::vector<std::unique_ptr<MeasuredFont>> m_fonts;
    MeasuredFont* m_last = nullptr;
};

}  // namespace

QFont reportFont(const TextStyle& style) {
    QStringList families{style.family};
    const QString other = replacement(style.family);
    if (!other.isEmpty()) {
        if (QFontDatabase::hasFamily(style.family))
            families << other;
        else
            families.prepend(other);
    }
    families << u"Liberation Sans"_s << u"DejaVu Sans"_s;
    families.removeDuplicates();
    QFont font;
    font.setFamilies(families);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(style.points * 20))));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferOutline);
    return font;
}

std::unique_ptr<TextMeasure> fontMeasure() { return std::make_unique<SystemFontMeasure>(); }

}  // namespace platform
