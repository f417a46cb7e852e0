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
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
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
     {.entries = &Context::jarSizes}},
    {&clsFormula::frm_FormType,
     "txtfrm_Type",
     "lblfrm_Type",
     "Formula Type",
     {.entries = &Context::mixTypes}},
};

}  // namespace

frmCurrFormula::frmCurrFormula(Context& context, QWidget* parent)
    : RecordScreen(context, parent), m_ui(designed<Ui::frmCurrFormula>(this)),
      m_fields(context, *this, currentFields) {
    platform::makeCard(*m_ui->fraFormula);
    platform::makeCard(*m_ui->fraIngredients);
    m_ui->grdIngredients->setColumns({{.field = u"chm_Name"_s, .caption = u"Name"_s},
                                      {.field = u"chm_NDC"_s, .caption = u"NDC"_s, .width = 168},
                                      {.field = u"fch_Qty"_s, .caption = u"Qty"_s, .width = 112},
                                      {.field = u"chm_Lot"_s, .caption = u"Lot"_s, .width = 128},
                                      {.field = u"fch_QS"_s, .caption = u"QS"_s, .width = 72}});
    m_ui->grdIngredients->setAllowUpdate(false);
    lockControls(*this, {}, true);
    addTools();
}

frmCurrFormula::~frmCurrFormula() = default;

void frmCurrFormula::Form_Load() {
    guarded(u"frmCurrFormula:Form_Load"_s, [&] { translateForm(); });
}

void frmCurrFormula::translateForm() {
    guarded(u"frmCurrFormula:translateForm"_s, [&] {
        m_fields.translate();
        for (const QString& caption : {u"Name"_s, u"NDC"_s, u"Qty"_s, u"Lot"_s, u"QS"_s})
            m_ui->grdIngredients->setShownCaption(m_ui->grdIngredients->columnByCaption(caption),
                                                  translated(caption));
        m_ui->grdIngredients->setAccessibleName(translated(u"Ingredients"_s));
    });
}

void frmCurrFormula::setMenuOptions() {
    guarded(u"frmCurrFormula:setMenuOptions"_s, [&] {
        setToolStates(m_context, {.search = ToolRule::On, .printAndExport = ToolRule::On, .worksheet = true},
                      true);
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
    guarded(u"frmCurrFormula:m_frmMain_btnClick"_s, [&] {
        m_tools.run(toolName, searchText);
        setMenuOptions();
    });
}

void frmCurrFormula::searchFormula(const QString& searchText) {
    // Reported under the other screen's name, as users know it.
    guarded(u"frmFormula:searchFormula"_s, [&] { m_formula = clsFormula().openFormula(0, searchText); });
}

void frmCurrFormula::makeFormula() {
    guarded(u"frmCurrFormula:makeFormula"_s, [&] {
        const std::int16_t formulaID = platform::deref(m_formula).FormulaID;
        if (formulaID <= 0)
            return;
        const clsFormulaPtr copy = clsFormula().openFormula(formulaID, QString());
        const QuantityAnswer answer = askQuantity(platform::deref(copy));
        if (!answer.make)
            return;
        platform::deref(m_context.window).mixer().loadFormula(copy->getFormulaXML());
        if (answer.worksheet)
            showWorksheet(m_context, copy);
        m_formula = copy;
    });
}

void frmCurrFormula::refreshForm() {
    guarded(u"frmCurrFormula:refreshForm"_s, [&] {
        setEnabled(true);
        const clsFormula& formula = platform::deref(m_formula);
        m_fields.show(formula);
        m_ui->grdIngredients->setDataSource(formula.Chemical);
    });
}

}  // namespace sorvanto
