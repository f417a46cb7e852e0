// Labels of a batch on a part-used sheet of Avery 8160 stock.
#pragma once

#include "platform/report/Report.h"
#include "records/clsLog.h"
#include "reports/LabelPositions.h"

namespace sorvanto {

class rptLogAvery8160 : public platform::Report {
public:
    rptLogAvery8160();
    /// Keeps the batch and asks the start position and the number of labels; the caller looks at
    /// basMain::labelsCancelled.
    void setLog(const clsLogPtr& log);

protected:
    void fetchData(bool& eof) override { eof = m_positions.done(); }
    void detailFormat() override;
    void terminate() override;

private:
    void fillLabel();

    clsLogPtr m_log;
    LabelPositions m_positions;
};

}  // namespace sorvanto
