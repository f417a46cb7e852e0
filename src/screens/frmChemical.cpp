// The chemical screen: its tools, its lists, showing and saving one chemical.
#include "screens/frmChemical.h"

#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "screens/Designed.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "ui_frmChemical.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const BrowsedRecords chemicalRecords{
    .screen = u"frmChemical"_s,
    .statement = u"SELECT ChemicalID FROM Chemical"_s,
    .key = u"ChemicalID"_s,
    .question = u"Chemical data not saved! Save Changes?"_s,
    .button = u"cmdChemicals"_s,
    .locks = {},
    .tools = {.edit = ToolRule::Locked,
              .add = ToolRule::Locked,
              .cancelAndSave = ToolRule::Unlocked,
              .remove = ToolRule::Locked,
              .moves = ToolRule::Locked,
              .search = ToolRule::Locked,
              .printAndExport = ToolRule::Locked,
              .trace = ToolRule::On,
              .newLot = ToolRule::On,
              .prices = ToolRule::On,
              .report = true},
    .emptyWhileLocked = true,
};

const std::vector<RecordFields<clsChemical>::Row> chemicalFields{
    {&clsChemical::chm_AWP, "txtchm_AWP", "lblchm_AWP", "AWP per Unit"},
    {&clsChemical::chm_Cost, "txtchm_Cost", "lblchm_Price", "Cost per Unit"},
    {&clsChemical::chm_Lot, "txtchm_Lot", "lblchm_Lot", "Lot Number"},
    {&clsChemical::chm_Name,
     "txtchm_Name",
     "lblchm_Name",
     "Chemical Name",
     {.required = "Chemical Name is required"}},
    {&clsChemical::chm_NDC, "txtchm_NDC", "lblchm_NDC", "NDC"},
    {&clsChemical::chm_Notes, "txtchm_Notes", "lblchm_Notes", "Notes"},
    {&clsChemical::chm_Supplier, "txtchm_Supplier", "lblchm_Supplier", "Supplier"},
    {&clsChemical::chm_Form, "cbochm_Form", "lblchm_Form", "Chemical Form", {.prompt = "Select Form"}},
    {&clsChemical::chm_Units, "cbochm_Units", "lblchm_Units", "Unit of Measure", {.prompt = "Select Units"}},
};

// "MCG" is offered twice.
const char* const units[] = {"AMP", "CAPS", "CC",  "DROP", "EACH", "GMS", "GR",  "GTTS", "IU",
                             "LIT", "LITR", "MCG", "MCG",  "MEQ",  "MGS", "MLS", "TABS", "VIAL"};
const char* const forms[] = {"BOTTLE", "CAP",  "CRM", "CRYS",  "CUBE", "FLAKE", "GEL", "GRAM",
                             "INJ",    "LIQU", "PWD", "SOLID", "SOLN", "SUSP",  "TAB", "UNG"};

template <std::size_t count>
void fill(platform::ChoiceBox& box, const char* const (&entries)[count]) {
    box.clear();
    for (const char* entry : entries)
        box.addItem(translated(QLatin1String(entry)));
}

}  // namespace

frmChemical::frmChemical(Context& context, QWidget* parent)
    : BrowsingScreen(context, chemicalRecords, parent), m_ui(designed<Ui::frmChemical>(this)),
      m_chemical(std::make_shared<clsChemical>()), m_fields(context, *this, chemicalFields) {
    platform::makeCard(*m_ui->fraChemical);
    m_ui->cbochm_Units->setBoxText(u"Select Units"_s);
    m_ui->cbochm_Form->setBoxText(u"Select Form"_s);
    m_tools.onReport("mnuReport"_L1, [this](bool exportIt) { printChemicals(exportIt); });
    m_tools.on({"cmdChemicals"_L1, "mnuChemicals"_L1}, [this] { refreshForm(); });
    m_tools.on({"cmdImport"_L1}, [this] { importPrices(); });
}

frmChemical::~frmChemical() = default;

// The screen is not locked here: it starts unlocked until the first save or cancel.
void frmChemical::Form_Load() {
    guarded(u"frmChemical:Form_Load"_s, [&] {
        m_chemical = std::make_shared<clsChemical>();
        translateForm();
        getData();
        if (!m_empty)
            openFirst();
        refreshForm();
    });
}

void frmChemical::lockForm() {
    BrowsingScreen::lockForm();
    m_neverLocked = false;
}

QString frmChemical::closingNote() const {
    if (!m_neverLocked || m_new || hasTypedText())
        return {};
    return translated(u"Nothing was typed on the chemical screen: it is open for typing from the start."_s);
}

void frmChemical::openRecord(std::int16_t key) { m_chemical = clsChemical().openChemical(key, QString()); }

DraftRecord frmChemical::recordOnView() const {
    if (!m_chemical)
        return {draftTable()};
    return {draftTable(), m_chemical->ChemicalID, m_chemical->chm_GUID, m_chemical->chm_Name};
}

void frmChemical::translateForm() {
    guarded(u"frmChemical:translateForm"_s, [&] {
        m_fields.translate();
        fill(*m_ui->cbochm_Units, units);
        fill(*m_ui->cbochm_Form, forms);
    });
}

void frmChemical::addRecord() {
    m_new = true;
    clearForm();
    m_chemical = clsChemical().addChemical();
    refreshForm();
    getData();
    unlockForm();
    m_ui->txtchm_Name->setFocus();
}

void frmChemical::cancelEdit() {
    guarded(u"frmChemical:cancelEdit"_s, [&] {
        typingEnded();
        lockForm();
        refreshForm();
    });
}

void frmChemical::searchChemical(const QString& searchText) {
    const ResumeNext step(u"frmChemical:searchChemical"_s);
    step([&] { m_chemical = clsChemical().openChemical(0, searchText); });
    step([&] { refreshForm(); });
}

void frmChemical::deleteChemical() {
    guarded(u"frmChemical:deleteChemical"_s, [&] {
        const Asked asked = askedRecord();
        if (clsChemical().deleteChemical(m_chemical, false))
            recordDeleted(asked);
    });
}

void frmChemical::fillForm() {
    guarded(u"frmChemical:refreshForm"_s, [&] {
        setEnabled(true);
        const clsChemical& chemical = platform::deref(m_chemical);
        showCaption(u"Chemicals"_s, chemical.chm_Name);
        m_fields.show(chemical);
    });
}

bool frmChemical::saveForm() {
    return guarded(u"frmChemical:saveForm"_s, false, [&] {
        if (!m_fields.complete())
            return false;
        m_fields.read(platform::deref(m_chemical));
        m_chemical = clsChemical().saveChemical(m_chemical);
        if (m_chemical)
            recordSaved();
        refreshForm();
        return true;
    });
}

void frmChemical::emptyForm() {
    guarded(u"frmChemical:clearForm"_s, [&] {
        m_chemical = std::make_shared<clsChemical>();
        for (QWidget* control : findChildren<QWidget*>()) {
            const QString name = control->objectName();
            auto* choice = qobject_cast<platform::ChoiceBox*>(control);
            if (name.contains(u"txtchm_Cost"_s) || name.contains(u"txtchm_AWP"_s))
                setControlText(*control, u"0.00"_s);
            else if (name.contains(u"txt"_s))
                setControlText(*control, QString());
            else if (choice && name.contains(u"cbochm_Units"_s))
                choice->setBoxText(translated(u"Select Units"_s));
            else if (choice && name.contains(u"cbochm_Form"_s))
                choice->setBoxText(translated(u"Select Form"_s));
        }
    });
}

}  // namespace sorvanto
