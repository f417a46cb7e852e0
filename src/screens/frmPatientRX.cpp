// The prescriptions on the patient screen: linking a batch, taking the link away, making one again.
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/widgets/CommandBar.h"
#include "screens/NewLine.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmPatient.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmPatient.h"

#include <QPointer>

namespace sorvanto {

platform::Recordset& frmPatient::prescriptions() const {
    return platform::deref(platform::deref(m_patient).RXs);
}

bool frmPatient::readyForPrescriptions() { return m_ui->grdRXs->commitEdit() && m_fields.readable(); }

void frmPatient::cmdAddRX_Click() {
    guarded("frmPatient:cmdAddRX_Click", [&] {
        if (!readyForPrescriptions())
            return;
        const NewLine line(*m_ui->grdRXs, "RXsID");
        const clsPatientPtr patient = m_patient;
        const QString search =
            platform::InputBox(translated("Enter all or part of Log name"), translated("Search Log"));
        if (!search.isEmpty()) {
            platform::deref(patient).addRX(search);
            saveForm();
        }
        refreshForm();
        line.show();
    });
}

// A click of its tool would fill the screen anew, and what is typed would go.
void frmPatient::comeOnShow() {
    if (Listener() == -1)
        return;
    MainWindow& main = platform::deref(basMain::Main);
    main.ActiveBar_ToolClick(main.bar().band("FormBar").tool("cmdPatients"));
}

// Whoever is on show when the button is clicked, so that the patient may be looked for first.
void frmPatient::offerBatch(const QString& lot) {
    guarded("frmPatient:offerBatch", [&] {
        comeOnShow();
        const QPointer<frmPatient> screen(this);
        announce({translated("Choose the patient for batch %1.").replace("%1", lot),
                  {{translated("Add to this patient"),
                    [screen, lot] {
                        if (screen)
                            screen->addBatch(lot);
                    },
                    true}},
                  true});
    });
}

// The batch is found by its lot, as by hand. Nothing else of the patient is saved unless it is being edited.
void frmPatient::addBatch(const QString& lot) {
    guarded("frmPatient:addBatch", [&] {
        comeOnShow();
        if (m_empty)
            return announce(translated("No records"));
        if (!readyForPrescriptions())
            return;
        const clsPatientPtr patient = m_patient;
        const QString name = recordOnView().name;
        const bool added = platform::deref(patient).addRX("?" + lot);
        if (!m_locked)
            saveForm();
        refreshForm();
        m_ui->tabPatient->setCurrentIndex(1);
        if (added)
            announce(translated("Batch %1 dispensed to %2").replace("%2", name).replace("%1", lot));
    });
}

void frmPatient::cmdDeleteRX_Click() {
    guarded("frmPatient:cmdDeleteRX_Click", [&] {
        if (!readyForPrescriptions())
            return;
        const clsPatientPtr patient = m_patient;
        const QVariant prescription = m_ui->grdRXs->currentValue(m_ui->grdRXs->columnByField("RXsID"));
        const QVariant name = m_ui->grdRXs->currentValue(m_ui->grdRXs->columnByField("log_Name"));
        const platform::BoxStyle style{
            .buttons = platform::Buttons::YesNo, .icon = platform::Icon::Exclamation, .low = true};
        if (platform::MsgBox(translated("Are you sure?"), style, "Delete RX") != platform::Answer::Yes)
            return;
        const bool deleted = platform::deref(patient).deleteRX(platform::toInt16(prescription));
        saveForm();
        refreshForm();
        if (deleted)
            announceDeleted(name.toString());
    });
}

bool frmPatient::cmdMake() {
    m_ui->grdRXs->commitEdit();
    if (prescriptions().recordCount() == 0) {
        platform::MsgBox(translated("No prescriptions"));
    } else if (m_ui->grdRXs->selectedCount() == 0) {
        platform::MsgBox(translated("You must select a prescription."));
    } else if (getFormula()) {
        makeFormula();
        return true;
    } else {
        platform::MsgBox(translated("Formula not found."));
    }
    return false;
}

bool frmPatient::getFormula() {
    return guarded("frmPatient:getFormula", false, [&] {
        m_rsFormula = platform::Recordset::create();
        m_rsFormula->open("SELECT Log.FormulaID FROM Log WHERE ([LogID] = " +
                              platform::nullText(prescriptions().value("LogID")) + ")",
                          openDB(), platform::LockType::ReadOnly);
        return m_rsFormula->recordCount() != 0;
    });
}

void frmPatient::makeFormula() {
    guarded("frmPatient:makeFormula", [&] {
        const std::int16_t formulaID = platform::nullInt16(platform::deref(m_rsFormula).value("FormulaID"));
        m_formula = platform::deref(m_formula).openFormula(formulaID, QString());
        MainWindow& main = platform::deref(basMain::Main);
        main.currentFormulaScreen().Formula(m_formula);
        main.ActiveBar_ToolClick(main.bar().band("FormBar").tool("cmdCurrent"));
    });
}

}  // namespace sorvanto
