#include "reports/rptJarUsage.h"

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::field;
using platform::label;
using platform::line;

platform::ReportDefinition jarUsage() {
    platform::ReportDefinition definition;
    definition.name = u"rptJarUsage"_s;
    definition.sections = {
        listHead(
            platform::SectionKind::PageHeader, 2040, {.boxWidth = 6480, .dateLeft = 8010, .dateTop = 270},
            {
                field(u"txtReportDate"_s, 90, 1170, 5310, 270).points(datePoints).asValue("Report Dates"),
                label(u"lblJarSize"_s, 90, 1620, 3600, 360).points(12).bold(),
                label(u"lblUsage"_s, 8370, 1620, 1980, 360).points(12).bold().right(),
                line(u"Line1"_s, 0, 1980, 10800),
            }),
        {platform::SectionKind::Detail,
         570,
         {
             field(u"txtJarSize"_s, 90, 90, 1350, 360).points(14.5).bold().asValue("Jar Size"),
             field(u"txtUsed"_s, 9090, 90, 1260, 360).points(14.5).bold().right(),
             line(u"Line2"_s, 0, 540, 10800),
         }},
        {platform::SectionKind::PageFooter, 360, {}},
    };
    return definition;
}

}  // namespace

rptJarUsage::rptJarUsage(Context& context) : DatedReport(context, jarUsage()) {}

void rptJarUsage::JarID(int value) {
    m_jarID = value;
    if (!askDates())
        return;
    translateForm();
    fileName = reportFileName("Jar Usage Report", {}, range().begin.date(), range().end.date());
    const auto counts = platform::Recordset::create();
    counts->open(u"SELECT LT.log_JarSize AS JarSize , count(LT.log_JarSize) as Used FROM [SELECT "
                 "FLT.log_JarSize from Log FLT WHERE FLT.log_date >=#"_s +
                     boundText(range().begin) + u"#  and FLT.Log_Date<=#"_s + boundText(range().end) +
                     u"#]. AS LT group by LT.log_JarSize"_s,
                 openDB(m_context), platform::LockType::ReadOnly);
    setRowsOrNone(counts);
}

void rptJarUsage::translateForm() {
    translateListHead(*this, "Jar Usage Report", "Jar Usage Report - Sorvanto");
    translateCaptions(*this, {{"lblJarSize", "Jar Size"}, {"lblUsage", "Usage"}});
    setText(u"txtReportDate"_s, reportDates(range().begin, range().end));
}

void rptJarUsage::detailFormat() {
    const platform::Recordset& row = platform::deref(rows());
    setText(u"txtJarSize"_s, tableEntry(m_context.jarSizes, platform::nullInt16(row.value(u"JarSize"_s))));
    setValue(u"txtUsed"_s, row.value(u"Used"_s), u"0"_s);
}

}  // namespace sorvanto
