#include "reports/LabelPositions.h"

namespace sorvanto {

bool LabelPositions::step() {
    if (m_column != 3) {
        ++m_column;
    } else {
        ++m_row;
        m_column = 1;
    }
    if (m_row + 1 == m_firstRow && m_column == m_firstColumn) {
        m_printing = true;
        m_printed = 1;
    }
    // The label of this position prints in both cases; the done flag ends the report after it.
    if (m_printing) {
        if (m_printed < m_labels)
            ++m_printed;
        else
            m_done = true;
    }
    return m_printing;
}

}  // namespace sorvanto
