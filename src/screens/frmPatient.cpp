// The patient screen: its tools, showing and saving one patient.
//   frmPatientRX.cpp   the prescriptions        frmPatientPrint.cpp   labels and report
#include "screens/frmPatient.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/HostArea.h"
#include "platform/widgets/Theme.h"
#include "reports/ReportTexts.h"
#include "screens/Designed.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmPatient.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const BrowsedRecords patientRecords{
    .screen = u"frmPatient"_s,
    .statement = u"SELECT PatientID FROM Patient"_s,
    .key = u"PatientID"_s,
    .question = u"Patient data not saved! Save Changes?"_s,
    .button = u"cmdPatients"_s,
    .lines = u"RXs"_s,
    .locks = {.grids = true, .buttons = true},
    .tools = {.edit = ToolRule::Locked,
              .add = ToolRule::Locked,
              .cancelAndSave = ToolRule::Unlocked,
              .remove = ToolRule::Locked,
              .moves = ToolRule::Locked,
              .search = ToolRule::Locked,
              .make = ToolRule::Locked,
              .printAndExport = ToolRule::Locked,
              .trace = ToolRule::On,
              .label = true,
              .report = true},
    .emptyWhileLocked = true,
};

const std::vector<RecordFields<clsPatient>::Row> patientFields{
    {&clsPatient::pat_Address1, "txtpat_Address1", "lblpat_Address1", "Address 1"},
    {&clsPatient::pat_Address2, "txtpat_Address2", "lblpat_Address2", "Address 2"},
    {&clsPatient::pat_BDay, "txtpat_BDay", "lblpat_BDay", "Birthdate"},
    {&clsPatient::pat_City, "txtpat_City", "lblpat_City", "City"},
    {&clsPatient::pat_Country, "txtpat_Country", "lblpat_Country", "Country"},
    {&clsPatient::pat_Fax, "txtpat_Fax", "lblpat_Fax", "Fax"},
    {&clsPatient::pat_FName,
     "txtpat_FName",
     "lblpat_FName",
     "First Name",
     {.required = "First Name is required"}},
    {&clsPatient::pat_LName,
     "txtpat_LName",
     "lblpat_LName",
     "Last Name",
     {.required = "Last Name is required"}},
    {&clsPatient::pat_Phone, "txtpat_Phone", "lblpat_Phone", "Phone"},
    {&clsPatient::pat_State, "txtpat_State", "lblpat_State", "State"},
    {&clsPatient::pat_Zip, "txtpat_Zip", "lblpat_Zip", "Zip Code"},
    {&clsPatient::pat_Notes, "txtpat_Notes", "lblpat_Notes", "Notes"},
};

constexpr int rxCostColumn = 4;
constexpr int priceColumn = 5;
constexpr int widthOfPrescriptions = 980;  // as on a small screen, where the list does not stand beside

/// A text as wide as any with other digits.
QString widest(QString text, const QFontMetrics& metrics) {
    QChar digit = u'0';
    for (char16_t other = u'1'; other <= u'9'; ++other) {
        if (metrics.horizontalAdvance(QChar(other)) > metrics.horizontalAdvance(digit))
            digit = QChar(other);
    }
    for (QChar& place : text) {
        if (place.isDigit())
            place = digit;
    }
    return text;
}

}  // namespace

frmPatient::frmPatient(Context& context, QWidget* parent)
    : BrowsingScreen(context, patientRecords, parent), m_ui(designed<Ui::frmPatient>(this)),
      m_patient(std::make_shared<clsPatient>()), m_fields(context, *this, patientFields) {
    platform::makeCard(*m_ui->fraPatient);
    platform::makeCard(*m_ui->fraRXs);
    layOutPrescriptions();
    m_ui->txtpat_BDay->setBirthDate(true);
    connect(m_ui->cmdAddRX, &QPushButton::clicked, this, &frmPatient::cmdAddRX_Click);
    connect(m_ui->cmdDeleteRX, &QPushButton::clicked, this, &frmPatient::cmdDeleteRX_Click);
    addTools();
}

frmPatient::~frmPatient() = default;

// Eleven columns beside the mixer on a small screen: dates whole, names and people share what is left.
void frmPatient::layOutPrescriptions() {
    platform::RecordGrid& grid = *m_ui->grdRXs;
    grid.setCompact();
    setProperty(platform::besideWidth, widthOfPrescriptions);
    const QDateTime longest(QDate(2028, 12, 28), QTime(22, 58, 58));
    const QFontMetrics metrics = grid.fontMetrics();
    const int withTime = grid.widthOf(widest(platform::dateText(longest), metrics));
    const QDateTime midnight(longest.date(), QTime(0, 0), Qt::UTC);
    const int day = grid.widthOf(widest(platform::dateText(midnight), metrics));
    grid.setColumns({{.field = u"RXsID"_s, .caption = u"RXID"_s, .width = grid.widthOf(u"32767"_s)},
                     {.field = u"log_Name"_s, .caption = u"Name"_s},
                     {.field = u"log_Strength"_s, .caption = u"Strength"_s, .width = 64},
                     {.field = u"rxs_Qty"_s, .caption = u"Qty"_s, .width = 44, .editable = true},
                     {.field = u"rxs_Cost"_s, .caption = u"Cost"_s, .width = 62, .editable = true},
                     {.field = u"rxs_Price"_s, .caption = u"Price"_s, .width = 62, .editable = true},
                     {.field = u"log_Lot"_s, .caption = u"Lot"_s, .width = 84},
                     {.field = u"log_Date"_s, .caption = u"Log Date"_s, .width = withTime},
                     {.field = u"rxs_Date"_s, .caption = u"RX Date"_s, .width = day, .editable = true},
                     {.field = u"rxs_Consult"_s, .caption = u"Consult"_s, .width = 76, .editable = true},
                     {.field = u"rxs_Doctor"_s, .caption = u"Doctor"_s, .editable = true}});
}

void frmPatient::addTools() {
    m_tools.on({"cmdSave"_L1}, [this] {
        if (!m_fields.readable())
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
    guarded(u"frmPatient:Form_Load"_s, [&] {
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
    return {draftTable(), m_patient->PatientID, {}, m_patient->pat_LName + u", "_s + m_patient->pat_FName};
}

void frmPatient::translateForm() {
    guarded(u"frmPatient:translateForm"_s, [&] {
        m_fields.translate();
        m_ui->tabPatient->setTabText(0, translated(u"Patient"_s));
        m_ui->tabPatient->setTabText(1, translated(u"Prescriptions"_s));
        m_ui->grdRXs->setAccessibleName(m_ui->tabPatient->tabText(1));
        m_ui->cmdAddRX->setText(translated(u"Add"_s));
        m_ui->cmdAddRX->setToolTip(translated(u"Add RX"_s));
        m_ui->cmdDeleteRX->setText(translated(u"Delete"_s));
        m_ui->cmdDeleteRX->setToolTip(translated(u"Delete RX"_s));
        // Design caption and key; "RXID" stays as it is.
        const std::pair<QString, QString> columns[] = {
            {u"Name"_s, u"Name"_s},         {u"Strength"_s, u"Strength"_s}, {u"Qty"_s, u"Qty"_s},
            {u"Cost"_s, u"Cost"_s},         {u"Price"_s, u"Price"_s},       {u"Lot"_s, u"Lot"_s},
            {u"Log Date"_s, u"Log Date"_s}, {u"RX Date"_s, u"Rx Date"_s},   {u"Consult"_s, u"Consult"_s},
            {u"Doctor"_s, u"Doctor"_s},
        };
        for (const auto& [caption, key] : columns)
            m_ui->grdRXs->setShownCaption(m_ui->grdRXs->columnByCaption(caption), translated(key));
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
    const ResumeNext step(u"frmPatient:searchPatient"_s);
    step([&] { m_patient = clsPatient().openPatient(0, searchText); });
    step([&] { refreshForm(); });
}

void frmPatient::deletePatient() {
    guarded(u"frmPatient:deletePatient"_s, [&] {
        const Asked asked = askedRecord();
        if (clsPatient().deletePatient(m_patient, false)) {
            moveFirst();
            getData();
            announceDeleted(asked);
        }
    });
}

void frmPatient::unlockForm() {
    BrowsingScreen::unlockForm();
    m_ui->tabPatient->setEnabled(true);
}

void frmPatient::fillForm() {
    guarded(u"frmPatient:refreshForm"_s, [&] {
        setEnabled(true);
        const clsPatient& patient = platform::deref(m_patient);
        showCaption(u"Patients"_s, patient.pat_LName + u", "_s + patient.pat_FName);
        const QString money = optionsPricePicture(m_context);
        m_ui->grdRXs->setNumberFormat(rxCostColumn, money);
        m_ui->grdRXs->setNumberFormat(priceColumn, money);
        m_fields.show(patient);
        m_ui->grdRXs->setDataSource(patient.RXs);
    });
}

bool frmPatient::saveForm() {
    return guarded(u"frmPatient:saveForm"_s, false, [&] {
        if (!m_fields.complete())
            return false;
        m_fields.read(platform::deref(m_patient));
        if (!m_ui->grdRXs->commitEdit())
            return false;
        m_patient = clsPatient().savePatient(m_patient);
        if (m_patient)
            recordSaved();
        refreshForm();
        return true;
    });
}

void frmPatient::emptyForm() {
    guarded(u"frmPatient:clearForm"_s, [&] {
        m_patient = std::make_shared<clsPatient>();
        clearControls(*this);
    });
}

}  // namespace sorvanto
