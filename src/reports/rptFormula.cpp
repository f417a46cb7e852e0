#include "reports/rptFormula.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::box;
using platform::Control;
using platform::field;
using platform::label;
using platform::line;

std::vector<Control> worksheetHeader() {
    std::vector<Control> controls{
        sheetCaption("lblDateMade", 360, 0, 1980, "Date Made"),
        label(u"txtDateMade"_s, 2340, 0, 1350, 270, u"___/___/_____"_s),
        sheetCaption("lblInitials", 3870, 0, 1440, "Made by"),
        box(u"Box1"_s, 5310, 0, 720, 270),
        sheetCaption("lblVerified", 6120, 0, 900, "Verified"),
        box(u"Box2"_s, 7110, 0, 810, 270),
        sheetCaption("lblMakeQTY", 360, 540, 2520, "Quantity to Make"),
        field(u"txtfrm_Qty"_s, 3330, 540, 990, 270).right(),
        field(u"txtfrm_Units"_s, 4320, 540, 990, 270).indented(textGap).asValue("Units"),
        sheetCaption("lblfrm_Cost", 6210, 540, 630, "Cost"),
        field(u"txtfrm_Cost"_s, 6840, 540, 990, 270),
        sheetCaption("lblfrm_AWP", 7920, 540, 540, "AWP"),
        field(u"txtfrm_AWP"_s, 8640, 540, 1080, 270),
        line(u"Line2"_s, 90, 810, 11340),
        sheetCaption("lblIngredients", 0, 810, 3468, "Chemical Ingredients", 250),
    };
    addColumnHeads(controls, {.name = 180,
                              .form = 2970,
                              .quantity = 3510,
                              .unit = 4410,
                              .lot = 5040,
                              .supplier = 6120,
                              .cost = 7200,
                              .notes = 8100});
    return controls;
}

std::vector<platform::Section> worksheet() {
    return {
        batchPageHeader(915, {label(u"txtFormulaName"_s, 0, 630, 10260, 270).bold().asName("Formula Name")}),
        {platform::SectionKind::GroupHeader, 1605, worksheetHeader()},
        batchDetail(270,
                    {
                        field(u"txtchm_Name"_s, 180, 0, 2700, 270).bound(u"chm_Name"_s).asName("Chemical"),
                        field(u"txtchm_Form"_s, 2970, 0, 450, 270).bound(u"chm_Form"_s).points(7),
                        field(u"txtchm_QTY"_s, 3510, 0, 810, 270).bound(u"fch_QTY"_s).right(),
                        field(u"txtchm_Unit"_s, 4410, 0, 540, 270).bound(u"chm_Units"_s).asValue("Units"),
                        line(u"Line5"_s, 5040, 180, 6030),
                        line(u"Line6"_s, 6120, 180, 7110),
                        field(u"txtchm_Cost"_s, 7200, 0, 810, 270).bound(u"chm_Cost"_s),
                        field(u"txtchm_Notes"_s, 8100, 0, 3240, 270).bound(u"chm_Notes"_s),
                    }),
        batchGroupFooter(1125, 540),
        batchPageFooter(2475,
                        {
                            box(u"Shape1"_s, 180, 180, 3960, 270),
                            label(u"lbllog_Lot"_s, 180, 180, 1080, 270, u"Lot #"_s).indented(textGap),
                            label(u"lblExpDate"_s, 1980, 180, 1080, 270, u"Exp Date:"_s),
                        }),
    };
}

}  // namespace

rptFormula::rptFormula(Context& context) : BatchSheet(context, "rptFormula", worksheet()) {}

void rptFormula::setFormula(const clsFormulaPtr& formula) {
    translateSheet("Formula Worksheet -- Sorvanto", "Quantity to Make");
    m_formula = formula;
    setLines(platform::deref(formula).Chemical);
    fileName = reportFileName(
        "Worksheet", {formula->frm_Name, QString::number(formula->makeQuantity()), formula->frm_Units},
        platform::now().date());
}

void rptFormula::fillPageHeader() {
    const clsFormula& formula = platform::deref(m_formula);
    setName(u"txtFormulaName"_s, platform::trimmed(formula.frm_Name),
            u" "_s + platform::trimmed(formula.frm_Strength) + u" "_s +
                tableEntry(m_context.mixTypes, formula.frm_FormType),
            translated(u"Formula Name: "_s) + u" "_s);
}

// Money here follows the system's locale, not the currency of the options.
void rptFormula::groupHeaderFormat() {
    const clsFormula& formula = platform::deref(m_formula);
    setValue(u"txtfrm_Qty"_s, static_cast<double>(formula.makeQuantity()), u"#0.00"_s);
    setSystemMoney(*this, "txtfrm_AWP", formula.frm_AWP);
    setSystemMoney(*this, "txtfrm_Cost", formula.frm_Cost);
    setText(u"txtfrm_Units"_s, formula.frm_Units);
}

void rptFormula::detailFormat() {
    if (!hasLine())
        return;
    const clsFormula& formula = platform::deref(m_formula);
    // The lines are scaled already; the ratio only refuses a base batch of 0.
    platform::quotient(formula.makeQuantity(), formula.frm_Quantity);
    setValue(u"txtchm_QTY"_s, rows()->value(u"fch_Qty"_s), u"#0.000"_s);
    setSystemMoney(*this, "txtchm_Cost", platform::toCurrency(rows()->value(u"chm_Cost"_s)), 2);
}

void rptFormula::groupFooterFormat() {
    const clsFormula& formula = platform::deref(m_formula);
    setText(u"txtfrm_Desc"_s, formula.frm_Desc);
    setText(u"txtfrm_Instructions"_s, formula.frm_Instructions);
}

void rptFormula::terminate() {
    m_formula.reset();
    unload();
}

}  // namespace sorvanto
