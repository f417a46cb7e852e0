// The row of the table Patient: its statements and the rules by which it is found.
// The prescriptions stand in clsPatient_rx.cpp.
#include "records/clsPatient.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
#include "records/Prescriptions.h"
#include "records/RecordStatements.h"
#include "records/SearchText.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

using namespace Qt::StringLiterals;

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
        return likeFilter(u"pat_LName"_s, search);
    QString filter = u"WHERE ([pat_LName] Like '"_s + search.right(position - 1) + u"%')"_s;
    filter += u"AND "_s;
    filter += u"([pat_FName] Like '"_s + search.mid(position) + u"%')"_s;
    return filter;
}

QString patientFilter(std::int16_t key, QString search) {
    switch (searchByAny(search, {u'#', {}})) {
    case SearchBy::Key:
        return u"WHERE ([PatientID] = "_s + QString::number(key) + u")"_s;
    case SearchBy::Code:
        return likeFilter(u"pat_Phone"_s, search);
    default:
        return nameFilter(search);
    }
}

}  // namespace

clsPatient::clsPatient() : pat_BDay(zeroDate()) {}

bool clsPatient::deletePatient(const clsPatientPtr& Patient, bool Silent) {
    const ResumeNext step(u"clsPatient:deletePatient"_s);
    const clsPatientPtr held = Patient;  // the screen may show another one when the question is answered
    if (!Silent) {
        bool confirmed = false;
        step([&] {
            const clsPatient& patient = deref(held);
            confirmed =
                confirmedDeletion(translated(u"%1 %2?"_s), patient.pat_LName + u", "_s + patient.pat_FName);
        });
        if (!confirmed)
            return false;
    }
    for (const QString& table : {u"[RXs] WHERE "_s, u"[Patient] WHERE "_s}) {
        step([&] { strSQL = u"DELETE FROM "_s; });
        step([&] { strSQL += table; });
        step([&] { strSQL += u"(PatientID = "_s + QString::number(deref(held).PatientID) + u");"_s; });
        step([&] { openDB()->execute(strSQL); });
    }
    return true;
}

clsPatientPtr clsPatient::openPatient(std::int16_t key, const QString& Search) {
    return guarded(u"clsPatient:openPatient"_s, clsPatientPtr(), [&] {
        strSQL = u"SELECT"_s;
        strSQL += u" [PatientID]"_s;
        strSQL += aliasedColumns(u", [%1] as [%2]"_s, {{"pat_LName", "LastName"},
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
        strSQL += u" FROM [Patient] "_s;
        strSQL += patientFilter(key, Search);
        std::vector<ReadAhead::Set> lists;
        if (Search.isEmpty())
            lists.push_back({prescriptionsStatement(key, PrescriptionOrder::NewestFirst)});
        const ReadAhead rest(basMain::gConnection, lists);
        const RecordsetPtr rows = Recordset::create();
        rows->open(strSQL, openDB(), LockType::Pessimistic);
        chooseRow(rows, u"PatientID"_s);
        const auto patient = rows->eof() ? std::make_shared<clsPatient>() : readPatient(*rows);
        patient->RXs = openPrescriptions(patient->PatientID, PrescriptionOrder::NewestFirst);
        rows->close();
        return patient;
    });
}

clsPatientPtr clsPatient::addPatient() {
    return guarded(u"clsPatient:addPatient"_s, clsPatientPtr(), [&] {
        strSQL = u"INSERT INTO "_s;
        strSQL += u" Patient ("_s;
        for (const QString& column :
             {u" [pat_FName], "_s, u" [pat_LName], "_s, u" [pat_Address1], "_s, u" [pat_Address2], "_s,
              u" [pat_City], "_s, u" [pat_State], "_s, u" [pat_Zip], "_s, u" [pat_Country], "_s,
              u" [pat_BDay], "_s, u" [pat_Phone], "_s, u" [pat_Fax],"_s, u" [pat_Notes]"_s})
            strSQL += column;
        strSQL += u" ) "_s;
        strSQL += u" VALUES ("_s;
        strSQL += u"'', '', '', '', '', '', '', '', "_s;
        strSQL += u"NULL, "_s;
        strSQL += u"'', '', "_s;
        strSQL += u"'');"_s;
        openDB()->execute(strSQL);
        auto patient = std::make_shared<clsPatient>();
        patient->PatientID = toInt16(lastIdentity());
        patient->RXs = openPrescriptions(patient->PatientID, PrescriptionOrder::None);
        return patient->openPatient(patient->PatientID, {});
    });
}

clsPatientPtr clsPatient::savePatient(const clsPatientPtr& Patient) {
    const clsPatient& patient = deref(Patient);
    strSQL = u"UPDATE Patient SET "_s;
    strSQL += u"[pat_FName] = '"_s + userText(patient.pat_FName) + u"', "_s;
    strSQL += u"[pat_LName] = '"_s + userText(patient.pat_LName) + u"', "_s;
    strSQL += u"[pat_Address1] = '"_s + userText(patient.pat_Address1) + u"', "_s;
    strSQL += u"[pat_Address2] = '"_s + userText(patient.pat_Address2) + u"', "_s;
    strSQL += u"[pat_City] = '"_s + userText(patient.pat_City) + u"', "_s;
    strSQL += u"[pat_State] = '"_s + userText(patient.pat_State) + u"', "_s;
    strSQL += u"[pat_Zip] = '"_s + trimmed(patient.pat_Zip) + u"', "_s;  // these three keep their apostrophes
    strSQL += u"[pat_Country] = '"_s + userText(patient.pat_Country) + u"', "_s;
    strSQL += u"[pat_BDay] = '"_s + dateText(patient.pat_BDay) + u"', "_s;
    strSQL += u"[pat_Phone] = '"_s + trimmed(patient.pat_Phone) + u"', "_s;
    strSQL += u"[pat_Fax] = '"_s + trimmed(patient.pat_Fax) + u"', "_s;
    strSQL += u"[pat_Notes] = '"_s + userText(patient.pat_Notes) + u"' "_s;
    strSQL += u"WHERE [PatientID]  = "_s + QString::number(patient.PatientID);
    return openDB()->execute(strSQL) > 0 ? Patient : nullptr;
}

}  // namespace sorvanto
