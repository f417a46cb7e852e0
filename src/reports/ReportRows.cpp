#include "reports/ReportRows.h"

#include "platform/widgets/LongWork.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

platform::RecordsetPtr allRows(Context& context, const QString& statement, const QString& orderWithin) {
    const auto rows = platform::Recordset::create();
    if (!orderWithin.isEmpty())
        rows->setOrderWithin(orderWithin);
    platform::LongWork work(translated(u"Reading the list"_s));
    rows->setGoesOn([&work] { return work.goesOn(-1); });
    rows->open(statement, openDB(context), platform::LockType::ReadOnly, platform::CursorLocation::Client);
    rows->setGoesOn({});
    return rows->isOpen() ? rows : nullptr;
}

platform::RecordsetPtr chemicalRows(Context& context) {
    return allRows(context,
                   u"SELECT Chemical.chm_Name, Chemical.chm_Units, Chemical.chm_Lot, Chemical.chm_NDC, "
                   "Chemical.chm_Cost, Chemical.chm_AWP, Chemical.chm_Notes, Chemical.chm_Form, "
                   "Chemical.chm_Supplier FROM Chemical ORDER BY chm_Name;"_s);
}

platform::RecordsetPtr prescriptionRows(Context& context, const QString& key) {
    return allRows(
        context, u"SELECT Log.log_Name, Log.log_Strength, Log.log_Lot, RXs.rxs_QTY, RXs.rxs_Consult, "
                 "RXs.rxs_Date, RXs.rxs_Doctor, Patient.pat_FName, Patient.pat_LName, RXs.RXsID FROM Patient "
                 "INNER JOIN (Log INNER JOIN RXs ON Log.LogID = RXs.LogID) ON "
                 "Patient.PatientID = RXs.PatientID WHERE (((RXs.RXsID)="_s +
                     key + u"));"_s);
}

}  // namespace sorvanto
