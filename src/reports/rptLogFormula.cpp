#include "reports/rptLogFormula.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
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

std::vector<Control> logHeader() {
    std::vector<Control> controls{
        sheetCaption("lblDateMade", 360, 0, 1980, "Date Made"),
        field("txtDateMade", 2880, 0, 2520, 270),
        sheetCaption("lblInitials", 5670, 0, 1080, "Made by"),
        field("txtfrm_Initials", 6750, 0, 1080, 270),
        sheetCaption("lblVerified", 8280, 0, 990, "Verified"),
        field("txtfrm_Verified", 9270, 0, 1080, 270),
        sheetCaption("lblMakeQTY", 360, 540, 2520, "Quantity Made"),
        field("txtfrm_Qty", 2880, 540, 990, 270).right(),
        field("txtlog_Units", 3870, 540, 630, 270).indented(textGap).asValue("Units"),
        sheetCaption("lblfrm_Cost", 5670, 540, 630, "Cost"),
        field("txtfrm_Cost", 6840, 540, 990, 270),
        sheetCaption("lblfrm_AWP", 8370, 540, 540, "AWP"),
        field("txtfrm_AWP", 9270, 540, 1080, 270),
        line("Line2", 90, 810, 11340),
        sheetCaption("lblIngredients", 0, 900, 3510, "Chemical Ingredients"),
    };
    addColumnHeads(controls, {.name = 180,
                              .form = 2880,
                              .quantity = 3690,
                              .unit = 4590,
                              .lot = 5220,
                              .supplier = 6480,
                              .cost = 7650,
                              .notes = 8730});
    return controls;
}

// The names fch_QTY and chm_Cost are the worksheet's and no columns of the log's lines: the code writes
// quantity and cost. The notes column stays empty.
std::vector<platform::Section> formulaLog() {
    return {
        batchPageHeader(1050, {label("txtFormulaName", 0, 630, 5130, 270).bold().asName("Formula Name"),
                               field("txtFormulaType", 5760, 630, 4230, 270)}),
        {platform::SectionKind::GroupHeader, 1605, logHeader()},
        batchDetail(285,
                    {
                        field("txtchm_Name", 180, 0, 2700, 270).bound("lch_Name").asName("Chemical"),
                        field("txtchm_Form", 2880, 0, 810, 270).bound("lch_Form"),
                        field("txtchm_QTY", 3690, 0, 810, 270).bound("fch_QTY").right(),
                        field("txtchm_Units", 4590, 0, 540, 270).bound("lch_Units").asValue("Units"),
                        field("txtchm_Lot", 5220, 0, 1170, 270).bound("lch_Lot").asValue("Lot #"),
                        field("txtchm_Supplier", 6480, 0, 1080, 270).bound("lch_Supplier"),
                        field("txtchm_Cost", 7650, 0, 990, 270).bound("chm_Cost"),
                        field("txtchm_Notes", 8730, 0, 2700, 270),
                    }),
        batchGroupFooter(1245, 630),
        batchPageFooter(2535,
                        {
                            label("lbllog_Lot", 180, 180, 810, 270, "Lot #"),
                            field("txtlog_Lot", 990, 180, 2070, 270).asValue("Lot #"),
                            label("lblExpDate", 3420, 180, 1080, 270, "Exp Date:"),
                            box("Shape1", 4770, 180, 3960, 270),
                        }),
    };
}

}  // namespace

rptLogFormula::rptLogFormula() : BatchSheet("rptLogFormula", formulaLog()) {}

void rptLogFormula::setLog(const clsLogPtr& log) {
    translateSheet("Formula Log -- Sorvanto", "Quantity Made");
    m_log = log;
    setLines(platform::deref(log).Chemical);
    fileName = reportFileName("Formula Log", {log->log_Name, log->log_Lot}, log->log_Date.date());
}

void rptLogFormula::fillPageHeader() {
    const clsLog& log = platform::deref(m_log);
    setName("txtFormulaName", platform::trimmed(log.log_Name), " " + platform::trimmed(log.log_Strength),
            translated("Formula Name:  ") + " ");
    setText("txtFormulaType",
            translated("Formula Type:  ") + " " + basMain::tableEntry(basMain::MixTypes, log.log_FormType));
}

void rptLogFormula::groupHeaderFormat() {
    const clsLog& log = platform::deref(m_log);
    setValue("txtDateMade", log.log_Date);
    setText("txtfrm_Initials", log.log_Initials);
    setText("txtfrm_Verified", log.log_Verified);
    setValue("txtfrm_Qty", static_cast<double>(log.log_Quantity), "#0.00");
    setText("txtlog_Units", log.log_Units);
    setOptionsMoney(*this, "txtfrm_Cost", QVariant::fromValue(log.log_Cost));
    setOptionsMoney(*this, "txtfrm_AWP", QVariant::fromValue(log.log_AWP));
}

void rptLogFormula::detailFormat() {
    if (!hasLine())
        return;
    setValue("txtchm_QTY", rows()->value("lch_Qty"), "#0.000");
    setOptionsMoney(*this, "txtchm_Cost", rows()->value("lch_Cost"));
}

void rptLogFormula::groupFooterFormat() {
    setText("txtfrm_Desc", platform::deref(m_log).log_Desc);
    setText("txtfrm_Instructions", platform::deref(m_formula).frm_Instructions);
}

void rptLogFormula::pageFooterFormat() {
    BatchSheet::pageFooterFormat();
    setText("txtlog_Lot", platform::deref(m_log).log_Lot);
}

void rptLogFormula::terminate() {
    m_log.reset();
    unload();
}

}  // namespace sorvanto
