// Statement of the prescription list.
#include "records/Prescriptions.h"

#include "records/RecordStatements.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

QString prescriptionsStatement(std::int16_t patient, PrescriptionOrder order) {
    const QString key = QString::number(patient);
    QString statement = u"SELECT "_s;
    statement += u"RXs.RXsID, Log.log_Name, Log.log_Strength, Log.log_Date, Log.log_Lot, RXs.rxs_QTY, "
                 "RXs.rxs_Cost, RXs.rxs_Price, RXs.rxs_Consult, RXs.rxs_Doctor, RXs.rxs_Date, Log.LogID "_s;
    statement += u"FROM Patient "_s;
    statement += u"INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) "
                 "ON Patient.PatientID = RXs.PatientID "_s;
    if (order == PrescriptionOrder::NewestFirst) {
        statement += u"WHERE Patient.PatientID="_s + key + u" "_s;
        statement += u"ORDER BY RXs.rxs_Date DESC"_s;
    } else {
        statement += u"WHERE (((Patient.PatientID)="_s + key + u"))"_s;
    }
    return statement;
}

platform::RecordsetPtr openPrescriptions(std::int16_t patient, PrescriptionOrder order) {
    return openEditableList(prescriptionsStatement(patient, order),
                            order == PrescriptionOrder::None ? u"RXs.rxs_Date"_s : QString());
}

}  // namespace sorvanto
