#include "reports/rptLogReport.h"

#include "config/clsOptions.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/basic/Values.h"
#include "platform/data/ReadAhead.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/ReportRows.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::field;
using platform::line;
using platform::nullText;

platform::ReportDefinition logReport() {
    platform::ReportDefinition definition;
    definition.name = u"rptLogReport"_s;
    definition.sections = {
        listHead(platform::SectionKind::ReportHeader, 1515,
                 {.boxWidth = 5130, .dateLeft = 8100, .dateTop = 180},
                 {field(u"txtReportDate"_s, 0, 990, 5310, 270).points(datePoints).asValue("Report Dates")}),
        {platform::SectionKind::PageHeader,
         1275,
         {
             field(u"txtName"_s, 0, 0, 10080, 360).points(titlePoints).bold().asName("Name"),
             field(u"txtDesc"_s, 0, 360, 10800, 540),
             heading(u"lbllog_Date"_s, 0, 990, 2160),
             heading(u"lbllog_Lot"_s, 2160, 990, 1620),
             heading(u"lbllog_JarSize"_s, 3780, 990, 1440),
             heading(u"lbllog_Quantity"_s, 5220, 990, 1440),
             heading(u"lbllog_Initials"_s, 6660, 990, 1440).centre(),
             heading(u"lbllog_Verified"_s, 8100, 990, 1440).centre(),
             heading(u"lbllog_Cost"_s, 9540, 990, 1260).right(),
             line(u"Line5"_s, 0, 1260, 10800),
         }},
        {platform::SectionKind::Detail,
         450,
         {
             field(u"txtlog_Date"_s, 0, 90, 2160, 270).bound(u"log_Date"_s).points(9),
             field(u"txtlog_Lot"_s, 2160, 90, 1620, 270).bound(u"log_Lot"_s).points(9).asValue("Lot"),
             field(u"txtlog_JarSize"_s, 3780, 90, 1440, 270)
                 .bound(u"log_JarSize"_s)
                 .points(9)
                 .asValue("Jar Size"),
             field(u"txtlog_Quantity"_s, 5220, 90, 1440, 270).bound(u"log_Quantity"_s).points(9),
             field(u"txtlog_Initials"_s, 7110, 90, 630, 270).bound(u"log_Initials"_s).points(9).centre(),
             field(u"txtlog_Verified"_s, 8550, 90, 630, 270).bound(u"log_Verified"_s).points(9).centre(),
             field(u"txtlog_Cost"_s, 9540, 90, 1260, 270).bound(u"log_Cost"_s).points(9).right(),
             line(u"Line6"_s, 0, 450, 10800),
         }},
        {platform::SectionKind::PageFooter,
         630,
         {
             field(u"txtPage"_s, 7650, 270, 2430, 270).right().asValue("Page"),
         }},
        {platform::SectionKind::ReportFooter,
         495,
         {
             line(u"Line8"_s, 0, 0, 10800),
             field(u"txtTotalLogs"_s, 0, 90, 2880, 270).bold().asValue("Logs"),
             field(u"txtTotalQTY"_s, 5220, 90, 1170, 270).bold().asValue("QTY"),
             field(u"txtTotalCost"_s, 9180, 90, 1620, 270, u"0.00"_s).bold().right().asValue("Cost"),
         }},
    };
    return definition;
}

}  // namespace

rptLogReport::rptLogReport(Context& context) : DatedReport(context, logReport()) {}

void rptLogReport::FormulaID(std::int16_t formulaID) {
    const bool done = guarded(u"rptLogReport:FormulaID"_s, false, [&] {
        m_formulaID = formulaID;
        if (askDates())
            takeBatches();
        return true;
    });
    if (!done) {  // an empty list would look like the truth, and take the place of an older one
        m_context.reportCancelled = true;
        unload();
    }
}

void rptLogReport::takeBatches() {
    setFormat(u"txtlog_Cost"_s, platform::deref(m_context.options).DefCurrency() + amountPicture);
    translateForm();
    const platform::RecordsetPtr batches = readBatches();
    if (batches)
        m_jarField = batches->fieldIndex(u"log_JarSize"_s);
    setRowsOrNone(batches);
    if (rows())
        fileName = reportFileName("Log Report", {nullText(rows()->value(u"log_Name"_s))},
                                  range().begin.date(), range().end.date());
}

platform::RecordsetPtr rptLogReport::readBatches() {
    const platform::ReadAhead together(openDB(m_context), {{totalsStatement()}});
    platform::RecordsetPtr batches = allRows(m_context, batchesStatement());
    if (batches && batches->recordCount() > 0)
        readTotals(totalsStatement());
    return batches;
}

QString rptLogReport::batchesStatement() const {
    return u"SELECT Log.log_Date, Log.log_Lot, Log.log_JarSize, Log.log_Quantity, Log.log_Cost, "
           "Log.log_Initials, Log.log_Verified, Log.log_Name, Log.log_FormType, Log.log_Desc, "
           "Log.log_Strength, Log.log_NDC FROM Log WHERE Log.FormulaID="_s +
           QString::number(m_formulaID) + u" AND Log.log_Date >= #"_s + boundText(range().begin) +
           u"# AND Log.log_Date <= #"_s + boundText(range().end) + u"#;"_s;
}

// Here the dates go in as default text with their time of day, unlike the listed rows.
QString rptLogReport::totalsStatement() const {
    return u"SELECT Count(*) as TotalLogs, Sum(Log.log_Quantity) as TotalQTY ,Sum(Log.log_Cost) as "
           "TotalCost FROM Log WHERE Log.FormulaID="_s +
           QString::number(m_formulaID) + u" AND Log.log_Date >= #"_s + platform::dateText(range().begin) +
           u"# AND Log.log_Date <= #"_s + platform::dateText(range().end) + u"#;"_s;
}

void rptLogReport::translateForm() {
    guarded(u"rptLogReport:translateForm"_s, [&] {
        translateListHead(*this, "Log Report", "Log Report - Sorvanto");
        translateCaptions(*this, {{"lbllog_Date", "Date"},
                                  {"lbllog_Lot", "Lot"},
                                  {"lbllog_JarSize", "Jar Size"},
                                  {"lbllog_Quantity", "QTY"},
                                  {"lbllog_Initials", "Initials"},
                                  {"lbllog_Verified", "Verified"},
                                  {"lbllog_Cost", "Cost"}});
        setText(u"txtReportDate"_s, reportDates(range().begin, range().end));
    });
}

// The current row's values, which on later pages may be those of a later batch.
void rptLogReport::pageHeaderFormat() {
    guarded(u"rptLogReport:PageHeader_Format"_s, [&] {
        if (!rows() || rows()->eof())
            return;
        const platform::Recordset& row = *rows();
        setName(u"txtName"_s, nullText(row.value(u"log_Name"_s)),
                u" "_s + nullText(row.value(u"log_Strength"_s)) + u"\t"_s +
                    tableEntry(m_context.mixTypes, platform::nullInt16(row.value(u"log_FormType"_s))) +
                    u"\t"_s + nullText(row.value(u"log_NDC"_s)));
        setText(u"txtDesc"_s, nullText(row.value(u"log_Desc"_s)));
    });
}

void rptLogReport::detailFormat() {
    guarded(u"rptLogReport:Detail_Format"_s, [&] {
        const std::int16_t jar = platform::nullInt16(platform::deref(rows()).value(m_jarField));
        setText(u"txtlog_JarSize"_s, tableEntry(m_context.jarSizes, jar));
    });
}

void rptLogReport::pageFooterFormat() {
    guarded(u"rptLogReport:PageFooter_Format"_s,
            [&] { setText(u"txtPage"_s, translated(u"Page"_s) + u" "_s + QString::number(pageNumber())); });
}

void rptLogReport::reportFooterFormat() {
    guarded(u"rptLogReport:ReportFooter_Format"_s, [&] {
        setText(u"txtTotalLogs"_s,
                platform::shownText(totals().value(u"TotalLogs"_s), {}) + u" "_s + translated(u"Logs"_s));
        setText(u"txtTotalQTY"_s, platform::shownText(totals().value(u"TotalQTY"_s), {}) + u" ml"_s);
        explainTotals(
            *this,
            {rows()->recordCount(), platform::nullInt32(totals().value(u"TotalLogs"_s)),
             translated(u"The list shows %1 batch, the totals count %2: %3 | "
                        "The list shows %1 batches, the totals count %2: %3"_s),
             translated(u"the list is bounded by 0:00 of both dates, the totals by their time of day."_s)},
            range().begin, range().end);
        const QVariant cost = totals().value(u"TotalCost"_s);
        if (cost.isValid())
            setOptionsMoney(m_context, *this, "txtTotalCost", QVariant::fromValue(platform::toCurrency(cost)),
                            u"0.00"_s);
        else
            showLayoutNumber(*this, "txtTotalCost");
    });
}

}  // namespace sorvanto
