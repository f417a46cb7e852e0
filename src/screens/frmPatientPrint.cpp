// The print commands of the patient screen: prescription labels and the prescription report.
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/ReportFlow.h"
#include "reports/ReportRows.h"
#include "reports/rptPatient.h"
#include "reports/rptRX8160.h"
#include "screens/frmPatient.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmPatient.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

platform::RecordsetPtr frmPatient::currentPrescription() const {
    const QString key =
        platform::nullText(m_ui->grdRXs->currentValue(m_ui->grdRXs->columnByField(u"RXsID"_s)));
    return prescriptionRows(m_context, key);
}

// The printer is not named: prescription labels go to the default one.
void frmPatient::printRX(bool exportIt) {
    guarded(u"frmPatient:printRX"_s, [&] {
        if (prescriptions().recordCount() == 0) {
            platform::MsgBox(translated(u"No records"_s));
            m_context.labelsCancelled = true;
        } else {
            auto report = std::make_unique<rptRX8160>(m_context);
            report->setRX(currentPrescription());
            if (!m_context.labelsCancelled)
                runReport(std::move(report), exportIt, u"\\RXLabel.xls"_s);
        }
        refreshForm();
        m_context.labelsCancelled = true;
    });
}

void frmPatient::printRXReport(bool exportIt) {
    guarded(u"frmPatient:printRXReport"_s, [&] {
        auto report = std::make_unique<rptPatient>(m_context);
        report->printerName = defaultPrinter(m_context);
        report->PatientID(platform::deref(m_patient).PatientID);
        if (!m_context.reportCancelled)
            runReport(std::move(report), exportIt, u"\\RXReport.xls"_s);
        refreshForm();
    });
}

}  // namespace sorvanto
