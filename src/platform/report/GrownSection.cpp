// Moving down, and dealing out.
#include "platform/report/GrownSection.h"

#include <algorithm>
#include <numeric>

namespace platform {

namespace {

/// How far each control moves, and last the section's end: as far as the one above it that reaches down most. Those
/// side by side grow beside one another.
std::vector<int> movedDown(const Section& section, const std::vector<int>& growth) {
    const std::vector<Control>& controls = section.controls;
    std::vector<std::size_t> order(controls.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return controls[a].top < controls[b].top; });
    std::vector<int> moved(controls.size() + 1, 0);
    for (std::size_t done = 0; done < order.size(); ++done) {
        const std::size_t i = order[done];
        for (std::size_t j = 0; j < done; ++j) {
            const Control& above = controls[order[j]];
            const bool isAbove = above.visible && above.top + above.height <= controls[i].top;
            if (isAbove)
                moved[i] = std::max(moved[i], moved[order[j]] + growth[order[j]]);
        }
        if (controls[i].visible)
            moved.back() = std::max(moved.back(), moved[i] + growth[i]);
    }
    return moved;
}

}  // namespace

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
    const std::vector<int> moved = movedDown(section, growth);
    result.m_height = section.height + moved.back();
    for (std::size_t i = 0; i < section.controls.size(); ++i) {
        const Control& control = section.controls[i];
        if (control.visible)
            result.addControl(section, i, control.top + moved[i], lines[i], fitting.lineHeight(control));
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
        const auto begun = std::find_if(part.pieces.begin(), part.pieces.end(), [&](const Piece& other) {
            return other.grown && piece.grown && other.control == piece.control;
        });
        if (begun != part.pieces.end()) {
            begun->lines << piece.line;
            begun->height = piece.bottom - start - begun->top;
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
