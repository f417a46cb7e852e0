#include "reports/DatedReport.h"

#include "shared/basMain.h"

namespace sorvanto {

bool DatedReport::askDates() {
    const std::optional<DateRange> chosen = askDateRange();
    basMain::reportCancelled = !chosen;
    if (chosen)
        m_range = *chosen;
    else
        unload();
    return chosen.has_value();
}

void DatedReport::setRowsOrNone(const platform::RecordsetPtr& found) {
    if (found->recordCount() > 0) {
        setRows(found);
    } else {
        sayNoRecords();
        unload();
    }
}

}  // namespace sorvanto
