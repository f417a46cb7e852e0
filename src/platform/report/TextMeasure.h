// How wide and high texts are, in twips. Layout asks this and nothing else about fonts, so that the same
// pages come out for every device.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <QFont>
#include <QString>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

struct FontExtent {
    int ascent = 0;
    int descent = 0;
    int line() const { return ascent + descent; }
};

/// Thrown where texts are measured that nobody wants any more.
struct LayoutEnded {};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// Asked every now and then while texts are measured, which is what takes long where a page or a section has many;
    /// false ends it by LayoutEnded.
    void setPace(std::function<bool()> goesOn) { m_goesOn = std::move(goesOn); }
    virtual FontExtent extent(const TextStyle& style) = 0;
    virtual int width(const TextStyle& style, const QString& text) = 0;
    /// Whether the text surely fits, found without shaping it; false when only width() can tell.
    virtual bool surelyFits(const TextStyle& style, const QString& text, int room) = 0;

protected:
    /// To be called by whatever measures.
    void measured() {
        constexpr unsigned textsBetween = 16;
        if (++m_texts % textsBetween == 0 && m_goesOn && !m_goesOn())
            throw LayoutEnded();
    }

private:
    std::function<bool()> m_goesOn;
    unsigned m_texts = 0;
};

/// The font of a style in which one pixel is one twip. Families that the system lacks are replaced by
/// metric-compatible ones.
QFont reportFont(const TextStyle& style);

/// Measures with the fonts of the system.
std::unique_ptr<TextMeasure> fontMeasure();

}  // namespace platform
