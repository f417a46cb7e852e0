#include "reports/rptFormula.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

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
        label("txtDateMade", 2340, 0, 1350, 270, "___/___/_____"),
        sheetCaption("lblInitials", 3870, 0, 1440, "Made by"),
        box("Box1", 5310, 0, 720, 270),
        sheetCaption("lblVerified", 6120, 0, 900, "Verified"),
        box("Box2", 7110, 0, 810, 270),
        sheetCaption("lblMakeQTY", 360, 540, 2520, "Quantity to Make"),
        field("txtfrm_Qty", 3330, 540, 990, 270).right(),
        field("txtfrm_Units", 4320, 540, 990, 270).indented(textGap).asValue("Units"),
        sheetCaption("lblfrm_Cost", 6210, 540, 630, "Cost"),
        field("txtfrm_Cost", 6840, 540, 990, 270),
        sheetCaption("lblfrm_AWP", 7920, 540, 540, "AWP"),
        field("txtfrm_AWP", 8640, 540, 1080, 270),
        line("Line2", 90, 810, 11340),
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
        batchPageHeader(915, {label("txtFormulaName", 0, 630, 10260, 270).bold().asName("Formula Name")}),
        {platform::SectionKind::GroupHeader, 1605, worksheetHeader()},
        batchDetail(270,
                    {
                        field("txtchm_Name", 180, 0, 2700, 270).bound("chm_Name").asName("Chemical"),
                        field("txtchm_Form", 2970, 0, 450, 270).bound("chm_Form").points(7),
                        field("txtchm_QTY", 3510, 0, 810, 270).bound("fch_QTY").right(),
                        field("txtchm_Unit", 4410, 0, 540, 270).bound("chm_Units").asValue("Units"),
                        line("Line5", 5040, 180, 6030),
                        line("Line6", 6120, 180, 7110),
                        field("txtchm_Cost", 7200, 0, 810, 270).bound("chm_Cost"),
                        field("txtchm_Notes", 8100, 0, 3240, 270).bound("chm_Notes"),
                    }),
        batchGroupFooter(1125, 540),
        batchPageFooter(2475,
                        {
                            box("Shape1", 180, 180, 3960, 270),
                            label("lbllog_Lot", 180, 180, 1080, 270, "Lot #").indented(textGap),
                            label("lblExpDate", 1980, 180, 1080, 270, "Exp Date:"),
                        }),
    };
}

}  // namespace

rptFormula::rptFormula() : BatchSheet("rptFormula", worksheet()) {}

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
    setName("txtFormulaName", platform::trimmed(formula.frm_Name),
            " " + platform::trimmed(formula.frm_Strength) + " " +
                basMain::tableEntry(basMain::MixTypes, formula.frm_FormType),
            translated("Formula Name: ") + " ");
}

// Money here follows the system's locale, not the currency of the options.
void rptFormula::groupHeaderFormat() {
    const clsFormula& formula = platform::deref(m_formula);
    setValue("txtfrm_Qty", static_cast<double>(formula.makeQuantity()), "#0.00");
    setSystemMoney(*this, "txtfrm_AWP", formula.frm_AWP);
    setSystemMoney(*this, "txtfrm_Cost", formula.frm_Cost);
    setText("txtfrm_Units", formula.frm_Units);
}

void rptFormula::detailFormat() {
    if (!hasLine())
        return;
    const clsFormula& formula = platform::deref(m_formula);
    // The lines are scaled already; the ratio only refuses a base batch of 0.
    platform::quotient(formula.makeQuantity(), formula.frm_Quantity);
    setValue("txtchm_QTY", rows()->value("fch_Qty"), "#0.000");
    setSystemMoney(*this, "txtchm_Cost", platform::toCurrency(rows()->value("chm_Cost")), 2);
}

void rptFormula::groupFooterFormat() {
    const clsFormula& formula = platform::deref(m_formula);
    setText("txtfrm_Desc", formula.frm_Desc);
    setText("txtfrm_Instructions", formula.frm_Instructions);
}

void rptFormula::terminate() {
    m_formula.reset();
    unload();
}

}  // namespace sorvanto
