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
    /// All rows of the statement at once: what others change while pages are made shows in none of them.
    platform::RecordsetPtr allRows(const QString& statement, const QString& orderWithin = {}) const;
    /// Reads what the report's foot shows, so that it is of the same moment as the rows.
    void readTotals(const QString& statement);
    /// Throws what reading them has thrown.
    const platform::Recordset& totals() const;
    /// Takes the rows; without any it says so, and nothing is to be shown.
    void setRowsOrNone(const platform::RecordsetPtr& found);

    Context& m_context;

private:
    DateRange m_range;
    platform::RecordsetPtr m_totals;
    std::exception_ptr m_totalsFailure;
};

}  // namespace sorvanto
