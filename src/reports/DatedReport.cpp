#include "reports/DatedReport.h"

#include "platform/basic/RuntimeError.h"
#include "reports/ReportRows.h"
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

void DatedReport::readTotals(const QString& statement) {
    try {
        m_totals = allRows(m_context, statement);
    } catch (...) {
        m_totalsFailure = std::current_exception();  // is met where they are shown
    }
}

const platform::Recordset& DatedReport::totals() const {
    if (m_totalsFailure)
        std::rethrow_exception(m_totalsFailure);
    return platform::deref(m_totals);
}

void DatedReport::setRowsOrNone(const platform::RecordsetPtr& found) {
    if (found && found->recordCount() > 0)
        return setRows(found);
    if (found)
        sayNoRecords(m_context);
    else
        m_context.reportCancelled = true;
    unload();
}

}  // namespace sorvanto
