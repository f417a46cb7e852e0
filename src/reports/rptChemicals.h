// The price list of all chemicals.
#pragma once

#include "platform/data/Recordset.h"
#include "platform/report/Report.h"

namespace sorvanto {

class rptChemicals : public platform::Report {
public:
    rptChemicals();
    void setChemicals(const platform::RecordsetPtr& chemicals);

protected:
    void reportStart() override;
    void pageFooterFormat() override;

private:
    void translateForm();
};

}  // namespace sorvanto
