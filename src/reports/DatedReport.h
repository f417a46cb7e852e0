// A report over the time between two dates, for which it asks.
#pragma once

#include "platform/report/Report.h"
#include "reports/DateRange.h"

namespace sorvanto {

class DatedReport : public platform::Report {
protected:
    DatedReport(Context& context, platform::ReportDefinition definition);

    /// False when the question was cancelled: reportCancelled is set then, and nothing is to be shown.
    bool askDates();
    const DateRange& range() const { return m_range; }
    /// Takes the rows; without any it says so, and nothing is to be shown.
    void setRowsOrNone(const platform::RecordsetPtr& found);

    Context& m_context;

private:
    DateRange m_range;
};

}  // namespace sorvanto
