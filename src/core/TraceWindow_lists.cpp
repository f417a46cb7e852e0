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
    m_found->setRows(m_patients.size(), [this](std::size_t row) {
        const TracedPatient& patient = m_patients[row];
        return QStringList{patient.name, recallDay(patient.born.startOfDay(Qt::UTC)), patient.phone};
    });
}

void TraceWindow::showFormulas() {
    m_found->setTitle(translated(u"Formulas found"_s), translated(u"choose one"_s));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"Strength"_s), doctorWidth},
                         {translated(u"NDC"_s), ndcWidth}});
    m_found->setRows(m_formulas.size(), [this](std::size_t row) {
        const TracedFormula& formula = m_formulas[row];
        return QStringList{formula.name, formula.strength, formula.ndc};
    });
}

void TraceWindow::showContents() {
    m_found->setTitle(translated(u"What is in it"_s));
    m_found->setColumns({{translated(u"Name"_s)},
                         {translated(u"NDC"_s), ndcWidth},
                         {translated(u"Lot"_s), lotWidth},
                         {translated(u"Quantity"_s), quantityWidth, true},
                         {QString(), quantityWidth},
                         {translated(u"Supplier"_s), doctorWidth}});
    m_found->setRows(m_contents.size(), [this](std::size_t row) {
        const UsedIngredient& line = m_contents[row];
        const Ingredient& in = line.ingredient;
        const QString with =
            line.base.isEmpty() ? QString() : translated(u"with %1"_s).replace(u"%1"_s, line.base);
        return QStringList{in.name, in.ndc,     in.lot, recallAmount(line.quantity, line.units),
                           with,    in.supplier};
    });
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
    m_found->setRows(m_hits.ingredients.size(), [this](std::size_t row) {
        const Ingredient& in = m_hits.ingredients[row];
        return QStringList{in.name, in.ndc, in.lot, in.form, in.supplier};
    });
}

/// Of chemicals alone.
void TraceWindow::showUsedIn() {
    m_usedIn->setVisible(m_taken == Found::Chemicals && !m_hits.ingredients.empty());
    m_usedIn->setTitle(translated(u"Formulas that use it now"_s),
                       platform::systemLocale().toString(static_cast<qulonglong>(m_list.formulas.size())));
    m_usedIn->setColumns({{translated(u"Formula"_s)}});
    m_usedIn->setRows(m_list.formulas.size(),
                      [this](std::size_t row) { return QStringList{formulaText(m_list.formulas[row])}; });
}

/// Those that belong there first.
const TracedBatch& TraceWindow::batchAt(std::size_t row) const {
    const std::size_t certain = m_list.recall.batches.size();
    return row < certain ? m_list.recall.batches[row] : m_list.recall.uncertain.at(row - certain);
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
    const QSignalBlocker quiet(m_batches);
    m_batches->setRows(
        m_list.recall.batches.size() + m_list.recall.uncertain.size(),
        [this](std::size_t row) { return batchRow(batchAt(row)); },
        static_cast<int>(m_list.recall.uncertain.size()));
}

void TraceWindow::showPrescriptions() {
    std::set<TraceKey> wanted;
    for (const int row : m_batches->chosen()) {
        if (row < static_cast<int>(m_list.recall.batches.size()))
            wanted.insert(m_list.recall.batches[static_cast<std::size_t>(row)].key);
    }
    const std::vector<TracedPrescription>& all = m_list.recall.prescriptions;
    m_shown.clear();
    for (std::size_t place = 0; place < all.size(); ++place) {
        if (wanted.empty() || wanted.contains(all[place].batch))
            m_shown.push_back(place);
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
    m_prescriptions->setRows(m_shown.size(), [this](std::size_t row) {
        const TracedPrescription& one = m_list.recall.prescriptions[m_shown[row]];
        return QStringList{
            one.patientName,     one.phone,    one.drug,  recallAmount(one.quantity, one.units),
            recallDay(one.date), one.batchLot, one.doctor};
    });
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
