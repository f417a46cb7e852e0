// Linking a logged batch to a patient, and taking the link away.
#include "records/clsPatient.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "records/LogSearch.h"
#include "records/Prescriptions.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/basMain.h"

namespace sorvanto {

using namespace platform;

namespace {

/// The 0 in front of a value guards against NULL; the engine's conversion takes it off. The cost column
/// takes the batch's AWP and the price column its cost.
QString prescriptionInsert(const Recordset& batch, std::int16_t patient) {
    QString statement = "INSERT INTO ";
    statement += " RXs (";
    for (const char* column : {" [LogID], ", " [PatientID], ", " [rxs_Date], ", " [rxs_QTY], ",
                               " [rxs_Cost], ", " [rxs_Price],", " [rxs_Doctor]"})
        statement += column;
    statement += " ) ";
    statement += " VALUES (";
    statement += "'" + zeroText(batch.value(0)) + "', ";
    statement += "'" + QString::number(patient) + "', ";
    statement += "'" + dateText(today()) + "', ";
    statement += "'" + zeroText(batch.value(4)) + "', ";
    statement += "'" + zeroText(batch.value(7)) + "', ";
    statement += "'" + zeroText(batch.value(8)) + "',";
    statement += "'');";
    return statement;
}

}  // namespace

bool clsPatient::addRX(QString Search) {
    return guarded("clsPatient:addRX", false, [&] {
        // By key the text itself stands in the condition; being empty, it breaks the statement.
        strSQL = logSearch(LogSearch::OfPrescription, Search, Search);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB(), LockType::Pessimistic);
        chooseRow(rows, "LogID");
        std::int64_t count = 0;
        if (!rows->eof()) {
            strSQL = prescriptionInsert(*rows, PatientID);
            count = openDB()->execute(strSQL);
        }
        rows->close();
        RXs = openPrescriptions(PatientID, PrescriptionOrder::None);
        return count > 0;
    });
}

bool clsPatient::deleteRX(std::int16_t RXsID) {
    strSQL = "DELETE ";
    strSQL += "FROM [RXs] ";
    strSQL += "WHERE ";
    strSQL += "RXsID = " + QString::number(RXsID);
    const auto count = openDB()->execute(strSQL);
    RXs = openPrescriptions(PatientID, PrescriptionOrder::None);
    return count > 0;
}

}  // namespace sorvanto
