#include "reports/rptRX8160.h"

#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "reports/frmSelPrint.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

using platform::field;
using platform::label;
using platform::nullText;

// A detail of 1470 brings nine rows to a sheet, while positions are counted as ten.
platform::ReportDefinition prescriptionLabels() {
    platform::ReportDefinition definition;
    definition.name = "rptRX8160";
    definition.margins = {0, 0, 720, 720};
    definition.font = {detailFamily, 7};
    definition.detailColumns = 3;
    definition.stock = platform::LabelStock{};
    definition.sections = {
        {platform::SectionKind::Detail,
         1470,
         {
             field("txtPharmacy", 360, 90, 1080, 180).points(6).centre(),
             label("lblLot", 2070, 90, 450, 180).asValue("Lot"),
             field("txtLot", 2520, 90, 1260, 180).asValue("Lot"),
             field("txtContact", 360, 270, 3420, 180).points(6).centre().asName("Address"),
             field("txtRXNum", 360, 540, 1080, 180).asValue("#"),
             field("lblDR", 1440, 540, 360, 180),
             field("txtDoctor", 1800, 540, 1980, 180),
             field("txtName", 360, 720, 2610, 180),
             field("txtDate", 2970, 720, 810, 180).asValue("Date"),
             field("txtConsult", 360, 900, 3420, 180),
             field("txtDrug", 360, 1080, 2970, 270).points(8.5).bold().asName("Drug Name"),
             field("txtQTY", 3330, 1080, 450, 270).points(8.5).bold().asValue("QTY"),
         }},
    };
    return definition;
}

// The lot and its caption stay on show at skipped positions.
const char* const steppedControls[] = {"txtPharmacy", "txtContact", "txtConsult", "txtDate",  "txtDoctor",
                                       "txtDrug",     "txtName",    "txtQTY",     "txtRXNum", "lblDR"};

}  // namespace

rptRX8160::rptRX8160() : Report(prescriptionLabels()), m_positions(0, 0, 0) { caption = translated("Label"); }

void rptRX8160::setRX(const platform::RecordsetPtr& prescription) {
    rs = prescription;
    nameFile();
    basMain::labelsCancelled = false;
    frmSelPrint question;
    question.showModal();
    m_positions = LabelPositions(question.Row(), question.Column(), question.NumLabels());
}

void rptRX8160::nameFile() {
    if (!rs || rs->eof())
        return;
    const platform::Recordset& row = *rs;
    fileName = reportFileName(
        "Label",
        {nullText(row.value("log_Name")), nullText(row.value("pat_FName")), nullText(row.value("pat_LName"))},
        row.value("rxs_Date").toDate());
}

void rptRX8160::detailFormat() {
    const bool printing = m_positions.step();
    fillPharmacy();
    fillPrescription();
    for (const char* name : steppedControls)
        setVisible(name, printing);
}

void rptRX8160::fillPharmacy() {
    clsOptions& options = platform::deref(basMain::Options);
    setText("txtPharmacy", options.StoreName());
    setName("txtContact", options.Address() + " " + options.City() + ", " + options.State(),
            " " + options.Zip() + " " + options.Phone());
}

void rptRX8160::fillPrescription() {
    const platform::Recordset& row = platform::deref(rs);
    setText("lblLot", translated("Lot") + "#");
    setText("txtLot", nullText(row.value("log_Lot")));
    setText("txtRXNum", "# " + nullText(row.value("RXsID")));
    setText("lblDR", translated("DR"));
    setText("txtDoctor", nullText(row.value("rxs_Doctor")));
    setText("txtName", nullText(row.value("pat_FName")) + " " + nullText(row.value("pat_LName")));
    setValue("txtDate", row.value("rxs_Date"));
    setText("txtConsult", nullText(row.value("rxs_Consult")));
    setName("txtDrug", nullText(row.value("log_Name")), " " + nullText(row.value("log_Strength")));
    setValue("txtQTY", row.value("rxs_QTY"));
}

}  // namespace sorvanto
