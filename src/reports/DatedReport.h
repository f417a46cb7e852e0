// A report over the time between two dates, for which it asks.
#pragma once

#include "platform/report/Report.h"
#include "reports/DateRange.h"

#include <exception>

namespace sorvanto {

class DatedReport : public platform::Report {
protected:
    DatedReport(Context& context, platform::ReportDefinition definition);

    /// False when the question was cancelled: reportCancelled is set then, and nothing is to be shown.
    bool askDates();
    const DateRange& range() const { return m_range; }
    /// Reads what the report's foot shows, so that it is of the same moment as the rows.
    void readTotals(const QString& statement);
    /// Throws what reading them has thrown.
    const platform::Recordset& totals() const;
    /// Takes the rows; without any it says so, and nothing is to be shown. Null: the reading was stopped, as if the question
    /// had been cancelled.
    void setRowsOrNone(const platform::RecordsetPtr& found);

    Context& m_context;

private:
    DateRange m_range;
    platform::RecordsetPtr m_totals;
    std::exception_ptr m_totalsFailure;
};

}  // namespace sorvanto
