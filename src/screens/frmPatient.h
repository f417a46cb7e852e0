// The patient screen: patients and their prescriptions, each a link to a logged batch, from which the
// same formula can be made again.
#pragma once

#include "records/clsFormula.h"
#include "records/clsPatient.h"
#include "screens/BrowsingScreen.h"
#include "screens/ListedTables.h"
#include "screens/RecordFields.h"
#include "shared/Dispensary.h"

#include <memory>

namespace Ui {
class frmPatient;
}

namespace sorvanto {

class frmPatient : public BrowsingScreen, public Dispensary {
    Q_OBJECT

public:
    explicit frmPatient(Context& context, QWidget* parent = nullptr);
    ~frmPatient() override;

    void Form_Load() override;
    ListedTable listedTable() const override { return listedPatients(); }
    void unlockForm() override;
    bool saveForm() override;
    void searchPatient(const QString& searchText);
    /// Finds the formula of the current prescription's batch; false when that batch is gone.
    bool getFormula();
    /// Hands the found formula to the current formula screen and switches there.
    void makeFormula();
    void offerBatch(const QString& lot) override;

protected:
    void toolDone() override { refreshForm(); }
    void openRecord(std::int16_t key) override;
    void search(const QString& searchText) override { searchPatient(searchText); }
    void addRecord() override;
    void dropNewRecord() override { clsPatient().deletePatient(m_patient, true); }
    void showLinesAnew() override;
    void deleteRecord() override { deletePatient(); }
    DraftRecord recordOnView() const override;
    void fillForm() override;
    void emptyForm() override;
    void blankRecord() override { m_patient = std::make_shared<clsPatient>(); }

private:
    void layOutPrescriptions();
    void addTools();
    void deletePatient();
    void translateForm();

    // Prescriptions (frmPatientRX.cpp)
    platform::Recordset& prescriptions() const;
    /// Nothing typed stands in the way: a cell that the file refuses, a date that can't be read.
    bool readyForPrescriptions();
    void cmdAddRX_Click();
    void cmdDeleteRX_Click();
    void comeOnShow();
    /// To the patient on show.
    void addBatch(const QString& lot);
    /// True when the make has begun on the current formula screen, which listens now.
    bool cmdMake();

    // Paper and spreadsheet (frmPatientPrint.cpp)
    platform::RecordsetPtr currentPrescription() const;
    void printRX(bool exportIt);
    void printRXReport(bool exportIt);

    std::unique_ptr<Ui::frmPatient> m_ui;
    clsPatientPtr m_patient;
    RecordFields<clsPatient> m_fields;
    clsFormulaPtr m_formula;
    platform::RecordsetPtr m_rsFormula;
};

}  // namespace sorvanto
