// The patient screen: its tools, showing and saving one patient.
//   frmPatientRX.cpp   the prescriptions        frmPatientPrint.cpp   labels and report
#include "screens/frmPatient.h"

#include "config/clsOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "screens/ToolStates.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmPatient.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr ScreenTools toolRules{
    .edit = ToolRule::Locked,
    .add = ToolRule::Locked,
    .cancelAndSave = ToolRule::Unlocked,
    .remove = ToolRule::Locked,
    .moves = ToolRule::Locked,
    .search = ToolRule::Locked,
    .make = ToolRule::Locked,
    .printAndExport = ToolRule::Locked,
    .label = true,
    .report = true,
};

constexpr int costColumn = 4;
constexpr int priceColumn = 5;

}  // namespace

frmPatient::frmPatient(QWidget* parent)
    : BrowsingScreen("frmPatient", "SELECT PatientID FROM Patient", "PatientID",
                     {.grids = true, .buttons = true}, parent),
      m_ui(std::make_unique<Ui::frmPatient>()), m_patient(std::make_shared<clsPatient>()) {
    m_ui->setupUi(this);
    platform::makeCard(*m_ui->fraPatient);
    platform::makeCard(*m_ui->fraRXs);
    m_ui->grdRXs->setColumns({{.field = "RXsID", .caption = "RXID", .width = 60},
                              {.field = "log_Name", .caption = "Name", .width = 192},
                              {.field = "log_Strength", .caption = "Strength", .width = 128},
                              {.field = "rxs_Qty", .caption = "Qty", .width = 72, .editable = true},
                              {.field = "rxs_Cost", .caption = "Cost", .width = 104, .editable = true},
                              {.field = "rxs_Price", .caption = "Price", .width = 104, .editable = true},
                              {.field = "log_Lot", .caption = "Lot", .width = 112},
                              {.field = "log_Date", .caption = "Log Date", .width = 192},
                              {.field = "rxs_Date", .caption = "RX Date", .width = 120, .editable = true},
                              {.field = "rxs_Consult", .caption = "Consult", .width = 136, .editable = true},
                              {.field = "rxs_Doctor", .caption = "Doctor", .width = 160, .editable = true}});
    m_ui->txtpat_BDay->setBirthDate(true);
    connect(m_ui->cmdAddRX, &QPushButton::clicked, this, &frmPatient::cmdAddRX_Click);
    connect(m_ui->cmdDeleteRX, &QPushButton::clicked, this, &frmPatient::cmdDeleteRX_Click);
    addTools();
}

frmPatient::~frmPatient() = default;

void frmPatient::addTools() {
    m_tools.on({"cmdSave"_L1}, [this] {
        if (!birthDateReadable())
            return false;  // without a refresh, what was typed stays, to be mended
        cmdSave();
        return true;
    });
    m_tools.on({"cmdMake"_L1}, [this] { return !cmdMake(); });
    m_tools.onReport("mnuLabel"_L1, [this](bool exportIt) { printRX(exportIt); });
    m_tools.onReport("mnuReport"_L1, [this](bool exportIt) { printRXReport(exportIt); });
    m_tools.on({"cmdPatients"_L1, "mnuPatients"_L1}, [] {});  // the refresh that follows every tool
}

void frmPatient::Form_Load() {
    guarded("frmPatient:Form_Load", [&] {
        m_patient = std::make_shared<clsPatient>();
        m_formula = std::make_shared<clsFormula>();
        translateForm();
        getData();
        if (!identifiers().eof())
            openFirst();
        lockForm();
        refreshForm();
        m_ui->tabPatient->setCurrentIndex(0);
    });
}

void frmPatient::openRecord(std::int16_t key) { m_patient = clsPatient().openPatient(key, QString()); }

DraftRecord frmPatient::recordOnView() const {
    if (!m_patient)
        return {draftTable()};
    return {draftTable(), m_patient->PatientID, {}, m_patient->pat_LName + ", " + m_patient->pat_FName};
}

QString frmPatient::nameShown() const {
    return m_ui->txtpat_LName->text() + ", " + m_ui->txtpat_FName->text();
}

void frmPatient::translateForm() {
    guarded("frmPatient:translateForm", [&] {
        const std::pair<QLabel*, const char*> labels[] = {
            {m_ui->lblpat_FName, "First Name"},
            {m_ui->lblpat_LName, "Last Name"},
            {m_ui->lblpat_Address1, "Address 1"},
            {m_ui->lblpat_Address2, "Address 2"},
            {m_ui->lblpat_City, "City"},
            {m_ui->lblpat_State, "State"},
            {m_ui->lblpat_Zip, "Zip Code"},
            {m_ui->lblpat_Country, "Country"},
            {m_ui->lblpat_BDay, "Birthdate"},
            {m_ui->lblpat_Phone, "Phone"},
            {m_ui->lblpat_Fax, "Fax"},
            {m_ui->lblpat_Notes, "Notes"},
        };
        for (const auto& [label, text] : labels)
            label->setText(translated(text));
        m_ui->tabPatient->setTabText(0, translated("Patient"));
        m_ui->tabPatient->setTabText(1, translated("Prescriptions"));
        m_ui->cmdAddRX->setText(translated("Add"));
        m_ui->cmdAddRX->setToolTip(translated("Add RX"));
        m_ui->cmdDeleteRX->setText(translated("Delete"));
        m_ui->cmdDeleteRX->setToolTip(translated("Delete RX"));
        // Design caption and key; "RXID" stays as it is.
        const std::pair<const char*, const char*> columns[] = {
            {"Name", "Name"},         {"Strength", "Strength"}, {"Qty", "Qty"},
            {"Cost", "Cost"},         {"Price", "Price"},       {"Lot", "Lot"},
            {"Log Date", "Log Date"}, {"RX Date", "Rx Date"},   {"Consult", "Consult"},
            {"Doctor", "Doctor"},
        };
        for (const auto& [caption, key] : columns)
            m_ui->grdRXs->setShownCaption(m_ui->grdRXs->columnByCaption(caption), translated(key));
    });
}

void frmPatient::setMenuOptions() {
    guarded("frmPatient:setMenuOptions", [&] {
        if (m_empty && m_locked)
            setEmptyToolStates(true);
        else
            setToolStates(toolRules, m_locked);
    });
}

void frmPatient::addRecord() {
    m_new = true;
    unlockForm();
    clearForm();
    m_patient = clsPatient().addPatient();
    getData();
    m_ui->tabPatient->setCurrentIndex(0);
    m_ui->txtpat_FName->setFocus();
}

void frmPatient::searchPatient(const QString& searchText) {
    const ResumeNext step("frmPatient:searchPatient");
    step([&] { m_patient = clsPatient().openPatient(0, searchText); });
    step([&] { refreshForm(); });
}

void frmPatient::deletePatient() {
    guarded("frmPatient:deletePatient", [&] {
        if (clsPatient().deletePatient(m_patient, false)) {
            moveFirst();
            getData();
        }
    });
}

void frmPatient::unlockForm() {
    BrowsingScreen::unlockForm();
    m_ui->tabPatient->setEnabled(true);
}

void frmPatient::fillForm() {
    guarded("frmPatient:refreshForm", [&] {
        setEnabled(true);
        const clsPatient& patient = platform::deref(m_patient);
        showCaption("Patients", patient.pat_LName + ", " + patient.pat_FName);
        const QString money = platform::deref(basMain::Options).DefCurrency() + " ###,##0.00";
        m_ui->grdRXs->setNumberFormat(costColumn, money);
        m_ui->grdRXs->setNumberFormat(priceColumn, money);
        m_ui->txtpat_Address1->setText(patient.pat_Address1);
        m_ui->txtpat_Address2->setText(patient.pat_Address2);
        m_ui->txtpat_BDay->setValue(patient.pat_BDay);
        m_ui->txtpat_City->setText(patient.pat_City);
        m_ui->txtpat_Country->setText(patient.pat_Country);
        m_ui->txtpat_Fax->setText(patient.pat_Fax);
        m_ui->txtpat_FName->setText(patient.pat_FName);
        m_ui->txtpat_LName->setText(patient.pat_LName);
        m_ui->txtpat_Phone->setText(patient.pat_Phone);
        m_ui->txtpat_State->setText(patient.pat_State);
        m_ui->txtpat_Zip->setText(patient.pat_Zip);
        m_ui->txtpat_Notes->setText(patient.pat_Notes);
        m_ui->grdRXs->setDataSource(patient.RXs);
    });
}

bool frmPatient::fieldsComplete() {
    if (m_ui->txtpat_FName->text().isEmpty()) {
        platform::MsgBox(translated("First Name is required"));
        return false;
    }
    if (m_ui->txtpat_LName->text().isEmpty()) {
        platform::MsgBox(translated("Last Name is required"));
        return false;
    }
    return birthDateReadable();
}

bool frmPatient::birthDateReadable() {
    if (m_ui->txtpat_BDay->acceptable())
        return true;
    m_ui->tabPatient->setCurrentIndex(0);
    m_ui->txtpat_BDay->setFocus();
    return m_ui->txtpat_BDay->acceptable();  // the hint shows on a visible box alone
}

bool frmPatient::saveForm() {
    return guarded("frmPatient:saveForm", false, [&] {
        if (!fieldsComplete())
            return false;
        clsPatient& patient = platform::deref(m_patient);
        patient.pat_Address1 = m_ui->txtpat_Address1->text();
        patient.pat_Address2 = m_ui->txtpat_Address2->text();
        patient.pat_BDay = m_ui->txtpat_BDay->value();
        patient.pat_City = m_ui->txtpat_City->text();
        patient.pat_Country = m_ui->txtpat_Country->text();
        patient.pat_Fax = m_ui->txtpat_Fax->text();
        patient.pat_FName = m_ui->txtpat_FName->text();
        patient.pat_LName = m_ui->txtpat_LName->text();
        patient.pat_Notes = m_ui->txtpat_Notes->text();
        patient.pat_Phone = m_ui->txtpat_Phone->text();
        patient.pat_State = m_ui->txtpat_State->text();
        patient.pat_Zip = m_ui->txtpat_Zip->text();
        if (!m_ui->grdRXs->commitEdit())
            return false;
        m_patient = clsPatient().savePatient(m_patient);
        if (m_patient)
            typingEnded();
        refreshForm();
        return true;
    });
}

void frmPatient::emptyForm() {
    guarded("frmPatient:clearForm", [&] {
        m_patient = std::make_shared<clsPatient>();
        clearControls(*this);
    });
}

}  // namespace sorvanto
