// The prescriptions of one patient between two dates, with address and store block.
#pragma once

#include "platform/data/Recordset.h"
#include "reports/DatedReport.h"

#include <cstdint>

namespace sorvanto {

class rptPatient : public DatedReport {
public:
    explicit rptPatient(Context& context);
    /// Asks the dates, then reads patient, prescriptions and their totals as of one moment; reportCancelled says that nothing
    /// is to be shown. Failures go to the caller.
    void PatientID(std::int16_t patientID);

protected:
    void reportStart() override;
    void pageHeaderFormat() override;
    void pageFooterFormat() override;
    void reportFooterFormat() override;

private:
    void translateForm();
    /// And the patient, and the totals.
    platform::RecordsetPtr readPrescriptions();
    QString patientStatement() const;
    QString prescriptionsStatement() const;
    QString totalsStatement() const;

    std::int16_t m_patientID = 0;
    platform::RecordsetPtr m_patient;
};

}  // namespace sorvanto
