#include "reports/rptLogAvery8160.h"

#include "platform/basic/RuntimeError.h"
#include "reports/FileNames.h"
#include "reports/ReportTexts.h"
#include "reports/frmSelPrint.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

using platform::barCode;
using platform::field;
using platform::label;

platform::ReportDefinition batchLabels() {
    platform::ReportDefinition definition;
    definition.name = "rptLogAvery8160";
    definition.margins = {0, 0, 720, 720};
    definition.font.points = 8.5;
    definition.detailColumns = 3;
    definition.stock = platform::LabelStock{};
    definition.sections = {
        {platform::SectionKind::Detail,
         1440,
         {
             field("txtfrm_Name", 360, 180, 2520, 180).bold().asName("Name"),
             field("txtfrm_Strength", 2880, 180, 900, 180).asValue("Strength"),
             field("txtlog_QTY", 360, 450, 1080, 180).asValue("QTY"),
             field("txtfrm_Form", 1530, 450, 1260, 180),
             field("txtlog_Initials", 2790, 450, 360, 180),
             field("txtlog_Verified", 3240, 450, 540, 180),
             label("lbllog_Cost", 360, 630, 540, 180).asValue("Cost"),
             field("txtlog_Cost", 900, 630, 1080, 180).asValue("Cost"),
             label("lbllog_AWP", 2160, 630, 540, 180).asValue("AWP"),
             field("txtlog_AWP", 2700, 630, 1080, 180).asValue("AWP"),
             label("lbllog_Lot", 360, 810, 540, 180, "Lot #").asValue("Lot"),
             field("txtlog_Lot", 1080, 810, 2700, 180).asValue("Lot"),
             barCode("lbllog_LotbarCode", 360, 990, 3420, 180, "0303A0000100"),
         }},
    };
    return definition;
}

}  // namespace

rptLogAvery8160::rptLogAvery8160() : Report(batchLabels()), m_positions(0, 0, 0) {
    caption = "Avery 8160 Log Label";
}

void rptLogAvery8160::setLog(const clsLogPtr& log) {
    m_log = log;
    if (log)
        fileName = reportFileName("Label", {log->log_Name, log->log_Lot}, log->log_Date.date());
    frmSelPrint question;
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
    setText("txtfrm_Name", log.log_Name);
    setText("txtfrm_Strength", log.log_Strength);
    setValue("txtlog_QTY", log.log_Quantity, "0");
    setText("txtfrm_Form", basMain::tableEntry(basMain::MixTypes, log.log_FormType));
    setText("txtlog_Initials", log.log_Initials);
    setText("txtlog_Verified", log.log_Verified);
    setText("lbllog_Cost", translated("Cost"));
    setOptionsMoney(*this, "txtlog_Cost", QVariant::fromValue(log.log_Cost));
    setText("lbllog_AWP", translated("AWP"));
    setOptionsMoney(*this, "txtlog_AWP", QVariant::fromValue(log.log_AWP));
    setText("txtlog_Lot", log.log_Lot);
    setText("lbllog_LotbarCode", log.log_Lot);
}

void rptLogAvery8160::terminate() {
    m_log.reset();
    unload();
}

}  // namespace sorvanto
