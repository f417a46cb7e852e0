#include "reports/rptLogFormula.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"
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

std::vector<Control> logHeader() {
    std::vector<Control> controls{
        sheetCaption("lblDateMade", 360, 0, 1980, "Date Made"),
        field(u"txtDateMade"_s, 2880, 0, 2520, 270),
        sheetCaption("lblInitials", 5670, 0, 1080, "Made by"),
        field(u"txtfrm_Initials"_s, 6750, 0, 1080, 270),
        sheetCaption("lblVerified", 8280, 0, 990, "Verified"),
        field(u"txtfrm_Verified"_s, 9270, 0, 1080, 270),
        sheetCaption("lblMakeQTY", 360, 540, 2520, "Quantity Made"),
        field(u"txtfrm_Qty"_s, 2880, 540, 990, 270).right(),
        field(u"txtlog_Units"_s, 3870, 540, 630, 270).indented(textGap).asValue("Units"),
        sheetCaption("lblfrm_Cost", 5670, 540, 630, "Cost"),
        field(u"txtfrm_Cost"_s, 6840, 540, 990, 270),
        sheetCaption("lblfrm_AWP", 8370, 540, 540, "AWP"),
        field(u"txtfrm_AWP"_s, 9270, 540, 1080, 270),
        line(u"Line2"_s, 90, 810, 11340),
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
        batchPageHeader(1050, {label(u"txtFormulaName"_s, 0, 630, 5130, 270).bold().asName("Formula Name"),
                               field(u"txtFormulaType"_s, 5760, 630, 4230, 270)}),
        {platform::SectionKind::GroupHeader, 1605, logHeader()},
        batchDetail(285,
                    {
                        field(u"txtchm_Name"_s, 180, 0, 2700, 270).bound(u"lch_Name"_s).asName("Chemical"),
                        field(u"txtchm_Form"_s, 2880, 0, 810, 270).bound(u"lch_Form"_s),
                        field(u"txtchm_QTY"_s, 3690, 0, 810, 270).bound(u"fch_QTY"_s).right(),
                        field(u"txtchm_Units"_s, 4590, 0, 540, 270).bound(u"lch_Units"_s).asValue("Units"),
                        field(u"txtchm_Lot"_s, 5220, 0, 1170, 270).bound(u"lch_Lot"_s).asValue("Lot #"),
                        field(u"txtchm_Supplier"_s, 6480, 0, 1080, 270).bound(u"lch_Supplier"_s),
                        field(u"txtchm_Cost"_s, 7650, 0, 990, 270).bound(u"chm_Cost"_s),
                        field(u"txtchm_Notes"_s, 8730, 0, 2700, 270),
                    }),
        batchGroupFooter(1245, 630),
        batchPageFooter(2535,
                        {
                            label(u"lbllog_Lot"_s, 180, 180, 810, 270, u"Lot #"_s),
                            field(u"txtlog_Lot"_s, 990, 180, 2070, 270).asValue("Lot #"),
                            label(u"lblExpDate"_s, 3420, 180, 1080, 270, u"Exp Date:"_s),
                            box(u"Shape1"_s, 4770, 180, 3960, 270),
                        }),
    };
}

}  // namespace

rptLogFormula::rptLogFormula(Context& context) : BatchSheet(context, "rptLogFormula", formulaLog()) {}

void rptLogFormula::setLog(const clsLogPtr& log) {
    translateSheet("Formula Log -- Sorvanto", "Quantity Made");
    m_log = log;
    setLines(platform::deref(log).Chemical);
    fileName = reportFileName("Formula Log", {log->log_Name, log->log_Lot}, log->log_Date.date());
}

void rptLogFormula::fillPageHeader() {
    const clsLog& log = platform::deref(m_log);
    setName(u"txtFormulaName"_s, platform::trimmed(log.log_Name),
            u" "_s + platform::trimmed(log.log_Strength), translated(u"Formula Name:  "_s) + u" "_s);
    setText(u"txtFormulaType"_s,
            translated(u"Formula Type:  "_s) + u" "_s + tableEntry(m_context.mixTypes, log.log_FormType));
}

void rptLogFormula::groupHeaderFormat() {
    const clsLog& log = platform::deref(m_log);
    setValue(u"txtDateMade"_s, log.log_Date);
    setText(u"txtfrm_Initials"_s, log.log_Initials);
    setText(u"txtfrm_Verified"_s, log.log_Verified);
    setValue(u"txtfrm_Qty"_s, static_cast<double>(log.log_Quantity), u"#0.00"_s);
    setText(u"txtlog_Units"_s, log.log_Units);
    setOptionsMoney(m_context, *this, "txtfrm_Cost", QVariant::fromValue(log.log_Cost));
    setOptionsMoney(m_context, *this, "txtfrm_AWP", QVariant::fromValue(log.log_AWP));
}

void rptLogFormula::detailFormat() {
    if (!hasLine())
        return;
    setValue(u"txtchm_QTY"_s, rows()->value(u"lch_Qty"_s), u"#0.000"_s);
    setOptionsMoney(m_context, *this, "txtchm_Cost", rows()->value(u"lch_Cost"_s));
}

void rptLogFormula::groupFooterFormat() {
    setText(u"txtfrm_Desc"_s, platform::deref(m_log).log_Desc);
    setText(u"txtfrm_Instructions"_s, platform::deref(m_formula).frm_Instructions);
}

void rptLogFormula::pageFooterFormat() {
    BatchSheet::pageFooterFormat();
    setText(u"txtlog_Lot"_s, platform::deref(m_log).log_Lot);
}

void rptLogFormula::terminate() {
    m_log.reset();
    unload();
}

}  // namespace sorvanto
