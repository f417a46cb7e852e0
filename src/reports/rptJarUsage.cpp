#include "reports/rptJarUsage.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

using platform::field;
using platform::label;
using platform::line;

platform::ReportDefinition jarUsage() {
    platform::ReportDefinition definition;
    definition.name = "rptJarUsage";
    definition.sections = {
        listHead(platform::SectionKind::PageHeader, 2040,
                 {.boxWidth = 6480, .dateLeft = 8010, .dateTop = 270},
                 {
                     field("txtReportDate", 90, 1170, 5310, 270).points(datePoints).asValue("Report Dates"),
                     label("lblJarSize", 90, 1620, 3600, 360).points(12).bold(),
                     label("lblUsage", 8370, 1620, 1980, 360).points(12).bold().right(),
                     line("Line1", 0, 1980, 10800),
                 }),
        {platform::SectionKind::Detail,
         570,
         {
             field("txtJarSize", 90, 90, 1350, 360).points(14.5).bold().asValue("Jar Size"),
             field("txtUsed", 9090, 90, 1260, 360).points(14.5).bold().right(),
             line("Line2", 0, 540, 10800),
         }},
        {platform::SectionKind::PageFooter, 360, {}},
    };
    return definition;
}

}  // namespace

rptJarUsage::rptJarUsage() : Report(jarUsage()) {}

void rptJarUsage::JarID(int value) {
    m_jarID = value;
    const std::optional<DateRange> range = askDateRange();
    basMain::reportCancelled = !range;
    if (!range) {
        unload();
        return;
    }
    m_range = *range;
    translateForm();
    fileName = reportFileName("Jar Usage Report", {}, m_range.begin.date(), m_range.end.date());
    const auto counts = platform::Recordset::create();
    counts->open("SELECT LT.log_JarSize AS JarSize , count(LT.log_JarSize) as Used FROM [SELECT "
                 "FLT.log_JarSize from Log FLT WHERE FLT.log_date >=#" +
                     boundText(m_range.begin) + "#  and FLT.Log_Date<=#" + boundText(m_range.end) +
                     "#]. AS LT group by LT.log_JarSize",
                 openDB(), platform::LockType::ReadOnly);
    if (counts->recordCount() > 0) {
        setRows(counts);
    } else {
        sayNoRecords();
        unload();
    }
}

void rptJarUsage::translateForm() {
    translateListHead(*this, "Jar Usage Report", "Jar Usage Report - Sorvanto");
    translateCaptions(*this, {{"lblJarSize", "Jar Size"}, {"lblUsage", "Usage"}});
    setText("txtReportDate", reportDates(m_range.begin, m_range.end));
}

void rptJarUsage::detailFormat() {
    const platform::Recordset& row = platform::deref(rows());
    setText("txtJarSize", basMain::tableEntry(basMain::JarSizes, platform::nullInt16(row.value("JarSize"))));
    setValue("txtUsed", row.value("Used"), "0");
}

}  // namespace sorvanto
