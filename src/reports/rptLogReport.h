// All batches of one formula between two dates, with totals.
#pragma once

#include "platform/data/Recordset.h"
#include "reports/DatedReport.h"

#include <cstdint>

namespace sorvanto {

class rptLogReport : public DatedReport {
public:
    explicit rptLogReport(Context& context);
    /// Asks the dates, then reads the batches and their totals as of one moment; reportCancelled says that nothing is to be
    /// shown, as after a failure, which is reported.
    void FormulaID(std::int16_t formulaID);

protected:
    void pageHeaderFormat() override;
    void detailFormat() override;
    void pageFooterFormat() override;
    void reportFooterFormat() override;

private:
    void translateForm();
    void takeBatches();
    platform::RecordsetPtr readBatches();
    QString batchesStatement() const;
    QString totalsStatement() const;

    std::int16_t m_formulaID = 0;
    int m_jarField = 0;  ///< place of the jar's size in the rows
};

}  // namespace sorvanto
