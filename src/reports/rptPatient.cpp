#include "reports/rptPatient.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Format.h"
#include "platform/basic/LocalMarks.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "reports/StoreBlock.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

using platform::field;
using platform::line;
using platform::nullText;

platform::Section patientHeader() {
    return {
        platform::SectionKind::PageHeader,
        1755,
        {
            field("txtPatientID", 90, 0, 450, 360).bound("Patient.PatientID").points(8),  // five digits fit
            field("txtName", 540, 0, 5220, 360).points(titlePoints).bold(),
            field("txtpat_BDay", 7200, 0, 2880, 270).points(8.5).asValue("Birthdate"),
            field("txtAddress", 90, 360, 3240, 810).points(8.5),
            field("txtpat_Phone", 3330, 360, 2430, 270).points(8.5).asValue("Phone"),
            field("txtpat_Fax", 3330, 630, 2430, 270).points(8.5).asValue("Fax"),
            heading("lblRXsID", 0, 1440, 540),
            heading("lblrxs_Date", 540, 1440, 1080),
            heading("lblfrm_Name", 1800, 1440, 2700),
            heading("lblfrm_Strength", 4500, 1440, 1530),
            heading("lblrxs_QTY", 6030, 1440, 630),
            heading("lbllog_Lot", 6660, 1440, 1350),
            heading("lblrxs_Doctor", 8010, 1440, 1800),
            heading("lblrxs_Price", 9810, 1440, 990).right(),
            line("Line1", 0, 1710, 10800),
        }};
}

platform::Section prescriptionRow() {
    platform::Section section{
        platform::SectionKind::Detail,
        795,
        {
            field("txtRXsID", 0, 90, 540, 270).bound("RXsID"),
            field("txtrxs_Date", 540, 90, 1080, 270).bound("rxs_Date"),
            field("txtfrm_Name", 1800, 90, 2700, 270).bound("frm_Name").asName("Drug Name"),
            field("txtfrm_Strength", 4500, 90, 1260, 270).bound("frm_Strength").asValue("Strength"),
            field("txtrxs_QTY", 6030, 90, 540, 270).bound("rxs_QTY"),
            field("txtlog_Lot", 6660, 90, 1350, 270).bound("log_Lot").asValue("Lot"),
            field("txtrxs_Doctor", 8010, 90, 1800, 270).bound("rxs_Doctor"),
            field("txtrxs_Price", 9900, 90, 900, 270).bound("rxs_Price").right(),
        }};
    for (platform::Control& control : section.controls)
        control.font(detailFamily, 9);
    section.controls.push_back(line("Line2", 0, 450, 10800));
    return section;
}

platform::ReportDefinition prescriptionReport() {
    platform::ReportDefinition definition;
    definition.name = "rptPatient";
    definition.sections = {
        listHead(platform::SectionKind::ReportHeader, 1515,
                 {.boxWidth = 5130, .dateLeft = 8370, .dateTop = 180},
                 {field("txtReportDate", 90, 1080, 5310, 270).points(datePoints).asValue("Report Dates")}),
        patientHeader(),
        prescriptionRow(),
        {platform::SectionKind::PageFooter, 2475, storeBlock(180, 90)},
        {platform::SectionKind::ReportFooter,
         675,
         {
             line("Line3", 0, 0, 10800),
             field("txtTotalRXs", 270, 90, 2340, 270).bold().asValue("Prescriptions"),
             field("txtTotalPrice", 9360, 90, 1440, 270, "0.00").bold().right().asValue("Price"),
         }},
    };
    return definition;
}

}  // namespace

rptPatient::rptPatient() : Report(prescriptionReport()) {}

void rptPatient::PatientID(std::int16_t patientID) {
    m_patientID = patientID;
    const std::optional<DateRange> range = askDateRange();
    basMain::reportCancelled = !range;
    if (!range) {
        unload();
        return;
    }
    m_range = *range;
    translateForm();
    m_patient = openPatient();
    if (!m_patient->eof())
        fileName =
            reportFileName("Prescription Report",
                           {nullText(m_patient->value("pat_FName")), nullText(m_patient->value("pat_LName"))},
                           m_range.begin.date(), m_range.end.date());
    const platform::RecordsetPtr prescriptions = openPrescriptions();
    if (prescriptions->recordCount() > 0) {
        setRows(prescriptions);
    } else {
        sayNoRecords();
        unload();
    }
}

platform::RecordsetPtr rptPatient::openPatient() const {
    const auto patient = platform::Recordset::create();
    patient->open("SELECT [PatientID],[pat_LName],[pat_FName],[pat_Address1],[pat_Address2],[pat_City],"
                  "[pat_State],[pat_Zip],[pat_Country],[pat_BDay],[pat_Phone],[pat_Fax] FROM Patient WHERE "
                  "PatientID = " +
                      QString::number(m_patientID),
                  openDB(), platform::LockType::ReadOnly);
    return patient;
}

// The join on Formula drops a prescription whose formula has been deleted.
platform::RecordsetPtr rptPatient::openPrescriptions() const {
    const auto prescriptions = platform::Recordset::create();
    prescriptions->open(
        "SELECT RXs.RXsID, RXs.rxs_Date, Formula.frm_Name, Formula.frm_Strength, RXs.rxs_QTY, "
        "RXs.rxs_Price, RXs.rxs_Doctor, Log.log_Lot FROM Patient INNER JOIN ((Log INNER JOIN "
        "Formula ON Log.FormulaID = Formula.FormulaID) INNER JOIN RXs ON Log.LogID = "
        "RXs.LogID) ON Patient.PatientID = RXs.PatientID WHERE Patient.PatientID=" +
            QString::number(m_patientID) + " AND RXs.rxs_Date >= #" + boundText(m_range.begin) +
            "# AND RXs.rxs_Date <= #" + boundText(m_range.end) + "#;",
        openDB(), platform::LockType::ReadOnly);
    return prescriptions;
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
    setText("txtReportDate", reportDates(m_range.begin, m_range.end));
}

void rptPatient::reportStart() { setFormat("txtrxs_Price", optionsPricePicture()); }

// An unknown patient has no row, and the first field fails.
void rptPatient::pageHeaderFormat() {
    const platform::Recordset& patient = platform::deref(m_patient);
    const auto text = [&](const char* column) { return nullText(patient.value(column)); };
    QString address = text("pat_Address1") + "\r\n";
    if (!text("pat_Address2").isEmpty())
        address += text("pat_Address2") + "\r\n";
    address +=
        text("pat_City") + ", " + text("pat_State") + " " + text("pat_Zip") + "\r\n" + text("pat_Country");
    setValue("txtPatientID", patient.value("PatientID"));
    setText("txtAddress", address);
    setText("txtpat_BDay", translated("Birthdate") + ": " + text("pat_BDay"));
    setText("txtpat_Fax", translated("Fax") + ": " + text("pat_Fax"));
    setText("txtName", text("pat_FName") + " " + text("pat_LName"));
    setText("txtpat_Phone", translated("Phone") + ": " + text("pat_Phone"));
}

void rptPatient::pageFooterFormat() { fillStoreBlock(*this); }

// The dates go in as default text with their time; without a join this also counts what the list dropped.
void rptPatient::reportFooterFormat() {
    const auto totals = platform::Recordset::create();
    totals->open(
        "SELECT Count(*) as TotalRXs ,Sum(RXs.rxs_Price) as TotalPrice FROM RXs WHERE RXs.PatientID=" +
            QString::number(m_patientID) + " AND RXs.rxs_Date >= #" + platform::dateText(m_range.begin) +
            "# AND RXs.rxs_Date <= #" + platform::dateText(m_range.end) + "#;",
        openDB(), platform::LockType::ReadOnly);
    setText("txtTotalRXs", nullText(totals->value("TotalRXs")) + " " + translated("Prescriptions"));
    explainTotals(*this,
                  {rows()->recordCount(), platform::nullInt32(totals->value("TotalRXs")),
                   translated("The list shows %1 prescription, the totals count %2: %3 | "
                              "The list shows %1 prescriptions, the totals count %2: %3"),
                   translated("the list leaves out prescriptions whose formula is deleted, and the totals go "
                              "by the time of day.")},
                  m_range.begin, m_range.end);
    const QVariant price = totals->value("TotalPrice");
    if (!price.isValid())
        return showLayoutNumber(*this, "txtTotalPrice");
    // Formatted, then money, then text: trailing zeros are lost on the way.
    const platform::Currency money = platform::Currency::fromText(platform::format(price, "0.00"));
    const QString currency = platform::deref(basMain::Options).DefCurrency();
    const QString shown = money.toText();
    const QString places = shown.section('.', 1);
    const QString picture = places.isEmpty() ? "0" : "0." + QString(places.size(), '0');
    setValue("txtTotalPrice", QVariant::fromValue(money), currency + picture,
             currency + platform::shownNumber(shown));
}

}  // namespace sorvanto
