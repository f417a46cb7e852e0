#include "reports/rptLogReport.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "shared/Guard.h"
#include "shared/Translator.h"
#include "shared/basMain.h"

namespace sorvanto {
namespace {

using platform::field;
using platform::line;
using platform::nullText;

platform::ReportDefinition logReport() {
    platform::ReportDefinition definition;
    definition.name = "rptLogReport";
    definition.sections = {
        listHead(platform::SectionKind::ReportHeader, 1515,
                 {.boxWidth = 5130, .dateLeft = 8100, .dateTop = 180},
                 {field("txtReportDate", 0, 990, 5310, 270).points(datePoints).asValue("Report Dates")}),
        {platform::SectionKind::PageHeader,
         1275,
         {
             field("txtName", 0, 0, 10080, 360).points(titlePoints).bold().asName("Name"),
             field("txtDesc", 0, 360, 10800, 540),
             heading("lbllog_Date", 0, 990, 2160),
             heading("lbllog_Lot", 2160, 990, 1620),
             heading("lbllog_JarSize", 3780, 990, 1440),
             heading("lbllog_Quantity", 5220, 990, 1440),
             heading("lbllog_Initials", 6660, 990, 1440).centre(),
             heading("lbllog_Verified", 8100, 990, 1440).centre(),
             heading("lbllog_Cost", 9540, 990, 1260).right(),
             line("Line5", 0, 1260, 10800),
         }},
        {platform::SectionKind::Detail,
         450,
         {
             field("txtlog_Date", 0, 90, 2160, 270).bound("log_Date").points(9),
             field("txtlog_Lot", 2160, 90, 1620, 270).bound("log_Lot").points(9).asValue("Lot"),
             field("txtlog_JarSize", 3780, 90, 1440, 270).bound("log_JarSize").points(9).asValue("Jar Size"),
             field("txtlog_Quantity", 5220, 90, 1440, 270).bound("log_Quantity").points(9),
             field("txtlog_Initials", 7110, 90, 630, 270).bound("log_Initials").points(9).centre(),
             field("txtlog_Verified", 8550, 90, 630, 270).bound("log_Verified").points(9).centre(),
             field("txtlog_Cost", 9540, 90, 1260, 270).bound("log_Cost").points(9).right(),
             line("Line6", 0, 450, 10800),
         }},
        {platform::SectionKind::PageFooter,
         630,
         {
             field("txtPage", 7650, 270, 2430, 270).right().asValue("Page"),
         }},
        {platform::SectionKind::ReportFooter,
         495,
         {
             line("Line8", 0, 0, 10800),
             field("txtTotalLogs", 0, 90, 2880, 270).bold().asValue("Logs"),
             field("txtTotalQTY", 5220, 90, 1170, 270).bold().asValue("QTY"),
             field("txtTotalCost", 9180, 90, 1620, 270, "0.00").bold().right().asValue("Cost"),
         }},
    };
    return definition;
}

}  // namespace

rptLogReport::rptLogReport() : Report(logReport()) {}

void rptLogReport::FormulaID(std::int16_t formulaID) {
    guarded("rptLogReport:FormulaID", [&] {
        m_formulaID = formulaID;
        const std::optional<DateRange> range = askDateRange();
        basMain::reportCancelled = !range;
        if (!range) {
            unload();
            return;
        }
        m_range = *range;
        setFormat("txtlog_Cost", platform::deref(basMain::Options).DefCurrency() + amountPicture);
        translateForm();
        openBatches();
        if (rows())
            fileName = reportFileName("Log Report", {nullText(rows()->value("log_Name"))},
                                      m_range.begin.date(), m_range.end.date());
    });
}

void rptLogReport::openBatches() {
    const auto batches = platform::Recordset::create();
    batches->open("SELECT Log.log_Date, Log.log_Lot, Log.log_JarSize, Log.log_Quantity, Log.log_Cost, "
                  "Log.log_Initials, Log.log_Verified, Log.log_Name, Log.log_FormType, Log.log_Desc, "
                  "Log.log_Strength, Log.log_NDC FROM Log WHERE Log.FormulaID=" +
                      QString::number(m_formulaID) + " AND Log.log_Date >= #" + boundText(m_range.begin) +
                      "# AND Log.log_Date <= #" + boundText(m_range.end) + "#;",
                  openDB(), platform::LockType::ReadOnly);
    if (batches->recordCount() < 1) {
        sayNoRecords();
        unload();
    } else {
        setRows(batches);
    }
}

void rptLogReport::translateForm() {
    guarded("rptLogReport:translateForm", [&] {
        translateListHead(*this, "Log Report", "Log Report - Sorvanto");
        translateCaptions(*this, {{"lbllog_Date", "Date"},
                                  {"lbllog_Lot", "Lot"},
                                  {"lbllog_JarSize", "Jar Size"},
                                  {"lbllog_Quantity", "QTY"},
                                  {"lbllog_Initials", "Initials"},
                                  {"lbllog_Verified", "Verified"},
                                  {"lbllog_Cost", "Cost"}});
        setText("txtReportDate", reportDates(m_range.begin, m_range.end));
    });
}

// The current row's values, which on later pages may be those of a later batch.
void rptLogReport::pageHeaderFormat() {
    guarded("rptLogReport:PageHeader_Format", [&] {
        if (!rows() || rows()->eof())
            return;
        const platform::Recordset& row = *rows();
        setName("txtName", nullText(row.value("log_Name")),
                " " + nullText(row.value("log_Strength")) + "\t" +
                    basMain::tableEntry(basMain::MixTypes, platform::nullInt16(row.value("log_FormType"))) +
                    "\t" + nullText(row.value("log_NDC")));
        setText("txtDesc", nullText(row.value("log_Desc")));
    });
}

void rptLogReport::detailFormat() {
    guarded("rptLogReport:Detail_Format", [&] {
        const std::int16_t jar = platform::nullInt16(platform::deref(rows()).value("log_JarSize"));
        setText("txtlog_JarSize", basMain::tableEntry(basMain::JarSizes, jar));
    });
}

void rptLogReport::pageFooterFormat() {
    guarded("rptLogReport:PageFooter_Format",
            [&] { setText("txtPage", translated("Page") + " " + QString::number(pageNumber())); });
}

// Here the dates go in as default text with their time of day, unlike the listed rows.
void rptLogReport::reportFooterFormat() {
    guarded("rptLogReport:ReportFooter_Format", [&] {
        const auto totals = platform::Recordset::create();
        totals->open("SELECT Count(*) as TotalLogs, Sum(Log.log_Quantity) as TotalQTY ,Sum(Log.log_Cost) as "
                     "TotalCost FROM Log WHERE Log.FormulaID=" +
                         QString::number(m_formulaID) + " AND Log.log_Date >= #" +
                         platform::dateText(m_range.begin) + "# AND Log.log_Date <= #" +
                         platform::dateText(m_range.end) + "#;",
                     openDB(), platform::LockType::ReadOnly);
        setText("txtTotalLogs",
                platform::shownText(totals->value("TotalLogs"), {}) + " " + translated("Logs"));
        setText("txtTotalQTY", platform::shownText(totals->value("TotalQTY"), {}) + " ml");
        explainTotals(
            *this,
            {rows()->recordCount(), platform::nullInt32(totals->value("TotalLogs")),
             translated("The list shows %1 batch, the totals count %2: %3 | "
                        "The list shows %1 batches, the totals count %2: %3"),
             translated("the list is bounded by 0:00 of both dates, the totals by their time of day.")},
            m_range.begin, m_range.end);
        const QVariant cost = totals->value("TotalCost");
        if (cost.isValid())
            setOptionsMoney(*this, "txtTotalCost", QVariant::fromValue(platform::toCurrency(cost)), "0.00");
        else
            showLayoutNumber(*this, "txtTotalCost");
    });
}

}  // namespace sorvanto
