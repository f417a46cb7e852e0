// Labels of a prescription on a part-used sheet of Avery 8160 stock.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/report/Report.h"
#include "reports/LabelPositions.h"

namespace sorvanto {

struct Context;

class rptRX8160 : public platform::Report {
public:
    explicit rptRX8160(Context& context);
    /// Keeps the one-row set and asks the start position and the number of labels; the caller looks at
    /// the context's labelsCancelled.
    void setRX(const platform::RecordsetPtr& prescription);

protected:
    void fetchData(bool& eof) override { eof = m_positions.done(); }
    void detailFormat() override;

private:
    void nameFile();
    void fillPharmacy();
    void fillPrescription();

    Context& m_context;
    platform::RecordsetPtr rs;
    LabelPositions m_positions;
};

}  // namespace sorvanto
