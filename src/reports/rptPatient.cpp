#include "reports/rptPatient.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportRows.h"
#include "reports/ReportTexts.h"
#include "reports/StoreBlock.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::field;
using platform::line;
using platform::nullText;

/// Of prescriptions that no order is told for.
const QString prescriptionsOrder = u"RXs.rxs_Date"_s;

platform::Section patientHeader() {
    return {platform::SectionKind::PageHeader,
            1755,
            {
                field(u"txtPatientID"_s, 90, 0, 450, 360)
                    .bound(u"Patient.PatientID"_s)
                    .points(8),  // five digits fit
                field(u"txtName"_s, 540, 0, 5220, 360).points(titlePoints).bold(),
                field(u"txtpat_BDay"_s, 7200, 0, 2880, 270).points(8.5).asValue("Birthdate"),
                field(u"txtAddress"_s, 90, 360, 3240, 810).points(8.5),
                field(u"txtpat_Phone"_s, 3330, 360, 2430, 270).points(8.5).asValue("Phone"),
                field(u"txtpat_Fax"_s, 3330, 630, 2430, 270).points(8.5).asValue("Fax"),
                heading(u"lblRXsID"_s, 0, 1440, 540),
                heading(u"lblrxs_Date"_s, 540, 1440, 1080),
                heading(u"lblfrm_Name"_s, 1800, 1440, 2700),
                heading(u"lblfrm_Strength"_s, 4500, 1440, 1530),
                heading(u"lblrxs_QTY"_s, 6030, 1440, 630),
                heading(u"lbllog_Lot"_s, 6660, 1440, 1350),
                heading(u"lblrxs_Doctor"_s, 8010, 1440, 1800),
                heading(u"lblrxs_Price"_s, 9810, 1440, 990).right(),
                line(u"Line1"_s, 0, 1710, 10800),
            }};
}

platform::Section prescriptionRow() {
    platform::Section section{
        platform::SectionKind::Detail,
        795,
        {
            field(u"txtRXsID"_s, 0, 90, 540, 270).bound(u"RXsID"_s),
            field(u"txtrxs_Date"_s, 540, 90, 1080, 270).bound(u"rxs_Date"_s),
            field(u"txtfrm_Name"_s, 1800, 90, 2700, 270).bound(u"frm_Name"_s).asName("Drug Name"),
            field(u"txtfrm_Strength"_s, 4500, 90, 1260, 270).bound(u"frm_Strength"_s).asValue("Strength"),
            field(u"txtrxs_QTY"_s, 6030, 90, 540, 270).bound(u"rxs_QTY"_s),
            field(u"txtlog_Lot"_s, 6660, 90, 1350, 270).bound(u"log_Lot"_s).asValue("Lot"),
            field(u"txtrxs_Doctor"_s, 8010, 90, 1800, 270).bound(u"rxs_Doctor"_s),
            field(u"txtrxs_Price"_s, 9900, 90, 900, 270).bound(u"rxs_Price"_s).right(),
        }};
    for (platform::Control& control : section.controls)
        control.font(detailFamily, 9);
    section.controls.push_back(line(u"Line2"_s, 0, 450, 10800));
    return section;
}

platform::ReportDefinition prescriptionReport() {
    platform::ReportDefinition definition;
    definition.name = u"rptPatient"_s;
    definition.sections = {
        listHead(platform::SectionKind::ReportHeader, 1515,
                 {.boxWidth = 5130, .dateLeft = 8370, .dateTop = 180},
                 {field(u"txtReportDate"_s, 90, 1080, 5310, 270).points(datePoints).asValue("Report Dates")}),
        patientHeader(),
        prescriptionRow(),
        {platform::SectionKind::PageFooter, 2475, storeBlock(180, 90)},
        {platform::SectionKind::ReportFooter,
         675,
         {
             line(u"Line3"_s, 0, 0, 10800),
             field(u"txtTotalRXs"_s, 270, 90, 2340, 270).bold().asValue("Prescriptions"),
             field(u"txtTotalPrice"_s, 9360, 90, 1440, 270, u"0.00"_s).bold().right().asValue("Price"),
         }},
    };
    return definition;
}

}  // namespace

rptPatient::rptPatient(Context& context) : DatedReport(context, prescriptionReport()) {}

void rptPatient::PatientID(std::int16_t patientID) {
    m_patientID = patientID;
    if (!askDates())
        return;
    translateForm();
    const platform::RecordsetPtr prescriptions = readPrescriptions();
    if (!m_patient->eof())
        fileName = reportFileName(
            "Prescription Report",
            {nullText(m_patient->value(u"pat_FName"_s)), nullText(m_patient->value(u"pat_LName"_s))},
            range().begin.date(), range().end.date());
    setRowsOrNone(prescriptions);
}

platform::RecordsetPtr rptPatient::readPrescriptions() {
    const platform::ReadAhead together(openDB(m_context),
                                       {{prescriptionsStatement(), prescriptionsOrder}, {totalsStatement()}});
    m_patient = allRows(m_context, patientStatement());
    platform::RecordsetPtr prescriptions = allRows(m_context, prescriptionsStatement(), prescriptionsOrder);
    if (prescriptions && prescriptions->recordCount() > 0)
        readTotals(totalsStatement());
    return prescriptions;
}

QString rptPatient::patientStatement() const {
    return u"SELECT [PatientID],[pat_LName],[pat_FName],[pat_Address1],[pat_Address2],[pat_City],"
           "[pat_State],[pat_Zip],[pat_Country],[pat_BDay],[pat_Phone],[pat_Fax] FROM Patient WHERE "
           "PatientID = "_s +
           QString::number(m_patientID);
}

// The join on Formula drops a prescription whose formula has been deleted.
QString rptPatient::prescriptionsStatement() const {
    return u"SELECT RXs.RXsID, RXs.rxs_Date, Formula.frm_Name, Formula.frm_Strength, RXs.rxs_QTY, "
           "RXs.rxs_Price, RXs.rxs_Doctor, Log.log_Lot FROM Patient INNER JOIN ((Log INNER JOIN "
           "Formula ON Log.FormulaID = Formula.FormulaID) INNER JOIN RXs ON Log.LogID = "
           "RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE Patient.PatientID="_s +
           QString::number(m_patientID) + u" AND RXs.rxs_Date >= #"_s + boundText(range().begin) +
           u"# AND RXs.rxs_Date <= #"_s + boundText(range().end) + u"#;"_s;
}

// The dates go in as default text with their time; without a join this also counts what the list dropped.
QString rptPatient::totalsStatement() const {
    return u"SELECT Count(*) as TotalRXs ,Sum(RXs.rxs_Price) as TotalPrice FROM RXs WHERE RXs.PatientID="_s +
           QString::number(m_patientID) + u" AND RXs.rxs_Date >= #"_s + platform::dateText(range().begin) +
           u"# AND RXs.rxs_Date <= #"_s + platform::dateText(range().end) + u"#;"_s;
}

void rptPatient::translateForm() {
    translateListHead(*this, "Prescription Report", "Prescription Report - Sorvanto");
    translateCaptions(*this, {{"lblRXsID", "#"},
                              {"lblrxs_Date", "Date"},
                              {"lblfrm_Name", "Drug Name"},
                              {"lblfrm_Strength", "Strength"},
                              {"lblrxs_QTY", "QTY"},
                              {"lbllog_Lot", "Lot"},
                              {"lblrxs_Doctor", "Doctor"},
                              {"lblrxs_Price", "Price"}});
    translateStoreBlock(*this);
    setText(u"txtReportDate"_s, reportDates(range().begin, range().end));
}

void rptPatient::reportStart() { setFormat(u"txtrxs_Price"_s, optionsPricePicture(m_context)); }

// An unknown patient has no row, and the first field fails.
void rptPatient::pageHeaderFormat() {
    const platform::Recordset& patient = platform::deref(m_patient);
    const auto text = [&](const QString& column) { return nullText(patient.value(column)); };
    QString address = text(u"pat_Address1"_s) + u"\r\n"_s;
    if (!text(u"pat_Address2"_s).isEmpty())
        address += text(u"pat_Address2"_s) + u"\r\n"_s;
    address += text(u"pat_City"_s) + u", "_s + text(u"pat_State"_s) + u" "_s + text(u"pat_Zip"_s) +
               u"\r\n"_s + text(u"pat_Country"_s);
    setValue(u"txtPatientID"_s, patient.value(u"PatientID"_s));
    setText(u"txtAddress"_s, address);
    setText(u"txtpat_BDay"_s, translated(u"Birthdate"_s) + u": "_s + text(u"pat_BDay"_s));
    setText(u"txtpat_Fax"_s, translated(u"Fax"_s) + u": "_s + text(u"pat_Fax"_s));
    setText(u"txtName"_s, text(u"pat_FName"_s) + u" "_s + text(u"pat_LName"_s));
    setText(u"txtpat_Phone"_s, translated(u"Phone"_s) + u": "_s + text(u"pat_Phone"_s));
}

void rptPatient::pageFooterFormat() { fillStoreBlock(m_context, *this); }

void rptPatient::reportFooterFormat() {
    setText(u"txtTotalRXs"_s,
            nullText(totals().value(u"TotalRXs"_s)) + u" "_s + translated(u"Prescriptions"_s));
    explainTotals(
        *this,
        {rows()->recordCount(), platform::nullInt32(totals().value(u"TotalRXs"_s)),
         translated(u"The list shows %1 prescription, the totals count %2: %3 | "
                    "The list shows %1 prescriptions, the totals count %2: %3"_s),
         translated(u"the list leaves out prescriptions whose formula is deleted, and the totals go "
                    "by the time of day."_s)},
        range().begin, range().end);
    const QVariant price = totals().value(u"TotalPrice"_s);
    if (!price.isValid())
        return showLayoutNumber(*this, "txtTotalPrice");
    // Formatted, then money, then text: trailing zeros are lost on the way.
    const platform::Currency money = platform::Currency::fromText(platform::format(price, u"0.00"_s));
    const QString currency = platform::deref(m_context.options).DefCurrency();
    const QString shown = money.toText();
    const QString places = shown.section('.'_L1, 1);
    const QString picture = places.isEmpty() ? u"0"_s : u"0."_s + QString(places.size(), '0'_L1);
    setValue(u"txtTotalPrice"_s, QVariant::fromValue(money), currency + picture,
             currency + platform::shownNumber(shown));
}

}  // namespace sorvanto
