// Moving down, and dealing out.
#include "platform/report/GrownSection.h"

#include <algorithm>

namespace platform {

std::optional<GrownSection> GrownSection::of(const Section& section, TextFitting& fitting) {
    std::vector<QStringList> lines(section.controls.size());
    std::vector<int> growth(section.controls.size(), 0);
    bool grown = false;
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        const Control& control = section.controls[i];
        if (!control.grows || !control.visible)
            continue;
        lines[i] = fitting.lines(control);
        const int more = static_cast<int>(lines[i].size()) - fitting.roomOf(control);
        growth[i] = std::max(0, more) * fitting.lineHeight(control);
        grown = grown || more > 0;
    }
    if (!grown)
        return std::nullopt;
    GrownSection result;
    result.m_height = section.height;
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        const Control& control = section.controls[i];
        result.m_height += growth[i];
        if (!control.visible)
            continue;
        int top = control.top;
        for (std::size_t above = 0; above < growth.size(); ++above) {
            const Control& other = section.controls[above];
            if (growth[above] > 0 && other.top + other.height <= control.top)
                top += growth[above];
        }
        result.addControl(section, i, top, lines[i], fitting.lineHeight(control));
    }
    std::stable_sort(result.m_pieces.begin(), result.m_pieces.end(),
                     [](const Smallest& a, const Smallest& b) { return a.top < b.top; });
    return result;
}

void GrownSection::addControl(const Section& section, std::size_t index, int top, const QStringList& lines,
                              int line) {
    const Control& control = section.controls[index];
    if (control.grows) {
        for (const QString& text : lines) {
            m_pieces.push_back({index, top, top + line, text, true});
            top += line;
        }
        return;
    }
    // A caption stays with the first line of the text below it.
    const auto below = [&](const Control& other) {
        return other.grows && other.visible && !other.text.isEmpty() &&
               other.top == control.top + control.height;
    };
    const bool heads =
        control.isText() && std::any_of(section.controls.begin(), section.controls.end(), below);
    m_pieces.push_back({index, top, top + control.height + (heads ? line : 0), {}, false});
}

GrownSection::Part GrownSection::next(int room) {
    Part part;
    if (isOver())
        return part;
    const int start = m_next == 0 ? 0 : m_pieces[m_next].top;
    const std::size_t first = m_next;
    while (!isOver() && (m_next == first || m_pieces[m_next].bottom - start <= room)) {
        const Smallest& piece = m_pieces[m_next];
        const bool continues = piece.grown && !part.pieces.empty() && part.pieces.back().grown &&
                               part.pieces.back().control == piece.control;
        if (continues) {
            part.pieces.back().lines << piece.line;
            part.pieces.back().height = piece.bottom - start - part.pieces.back().top;
        } else {
            const auto began = [&](const Smallest& other) { return other.control == piece.control; };
            const bool continued =
                std::any_of(m_pieces.begin(), m_pieces.begin() + static_cast<std::ptrdiff_t>(first), began);
            part.pieces.push_back({piece.control, piece.top - start, piece.bottom - piece.top,
                                   piece.grown ? QStringList(piece.line) : QStringList(), piece.grown,
                                   continued});
        }
        ++m_next;
    }
    part.height = isOver() ? m_height - start : room;
    return part;
}

}  // namespace platform
