#include "history/HistoryLinks.h"

#include "history/OtherBenches.h"

#include <utility>

namespace sorvanto {

// The row "begun" itself goes on with the one chain before it, or with that of what came from outside. Without the note it
// goes on with the last row of whichever chain, and so does everything behind it.
QByteArray HistoryLinks::follow(const LinkedRow& row) {
    m_before = std::exchange(m_last, row.seal);
    const bool isBegun = row.what == QLatin1String("begun");
    const bool begins = isBegun && row.note == QLatin1String(chainOfEachBench);
    if (isBegun && !begins)
        join();
    if (begins && !m_ofBench)
        m_ends = {{QString(), {0, m_before}}};
    m_ofBench = m_ofBench || begins;
    if (!m_ofBench)
        return m_before;
    const QString bench = benchOf(row.person);
    const End before = m_ends.value(bench, {0, m_anchor});
    m_ends.insert(bench, {row.number, row.seal});
    if (begins)
        m_anchor = row.seal;
    return before.seal;
}

}  // namespace sorvanto
