// The record side of the formula screen: fields, ingredients, validations, tool actions.
#include "screens/frmFormula.h"

#include "mixing/frmMake.h"
#include "platform/ask/Ask.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/CommandBar.h"
#include "platform/widgets/ReportList.h"
#include "platform/widgets/Theme.h"
#include "screens/Designed.h"
#include "screens/NewLine.h"
#include "screens/frmCurrFormula.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/MainWindow.h"
#include "shared/Translator.h"
#include "ui_frmFormula.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const BrowsedRecords formulaRecords{
    .screen = u"frmFormula"_s,
    .statement = u"SELECT FormulaID FROM Formula Order By frm_Name"_s,
    .key = u"FormulaID"_s,
    .question = u"Formula data not saved! Save Changes?"_s,
    .button = u"cmdFormulas"_s,
    .lines = u"FormChem"_s,
    .locks = {.grids = true, .upDowns = true, .buttons = true},
    .tools = {.edit = ToolRule::Locked,
              .add = ToolRule::Locked,
              .cancelAndSave = ToolRule::Unlocked,
              .copy = ToolRule::Locked,
              .remove = ToolRule::Locked,
              .moves = ToolRule::Locked,
              .search = ToolRule::Locked,
              .make = ToolRule::Locked,
              .printAndExport = ToolRule::Locked,
              .trace = ToolRule::On,
              .worksheet = true},
};

const std::vector<RecordFields<clsFormula>::Row> formulaFields{
    {&clsFormula::frm_Instructions, "txtfrm_Instructions", "lblMixNotes", "Mix Notes"},
    {&clsFormula::frm_Name,
     "txtfrm_Name",
     "lblfrm_Name",
     "Formula Name",
     {.required = "Formula Name is required"}},
    {&clsFormula::frm_NDC, "txtFrm_NDC", "lblfrm_NDC", "Formula NDC"},
    {&clsFormula::frm_Desc, "txtfrm_Desc", "lblfrm_Desc", "Description"},
    {&clsFormula::frm_Quantity,
     "txtfrm_Quantity",
     "lblfrm_Quantity",
     "Quantity",
     {.required = "Quantity is required"}},
    {&clsFormula::frm_Strength, "txtfrm_Strength", "lblfrm_Strength", "Strength"},
    {&clsFormula::frm_Cost, "txtfrm_Cost", "lblfrm_Cost", "Cost", {.shownOnly = true}},
    {&clsFormula::frm_AWP, "txtfrm_AWP", "lblfrm_AWP", "AWP"},
    {&clsFormula::frm_Units, "txtfrm_Units", "lblfrm_Units", "Units"},
};

}  // namespace

frmFormula::frmFormula(Context& context, QWidget* parent)
    : BrowsingScreen(context, formulaRecords, parent), m_ui(designed<Ui::frmFormula>(this)),
      m_formula(std::make_shared<clsFormula>()), m_fields(context, *this, formulaFields) {
    m_fields.addLabels(*this, {{"lblformType", "Formula Type"}, {"lblfrm_JarSize", "Jar Size"}});
    platform::makeCard(*m_ui->fraFormula);
    platform::makeCard(*m_ui->fraIngredients);
    m_ui->txtfrm_Quantity->setFormats(u"####0"_s, u"####0;;Null"_s);
    m_ui->txtfrm_Quantity->setBounds(-1000, 1000);  // what is not above 0 is told when it is saved
    m_ui->txtfrm_Cost->setBounds(0, 10000);
    m_ui->txtfrm_AWP->setBounds(0, 10000);
    m_ui->txtfrm_Units->setText(u"MLS"_s);
    m_ui->grdIngredients->setColumns(
        {{.field = u"FormChemID"_s, .caption = u"FormChemID"_s, .hidden = true},
         {.field = u"chm_Name"_s, .caption = u"Name"_s},
         {.field = u"chm_Units"_s, .caption = u"Units"_s, .width = 112},
         {.field = u"fch_Qty"_s, .caption = u"Qty"_s, .width = 112, .editable = true},
         {.field = u"fch_QS"_s, .caption = u"QS"_s, .width = 80, .editable = true},
         {.field = u"fch_Active"_s, .caption = u"Active"_s, .width = 96, .editable = true}});
    setUpSteppers();
    connectControls();
    addTools();
}

// The list of steps goes after this, and tells of its rows.
frmFormula::~frmFormula() { m_ui->lstCustom->model()->disconnect(this); }

void frmFormula::connectControls() {
    connect(m_ui->cmdAdd, &QPushButton::clicked, this, &frmFormula::cmdAdd_Click);
    connect(m_ui->cmdRemove, &QPushButton::clicked, this, &frmFormula::cmdRemove_Click);
    connect(m_ui->cbofrm_Type, &platform::ChoiceBox::clicked, this, &frmFormula::cbofrm_Type_Click);
    connect(m_ui->cbofrm_JarSize, &platform::ChoiceBox::clicked, this, &frmFormula::cbofrm_JarSize_Click);
    connect(m_ui->cmdAddMix, &QPushButton::clicked, this, &frmFormula::cmdAddMix_Click);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &frmFormula::cmdDelete_Click);
    for (auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_ui->lstCustom->model(), change, this, &frmFormula::showStepCount);
    connect(m_ui->lstCustom->model(), &QAbstractItemModel::modelReset, this, &frmFormula::showStepCount);
    connect(m_ui->lstCustom, &platform::ReportList::dragStarted, this, &frmFormula::lstCustom_OLEStartDrag);
    connect(m_ui->lstCustom, &platform::ReportList::dropped, this, &frmFormula::lstCustom_OLEDragDrop);
}

void frmFormula::addTools() {
    m_tools.on({"cmdMake"_L1}, [this] {
        makeFormula();
        return false;  // the current formula screen listens now and has set its own tools
    });
    m_tools.on({"cmdCopy"_L1}, [this] { cmdCopy(); });
    m_tools.onReport("mnuWorksheet"_L1, [this](bool exportIt) { printFormula(exportIt); });
    m_tools.on({"cmdFormulas"_L1, "mnuFormulas"_L1}, [this] { refreshForm(); });
}

void frmFormula::Form_Load() {
    guarded(u"frmFormula:Form_Load"_s, [&] {
        m_formula = std::make_shared<clsFormula>();
        translateForm();
        fillTypeAndJarLists();
        getData();
        if (!m_empty) {
            moveFirst();
            openCurrent();
            refreshForm();
        }
        lockForm();
        m_ui->tabFormula->setCurrentIndex(0);
    });
}

void frmFormula::getData() {
    const ResumeNext step(u"frmFormula:getData"_s);
    step([&] { openIdentifiers(); });
    step([&] { testEmpty(); });
}

// The list of steps has no name that the walk over the controls knows.
void frmFormula::lockForm() {
    BrowsingScreen::lockForm();
    m_ui->lstCustom->setRowDragging(!m_locked);
}

void frmFormula::unlockForm() {
    BrowsingScreen::unlockForm();
    m_ui->lstCustom->setRowDragging(!m_locked);
}

void frmFormula::openRecord(std::int16_t key) { m_formula = clsFormula().openFormula(key, QString()); }

DraftRecord frmFormula::recordOnView() const {
    if (!m_formula)
        return {draftTable()};
    return {draftTable(), m_formula->FormulaID, m_formula->frm_GUID, m_formula->frm_Name};
}

QString frmFormula::formName() const { return platform::deref(m_formula).frm_Name; }

void frmFormula::translateForm() {
    guarded(u"frmFormula:translateForm"_s, [&] {
        setWindowTitle(translated(u"Formula"_s));
        m_fields.translate();
        m_ui->cmdAdd->setText(translated(u"Add"_s));
        m_ui->cmdAdd->setToolTip(translated(u"Add Ingredient"_s));
        m_ui->cmdRemove->setText(translated(u"Remove"_s));
        m_ui->cmdRemove->setToolTip(translated(u"Remove Ingredient"_s));
        const QString tabs[] = {u"General"_s, u"Ingredients"_s, u"Mix Options"_s};
        for (int tab = 0; tab < 3; ++tab)
            m_ui->tabFormula->setTabText(tab, translated(tabs[tab]));
        m_ui->grdIngredients->setAccessibleName(m_ui->tabFormula->tabText(1));
        m_ui->lstCustom->setAccessibleName(m_ui->tabFormula->tabText(2));
        for (const QString& caption : {u"Name"_s, u"Units"_s, u"Qty"_s, u"QS"_s, u"Active"_s})
            m_ui->grdIngredients->setShownCaption(m_ui->grdIngredients->columnByCaption(caption),
                                                  translated(caption));
        translateMix();
    });
}

void frmFormula::addRecord() {
    m_new = true;
    clearForm();
    m_formula = clsFormula().addFormula();
    getData();
    unlockForm();
    refreshForm();
    m_ui->tabFormula->setCurrentIndex(0);
    m_ui->txtfrm_Name->setFocus();
}

// The new flag stays as it was, so Cancel keeps the copy in the table.
void frmFormula::cmdCopy() {
    m_formula = clsFormula().copyFormula(m_formula);
    getData();
    unlockForm();
    refreshForm();
}

void frmFormula::searchFormula(QString searchText) {
    const ResumeNext step(u"frmFormula:searchFormula"_s);
    step([&] { m_formula = clsFormula().openFormula(0, searchText); });
    step([&] { refreshForm(); });
}

void frmFormula::deleteFormula() {
    guarded(u"frmFormula:deleteFormula"_s, [&] {
        const Asked asked = askedRecord();
        if (clsFormula().deleteFormula(m_formula, false))
            recordDeleted(asked);
    });
}

void frmFormula::makeFormula() {
    guarded(u"frmFormula:makeFormula"_s, [&] {
        m_ui->grdIngredients->commitEdit();
        MainWindow& main = platform::deref(m_context.window);
        main.currentFormulaScreen().Formula(m_formula);
        refreshForm();
        main.ActiveBar_ToolClick(main.bar().band(u"FormBar"_s).tool(u"cmdCurrent"_s));
    });
}

void frmFormula::fillForm() {
    guarded(u"frmFormula:refreshForm"_s, [&] {
        setEnabled(true);
        const clsFormula& formula = platform::deref(m_formula);
        showCaption(u"Formulas"_s, formula.frm_Name);
        m_fields.show(formula);
        m_ui->cbofrm_JarSize->setListIndex(formula.frm_JarSize - 1);
        m_ui->cbofrm_Type->setListIndex(formula.frm_FormType);
        populateMix(formula.frm_Mix);
        if (formula.Chemical)
            m_ui->grdIngredients->setDataSource(formula.Chemical);
        cbofrm_JarSize_Click();
    });
}

void frmFormula::storeFields() {
    clsFormula& formula = platform::deref(m_formula);
    m_fields.read(formula);
    const int jarRow = m_ui->cbofrm_JarSize->listIndex();
    if (jarRow < 0)
        throw platform::RuntimeError(platform::error::subscriptOutOfRange, u"No jar size is selected"_s);
    formula.frm_JarSize = platform::toInt16(m_ui->cbofrm_JarSize->itemData(jarRow));
    formula.frm_FormType = static_cast<std::int16_t>(m_ui->cbofrm_Type->listIndex());
    formula.frm_Mix = makeCustomXML();
}

bool frmFormula::saveForm() {
    return guarded(u"frmFormula:saveForm"_s, false, [&] {
        if (!m_fields.complete() || !stepsReadable())
            return false;
        storeFields();
        if (!m_ui->grdIngredients->commitEdit())
            return false;
        m_formula = clsFormula().saveFormula(m_formula);
        if (m_formula)
            recordSaved();
        refreshForm();
        return true;
    });
}

// The two prompts stand the wrong way round; refreshForm replaces them at once.
void frmFormula::emptyForm() {
    guarded(u"frmFormula:clearForm"_s, [&] {
        for (platform::TextBox* box :
             {m_ui->txtfrm_Name, m_ui->txtFrm_NDC, m_ui->txtfrm_Desc, m_ui->txtfrm_Strength})
            box->clear();
        m_ui->txtfrm_Instructions->clear();
        for (platform::NumberBox* box : {m_ui->txtfrm_Quantity, m_ui->txtfrm_Cost, m_ui->txtfrm_AWP})
            box->setValue(0.0);
        m_ui->txtfrm_Units->setText(translated(u"MLS"_s));
        m_ui->lstCustom->clear();
        m_ui->cbofrm_JarSize->setBoxText(translated(u"Select Form"_s));
        m_ui->cbofrm_Type->setBoxText(translated(u"Select Jar Size"_s));
    });
}

void frmFormula::cmdAdd_Click() {
    guarded(u"frmFormula:cmdAdd_Click"_s, [&] {
        m_ui->grdIngredients->commitEdit();
        const NewLine line(*m_ui->grdIngredients, u"FormChemID"_s);
        const clsFormulaPtr formula = m_formula;
        QString search =
            platform::InputBox(translated(u"Enter all or part of chemical name"_s), u"Search Chemical"_s);
        platform::deref(formula).addChemical(search);
        saveForm();
        refreshForm();
        line.show();
    });
}

void frmFormula::cmdRemove_Click() {
    guarded(u"frmFormula:cmdRemove_Click"_s, [&] {
        m_ui->grdIngredients->commitEdit();
        const clsFormulaPtr formula = m_formula;
        const QVariant line = m_ui->grdIngredients->currentValue(0);
        const QVariant name = m_ui->grdIngredients->currentValue(1);
        const Asked asked{aboutToDelete(m_context, u"FormChem"_s, line.toLongLong()), name.toString()};
        bool deleted = false;
        const platform::BoxStyle style{
            .buttons = platform::Buttons::YesNo, .icon = platform::Icon::Exclamation, .low = true};
        if (platform::MsgBox(translated(u"Are you sure?"_s), style, u"Delete Chemical"_s) ==
            platform::Answer::Yes)
            deleted = platform::deref(formula).deleteChemical(platform::toInt16(line));
        saveForm();
        refreshForm();
        if (deleted)
            announceLineDeleted(asked);
    });
}

// The cost follows from the lines.
void frmFormula::showLinesAnew() {
    m_ui->grdIngredients->commitEdit();
    clsFormula& formula = platform::deref(m_formula);
    formula.openIngredients();
    m_ui->grdIngredients->setDataSource(formula.Chemical);
    m_ui->txtfrm_Cost->setText(formula.frm_Cost.toText());
    shownByProgram(m_ui->txtfrm_Cost->objectName());
}

}  // namespace sorvanto
