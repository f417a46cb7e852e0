#include "reports/rptLogAvery8160.h"

#include "platform/basic/RuntimeError.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "reports/frmSelPrint.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::barCode;
using platform::field;
using platform::label;

platform::ReportDefinition batchLabels() {
    platform::ReportDefinition definition;
    definition.name = u"rptLogAvery8160"_s;
    definition.margins = {0, 0, 720, 720};
    definition.font.points = 8.5;
    definition.detailColumns = 3;
    definition.stock = platform::LabelStock{};
    definition.sections = {
        {platform::SectionKind::Detail,
         1440,
         {
             field(u"txtfrm_Name"_s, 360, 180, 2520, 180).bold().asName("Name"),
             field(u"txtfrm_Strength"_s, 2880, 180, 900, 180).asValue("Strength"),
             field(u"txtlog_QTY"_s, 360, 450, 1080, 180).asValue("QTY"),
             field(u"txtfrm_Form"_s, 1530, 450, 1260, 180),
             field(u"txtlog_Initials"_s, 2790, 450, 360, 180),
             field(u"txtlog_Verified"_s, 3240, 450, 540, 180),
             label(u"lbllog_Cost"_s, 360, 630, 540, 180).asValue("Cost"),
             field(u"txtlog_Cost"_s, 900, 630, 1080, 180).asValue("Cost"),
             label(u"lbllog_AWP"_s, 2160, 630, 540, 180).asValue("AWP"),
             field(u"txtlog_AWP"_s, 2700, 630, 1080, 180).asValue("AWP"),
             label(u"lbllog_Lot"_s, 360, 810, 540, 180, u"Lot #"_s).asValue("Lot"),
             field(u"txtlog_Lot"_s, 1080, 810, 2700, 180).asValue("Lot"),
             barCode(u"lbllog_LotbarCode"_s, 360, 990, 3420, 180, u"0303A0000100"_s),
         }},
    };
    return definition;
}

}  // namespace

rptLogAvery8160::rptLogAvery8160(Context& context)
    : Report(batchLabels()), m_context(context), m_positions(0, 0, 0) {
    caption = u"Avery 8160 Log Label"_s;
}

void rptLogAvery8160::setLog(const clsLogPtr& log) {
    m_log = log;
    if (log)
        fileName = reportFileName("Label", {log->log_Name, log->log_Lot}, log->log_Date.date());
    frmSelPrint question(m_context);
    question.showModal();
    m_positions = LabelPositions(question.Row(), question.Column(), question.NumLabels());
}

void rptLogAvery8160::detailFormat() {
    const bool printing = m_positions.step();
    fillLabel();
    for (const platform::Control& control : definition().sections.front().controls)
        setVisible(control.name, printing);
}

void rptLogAvery8160::fillLabel() {
    const clsLog& log = platform::deref(m_log);
    setText(u"txtfrm_Name"_s, log.log_Name);
    setText(u"txtfrm_Strength"_s, log.log_Strength);
    setValue(u"txtlog_QTY"_s, log.log_Quantity, u"0"_s);
    setText(u"txtfrm_Form"_s, tableEntry(m_context.mixTypes, log.log_FormType));
    setText(u"txtlog_Initials"_s, log.log_Initials);
    setText(u"txtlog_Verified"_s, log.log_Verified);
    setText(u"lbllog_Cost"_s, translated(u"Cost"_s));
    setOptionsMoney(m_context, *this, "txtlog_Cost", QVariant::fromValue(log.log_Cost));
    setText(u"lbllog_AWP"_s, translated(u"AWP"_s));
    setOptionsMoney(m_context, *this, "txtlog_AWP", QVariant::fromValue(log.log_AWP));
    setText(u"txtlog_Lot"_s, log.log_Lot);
    setText(u"lbllog_LotbarCode"_s, log.log_Lot);
}

void rptLogAvery8160::terminate() {
    m_log.reset();
    unload();
}

}  // namespace sorvanto
