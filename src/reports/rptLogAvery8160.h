// Labels of a batch on a part-used sheet of Avery 8160 stock.
#pragma once

#include "platform/report/Report.h"
#include "records/clsLog.h"
#include "reports/LabelPositions.h"

namespace sorvanto {

struct Context;

class rptLogAvery8160 : public platform::Report {
public:
    explicit rptLogAvery8160(Context& context);
    /// Keeps the batch and asks the start position and the number of labels; the caller looks at
    /// the context's labelsCancelled.
    void setLog(const clsLogPtr& log);

protected:
    void fetchData(bool& eof) override { eof = m_positions.done(); }
    void detailFormat() override;
    void terminate() override;

private:
    void fillLabel();

    Context& m_context;
    clsLogPtr m_log;
    LabelPositions m_positions;
};

}  // namespace sorvanto
