#include "reports/DatedReport.h"

#include "platform/basic/RuntimeError.h"
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

platform::RecordsetPtr DatedReport::allRows(const QString& statement, const QString& orderWithin) const {
    const auto all = platform::Recordset::create();
    if (!orderWithin.isEmpty())
        all->setOrderWithin(orderWithin);
    all->open(statement, openDB(m_context), platform::LockType::ReadOnly, platform::CursorLocation::Client);
    return all;
}

void DatedReport::readTotals(const QString& statement) {
    try {
        m_totals = allRows(statement);
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
    if (found->recordCount() > 0) {
        setRows(found);
    } else {
        sayNoRecords(m_context);
        unload();
    }
}

}  // namespace sorvanto
