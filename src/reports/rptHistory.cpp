#include "reports/rptHistory.h"

#include "platform/basic/Dates.h"
#include "platform/basic/Plurals.h"
#include "reports/FileNames.h"
#include "reports/HistoryCaptions.h"
#include "reports/ListHead.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Control;
using platform::field;
using platform::line;
using platform::SectionKind;

constexpr ListColumn changeColumns[] = {
    {"ChangeWhen", "Date", 0, 1890},      {"ChangeWho", "Who", 1935, 1395},
    {"ChangeWhat", "", 3375, 990},        {"ChangeRecord", "Record", 4410, 1755},
    {"ChangeField", "Field", 6210, 1350}, {"ChangeBefore", "Before", 7605, 1575},
    {"ChangeAfter", "After", 9225, 1575},
};

platform::Section changeHead() {
    platform::Section section{SectionKind::PageHeader, 375, headings(changeColumns, u"lbl"_s)};
    section.controls.push_back(line(u"linHead"_s, 0, 270, 10800));
    return section;
}

platform::Section changeRow() {
    platform::Section section{SectionKind::Detail, 330, {}};
    for (const ListColumn& column : changeColumns) {
        Control& text = section.controls.emplace_back(
            field(u"txt"_s + QLatin1String(column.name), column.left, 45, column.width, 270)
                .points(8)
                .growing());
        text.title = QLatin1String(column.heading);
    }
    return section;
}

platform::ReportDefinition changeHistory() {
    platform::ReportDefinition definition;
    definition.name = u"rptHistory"_s;
    definition.sections = {
        listHead(SectionKind::ReportHeader, 1395, {.boxWidth = 5130, .dateLeft = 8370, .dateTop = 180},
                 {field(u"txtDays"_s, 0, 990, 10800, 270).points(9).asValue("Report Dates")}),
        changeHead(),
        changeRow(),
        storeFooter(),
        {SectionKind::ReportFooter,
         510,
         {
             line(u"linEnd"_s, 0, 45, 10800),
             field(u"txtCount"_s, 0, 135, 10800, 270).bold(),
         }},
    };
    return definition;
}

/// Empty for no bound.
QString dayText(const QDate& day) {
    return day.isValid() ? platform::dateText(day.startOfDay(Qt::UTC)) : QString();
}

}  // namespace

rptHistory::rptHistory(Context& context, const platform::ConnectionPtr& connection, const QDate& first,
                       const QDate& last)
    : Report(changeHistory()), m_context(context), m_connection(connection),
      m_range(connection->engine(), first, last) {
    fileName = first.isValid() && last.isValid()
                   ? reportFileName("Change History", {}, first, last)
                   : reportFileName("Change History", {}, platform::now().date());
    translateForm(first, last);
}

void rptHistory::translateForm(const QDate& first, const QDate& last) {
    translateListHead(*this, "Change History", "Change History");
    translateHeadings(*this, changeColumns, u"lbl"_s);
    setText(u"txtDays"_s, dayText(first) + u" – "_s + dayText(last));
}

void rptHistory::fetchData(bool& eof) {
    if (++m_next > m_lines.size()) {
        const auto entry = m_range.next();
        eof = !entry;
        if (eof)
            return;
        m_lines = historyLines(m_context, m_connection->engine(), *entry);
        m_next = 1;
        ++m_changes;
    }
    eof = false;
}

void rptHistory::detailFormat() {
    const QStringList& texts = m_lines.at(m_next - 1);
    for (int column = 0; column < HistoryColumns; ++column)
        setText(u"txt"_s + QLatin1String(changeColumns[column].name), texts.at(column));
}

void rptHistory::pageFooterFormat() { fillStoreFooter(m_context, *this); }

void rptHistory::reportFooterFormat() {
    setText(u"txtCount"_s, platform::counted(translated(u"%1 change | %1 changes"_s), m_changes));
}

}  // namespace sorvanto
