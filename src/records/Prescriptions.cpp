// Statement of the prescription list.
#include "records/Prescriptions.h"

#include "records/RecordStatements.h"

namespace sorvanto {

platform::RecordsetPtr openPrescriptions(std::int16_t patient, PrescriptionOrder order) {
    const QString key = QString::number(patient);
    QString statement = "SELECT ";
    statement += "RXs.RXsID, Log.log_Name, Log.log_Strength, Log.log_Date, Log.log_Lot, RXs.rxs_QTY, "
                 "RXs.rxs_Cost, RXs.rxs_Price, RXs.rxs_Consult, RXs.rxs_Doctor, RXs.rxs_Date, Log.LogID ";
    statement += "FROM Patient ";
    statement += "INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) "
                 "ON Patient.PatientID = RXs.PatientID ";
    if (order == PrescriptionOrder::NewestFirst) {
        statement += "WHERE Patient.PatientID=" + key + " ";
        statement += "ORDER BY RXs.rxs_Date DESC";
    } else {
        statement += "WHERE (((Patient.PatientID)=" + key + "))";
    }
    return openEditableList(statement);
}

}  // namespace sorvanto
