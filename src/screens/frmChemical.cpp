// The chemical screen: its tools, its lists, showing and saving one chemical.
#include "screens/frmChemical.h"

#include "config/clsOptions.h"
#include "platform/ask/Ask.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "screens/ToolStates.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmChemical.h"

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
    .printAndExport = ToolRule::Locked,
    .report = true,
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
        box.addItem(translated(entry));
}

}  // namespace

frmChemical::frmChemical(QWidget* parent)
    : BrowsingScreen("frmChemical", "SELECT ChemicalID FROM Chemical", "ChemicalID", {}, parent),
      m_ui(std::make_unique<Ui::frmChemical>()), m_chemical(std::make_shared<clsChemical>()) {
    m_ui->setupUi(this);
    platform::makeCard(*m_ui->fraChemical);
    m_ui->cbochm_Units->setBoxText("Select Units");
    m_ui->cbochm_Form->setBoxText("Select Form");
    m_tools.onReport("mnuReport"_L1, [this](bool exportIt) { printChemicals(exportIt); });
    m_tools.on({"cmdChemicals"_L1, "mnuChemicals"_L1}, [this] { refreshForm(); });
}

frmChemical::~frmChemical() = default;

// The screen is not locked here: it starts unlocked until the first save or cancel.
void frmChemical::Form_Load() {
    guarded("frmChemical:Form_Load", [&] {
        m_chemical = std::make_shared<clsChemical>();
        translateForm();
        getData();
        if (!m_empty)
            openFirst();
        refreshForm();
    });
}

void frmChemical::openRecord(std::int16_t key) { m_chemical = clsChemical().openChemical(key, QString()); }

DraftRecord frmChemical::recordOnView() const {
    if (!m_chemical)
        return {draftTable()};
    return {draftTable(), m_chemical->ChemicalID, m_chemical->chm_GUID, m_chemical->chm_Name};
}

QString frmChemical::nameShown() const { return m_ui->txtchm_Name->text(); }

void frmChemical::translateForm() {
    guarded("frmChemical:translateForm", [&] {
        const std::pair<QLabel*, const char*> labels[] = {
            {m_ui->lblchm_Name, "Chemical Name"},    {m_ui->lblchm_NDC, "NDC"},
            {m_ui->lblchm_Units, "Unit of Measure"}, {m_ui->lblchm_Form, "Chemical Form"},
            {m_ui->lblchm_Lot, "Lot Number"},        {m_ui->lblchm_Supplier, "Supplier"},
            {m_ui->lblchm_Price, "Cost per Unit"},   {m_ui->lblchm_AWP, "AWP per Unit"},
            {m_ui->lblchm_Notes, "Notes"},
        };
        for (const auto& [label, text] : labels)
            label->setText(translated(text));
        fill(*m_ui->cbochm_Units, units);
        fill(*m_ui->cbochm_Form, forms);
    });
}

void frmChemical::setMenuOptions() {
    guarded("frmChemical:setMenuOptions", [&] {
        if (m_empty && m_locked)
            setEmptyToolStates(true);
        else
            setToolStates(toolRules, m_locked);
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
    guarded("frmChemical:cancelEdit", [&] {
        typingEnded();
        lockForm();
        refreshForm();
    });
}

void frmChemical::searchChemical(const QString& searchText) {
    const ResumeNext step("frmChemical:searchChemical");
    step([&] { m_chemical = clsChemical().openChemical(0, searchText); });
    step([&] { refreshForm(); });
}

void frmChemical::deleteChemical() {
    guarded("frmChemical:deleteChemical", [&] {
        if (clsChemical().deleteChemical(m_chemical, false)) {
            clearForm();
            moveFirst();
            getData();
        }
    });
}

void frmChemical::fillForm() {
    guarded("frmChemical:refreshForm", [&] {
        setEnabled(true);
        const clsChemical& chemical = platform::deref(m_chemical);
        showCaption("Chemicals", chemical.chm_Name);
        const QString money = platform::deref(basMain::Options).DefCurrency() + " ###,##0.00";
        m_ui->txtchm_AWP->setFormats(money, money);
        m_ui->txtchm_AWP->setValue(chemical.chm_AWP);
        m_ui->txtchm_Cost->setFormats(money, money);
        m_ui->txtchm_Cost->setValue(chemical.chm_Cost);
        m_ui->txtchm_Lot->setText(chemical.chm_Lot);
        m_ui->txtchm_Name->setText(chemical.chm_Name);
        m_ui->txtchm_NDC->setText(chemical.chm_NDC);
        m_ui->txtchm_Notes->setText(chemical.chm_Notes);
        m_ui->txtchm_Supplier->setText(chemical.chm_Supplier);
        m_ui->cbochm_Form->setBoxText(chemical.chm_Form);
        m_ui->cbochm_Units->setBoxText(chemical.chm_Units);
    });
}

bool frmChemical::saveForm() {
    return guarded("frmChemical:saveForm", false, [&] {
        if (m_ui->txtchm_Name->text().isEmpty()) {
            platform::MsgBox(translated("Chemical Name is required"));
            return false;
        }
        // A price that can't be read as one number is never guessed; its box shows the hint.
        if (!m_ui->txtchm_AWP->acceptable() || !m_ui->txtchm_Cost->acceptable())
            return false;
        clsChemical& chemical = platform::deref(m_chemical);
        chemical.chm_AWP = m_ui->txtchm_AWP->toCurrency();
        chemical.chm_Cost = m_ui->txtchm_Cost->toCurrency();
        if (m_ui->cbochm_Form->boxText() != translated("Select Form"))
            chemical.chm_Form = m_ui->cbochm_Form->boxText();
        chemical.chm_Lot = m_ui->txtchm_Lot->text();
        chemical.chm_Name = m_ui->txtchm_Name->text();
        chemical.chm_NDC = m_ui->txtchm_NDC->text();
        chemical.chm_Notes = m_ui->txtchm_Notes->text();
        chemical.chm_Supplier = m_ui->txtchm_Supplier->text();
        if (m_ui->cbochm_Units->boxText() != translated("Select Units"))
            chemical.chm_Units = m_ui->cbochm_Units->boxText();
        m_chemical = clsChemical().saveChemical(m_chemical);
        if (m_chemical)
            typingEnded();
        refreshForm();
        return true;
    });
}

void frmChemical::emptyForm() {
    guarded("frmChemical:clearForm", [&] {
        m_chemical = std::make_shared<clsChemical>();
        for (QWidget* control : findChildren<QWidget*>()) {
            const QString name = control->objectName();
            auto* choice = qobject_cast<platform::ChoiceBox*>(control);
            if (name.contains("txtchm_Cost") || name.contains("txtchm_AWP"))
                setControlText(*control, "0.00");
            else if (name.contains("txt"))
                setControlText(*control, QString());
            else if (choice && name.contains("cbochm_Units"))
                choice->setBoxText(translated("Select Units"));
            else if (choice && name.contains("cbochm_Form"))
                choice->setBoxText(translated("Select Form"));
        }
    });
}

}  // namespace sorvanto
