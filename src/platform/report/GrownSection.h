// A section in which texts need more lines than their places hold: they grow downward, what stands below them
// moves down as far, and the whole is dealt out in parts, page after page.
#pragma once

#include "platform/report/TextFitting.h"

#include <optional>
#include <vector>

namespace platform {

class GrownSection {
public:
    /// Nothing where every growing text fits its designed place. The section and the fitting outlive it.
    static std::optional<GrownSection> of(const Section& section, TextFitting& fitting);

    /// A control, or some lines of a growing one, at its place in a part.
    struct Piece {
        std::size_t control = 0;
        int top = 0;     ///< from the top of the part
        int height = 0;  ///< of this piece
        QStringList lines;
        bool grown = false;      ///< lines are what it shows
        bool continued = false;  ///< the control began on an earlier page
    };
    struct Part {
        std::vector<Piece> pieces;
        int height = 0;
    };
    /// The next part, no higher than the room unless its first piece alone is.
    Part next(int room);
    /// Of the whole, on paper without end.
    int height() const { return m_height; }
    bool isOver() const { return m_next == m_pieces.size(); }

private:
    GrownSection() = default;
    void addControl(const Section& section, std::size_t index, int top, const QStringList& lines, int line);

    /// The smallest parts that a page break may not split, from top to bottom.
    struct Smallest {
        std::size_t control = 0;
        int top = 0, bottom = 0;
        QString line;
        bool grown = false;
    };
    std::vector<Smallest> m_pieces;
    std::size_t m_next = 0;
    int m_height = 0;
};

}  // namespace platform
