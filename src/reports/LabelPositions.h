// Counts the positions of a label sheet, three across and ten down, from its top left: which are passed
// over, which print, and when the run is done.
#pragma once

#include <cstdint>

namespace sorvanto {

class LabelPositions {
public:
    /// Row and column of the first label count from 1.
    LabelPositions(std::int16_t row, std::int16_t column, std::int16_t labels)
        : m_firstRow(row), m_firstColumn(column), m_labels(labels) {}

    /// Goes to the next position; true when a label prints there.
    bool step();
    /// Whether the position of the last step was the run's last.
    bool done() const { return m_done; }

private:
    std::int16_t m_firstRow, m_firstColumn, m_labels;
    std::int32_t m_printed = 0, m_column = 0, m_row = 0;
    bool m_printing = false, m_done = false;
};

}  // namespace sorvanto
