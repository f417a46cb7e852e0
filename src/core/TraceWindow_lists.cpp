// What the lists of the trace show.
#include "core/TraceList.h"
#include "core/TraceWindow.h"
#include "platform/basic/Plurals.h"
#include "platform/basic/SystemLocale.h"
#include "reports/RecallTexts.h"
#include "shared/Translator.h"

#include <QLabel>
#include <QSignalBlocker>
#include <set>

using namespace Qt::StringLiterals;

namespace sorvanto {
namespace {

constexpr int dateWidth = 100, lotWidth = 120, quantityWidth = 100, initialsWidth = 80, phoneWidth = 120,
              nameWidth = 190, doctorWidth = 140, ndcWidth = 145;

QStringList batchRow(const TracedBatch& batch) {
    return {recallDay(batch.date),
            batch.formula,
            batch.lot,
            reasonOf(batch),
            recallAmount(batch.quantity, batch.units),
            batch.initials,
            batch.verified};
}

}  // namespace

void TraceWindow::showFound() {
    m_contents.clear();
    const QSignalBlocker quiet(m_found);
    switch (m_taken) {
    case Found::Chemicals:
        return showIngredients();
    case Found::Batches:
        return showContents();
    case Found::Patients:
        return showPatients();
    case Found::Formulas:
        return showFormulas();
    }
}

void TraceWindow::showPatients() {
    m_found->setTitle(translated(u"Patients found"_s), translated(u"choose one"_s));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"Birthdate"_s), dateWidth},
                         {translated(u"Phone"_s), phoneWidth}});
    std::vector<QStringList> rows;
    for (const TracedPatient& patient : m_patients)
        rows.push_back({patient.name, recallDay(patient.born.startOfDay(Qt::UTC)), patient.phone});
    m_found->setRows(std::move(rows));
}

void TraceWindow::showFormulas() {
    m_found->setTitle(translated(u"Formulas found"_s), translated(u"choose one"_s));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"Strength"_s), doctorWidth},
                         {translated(u"NDC"_s), ndcWidth}});
    std::vector<QStringList> rows;
    for (const TracedFormula& formula : m_formulas)
        rows.push_back({formula.name, formula.strength, formula.ndc});
    m_found->setRows(std::move(rows));
}

void TraceWindow::showContents() {
    m_found->setTitle(translated(u"What is in it"_s));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"NDC"_s), ndcWidth},
                         {translated(u"Lot"_s), lotWidth},
                         {translated(u"Quantity"_s), quantityWidth, true},
                         {QString(), quantityWidth},
                         {translated(u"Supplier"_s), doctorWidth}});
    std::vector<QStringList> rows;
    for (const TracedBatch& batch : m_hits.batches) {
        for (const UsedIngredient& line : m_tracer.contents(batch.key)) {
            const Ingredient& in = line.ingredient;
            m_contents.push_back(in);
            rows.push_back(
                {in.name, in.ndc, in.lot, recallAmount(line.quantity, line.units),
                 line.base.isEmpty() ? QString() : translated(u"with %1"_s).replace(u"%1"_s, line.base),
                 in.supplier});
        }
    }
    m_found->setRows(std::move(rows));
}

void TraceWindow::showIngredients() {
    RecallList found;
    found.by = m_hits.by;
    m_found->setTitle(translated(u"Chemicals found"_s), foundBy(found));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"NDC"_s), ndcWidth},
                         {translated(u"Lot"_s), lotWidth},
                         {translated(u"Form"_s), initialsWidth},
                         {translated(u"Supplier"_s), doctorWidth}});
    std::vector<QStringList> rows;
    for (const Ingredient& in : m_hits.ingredients)
        rows.push_back({in.name, in.ndc, in.lot, in.form, in.supplier});
    m_found->setRows(std::move(rows));
}

/// Of chemicals alone.
void TraceWindow::showUsedIn() {
    m_usedIn->setVisible(m_taken == Found::Chemicals && !m_hits.ingredients.empty());
    m_usedIn->setTitle(translated(u"Formulas that use it now"_s),
                       platform::systemLocale().toString(static_cast<qulonglong>(m_list.formulas.size())));
    m_usedIn->setColumns({{translated(u"Formula"_s)}});
    std::vector<QStringList> rows;
    for (const TracedFormula& formula : m_list.formulas)
        rows.push_back({formulaText(formula)});
    m_usedIn->setRows(std::move(rows));
}

void TraceWindow::showBatches() {
    m_batches->setTitle(translated(u"Batches"_s), translated(u"choose one to see its prescriptions alone"_s));
    m_batches->setColumns({{translated(u"Date"_s), dateWidth},
                           {translated(u"Formula"_s)},
                           {translated(u"Lot"_s), lotWidth},
                           {QString(), lotWidth},
                           {translated(u"Quantity"_s), quantityWidth, true},
                           {translated(u"Logged"_s), initialsWidth},
                           {translated(u"Verified"_s), initialsWidth}});
    std::vector<QStringList> rows;
    for (const auto& part : {m_list.recall.batches, m_list.recall.uncertain}) {
        for (const TracedBatch& batch : part)
            rows.push_back(batchRow(batch));
    }
    const QSignalBlocker quiet(m_batches);
    m_batches->setRows(std::move(rows), static_cast<int>(m_list.recall.uncertain.size()));
}

void TraceWindow::showPrescriptions() {
    std::set<TraceKey> wanted;
    for (const int row : m_batches->chosen()) {
        if (row < static_cast<int>(m_list.recall.batches.size()))
            wanted.insert(m_list.recall.batches[static_cast<std::size_t>(row)].key);
    }
    m_shown.clear();
    std::vector<QStringList> rows;
    for (const TracedPrescription& one : m_list.recall.prescriptions) {
        if (!wanted.empty() && !wanted.contains(one.batch))
            continue;
        m_shown.push_back(one);
        rows.push_back({one.patientName, one.phone, one.drug, recallAmount(one.quantity, one.units),
                        recallDay(one.date), one.batchLot, one.doctor});
    }
    const auto batches =
        static_cast<std::int64_t>(wanted.empty() ? m_list.recall.batches.size() : wanted.size());
    m_prescriptions->setTitle(translated(u"Prescriptions"_s),
                              platform::counted(translated(u"of %1 batch | of %1 batches"_s), batches));
    m_prescriptions->setColumns({{translated(u"Patient"_s), nameWidth},
                                 {translated(u"Phone"_s), phoneWidth},
                                 {translated(u"Drug Name"_s)},
                                 {translated(u"Quantity"_s), quantityWidth, true},
                                 {translated(u"Date"_s), dateWidth},
                                 {translated(u"Lot"_s), lotWidth},
                                 {translated(u"Doctor"_s), doctorWidth}});
    m_prescriptions->setRows(std::move(rows));
    showTotals();
}

void TraceWindow::showTotals() {
    QString totals = recallTotals(m_list.recall);
    if (!m_list.recall.uncertain.empty())
        totals += u" · "_s +
                  platform::counted(translated(u"%1 batch whose ingredients are not known | %1 batches whose "
                                               "ingredients are not known"_s),
                                    static_cast<std::int64_t>(m_list.recall.uncertain.size()));
    m_totals->setText(totals);
}

}  // namespace sorvanto
