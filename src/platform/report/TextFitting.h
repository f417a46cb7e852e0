// Fits a text into its control: line ends, word wrap where the control is higher than a line, tabs, alignment.
// A text that has no room never runs over a neighbour and never loses a digit unseen: words end in "…", a name
// is shortened in front of its strength, a value is set in smaller type and at last stands as "####".
#pragma once

#include "platform/report/PageDocument.h"
#include "platform/report/TextMeasure.h"

#include <optional>
#include <vector>

namespace platform {

/// How a text came out.
struct Fitted {
    enum class Result { Whole, Smaller, Shortened, Hidden };
    Result result = Result::Whole;
    double points = 0;  ///< the type it is set in
};

/// The smallest type that a value is set in, in points.
inline constexpr double leastPoints = 5;

class TextFitting {
public:
    explicit TextFitting(TextMeasure& measure) : m_measure(measure) {}

    /// Adds the runs of the control's text, with the control's top left at (x, y). A single line keeps so many
    /// twips clear at its end for the sake of a neighbour, and may overhang a control that is lower than its font.
    Fitted fit(const Control& control, int x, int y, int clear, std::vector<TextRun>& runs);

    /// All lines of the control's text at its width.
    QStringList lines(const Control& control);
    /// How many lines the control's height has room for.
    int roomOf(const Control& control);
    int lineHeight(const Control& control) { return m_measure.extent(control.style).line(); }
    /// Adds the runs of lines that lie below one another from y on.
    void place(const Control& control, const QStringList& lines, int x, int y, std::vector<TextRun>& runs);

private:
    /// One line in the type that it is set in.
    struct SetLine {
        QString text;
        double points;
    };

    /// Splits a text into lines of the width. With text left after `most` lines gives false; the last line is
    /// then the rest of its paragraph, however long.
    bool wrap(const TextStyle& style, const QString& text, int width, int most, QStringList& lines);
    /// As wrap, from one paragraph.
    bool wrapParagraph(const TextStyle& style, QStringView paragraph, int width, int most,
                       QStringList& lines);
    std::optional<SetLine> smaller(const Control& control, const QString& text, int width);
    std::optional<SetLine> shortenedName(const Control& control, const QString& text, int width);
    QString withEllipsis(const TextStyle& style, const QString& line, int width);
    SetLine marks(const Control& control, int width);
    bool fits(const TextStyle& style, const QString& line, int width);
    int lineWidth(const TextStyle& style, const QString& line);
    /// Count of characters from the start that fit together with what follows them, never splitting a
    /// character as the reader sees it.
    int fittingLength(const TextStyle& style, QStringView line, const QString& behind, int width);
    /// Where the characters end, as the reader sees them, up to well past the width; all: whether that is the whole text.
    std::vector<int> characterEnds(const TextStyle& style, const QString& text, int width, bool& all);
    void placeLine(const Control& control, const SetLine& line, int x, int baseline,
                   std::vector<TextRun>& runs);

    TextMeasure& m_measure;
};

}  // namespace platform
