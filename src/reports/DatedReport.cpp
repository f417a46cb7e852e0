#include "reports/DatedReport.h"

#include "shared/Context.h"

namespace sorvanto {

DatedReport::DatedReport(Context& context, platform::ReportDefinition definition)
    : Report(std::move(definition)), m_context(context) {}

bool DatedReport::askDates() {
    const std::optional<DateRange> chosen = askDateRange();
    m_context.reportCancelled = !chosen;
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
        sayNoRecords(m_context);
        unload();
    }
}

}  // namespace sorvanto
