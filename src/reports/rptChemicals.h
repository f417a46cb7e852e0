// The price list of all chemicals.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/report/Report.h"

namespace sorvanto {

struct Context;

class rptChemicals : public platform::Report {
public:
    explicit rptChemicals(Context& context);
    void setChemicals(const platform::RecordsetPtr& chemicals);

protected:
    void reportStart() override;
    void pageFooterFormat() override;

private:
    void translateForm();

    Context& m_context;
};

}  // namespace sorvanto
