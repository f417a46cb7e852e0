// The row of the table Patient: its statements and the rules by which it is found.
// The prescriptions stand in clsPatient_rx.cpp.
#include "records/clsPatient.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"
#include "records/Prescriptions.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {

using namespace platform;

namespace {

/// Reads the row the set stands on; the fields have translated names and are taken by position.
clsPatientPtr readPatient(const Recordset& row) {
    auto patient = std::make_shared<clsPatient>();
    patient->PatientID = nullInt16(row.value(0));
    patient->pat_LName = nullText(row.value(1));
    patient->pat_FName = nullText(row.value(2));
    patient->pat_Address1 = nullText(row.value(3));
    patient->pat_Address2 = nullText(row.value(4));
    patient->pat_City = nullText(row.value(5));
    patient->pat_State = nullText(row.value(6));
    patient->pat_Zip = nullText(row.value(7));
    patient->pat_Country = nullText(row.value(8));
    patient->pat_BDay = nullDate(row.value(9));
    patient->pat_Phone = nullText(row.value(10));
    patient->pat_Fax = nullText(row.value(11));
    patient->pat_Notes = nullText(row.value(12));
    return patient;
}

/// With a comma at position p the last name is tested against the rightmost p - 1 characters of the whole
/// text and the first name against what follows the comma; nothing is trimmed.
QString nameFilter(const QString& search) {
    const qsizetype position = search.indexOf(u',') + 1;
    if (position == 0)
        return likeFilter("pat_LName", search);
    QString filter = "WHERE ([pat_LName] Like '" + search.right(position - 1) + "%')";
    filter += "AND ";
    filter += "([pat_FName] Like '" + search.mid(position) + "%')";
    return filter;
}

QString patientFilter(std::int16_t key, QString search) {
    switch (searchByAny(search, {u'#', {}})) {
    case SearchBy::Key:
        return "WHERE ([PatientID] = " + QString::number(key) + ")";
    case SearchBy::Code:
        return likeFilter("pat_Phone", search);
    default:
        return nameFilter(search);
    }
}

}  // namespace

clsPatient::clsPatient() : pat_BDay(zeroDate()) {}

bool clsPatient::deletePatient(const clsPatientPtr& Patient, bool Silent) {
    const ResumeNext step("clsPatient:deletePatient");
    const clsPatientPtr held = Patient;  // the screen may show another one when the question is answered
    if (!Silent) {
        bool confirmed = false;
        step([&] {
            const clsPatient& patient = deref(held);
            confirmed = confirmedDeletion(translated("%1 %2?"), patient.pat_LName + ", " + patient.pat_FName);
        });
        if (!confirmed)
            return false;
    }
    for (const char* table : {"[RXs] WHERE ", "[Patient] WHERE "}) {
        step([&] { strSQL = "DELETE FROM "; });
        step([&] { strSQL += table; });
        step([&] { strSQL += "(PatientID = " + QString::number(deref(held).PatientID) + ");"; });
        step([&] { openDB()->execute(strSQL); });
    }
    return true;
}

clsPatientPtr clsPatient::openPatient(std::int16_t key, const QString& Search) {
    return guarded("clsPatient:openPatient", clsPatientPtr(), [&] {
        strSQL = "SELECT";
        strSQL += " [PatientID]";
        strSQL += aliasedColumns(", [%1] as [%2]", {{"pat_LName", "LastName"},
                                                    {"pat_FName", "FirstName"},
                                                    {"pat_Address1", "Address"},
                                                    {"pat_Address2", "Address2"},
                                                    {"pat_City", "City"},
                                                    {"pat_State", "State"},
                                                    {"pat_Zip", "Zip"},
                                                    {"pat_Country", "Country"},
                                                    {"pat_BDay", "BirthDate"},
                                                    {"pat_Phone", "Phone"},
                                                    {"pat_Fax", "Fax"},
                                                    {"pat_Notes", "Notes"}});
        strSQL += " FROM [Patient] ";
        strSQL += patientFilter(key, Search);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB(), LockType::Pessimistic);
        chooseRow(rows, "PatientID");
        const auto patient = rows->eof() ? std::make_shared<clsPatient>() : readPatient(*rows);
        patient->RXs = openPrescriptions(patient->PatientID, PrescriptionOrder::NewestFirst);
        rows->close();
        return patient;
    });
}

clsPatientPtr clsPatient::addPatient() {
    return guarded("clsPatient:addPatient", clsPatientPtr(), [&] {
        strSQL = "INSERT INTO ";
        strSQL += " Patient (";
        for (const char* column :
             {" [pat_FName], ", " [pat_LName], ", " [pat_Address1], ", " [pat_Address2], ", " [pat_City], ",
              " [pat_State], ", " [pat_Zip], ", " [pat_Country], ", " [pat_BDay], ", " [pat_Phone], ",
              " [pat_Fax],", " [pat_Notes]"})
            strSQL += column;
        strSQL += " ) ";
        strSQL += " VALUES (";
        strSQL += "'', '', '', '', '', '', '', '', ";
        strSQL += "NULL, ";
        strSQL += "'', '', ";
        strSQL += "'');";
        openDB()->execute(strSQL);
        auto patient = std::make_shared<clsPatient>();
        patient->PatientID = toInt16(lastIdentity());
        patient->RXs = openPrescriptions(patient->PatientID, PrescriptionOrder::None);
        return patient->openPatient(patient->PatientID, {});
    });
}

clsPatientPtr clsPatient::savePatient(const clsPatientPtr& Patient) {
    const clsPatient& patient = deref(Patient);
    strSQL = "UPDATE Patient SET ";
    strSQL += "[pat_FName] = '" + userText(patient.pat_FName) + "', ";
    strSQL += "[pat_LName] = '" + userText(patient.pat_LName) + "', ";
    strSQL += "[pat_Address1] = '" + userText(patient.pat_Address1) + "', ";
    strSQL += "[pat_Address2] = '" + userText(patient.pat_Address2) + "', ";
    strSQL += "[pat_City] = '" + userText(patient.pat_City) + "', ";
    strSQL += "[pat_State] = '" + userText(patient.pat_State) + "', ";
    strSQL += "[pat_Zip] = '" + trimmed(patient.pat_Zip) + "', ";  // these three keep their apostrophes
    strSQL += "[pat_Country] = '" + userText(patient.pat_Country) + "', ";
    strSQL += "[pat_BDay] = '" + dateText(patient.pat_BDay) + "', ";
    strSQL += "[pat_Phone] = '" + trimmed(patient.pat_Phone) + "', ";
    strSQL += "[pat_Fax] = '" + trimmed(patient.pat_Fax) + "', ";
    strSQL += "[pat_Notes] = '" + userText(patient.pat_Notes) + "' ";
    strSQL += "WHERE [PatientID]  = " + QString::number(patient.PatientID);
    return openDB()->execute(strSQL) > 0 ? Patient : nullptr;
}

}  // namespace sorvanto
