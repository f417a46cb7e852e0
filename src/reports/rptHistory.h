// The changes of all records within a range of days, oldest first: who changed what, with the values before and after.
#pragma once

#include "history/HistoryRange.h"
#include "platform/data/Connection.h"
#include "platform/report/Report.h"

#include <vector>

namespace sorvanto {

struct Context;

class rptHistory : public platform::Report {
public:
    /// first and last are whole days.
    rptHistory(Context& context, const platform::ConnectionPtr& connection, const QDate& first,
               const QDate& last);

protected:
    void fetchData(bool& eof) override;
    void detailFormat() override;
    void pageFooterFormat() override;
    void reportFooterFormat() override;

private:
    void translateForm(const QDate& first, const QDate& last);

    Context& m_context;
    platform::ConnectionPtr m_connection;
    HistoryRange m_range;
    std::vector<QStringList> m_lines;  ///< of the change at hand
    std::size_t m_next = 0;            ///< line at hand, counted from 1
    std::int64_t m_changes = 0;
};

}  // namespace sorvanto
