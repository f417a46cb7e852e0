#include "reports/rptRX8160.h"

#include "config/clsOptions.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "reports/frmSelPrint.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::field;
using platform::label;
using platform::nullText;

// A detail of 1470 brings nine rows to a sheet, while positions are counted as ten.
platform::ReportDefinition prescriptionLabels() {
    platform::ReportDefinition definition;
    definition.name = u"rptRX8160"_s;
    definition.margins = {0, 0, 720, 720};
    definition.font = {detailFamily, 7};
    definition.detailColumns = 3;
    definition.stock = platform::LabelStock{};
    definition.sections = {
        {platform::SectionKind::Detail,
         1470,
         {
             field(u"txtPharmacy"_s, 360, 90, 1080, 180).points(6).centre(),
             label(u"lblLot"_s, 2070, 90, 450, 180).asValue("Lot"),
             field(u"txtLot"_s, 2520, 90, 1260, 180).asValue("Lot"),
             field(u"txtContact"_s, 360, 270, 3420, 180).points(6).centre().asName("Address"),
             field(u"txtRXNum"_s, 360, 540, 1080, 180).asValue("#"),
             field(u"lblDR"_s, 1440, 540, 360, 180),
             field(u"txtDoctor"_s, 1800, 540, 1980, 180),
             field(u"txtName"_s, 360, 720, 2610, 180),
             field(u"txtDate"_s, 2970, 720, 810, 180).asValue("Date"),
             field(u"txtConsult"_s, 360, 900, 3420, 180),
             field(u"txtDrug"_s, 360, 1080, 2970, 270).points(8.5).bold().asName("Drug Name"),
             field(u"txtQTY"_s, 3330, 1080, 450, 270).points(8.5).bold().asValue("QTY"),
         }},
    };
    return definition;
}

// The lot and its caption stay on show at skipped positions.
const char* const steppedControls[] = {"txtPharmacy", "txtContact", "txtConsult", "txtDate",  "txtDoctor",
                                       "txtDrug",     "txtName",    "txtQTY",     "txtRXNum", "lblDR"};

}  // namespace

rptRX8160::rptRX8160(Context& context)
    : Report(prescriptionLabels()), m_context(context), m_positions(0, 0, 0) {
    caption = translated(u"Label"_s);
}

void rptRX8160::setRX(const platform::RecordsetPtr& prescription) {
    rs = prescription;
    nameFile();
    m_context.labelsCancelled = false;
    frmSelPrint question(m_context);
    question.showModal();
    m_positions = LabelPositions(question.Row(), question.Column(), question.NumLabels());
}

void rptRX8160::nameFile() {
    if (!rs || rs->eof())
        return;
    const platform::Recordset& row = *rs;
    fileName = reportFileName("Label",
                              {nullText(row.value(u"log_Name"_s)), nullText(row.value(u"pat_FName"_s)),
                               nullText(row.value(u"pat_LName"_s))},
                              row.value(u"rxs_Date"_s).toDate());
}

void rptRX8160::detailFormat() {
    const bool printing = m_positions.step();
    fillPharmacy();
    fillPrescription();
    for (const char* name : steppedControls)
        setVisible(QLatin1String(name), printing);
}

void rptRX8160::fillPharmacy() {
    clsOptions& options = platform::deref(m_context.options);
    setText(u"txtPharmacy"_s, options.StoreName());
    setName(u"txtContact"_s, options.Address() + u" "_s + options.City() + u", "_s + options.State(),
            u" "_s + options.Zip() + u" "_s + options.Phone());
}

void rptRX8160::fillPrescription() {
    const platform::Recordset& row = platform::deref(rs);
    setText(u"lblLot"_s, translated(u"Lot"_s) + u"#"_s);
    setText(u"txtLot"_s, nullText(row.value(u"log_Lot"_s)));
    setText(u"txtRXNum"_s, u"# "_s + nullText(row.value(u"RXsID"_s)));
    setText(u"lblDR"_s, translated(u"DR"_s));
    setText(u"txtDoctor"_s, nullText(row.value(u"rxs_Doctor"_s)));
    setText(u"txtName"_s, nullText(row.value(u"pat_FName"_s)) + u" "_s + nullText(row.value(u"pat_LName"_s)));
    setValue(u"txtDate"_s, row.value(u"rxs_Date"_s));
    setText(u"txtConsult"_s, nullText(row.value(u"rxs_Consult"_s)));
    setName(u"txtDrug"_s, nullText(row.value(u"log_Name"_s)),
            u" "_s + nullText(row.value(u"log_Strength"_s)));
    setValue(u"txtQTY"_s, row.value(u"rxs_QTY"_s));
}

}  // namespace sorvanto
