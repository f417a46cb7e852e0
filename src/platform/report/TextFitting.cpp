// Fitting of texts into controls.
#include "platform/report/TextFitting.h"

#include "platform/report/Strength.h"

#include <QStringList>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int tabStop = 720;            // half an inch
constexpr int leastStopGap = 144;       // so that a stop just behind a word still parts it from the next
constexpr qsizetype mostOfLine = 4096;  // characters beyond which no line can fit
constexpr qsizetype usualOfLine = 512;  // characters that nearly always are more than a line
constexpr qsizetype leastOfName = 4;    // characters that stay of a name in front of its strength
constexpr double pointStep = 0.25;
constexpr int comfort = 30;  // that shortened words keep further off a neighbour

QString ellipsis() { return u"…"_s; }

/// Where the text after a tab goes on.
int nextTabStop(int x) { return ((x + leastStopGap) / tabStop + 1) * tabStop; }

bool isOneLine(const QString& text) { return !text.contains('\n'_L1) && !text.contains('\r'_L1); }

QStringList paragraphs(const QString& text) {
    if (isOneLine(text))
        return {text};
    QString plain = text;
    plain.replace(u"\r\n"_s, u"\n"_s).replace('\r'_L1, '\n'_L1);
    QStringList parts = plain.split('\n'_L1);
    while (parts.size() > 1 && parts.last().trimmed().isEmpty())
        parts.removeLast();
    return parts;
}

/// The text on one line.
QString joined(const QString& text) { return paragraphs(text).join(' '_L1); }

QString withoutEndBlanks(QString text) {
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

TextStyle inPoints(TextStyle style, double points) {
    style.points = points;
    return style;
}

/// The next smaller type, on whole steps; below leastPoints where there is none.
double nextSmaller(double points) { return std::ceil(points / pointStep - 1) * pointStep; }

}  // namespace

Fitted TextFitting::fit(const Control& control, int x, int y, int clear, std::vector<TextRun>& runs) {
    const double designed = control.style.points;
    if (control.text.isEmpty())
        return {Fitted::Result::Whole, designed};
    const int width = control.width - control.indent;
    const int room = roomOf(control);
    const int single = width - (control.style.align == TextAlign::Centre ? 2 * clear : clear);
    if (isOneLine(control.text) && m_measure.surelyFits(control.style, control.text, single)) {
        place(control, {control.text}, x, y, runs);
        return {Fitted::Result::Whole, designed};
    }
    // A caption in its own place may stand as near to its value as it was designed.
    const bool caption = control.kind == ControlKind::Label && control.textKind == TextKind::Words;
    QStringList shown;
    const bool whole = wrap(control.style, control.text, room == 1 && !caption ? single : width, room, shown);
    const int words = clear > 0 ? single - comfort : single;
    if (whole || (!control.isValue() && control.textKind == TextKind::Words && control.tail == 0)) {
        if (!whole && !shown.isEmpty())
            shown.last() = withEllipsis(control.style, shown.last(), room == 1 ? words : width);
        place(control, shown, x, y, runs);
        return {whole ? Fitted::Result::Whole : Fitted::Result::Shortened, designed};
    }
    const QString line = joined(control.text);
    const bool value = control.isValue();
    const auto set = value ? smaller(control, line, single) : shortenedName(control, line, words);
    const FontExtent extent = m_measure.extent(control.style);
    const int overhang = room == 1 ? std::max(0, extent.line() - control.height) / 2 : 0;
    const SetLine drawn = set ? *set : marks(control, single);
    placeLine(control, drawn, x + control.indent, y - overhang + extent.ascent, runs);
    const auto result = !set    ? Fitted::Result::Hidden
                        : value ? Fitted::Result::Smaller
                                : Fitted::Result::Shortened;
    return {result, drawn.points};
}

int TextFitting::roomOf(const Control& control) {
    const int line = lineHeight(control);
    // A fifth of a line may hang over: a field made for a line of its font must take that line.
    return std::max(1, (control.height + line / 5) / line);
}

QStringList TextFitting::lines(const Control& control) {
    QStringList all;
    wrap(control.style, control.text, control.width - control.indent, std::numeric_limits<int>::max(), all);
    return all;
}

void TextFitting::place(const Control& control, const QStringList& lines, int x, int y,
                        std::vector<TextRun>& runs) {
    const FontExtent extent = m_measure.extent(control.style);
    const int overhang = roomOf(control) == 1 ? std::max(0, extent.line() - control.height) / 2 : 0;
    int baseline = y - overhang + extent.ascent;
    for (const QString& line : lines) {
        placeLine(control, {line, control.style.points}, x + control.indent, baseline, runs);
        baseline += extent.line();
    }
}

bool TextFitting::wrap(const TextStyle& style, const QString& text, int width, int most, QStringList& lines) {
    for (const QString& part : paragraphs(text)) {
        const int left = most - static_cast<int>(lines.size());
        if (left == 0 || !wrapParagraph(style, part, width, left, lines))
            return false;
    }
    return true;
}

bool TextFitting::wrapParagraph(const TextStyle& style, QStringView paragraph, int width, int most,
                                QStringList& lines) {
    while (true) {
        if (paragraph.size() <= mostOfLine && fits(style, paragraph.toString(), width)) {
            lines << paragraph.toString();
            return true;
        }
        qsizetype length = fittingLength(style, paragraph, {}, width);
        if (most == 1) {
            const bool whole = length > 0 && paragraph.mid(length).trimmed().isEmpty();
            lines << paragraph.left(whole ? length : mostOfLine).toString();
            return whole;
        }
        qsizetype next = length;
        const qsizetype blank = paragraph.left(length + 1).lastIndexOf(u' ');
        if (blank > 0) {
            length = blank;
            next = length + 1;
        } else if (length == 0) {
            return false;  // not even one character is narrow enough
        }
        lines << paragraph.left(length).toString();
        paragraph = paragraph.mid(next);
        --most;
    }
}

std::optional<TextFitting::SetLine> TextFitting::smaller(const Control& control, const QString& text,
                                                         int width) {
    QString line = text;
    line.replace('\t'_L1, ' '_L1);
    if (line.size() > mostOfLine)
        return std::nullopt;
    for (double points = control.style.points; points >= leastPoints; points = nextSmaller(points)) {
        if (fits(inPoints(control.style, points), line, width))
            return SetLine{line, points};
    }
    return std::nullopt;
}

std::optional<TextFitting::SetLine> TextFitting::shortenedName(const Control& control, const QString& text,
                                                               int width) {
    TextSpan kept{std::max<qsizetype>(0, text.size() - control.tail), text.size()};
    while (kept.start < text.size() && text[kept.start] == ' '_L1)
        ++kept.start;
    if (QStringView(text).mid(kept.start).trimmed().isEmpty())
        kept = strengthOf(text.left(mostOfLine));
    if (kept.isEmpty())
        return SetLine{withEllipsis(control.style, text, width), control.style.points};
    const QString name = withoutEndBlanks(text.left(kept.start));
    const bool more = !QStringView(text).mid(kept.end).trimmed().isEmpty();
    const QString strength = text.mid(kept.start, kept.end - kept.start) + (more ? ellipsis() : QString());
    const QString behind = ellipsis() + (strength.startsWith('\t'_L1) ? QString() : u" "_s) + strength;
    for (double points = control.style.points; points >= leastPoints; points = nextSmaller(points)) {
        const TextStyle style = inPoints(control.style, points);
        const QString words = withEllipsis(style, text, width);
        if (words.size() - 1 >= kept.end)  // what lies behind the strength is enough to drop
            return SetLine{words, points};
        const qsizetype length = safeEnd(name, fittingLength(style, name, behind, width));
        if (length >= std::min(control.lead + leastOfName, name.size()) &&
            fits(style, name.left(length) + behind, width))
            return SetLine{withoutEndBlanks(name.left(length)) + behind, points};
    }
    return std::nullopt;
}

QString TextFitting::withEllipsis(const TextStyle& style, const QString& line, int width) {
    if (!fits(style, ellipsis(), width))
        return {};
    return withoutEndBlanks(line.left(safeEnd(line, fittingLength(style, line, ellipsis(), width)))) +
           ellipsis();
}

TextFitting::SetLine TextFitting::marks(const Control& control, int width) {
    for (QString text = u"####"_s; !text.isEmpty(); text.chop(1)) {
        if (const auto set = smaller(control, text, width))
            return *set;
    }
    return {{}, leastPoints};
}

bool TextFitting::fits(const TextStyle& style, const QString& line, int width) {
    return m_measure.surelyFits(style, line, width) || lineWidth(style, line) <= width;
}

int TextFitting::lineWidth(const TextStyle& style, const QString& line) {
    if (!line.contains('\t'_L1))
        return m_measure.width(style, line);
    int x = 0;
    bool first = true;
    for (const QString& part : line.split('\t'_L1)) {
        x = (first ? 0 : nextTabStop(x)) + m_measure.width(style, part);
        first = false;
    }
    return x;
}

std::vector<int> TextFitting::characterEnds(const TextStyle& style, const QString& text, int width,
                                            bool& all) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    std::vector<int> ends;
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary()) {
        ends.push_back(static_cast<int>(end));
        // Well past the width nothing more can fit; a text of any length costs no more than its start.
        if (ends.size() % 256 == 0 && lineWidth(style, text.left(end)) > width) {
            all = false;
            break;
        }
    }
    return ends;
}

int TextFitting::fittingLength(const TextStyle& style, QStringView line, const QString& behind, int width) {
    QString text = line.left(usualOfLine).toString();
    bool all = true;
    std::vector<int> ends = characterEnds(style, text, width, all);
    if (all && line.size() > usualOfLine) {
        text = line.left(mostOfLine).toString();
        ends = characterEnds(style, text, width, all);
    }
    const auto tooLong = std::partition_point(ends.begin(), ends.end(), [&](int end) {
        return lineWidth(style, text.left(end) + behind) <= width;
    });
    return tooLong == ends.begin() ? 0 : *(tooLong - 1);
}

void TextFitting::placeLine(const Control& control, const SetLine& line, int x, int baseline,
                            std::vector<TextRun>& runs) {
    if (line.text.isEmpty())
        return;
    const TextStyle style = inPoints(control.style, line.points);
    if (line.text.contains('\t'_L1)) {
        int at = 0;
        bool first = true;
        for (const QString& part : line.text.split('\t'_L1)) {
            at = first ? 0 : nextTabStop(at);
            first = false;
            if (!part.isEmpty())
                runs.push_back({x + at, baseline, part});
            at += m_measure.width(style, part);
        }
        return;
    }
    int start = x;
    if (style.align != TextAlign::Left) {
        const int spare = control.width - control.indent - m_measure.width(style, line.text);
        start += style.align == TextAlign::Right ? spare : spare / 2;
    }
    runs.push_back({start, baseline, line.text});
}

}  // namespace platform
