#include "reports/rptRecall.h"

#include "platform/basic/Dates.h"
#include "reports/FileNames.h"
#include "reports/ListHead.h"
#include "reports/RecallTexts.h"
#include "reports/ReportTexts.h"
#include "shared/Context.h"
#include "shared/Translator.h"

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

using platform::Control;
using platform::field;
using platform::line;
using platform::SectionKind;
using platform::TextAlign;

constexpr int rowHeight = 390, headHeight = 450;  // headings of two lines

constexpr ListColumn batchColumns[] = {
    {"BatchDate", "Date", 0, 1080},
    {"BatchFormula", "Formula", 1170, 2700},
    {"BatchLot", "Lot", 3960, 1440},
    {"BatchReason", "", 5490, 1530},
    {"BatchQuantity", "Quantity", 7020, 1080, TextAlign::Right},
    {"BatchInitials", "Logged", 8280, 1215},
    {"BatchVerified", "Verified", 9585, 1215},
};
constexpr ListColumn patientColumns[] = {
    {"CallPatient", "Patient", 450, 2340},
    {"CallPhone", "Phone", 2880, 1620},
    {"CallDispensed", "Prescriptions", 4590, 3780},
    {"CallSign", "Date and signature", 8550, 2250},
};

void append(std::vector<Control>& controls, const std::vector<Control>& further) {
    controls.insert(controls.end(), further.begin(), further.end());
}

std::vector<Control> highHeadings(std::span<const ListColumn> columns, const QString& prefix, int top) {
    std::vector<Control> controls = headings(columns, prefix, top);
    for (Control& control : controls)
        control.height = headHeight;
    return controls;
}

std::vector<Control> fields(std::span<const ListColumn> columns) {
    std::vector<Control> controls;
    for (const ListColumn& column : columns) {
        controls.push_back(field(u"txt"_s + QLatin1String(column.name), column.left, 60, column.width, 270)
                               .points(9)
                               .growing());
        controls.back().style.align = column.align;
    }
    return controls;
}

QStringList names(std::span<const ListColumn> columns, const QString& prefix) {
    QStringList all;
    for (const ListColumn& column : columns)
        all << prefix + QLatin1String(column.name);
    return all;
}

platform::Section pageHeader() {
    std::vector<Control> controls{field(u"txtAsked"_s, 0, 810, 10800, 315).points(12).bold().asValue("Lot")};
    append(controls, highHeadings(batchColumns, u"lblPage"_s, 1215));
    append(controls, highHeadings(patientColumns, u"lblPage"_s, 1215));
    controls.push_back(line(u"linPage"_s, 0, 1665, 10800));
    return listHead(SectionKind::PageHeader, 1680, {.boxWidth = 5130, .dateLeft = 8820, .dateTop = 180},
                    controls);
}

platform::Section found() {
    std::vector<Control> controls{
        field(u"txtSearched"_s, 0, 0, 10800, 270).points(9).growing(),
        field(u"txtTotals"_s, 0, 360, 10800, 315).points(12).bold().growing(),
        field(u"txtGaps"_s, 0, 720, 10800, 270).bold().growing(),
    };
    append(controls, highHeadings(batchColumns, u"lblHead"_s, 1170));
    controls.push_back(line(u"linHead"_s, 0, 1620, 10800));
    return {SectionKind::GroupHeader, 1635, std::move(controls)};
}

platform::Section recallRow() {
    std::vector<Control> controls = fields(batchColumns);
    append(controls, fields(patientColumns));
    controls.push_back(platform::box(u"boxTick"_s, 90, 75, 225, 225));
    controls.push_back(line(u"linSign"_s, 8550, 330, 10710));
    controls.push_back(line(u"linRow"_s, 0, rowHeight, 10800));
    return {SectionKind::Detail, rowHeight, std::move(controls)};
}

platform::ReportDefinition recallDefinition() {
    platform::ReportDefinition definition;
    definition.name = u"rptRecall"_s;
    definition.sections = {
        pageHeader(),
        found(),
        recallRow(),
        storeFooter(),
        {SectionKind::ReportFooter,
         900,
         {
             field(u"txtEnd"_s, 0, 135, 10800, 270).bold().growing(),
             platform::label(u"lblChecked"_s, 5400, 585, 3060, 270).points(9).right(),
             line(u"linChecked"_s, 8550, 810, 10800),
         }},
    };
    return definition;
}

QString dispensed(const CalledPatient& patient) {
    QStringList lines;
    for (const TracedPrescription& one : patient.prescriptions)
        lines << QStringList{recallDay(one.date), one.drug, recallAmount(one.quantity, one.units),
                             translated(u"Lot"_s) + u' ' + one.batchLot}
                     .join(u", "_s);
    return lines.join(u'\n');
}

}  // namespace

QString recallTitle(const RecallList& list) {
    const QString how = foundBy(list);
    return how.isEmpty() ? list.asked : list.asked + u" ("_s + how + u')';
}

QStringList recallIngredients(const RecallList& list) {
    const QString ndc = translated(u"NDC"_s) + u' ', lot = translated(u"Lot"_s) + u' ';
    QStringList lines;
    lines.reserve(static_cast<qsizetype>(list.ingredients.size()));
    for (const Ingredient& one : list.ingredients) {
        QStringList parts{one.name};
        if (!one.ndc.isEmpty())
            parts << ndc + one.ndc;
        if (!one.lot.isEmpty())
            parts << lot + one.lot;
        parts << one.supplier;
        parts.removeAll(QString());
        lines << parts.join(u" · "_s);
    }
    return lines;
}

rptRecall::rptRecall(Context& context, RecallList list)
    : Report(recallDefinition()), m_context(context), m_list(std::move(list)),
      m_patients(patientsToCall(m_list.recall)) {
    fileName = reportFileName("Recall List", {m_list.asked}, platform::now().date());
    translateForm();
}

void rptRecall::translateForm() {
    translateListHead(*this, "Recall List", "Recall List");
    for (const QString& prefix : {u"lblPage"_s, u"lblHead"_s})
        translateHeadings(*this, batchColumns, prefix);
    translateHeadings(*this, patientColumns, u"lblPage"_s);
    setText(u"lblChecked"_s, translated(u"Checked: date and signature"_s));
    setText(u"txtAsked"_s, recallTitle(m_list));
}

void rptRecall::showAll(const QStringList& names, bool visible) {
    for (const QString& name : names)
        setVisible(name, visible);
}

void rptRecall::fetchData(bool& eof) { eof = ++m_next > batchRows() + m_patients.size(); }

// The first page has the headings below what was found.
void rptRecall::pageHeaderFormat() {
    const bool later = pageNumber() > 1 && m_next <= batchRows() + m_patients.size();
    showAll(names(batchColumns, u"lblPage"_s), later && !atPatients());
    showAll(names(patientColumns, u"lblPage"_s), later && atPatients());
    setVisible(u"linPage"_s, later);
}

void rptRecall::groupHeaderFormat() {
    QStringList lines = recallIngredients(m_list);
    lines << recallFormulas(m_list);
    const QString days = recallDays(m_list.days);
    if (!days.isEmpty())
        lines << (m_list.patient ? translated(u"Prescriptions"_s) : translated(u"Batches"_s)) + u": "_s +
                     days;
    const bool nothing = m_list.by == TraceHits::By::Nothing && !m_list.patient && !m_list.formula;
    lines << (nothing ? recallNothing(m_list.searched) : QString()) << recallSearched(m_list);
    lines.removeAll(QString());
    setText(u"txtSearched"_s, lines.join(u'\n'));
    setText(u"txtTotals"_s, recallTotals(m_list.recall));
    setText(u"txtGaps"_s, recallGaps(m_list).join(u'\n'));
    const bool any = batchRows() > 0;
    showAll(names(batchColumns, u"lblHead"_s), any);
    setVisible(u"linHead"_s, any);
}

void rptRecall::detailFormat() {
    const bool patient = atPatients();
    showAll(names(batchColumns, u"txt"_s), !patient);
    showAll(names(patientColumns, u"txt"_s) + QStringList{u"boxTick"_s, u"linSign"_s}, patient);
    const std::size_t certain = m_list.recall.batches.size();
    const std::size_t place = m_next - 1;
    if (patient)
        showPatient(m_patients.at(place - batchRows()));
    else
        showBatch(place < certain ? m_list.recall.batches.at(place)
                                  : m_list.recall.uncertain.at(place - certain));
}

void rptRecall::showBatch(const TracedBatch& batch) {
    setText(u"txtBatchDate"_s, recallDay(batch.date));
    setText(u"txtBatchFormula"_s,
            batch.strength.isEmpty() ? batch.formula : batch.formula + u' ' + batch.strength);
    setText(u"txtBatchLot"_s, batch.lot);
    setText(u"txtBatchReason"_s, reasonOf(batch));
    setText(u"txtBatchQuantity"_s, recallAmount(batch.quantity, batch.units));
    setText(u"txtBatchInitials"_s, batch.initials);
    setText(u"txtBatchVerified"_s, batch.verified);
}

void rptRecall::showPatient(const CalledPatient& patient) {
    setText(u"txtCallPatient"_s, patient.name);
    setText(u"txtCallPhone"_s, patient.phone.isEmpty() ? translated(u"no phone number"_s) : patient.phone);
    setText(u"txtCallDispensed"_s, dispensed(patient));
    setText(u"txtCallSign"_s, u"\n"_s);  // room to write in
}

void rptRecall::pageFooterFormat() { fillStoreFooter(m_context, *this); }

void rptRecall::reportFooterFormat() {
    QStringList lines{recallTotals(m_list.recall)};
    if (!m_list.absent.empty())
        lines << translated(u"What is counted here is not final."_s);
    setText(u"txtEnd"_s, lines.join(u'\n'));
}

}  // namespace sorvanto
