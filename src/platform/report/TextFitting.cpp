// Fitting of texts into controls.
#include "platform/report/TextFitting.h"

#include <QStringList>
#include <QTextBoundaryFinder>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace platform {

namespace {
constexpr int tabStop = 720;   // half an inch
constexpr int leastGap = 144;  // so that a stop just behind a word still parts it from the next

/// Where the text after a tab goes on.
int nextTabStop(int x) { return ((x + leastGap) / tabStop + 1) * tabStop; }

QStringList paragraphs(const QString& text) {
    if (!text.contains('\n'_L1) && !text.contains('\r'_L1))
        return {text};
    QString plain = text;
    plain.replace(u"\r\n"_s, u"\n"_s).replace('\r'_L1, '\n'_L1);
    QStringList parts = plain.split('\n'_L1);
    while (parts.size() > 1 && parts.last().trimmed().isEmpty())
        parts.removeLast();
    return parts;
}
}  // namespace

bool TextFitting::fit(const Control& control, int x, int y, std::vector<TextRun>& runs) {
    if (control.text.isEmpty())
        return true;
    const FontExtent extent = m_measure.extent(control.style);
    // A fifth of a line may hang over: a field made for a line of its font must take that line.
    const int room = std::max(1, (control.height + extent.line() / 5) / extent.line());
    const QStringList parts = paragraphs(control.text);
    const int width = control.width - control.indent;
    QStringList lines;
    bool whole = true;
    for (const QString& part : parts) {
        const int left = room - static_cast<int>(lines.size());
        if (left == 0) {
            whole = false;
            break;
        }
        whole = wrap(control.style, part, width, left, lines) && whole;
    }
    const int overhang = room == 1 ? std::max(0, extent.line() - control.height) / 2 : 0;
    int baseline = y - overhang + extent.ascent;
    for (const QString& line : std::as_const(lines)) {
        place(control, line, x + control.indent, baseline, runs);
        baseline += extent.line();
    }
    return whole;
}

bool TextFitting::wrap(const TextStyle& style, QString paragraph, int width, int most, QStringList& lines) {
    while (true) {
        if (m_measure.surelyFits(style, paragraph, width) || lineWidth(style, paragraph) <= width) {
            lines << paragraph;
            return true;
        }
        int length = fittingLength(style, paragraph, width);
        if (most == 1) {
            lines << paragraph.left(length);
            return paragraph.mid(length).trimmed().isEmpty();
        }
        int next = length;
        const qsizetype blank = paragraph.lastIndexOf(' '_L1, length);
        if (blank > 0) {
            length = static_cast<int>(blank);
            next = length + 1;
        } else if (length == 0) {
            return false;  // not even one character is narrow enough
        }
        lines << paragraph.left(length);
        paragraph = paragraph.mid(next);
        --most;
    }
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

int TextFitting::fittingLength(const TextStyle& style, const QString& line, int width) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, line);
    std::vector<int> ends;
    for (qsizetype end = finder.toNextBoundary(); end > 0; end = finder.toNextBoundary()) {
        ends.push_back(static_cast<int>(end));
        // Well past the width nothing more can fit; a text of any length costs no more than its start.
        if (ends.size() % 256 == 0 && lineWidth(style, line.left(end)) > width)
            break;
    }
    const auto tooLong = std::partition_point(
        ends.begin(), ends.end(), [&](int end) { return lineWidth(style, line.left(end)) <= width; });
    return tooLong == ends.begin() ? 0 : *(tooLong - 1);
}

void TextFitting::place(const Control& control, const QString& line, int x, int baseline,
                        std::vector<TextRun>& runs) {
    if (line.isEmpty())
        return;
    if (line.contains('\t'_L1)) {
        int at = 0;
        bool first = true;
        for (const QString& part : line.split('\t'_L1)) {
            at = first ? 0 : nextTabStop(at);
            first = false;
            if (!part.isEmpty())
                runs.push_back({x + at, baseline, part});
            at += m_measure.width(control.style, part);
        }
        return;
    }
    int start = x;
    if (control.style.align != TextAlign::Left) {
        const int spare = control.width - control.indent - m_measure.width(control.style, line);
        start += control.style.align == TextAlign::Right ? spare : spare / 2;
    }
    runs.push_back({start, baseline, line});
}

}  // namespace platform
