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

using namespace Qt::StringLiterals;

namespace sorvanto {

using namespace platform;

namespace {

/// The 0 in front of a value guards against NULL; the engine's conversion takes it off. The cost column
/// takes the batch's AWP and the price column its cost.
QString prescriptionInsert(const Recordset& batch, std::int16_t patient) {
    QString statement = u"INSERT INTO "_s;
    statement += u" RXs ("_s;
    for (const QString& column : {u" [LogID], "_s, u" [PatientID], "_s, u" [rxs_Date], "_s, u" [rxs_QTY], "_s,
                                  u" [rxs_Cost], "_s, u" [rxs_Price],"_s, u" [rxs_Doctor]"_s})
        statement += column;
    statement += u" ) "_s;
    statement += u" VALUES ("_s;
    statement += u"'"_s + zeroText(batch.value(0)) + u"', "_s;
    statement += u"'"_s + QString::number(patient) + u"', "_s;
    statement += u"'"_s + dateText(today()) + u"', "_s;
    statement += u"'"_s + zeroText(batch.value(4)) + u"', "_s;
    statement += u"'"_s + zeroText(batch.value(7)) + u"', "_s;
    statement += u"'"_s + zeroText(batch.value(8)) + u"',"_s;
    statement += u"'');"_s;
    return statement;
}

}  // namespace

bool clsPatient::addRX(QString Search) {
    return guarded(u"clsPatient:addRX"_s, false, [&] {
        // By key the text itself stands in the condition; being empty, it breaks the statement.
        strSQL = logSearch(LogSearch::OfPrescription, Search, Search);
        const RecordsetPtr rows = openLogSearch(strSQL);
        chooseRow(rows, u"LogID"_s);
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

void clsPatient::openRXs() { RXs = openPrescriptions(PatientID, PrescriptionOrder::None); }

bool clsPatient::deleteRX(std::int16_t RXsID) {
    strSQL = u"DELETE "_s;
    strSQL += u"FROM [RXs] "_s;
    strSQL += u"WHERE "_s;
    strSQL += u"RXsID = "_s + QString::number(RXsID);
    const auto count = openDB()->execute(strSQL);
    RXs = openPrescriptions(PatientID, PrescriptionOrder::None);
    return count > 0;
}

}  // namespace sorvanto
