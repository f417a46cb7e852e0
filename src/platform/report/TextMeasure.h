// How wide and high texts are, in twips. Layout asks this and nothing else about fonts, so that the same
// pages come out for every device.
#pragma once

#include "platform/report/ReportDefinition.h"

#include <QFont>
#include <QString>
#include <memory>

namespace platform {

struct FontExtent {
    int ascent = 0;
    int descent = 0;
    int line() const { return ascent + descent; }
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    virtual FontExtent extent(const TextStyle& style) = 0;
    virtual int width(const TextStyle& style, const QString& text) = 0;
    /// Whether the text surely fits, found without shaping it; false when only width() can tell.
    virtual bool surelyFits(const TextStyle& style, const QString& text, int room) = 0;
};

/// The font of a style in which one pixel is one twip. Families that the system lacks are replaced by
/// metric-compatible ones.
QFont reportFont(const TextStyle& style);

/// Measures with the fonts of the system.
std::unique_ptr<TextMeasure> fontMeasure();

}  // namespace platform
