#include "screens/frmCurrFormula.h"

#include "mixer/ctlSorvanto.h"
#include "mixing/frmMake.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/widgets/Theme.h"
#include "reports/ReportFlow.h"
#include "screens/ControlWalk.h"
#include "screens/Designed.h"
#include "screens/ToolStates.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"
#include "ui_frmCurrFormula.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

const std::vector<RecordFields<clsFormula>::Row> currentFields{
    {&clsFormula::frm_Instructions, "txtfrm_Instructions", "lblfrm_Instructions", "Mix Notes", shownOnly},
    {&clsFormula::frm_Name, "txtfrm_Name", "lblfrm_Name", "Formula Name", shownOnly},
    {&clsFormula::frm_JarSize,
     "txtfrm_JarSize",
     "lblfrm_JarSize",
     "Jar Size",
     {.entries = &basMain::JarSizes}},
    {&clsFormula::frm_FormType,
     "txtfrm_Type",
     "lblfrm_Type",
     "Formula Type",
     {.entries = &basMain::MixTypes}},
};

}  // namespace

frmCurrFormula::frmCurrFormula(QWidget* parent)
    : RecordScreen(parent), m_ui(designed<Ui::frmCurrFormula>(this)), m_fields(*this, currentFields) {
    platform::makeCard(*m_ui->fraFormula);
    platform::makeCard(*m_ui->fraIngredients);
    m_ui->grdIngredients->setColumns({{.field = "chm_Name", .caption = "Name"},
                                      {.field = "chm_NDC", .caption = "NDC", .width = 168},
                                      {.field = "fch_Qty", .caption = "Qty", .width = 112},
                                      {.field = "chm_Lot", .caption = "Lot", .width = 128},
                                      {.field = "fch_QS", .caption = "QS", .width = 72}});
    m_ui->grdIngredients->setAllowUpdate(false);
    lockControls(*this, {}, true);
    addTools();
}

frmCurrFormula::~frmCurrFormula() = default;

void frmCurrFormula::Form_Load() {
    guarded("frmCurrFormula:Form_Load", [&] { translateForm(); });
}

void frmCurrFormula::translateForm() {
    guarded("frmCurrFormula:translateForm", [&] {
        m_fields.translate();
        for (const char* caption : {"Name", "NDC", "Qty", "Lot", "QS"})
            m_ui->grdIngredients->setShownCaption(m_ui->grdIngredients->columnByCaption(caption),
                                                  translated(caption));
        m_ui->grdIngredients->setAccessibleName(translated("Ingredients"));
    });
}

void frmCurrFormula::setMenuOptions() {
    guarded("frmCurrFormula:setMenuOptions", [&] {
        setToolStates({.search = ToolRule::On, .printAndExport = ToolRule::On, .worksheet = true}, true);
    });
}

// cmdMake is off on this screen: its click begins on another one, which has switched here meanwhile.
void frmCurrFormula::addTools() {
    const auto make = [this] {
        makeFormula();
        refreshForm();
    };
    m_tools.on({"cmdSearch"_L1, "txtSearch"_L1}, [this, make](const QString& text) {
        searchFormula(text);
        make();
    });
    m_tools.on({"cmdMake"_L1}, make);
    m_tools.on({"mnuWorksheet"_L1}, [this] { printFormula(); });
}

void frmCurrFormula::m_frmMain_btnClick(const QString& toolName, const QString& searchText) {
    guarded("frmCurrFormula:m_frmMain_btnClick", [&] {
        m_tools.run(toolName, searchText);
        setMenuOptions();
    });
}

void frmCurrFormula::searchFormula(const QString& searchText) {
    // Reported under the other screen's name, as users know it.
    guarded("frmFormula:searchFormula", [&] { m_formula = clsFormula().openFormula(0, searchText); });
}

void frmCurrFormula::makeFormula() {
    guarded("frmCurrFormula:makeFormula", [&] {
        const std::int16_t formulaID = platform::deref(m_formula).FormulaID;
        if (formulaID <= 0)
            return;
        const clsFormulaPtr copy = clsFormula().openFormula(formulaID, QString());
        frmMake question;
        question.MakeQty(platform::deref(copy).frm_Quantity);
        question.setFormula(*copy);
        question.showModal();
        if (question.MakeQty() <= 0)
            return;
        copy->makeQuantity(platform::toInt16(question.MakeQty()));
        platform::deref(basMain::Main).mixer().loadFormula(copy->getFormulaXML());
        if (question.printWorksheet())
            showWorksheet(copy);
        m_formula = copy;
    });
}

void frmCurrFormula::refreshForm() {
    guarded("frmCurrFormula:refreshForm", [&] {
        setEnabled(true);
        const clsFormula& formula = platform::deref(m_formula);
        m_fields.show(formula);
        m_ui->grdIngredients->setDataSource(formula.Chemical);
    });
}

}  // namespace sorvanto
