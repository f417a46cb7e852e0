// How often each jar size was used between two dates, over all batches.
#pragma once

#include "reports/DatedReport.h"

namespace sorvanto {

class rptJarUsage : public DatedReport {
public:
    explicit rptJarUsage(Context& context);
    /// The value is kept and used nowhere; setting it asks the dates and opens the counts.
    /// reportCancelled says that nothing is to be shown. Failures go to the caller.
    void JarID(int value);

protected:
    void detailFormat() override;

private:
    void translateForm();

    int m_jarID = 0;
};

}  // namespace sorvanto
