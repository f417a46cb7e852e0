// The prescriptions on the patient screen: linking a batch, taking the link away, making one again.
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/widgets/CommandBar.h"
#include "screens/NewLine.h"
#include "screens/frmCurrFormula.h"
#include "screens/frmPatient.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Happening.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "ui_frmPatient.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace sorvanto {

platform::Recordset& frmPatient::prescriptions() const {
    return platform::deref(platform::deref(m_patient).RXs);
}

bool frmPatient::readyForPrescriptions() { return m_ui->grdRXs->commitEdit() && m_fields.readable(); }

void frmPatient::cmdAddRX_Click() {
    guarded(u"frmPatient:cmdAddRX_Click"_s, [&] {
        if (!readyForPrescriptions())
            return;
        const NewLine line(*m_ui->grdRXs, u"RXsID"_s);
        const clsPatientPtr patient = m_patient;
        const QString search =
            platform::InputBox(translated(u"Enter all or part of Log name"_s), translated(u"Search Log"_s));
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
    MainWindow& main = platform::deref(m_context.window);
    main.ActiveBar_ToolClick(main.bar().band(u"FormBar"_s).tool(u"cmdPatients"_s));
}

// Whoever is on show when the button is clicked, so that the patient may be looked for first.
void frmPatient::offerBatch(const QString& lot) {
    guarded(u"frmPatient:offerBatch"_s, [&] {
        comeOnShow();
        const QPointer<frmPatient> screen(this);
        announce({translated(u"Choose the patient for batch %1."_s).replace(u"%1"_s, lot),
                  {{translated(u"Add to this patient"_s),
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
    guarded(u"frmPatient:addBatch"_s, [&] {
        comeOnShow();
        if (m_empty)
            return announce(translated(u"No records"_s));
        if (!readyForPrescriptions())
            return;
        const clsPatientPtr patient = m_patient;
        const QString name = recordOnView().name;
        const bool added = platform::deref(patient).addRX(u"?"_s + lot);
        if (!m_locked)
            saveForm();
        refreshForm();
        m_ui->tabPatient->setCurrentIndex(1);
        if (added)
            announce(translated(u"Batch %1 dispensed to %2"_s).replace(u"%2"_s, name).replace(u"%1"_s, lot));
    });
}

void frmPatient::cmdDeleteRX_Click() {
    guarded(u"frmPatient:cmdDeleteRX_Click"_s, [&] {
        if (!readyForPrescriptions())
            return;
        const clsPatientPtr patient = m_patient;
        const QVariant prescription = m_ui->grdRXs->currentValue(m_ui->grdRXs->columnByField(u"RXsID"_s));
        const QVariant name = m_ui->grdRXs->currentValue(m_ui->grdRXs->columnByField(u"log_Name"_s));
        const platform::BoxStyle style{
            .buttons = platform::Buttons::YesNo, .icon = platform::Icon::Exclamation, .low = true};
        if (platform::MsgBox(translated(u"Are you sure?"_s), style, u"Delete RX"_s) != platform::Answer::Yes)
            return;
        const Asked asked{aboutToDelete(m_context, u"RXs"_s, prescription.toLongLong()), name.toString()};
        const bool deleted = platform::deref(patient).deleteRX(platform::toInt16(prescription));
        saveForm();
        refreshForm();
        if (deleted)
            announceLineDeleted(asked);
    });
}

void frmPatient::showLinesAnew() {
    platform::deref(m_patient).openRXs();
    m_ui->grdRXs->setDataSource(m_patient->RXs);
}

bool frmPatient::cmdMake() {
    m_ui->grdRXs->commitEdit();
    if (prescriptions().recordCount() == 0) {
        platform::MsgBox(translated(u"No prescriptions"_s));
    } else if (m_ui->grdRXs->selectedCount() == 0) {
        platform::MsgBox(translated(u"You must select a prescription."_s));
    } else if (getFormula()) {
        makeFormula();
        return true;
    } else {
        platform::MsgBox(translated(u"Formula not found."_s));
    }
    return false;
}

bool frmPatient::getFormula() {
    return guarded(u"frmPatient:getFormula"_s, false, [&] {
        m_rsFormula = platform::Recordset::create();
        m_rsFormula->open(u"SELECT Log.FormulaID FROM Log WHERE ([LogID] = "_s +
                              platform::nullText(prescriptions().value(u"LogID"_s)) + u")"_s,
                          openDB(m_context), platform::LockType::ReadOnly);
        return m_rsFormula->recordCount() != 0;
    });
}

void frmPatient::makeFormula() {
    guarded(u"frmPatient:makeFormula"_s, [&] {
        const std::int16_t formulaID =
            platform::nullInt16(platform::deref(m_rsFormula).value(u"FormulaID"_s));
        m_formula = platform::deref(m_formula).openFormula(formulaID, QString());
        MainWindow& main = platform::deref(m_context.window);
        main.currentFormulaScreen().Formula(m_formula);
        main.ActiveBar_ToolClick(main.bar().band(u"FormBar"_s).tool(u"cmdCurrent"_s));
    });
}

}  // namespace sorvanto
