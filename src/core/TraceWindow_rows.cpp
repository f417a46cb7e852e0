// What the rows of the trace open.
#include "core/TraceWindow.h"
#include "shared/Guard.h"
#include "shared/Translator.h"

using namespace Qt::StringLiterals;

namespace sorvanto {

void TraceWindow::openFound(int row) {
    const auto place = static_cast<std::size_t>(row);
    if (m_taken == Found::Patients)
        open(patients, {0, m_patients.at(place).key});
    else if (m_taken == Found::Formulas)
        open(formulas, {0, m_formulas.at(place).key});
    else
        whenIdle([this, ingredient = m_taken == Found::Batches ? m_contents.at(place).ingredient
                                                               : m_hits.ingredients.at(place)] {
            guarded(u"TraceWindow:open"_s, [&] { openIngredient(ingredient); });
        });
}

// What was made here has its record in the log.
void TraceWindow::openIngredient(const Ingredient& ingredient) {
    const std::int64_t chemical = m_tracer.chemicalOf(ingredient);
    const TraceHits made = m_tracer.find(ingredient.lot, TraceHits::By::Batch);
    if (chemical == 0 && !made.batches.empty())
        return open(logs, made.batches.front().key);
    open(chemicals, {0, chemical});
}

void TraceWindow::openFormula(int row) {
    open(formulas, {0, m_list.formulas.at(static_cast<std::size_t>(row)).key});
}

void TraceWindow::openBatch(int row) { open(logs, batchAt(static_cast<std::size_t>(row)).key); }

void TraceWindow::openPrescription(int row) {
    open(patients, m_list.recall.prescriptions.at(m_shown.at(static_cast<std::size_t>(row))).patient);
}

// What lies in an archive, or is no more, has no record to open.
void TraceWindow::open(ScreenNumber screen, TraceKey key) {
    if (key.file != 0 || key.key == 0) {
        say(key.file != 0 ? translated(u"This batch lies in an archive: open that file to see its record."_s)
                          : translated(u"This chemical is not among the chemicals any more."_s));
        return;
    }
    m_wanted = {screen, key.key};
    accept();
}

}  // namespace sorvanto
