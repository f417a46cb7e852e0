// Fits a text into a control of fixed size: line ends, word wrap where the control is higher than a line,
// tabs, alignment. What has no room is cut at a whole character, so that it never runs over a neighbour.
#pragma once

#include "platform/report/PageDocument.h"
#include "platform/report/TextMeasure.h"

#include <vector>

namespace platform {

class TextFitting {
public:
    explicit TextFitting(TextMeasure& measure) : m_measure(measure) {}

    /// Adds the runs of the control's text, with the control's top left at (x, y). Gives false when
    /// something had to be cut. A single line may overhang a control that is lower than its font.
    bool fit(const Control& control, int x, int y, std::vector<TextRun>& runs);

private:
    /// Splits a paragraph into lines of the width; stops after `most` lines, giving false when text is left.
    bool wrap(const TextStyle& style, QString paragraph, int width, int most, QStringList& lines);
    int lineWidth(const TextStyle& style, const QString& line);
    /// Count of characters from the start that fit, never splitting a character as the reader sees it.
    int fittingLength(const TextStyle& style, const QString& line, int width);
    void place(const Control& control, const QString& line, int x, int baseline, std::vector<TextRun>& runs);

    TextMeasure& m_measure;
};

}  // namespace platform
