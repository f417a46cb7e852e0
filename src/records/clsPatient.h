// One row of the table Patient with the list of the patient's prescriptions, each a link to a logged batch.
#pragma once

#include "platform/data/Recordset.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <memory>

namespace sorvanto {

class clsPatient;
using clsPatientPtr = std::shared_ptr<clsPatient>;

class clsPatient {
public:
    clsPatient();

    std::int16_t PatientID = 0;
    QString pat_FName, pat_LName, pat_Address1, pat_Address2, pat_City, pat_State, pat_Zip, pat_Country;
    QDateTime pat_BDay;  ///< the zero date stands for none
    QString pat_Phone, pat_Fax, pat_Notes;
    platform::RecordsetPtr RXs;

    bool deletePatient(const clsPatientPtr& Patient, bool Silent);
    /// By key (empty search), phone ("#" anywhere) or last name, with a comma last and first name.
    clsPatientPtr openPatient(std::int16_t key, const QString& Search);
    clsPatientPtr addPatient();
    /// Failures go to the caller.
    clsPatientPtr savePatient(const clsPatientPtr& Patient);
    /// Finds a batch and links it to this patient.
    bool addRX(QString Search);
    /// Failures go to the caller.
    bool deleteRX(std::int16_t RXsID);
    /// Reads the prescriptions anew.
    void openRXs();

private:
    QString strSQL;
};

}  // namespace sorvanto
